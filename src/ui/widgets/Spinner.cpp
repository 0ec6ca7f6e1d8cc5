#include "Spinner.h"

#include "Appearance.h"
#include "Localization.h"

#include <QPainter>

Spinner::Spinner(int size, QWidget* parent)
    : QWidget(parent)
    , m_size(size)
{
    setFixedSize(size, size);
    setAccessibleName(localized("a11y.busy"));
    m_timer.setInterval(40);
    connect(&m_timer, &QTimer::timeout, this, [this] {
        m_angle = (m_angle + 30) % 360;
        update();
    });
}

void Spinner::showEvent(QShowEvent* event)
{
    m_timer.start();
    QWidget::showEvent(event);
}

void Spinner::hideEvent(QHideEvent* event)
{
    m_timer.stop();
    QWidget::hideEvent(event);
}

void Spinner::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const qreal pen = qMax(1.5, m_size / 8.0);
    const QRectF ring = QRectF(rect()).adjusted(pen, pen, -pen, -pen);
    painter.setPen(QPen(Appearance::faded(Appearance::primaryText(palette()), 0.15), pen));
    painter.drawEllipse(ring);
    painter.setPen(QPen(Appearance::secondaryText(palette()), pen, Qt::SolidLine, Qt::RoundCap));
    // Qt counts arcs in sixteenths of a degree, counter-clockwise.
    painter.drawArc(ring, -m_angle * 16, 100 * 16);
}
