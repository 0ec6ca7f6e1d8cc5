#include "Prefs.h"

#include "PreferenceStore.h"

namespace {

const QString sensitivityKey = QStringLiteral("pref.sensitivity");
const QString thresholdKey = QStringLiteral("pref.thresholdDB");
const QString minPauseKey = QStringLiteral("pref.minPause");
const QString paddingKey = QStringLiteral("pref.padding");
const QString frameAccurateKey = QStringLiteral("pref.frameAccurate");
const QString skipPausesKey = QStringLiteral("pref.skipPausesInPreview");

} // namespace

namespace Prefs {

void load(EditorPreferences& model)
{
    const PreferenceStore store;
    if (const auto preset =
            SensitivityPresets::fromRawValue(store.value(sensitivityKey).toString()))
        model.sensitivity = *preset;
    // No range checks: whatever number was stored is what the user gets back.
    model.settings.thresholdDB = store.number(thresholdKey).value_or(-35.0);
    model.settings.minPause = store.number(minPauseKey).value_or(0.6);
    model.settings.padding = store.number(paddingKey).value_or(0.15);
    model.settings.frameAccurate = store.boolean(frameAccurateKey).value_or(true);
    model.skipPausesInPreview = store.boolean(skipPausesKey).value_or(true);
}

void save(const EditorPreferences& model)
{
    PreferenceStore store;
    store.setValue(sensitivityKey, SensitivityPresets::rawValue(model.sensitivity));
    store.setValue(thresholdKey, model.settings.thresholdDB);
    store.setValue(minPauseKey, model.settings.minPause);
    store.setValue(paddingKey, model.settings.padding);
    store.setValue(frameAccurateKey, model.settings.frameAccurate);
    store.setValue(skipPausesKey, model.skipPausesInPreview);
}

} // namespace Prefs
