#include "RoundedPanel.h"

#include "Appearance.h"

#include <QPainter>
#include <QPainterPath>

RoundedPanel::RoundedPanel(qreal radius, qreal opacity, QWidget* parent)
    : QWidget(parent)
    , m_radius(radius)
    , m_opacity(opacity)
{
}

void RoundedPanel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QPainterPath shape;
    shape.addRoundedRect(rect(), m_radius, m_radius);
    painter.fillPath(shape, Appearance::faded(Appearance::secondaryText(palette()), m_opacity));
}
