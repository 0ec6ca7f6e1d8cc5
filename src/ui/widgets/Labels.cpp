#include "Labels.h"

#include <QLabel>

namespace Labels {

QLabel* make(const QString& text, const QFont& font, const QColor& color, QWidget* parent)
{
    auto* label = new QLabel(text, parent);
    label->setFont(font);
    setTextColor(label, color);
    return label;
}

void setTextColor(QWidget* widget, const QColor& color)
{
    QPalette colors = widget->palette();
    colors.setColor(QPalette::WindowText, color);
    colors.setColor(QPalette::Text, color);
    widget->setPalette(colors);
}

} // namespace Labels
