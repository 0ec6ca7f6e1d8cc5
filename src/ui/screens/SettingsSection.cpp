#include "SettingsSection.h"

#include "AdvancedSliders.h"
#include "AppModel.h"
#include "Appearance.h"
#include "Labels.h"
#include "Localization.h"
#include "RoundedPanel.h"
#include "SegmentedPicker.h"

#include <QLabel>
#include <QVBoxLayout>

SettingsSection::SettingsSection(AppModel& model, QWidget* parent)
    : QWidget(parent)
    , m_model(model)
    , m_picker(new SegmentedPicker({}, this))
    , m_hint(Labels::make({}, Appearance::caption(), Appearance::secondaryText(palette()), this))
    , m_advancedPanel(new RoundedPanel(8, 0.08, this))
    , m_advanced(new AdvancedSliders(model, m_advancedPanel))
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(10);
    layout->addWidget(Labels::make(localized("sensitivity.title"), Appearance::headline(),
                                   Appearance::primaryText(palette()), this));

    QStringList titles;
    for (Sensitivity preset : SensitivityPresets::allCases)
        titles << SensitivityPresets::title(preset);
    m_picker->setTitles(titles);
    m_picker->setAccessibleName(localized("sensitivity.title"));
    layout->addWidget(m_picker);

    m_hint->setWordWrap(true);
    layout->addWidget(m_hint);

    auto* panelLayout = new QVBoxLayout(m_advancedPanel);
    panelLayout->setContentsMargins(10, 10, 10, 10);
    panelLayout->addWidget(m_advanced);
    layout->addWidget(m_advancedPanel);

    connect(m_picker, &SegmentedPicker::activated, this,
            [this](int index) { m_model.setSensitivity(SensitivityPresets::allCases[index]); });
    connect(&m_model, &AppModel::sensitivityChanged, this, &SettingsSection::showSensitivity);
    connect(&m_model, &AppModel::showAdvancedChanged, this, &SettingsSection::showSensitivity);
    connect(&m_model, &AppModel::phaseChanged, this,
            [this] { setEnabled(m_model.phase() != AppModel::Phase::encoding); });
    showSensitivity();
}

bool SettingsSection::showsAdvanced() const
{
    return !m_advancedPanel->isHidden();
}

void SettingsSection::showSensitivity()
{
    const Sensitivity sensitivity = m_model.sensitivity();
    const auto& presets = SensitivityPresets::allCases;
    m_picker->setCurrentIndex(
        int(std::find(presets.begin(), presets.end(), sensitivity) - presets.begin()));
    m_hint->setText(SensitivityPresets::hint(sensitivity));
    m_advancedPanel->setVisible(sensitivity == Sensitivity::custom || m_model.showAdvanced());
}
