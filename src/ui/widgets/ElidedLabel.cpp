#include "ElidedLabel.h"

#include <QPainter>

ElidedLabel::ElidedLabel(Qt::TextElideMode mode, QWidget* parent)
    : QWidget(parent)
    , m_mode(mode)
{
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void ElidedLabel::setText(const QString& text)
{
    m_text = text;
    // The whole text stays available to screen readers and as a tooltip when cut.
    setAccessibleName(text);
    setToolTip(text);
    updateGeometry();
    update();
}

void ElidedLabel::setColor(const QColor& color)
{
    m_color = color;
    update();
}

QString ElidedLabel::shownText() const
{
    return fontMetrics().elidedText(m_text, m_mode, width());
}

QSize ElidedLabel::sizeHint() const
{
    return {fontMetrics().horizontalAdvance(m_text) + 1, fontMetrics().height()};
}

QSize ElidedLabel::minimumSizeHint() const
{
    return {fontMetrics().horizontalAdvance(QStringLiteral("M…M")), fontMetrics().height()};
}

void ElidedLabel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setPen(m_color.isValid() ? m_color : palette().color(QPalette::WindowText));
    painter.drawText(rect(), Qt::AlignVCenter | Qt::AlignLeft, shownText());
}
