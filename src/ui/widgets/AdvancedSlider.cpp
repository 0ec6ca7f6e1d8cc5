#include "AdvancedSlider.h"

#include "Appearance.h"
#include "Labels.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QSlider>
#include <cmath>

namespace {

constexpr int titleWidth = 150;
constexpr int valueWidth = 60;

} // namespace

AdvancedSlider::AdvancedSlider(const QString& title, Range range, Display display, QWidget* parent)
    : QWidget(parent)
    , m_range(range)
    , m_display(std::move(display))
    , m_slider(new QSlider(Qt::Horizontal, this))
    , m_valueText(Labels::make({}, Appearance::withEvenDigits(Appearance::body()),
                               Appearance::secondaryText(palette()), this))
{
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* titleLabel = new QLabel(title, this);
    titleLabel->setFixedWidth(titleWidth);
    layout->addWidget(titleLabel);
    m_slider->setRange(0, positionOf(range.maximum));
    m_slider->setSingleStep(1);
    m_slider->setPageStep(1);
    m_slider->setAccessibleName(title);
    layout->addWidget(m_slider, 1);
    m_valueText->setFixedWidth(valueWidth);
    m_valueText->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    layout->addWidget(m_valueText);

    // setValue() moves the slider with its signals blocked, so what arrives here is the user's.
    connect(m_slider, &QSlider::valueChanged, this, [this](int position) {
        showValue();
        emit valueEdited(valueAt(position));
    });
}

void AdvancedSlider::setValue(double value)
{
    const QSignalBlocker quiet(m_slider);
    m_slider->setValue(positionOf(value));
    showValue();
}

void AdvancedSlider::showValue()
{
    m_valueText->setText(m_display(value()));
    m_slider->setAccessibleDescription(m_valueText->text());
}

double AdvancedSlider::value() const
{
    return valueAt(m_slider->value());
}

QString AdvancedSlider::valueText() const
{
    return m_valueText->text();
}

double AdvancedSlider::valueAt(int position) const
{
    // Whole steps from the minimum, so 0.2 + 3 × 0.1 reads as 0.5 and not 0.5000000001.
    const double value = m_range.minimum + position * m_range.step;
    const double digits = std::pow(10.0, 6);
    return std::round(value * digits) / digits;
}

int AdvancedSlider::positionOf(double value) const
{
    const double clamped = std::clamp(value, m_range.minimum, m_range.maximum);
    return static_cast<int>(std::lround((clamped - m_range.minimum) / m_range.step));
}
