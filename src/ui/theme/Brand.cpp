#include "Brand.h"

namespace Brand {

QColor start()
{
    return QColor::fromRgbF(0.30f, 0.50f, 1.00f);
}

QColor end()
{
    return QColor::fromRgbF(0.48f, 0.30f, 0.95f);
}

QColor tint()
{
    return QColor::fromRgbF(0.39f, 0.40f, 0.97f);
}

QLinearGradient gradient(const QRectF& area)
{
    QLinearGradient gradient(area.left(), 0.0, area.right(), 0.0);
    gradient.setColorAt(0.0, start());
    gradient.setColorAt(1.0, end());
    return gradient;
}

} // namespace Brand
