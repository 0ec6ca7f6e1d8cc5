#include "LinkButton.h"

#include "Appearance.h"
#include "Brand.h"

#include <QPainter>

LinkButton::LinkButton(const QString& text, QWidget* parent)
    : QPushButton(text, parent)
{
    setFont(Appearance::caption());
    setCursor(Qt::PointingHandCursor);
    setFlat(true);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize LinkButton::sizeHint() const
{
    const QFontMetrics metrics(font());
    return metrics.size(Qt::TextSingleLine, text()) + QSize(4, 4);
}

void LinkButton::enterEvent(QEnterEvent* event)
{
    m_hovered = true;
    update();
    QPushButton::enterEvent(event);
}

void LinkButton::leaveEvent(QEvent* event)
{
    m_hovered = false;
    update();
    QPushButton::leaveEvent(event);
}

void LinkButton::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    QColor color = Brand::tint();
    if (!isEnabled())
        color = Appearance::tertiaryText(palette());
    else if (isDown())
        color = color.darker(130);
    QFont underlined = font();
    underlined.setUnderline(m_hovered || hasFocus());
    painter.setFont(underlined);
    painter.setPen(color);
    painter.drawText(rect(), Qt::AlignCenter, text());
}
