#include "BrandButton.h"

#include "Appearance.h"
#include "Brand.h"

#include <QFocusEvent>
#include <QPainter>
#include <QPainterPath>
#include <QPropertyAnimation>

namespace BrandButtonStyle {

QFont font()
{
    QFont font = Appearance::body();
    font.setWeight(QFont::Medium);
    return font;
}

} // namespace BrandButtonStyle

BrandButton::BrandButton(const QString& text, QWidget* parent)
    : QPushButton(text, parent)
    , m_scaleAnimation(new QPropertyAnimation(this, "pressScale", this))
{
    setFont(BrandButtonStyle::font());
    setCursor(Qt::PointingHandCursor);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    // A quick spring: a slight overshoot on the way back, then rest.
    m_scaleAnimation->setDuration(250);
    QEasingCurve spring(QEasingCurve::OutBack);
    spring.setOvershoot(1.2);
    m_scaleAnimation->setEasingCurve(spring);
    connect(this, &QPushButton::pressed, this,
            [this] { animateScaleTo(BrandButtonStyle::pressedScale); });
    connect(this, &QPushButton::released, this, [this] { animateScaleTo(1.0); });
}

void BrandButton::setPressScale(qreal scale)
{
    m_pressScale = scale;
    update();
}

void BrandButton::animateScaleTo(qreal target)
{
    m_scaleAnimation->stop();
    m_scaleAnimation->setStartValue(m_pressScale);
    m_scaleAnimation->setEndValue(target);
    m_scaleAnimation->start();
}

QSize BrandButton::sizeHint() const
{
    const QFontMetrics metrics(font());
    const QSize textSize = metrics.size(Qt::TextShowMnemonic, text());
    return {textSize.width() + 2 * BrandButtonStyle::horizontalPadding,
            textSize.height() + 2 * BrandButtonStyle::verticalPadding};
}

QSize BrandButton::minimumSizeHint() const
{
    return sizeHint();
}

void BrandButton::focusInEvent(QFocusEvent* event)
{
    // Only focus reached by the keyboard is worth a ring; a click shows where it went.
    m_keyboardFocus = event->reason() == Qt::TabFocusReason ||
                      event->reason() == Qt::BacktabFocusReason ||
                      event->reason() == Qt::ShortcutFocusReason;
    QPushButton::focusInEvent(event);
}

void BrandButton::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF area = rect();
    painter.translate(area.center());
    painter.scale(m_pressScale, m_pressScale);
    painter.translate(-area.center());

    QPainterPath shape;
    shape.addRoundedRect(area, BrandButtonStyle::cornerRadius, BrandButtonStyle::cornerRadius);
    painter.setOpacity(isEnabled() ? 1.0 : BrandButtonStyle::disabledBackgroundOpacity);
    painter.fillPath(shape, Brand::gradient(area));
    painter.setOpacity(1.0);

    if (m_keyboardFocus && hasFocus()) {
        QColor ring = palette().color(QPalette::Highlight);
        ring.setAlphaF(0.6);
        painter.setPen(QPen(ring, 2.0));
        painter.drawPath(shape);
    }
    painter.setPen(Qt::white);
    painter.setFont(font());
    painter.drawText(area, Qt::AlignCenter | Qt::TextShowMnemonic, text());
}
