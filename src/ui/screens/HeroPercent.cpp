#include "HeroPercent.h"

#include "Appearance.h"
#include "Brand.h"
#include "ResultTexts.h"

#include <QPainter>
#include <QPainterPath>
#include <cmath>

HeroPercent::HeroPercent(QWidget* parent)
    : QWidget(parent)
{
    setFont(Appearance::hero());
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    m_count.setDuration(400);
    QEasingCurve spring(QEasingCurve::OutBack);
    spring.setOvershoot(0.8);
    m_count.setEasingCurve(spring);
    connect(&m_count, &QVariantAnimation::valueChanged, this, [this](const QVariant& value) {
        m_shown = value.toDouble();
        update();
    });
}

void HeroPercent::setPercent(std::optional<int> percent)
{
    const bool changed = percent != m_percent;
    const std::optional<int> previous = m_percent;
    m_percent = percent;
    setVisible(percent.has_value());
    if (!percent || !changed)
        return;
    setAccessibleName(text());
    m_count.stop();
    m_count.setStartValue(previous ? double(*previous) : 0.0);
    m_count.setEndValue(double(*percent));
    m_count.start();
}

QString HeroPercent::text() const
{
    return m_percent ? ResultTexts::heroPercentText(*m_percent) : QString();
}

QSize HeroPercent::sizeHint() const
{
    // Wide enough for the largest figure, so counting never moves the neighbours.
    const QFontMetrics metrics(font());
    return {metrics.horizontalAdvance(ResultTexts::heroPercentText(100)) + 2, metrics.height()};
}

void HeroPercent::paintEvent(QPaintEvent*)
{
    if (!m_percent)
        return;
    const int shown = m_count.state() == QAbstractAnimation::Running
                          ? int(std::lround(std::clamp(m_shown, 0.0, 100.0)))
                          : *m_percent;
    const QString text = ResultTexts::heroPercentText(shown);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QFontMetricsF metrics(font());
    const qreal width = metrics.horizontalAdvance(text);
    const QPointF baseline(this->width() - width,
                           (height() + metrics.ascent() - metrics.descent()) / 2);
    QPainterPath glyphs;
    glyphs.addText(baseline, font(), text);
    painter.fillPath(glyphs, Brand::gradient(glyphs.boundingRect()));
}
