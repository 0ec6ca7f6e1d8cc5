#include "AdvancedSliders.h"

#include "AdvancedSlider.h"
#include "AppModel.h"
#include "Localization.h"
#include "SegmentedPicker.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace {

constexpr int titleWidth = 150;

QString decibels(double value)
{
    return localized("unit.db").arg(QString::asprintf("%.0f", value));
}

QString seconds(double value, const char* format)
{
    return localized("unit.seconds").arg(QString::asprintf(format, value));
}

} // namespace

AdvancedSliders::AdvancedSliders(AppModel& model, QWidget* parent)
    : QWidget(parent)
    , m_model(model)
    , m_threshold(
          new AdvancedSlider(localized("advanced.threshold"), {-60.0, -20.0, 1.0}, decibels, this))
    , m_minPause(new AdvancedSlider(
          localized("advanced.minPause"), {0.2, 2.0, 0.1},
          [](double v) { return seconds(v, "%.1f"); }, this))
    , m_padding(new AdvancedSlider(
          localized("advanced.padding"), {0.0, 0.5, 0.05},
          [](double v) { return seconds(v, "%.2f"); }, this))
    , m_saveMode(new SegmentedPicker(
          {localized("advanced.save.accurate"), localized("advanced.save.fast")}, this))
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(8);
    layout->addWidget(m_threshold);
    layout->addWidget(m_minPause);
    layout->addWidget(m_padding);

    auto* saveRow = new QHBoxLayout;
    auto* saveTitle = new QLabel(localized("advanced.save"), this);
    saveTitle->setFixedWidth(titleWidth);
    saveRow->addWidget(saveTitle);
    m_saveMode->setToolTip(localized("advanced.save.help"));
    m_saveMode->setAccessibleName(localized("advanced.save"));
    saveRow->addWidget(m_saveMode, 1);
    layout->addLayout(saveRow);

    // A slider makes the numbers the user's own: the preset becomes custom. The save mode is
    // no detection number and leaves the preset alone.
    connect(m_threshold, &AdvancedSlider::valueEdited, this, [this](double value) {
        edit([value](TidleSettings& s) { s.thresholdDB = value; });
        m_model.assignSensitivity(Sensitivity::custom);
    });
    connect(m_minPause, &AdvancedSlider::valueEdited, this, [this](double value) {
        edit([value](TidleSettings& s) { s.minPause = value; });
        m_model.assignSensitivity(Sensitivity::custom);
    });
    connect(m_padding, &AdvancedSlider::valueEdited, this, [this](double value) {
        edit([value](TidleSettings& s) { s.padding = value; });
        m_model.assignSensitivity(Sensitivity::custom);
    });
    connect(m_saveMode, &SegmentedPicker::activated, this, [this](int index) {
        edit([index](TidleSettings& s) { s.frameAccurate = index == 0; });
    });
    connect(&m_model, &AppModel::settingsChanged, this, &AdvancedSliders::showSettings);
    showSettings();
}

void AdvancedSliders::edit(const std::function<void(TidleSettings&)>& change)
{
    TidleSettings settings = m_model.settings();
    change(settings);
    m_model.setSettings(settings);
}

void AdvancedSliders::showSettings()
{
    const TidleSettings& settings = m_model.settings();
    m_threshold->setValue(settings.thresholdDB);
    m_minPause->setValue(settings.minPause);
    m_padding->setValue(settings.padding);
    m_saveMode->setCurrentIndex(settings.frameAccurate ? 0 : 1);
}
