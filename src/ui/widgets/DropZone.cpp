#include "DropZone.h"

#include "Appearance.h"
#include "Brand.h"

#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>

namespace {

constexpr qreal cornerRadius = 14.0;
constexpr qreal borderWidth = 2.0;
constexpr qreal dashLength = 8.0;

} // namespace

DropZone::DropZone(QWidget* parent)
    : QWidget(parent)
{
    setMinimumHeight(300);
    setCursor(Qt::PointingHandCursor);
}

void DropZone::setTargeted(bool targeted)
{
    m_targeted = targeted;
    update();
}

void DropZone::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint()))
        emit clicked();
}

void DropZone::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const qreal inset = borderWidth / 2;
    QPainterPath shape;
    shape.addRoundedRect(QRectF(rect()).adjusted(inset, inset, -inset, -inset), cornerRadius,
                         cornerRadius);
    if (m_targeted)
        painter.fillPath(shape, Appearance::faded(Brand::tint(), 0.08));
    QPen border(m_targeted ? Brand::tint()
                           : Appearance::faded(Appearance::secondaryText(palette()), 0.35),
                borderWidth);
    // Qt measures dashes in pen widths.
    border.setDashPattern({dashLength / borderWidth, dashLength / borderWidth});
    painter.setPen(border);
    painter.drawPath(shape);
}
