#include "Prefs.h"
#include "PreferenceSandbox.h"
#include "PreferenceStore.h"

#include <QDir>
#include <QFile>
#include <QVariantMap>

namespace {

class Preferences : public PreferenceSandboxTest {
protected:
    static void store(const QVariantMap& values)
    {
        PreferenceStore store;
        for (auto it = values.cbegin(); it != values.cend(); ++it)
            store.setValue(it.key(), it.value());
        store.sync();
    }

    static EditorPreferences loaded(EditorPreferences model)
    {
        Prefs::load(model);
        return model;
    }
};

void expectSame(const EditorPreferences& actual, const EditorPreferences& expected)
{
    EXPECT_EQ(actual.sensitivity, expected.sensitivity);
    EXPECT_EQ(actual.settings, expected.settings);
    EXPECT_EQ(actual.skipPausesInPreview, expected.skipPausesInPreview);
}

} // namespace

using S = Sensitivity;

TEST_F(Preferences, storedValuesAndTheirFallbacksLoadAsExpected)
{
    const TidleSettings defaults{-35.0, 0.6, 0.15, true};
    struct Row {
        const char* what;
        QVariantMap stored;
        Sensitivity before;
        EditorPreferences expected;
    };
    const Row rows[] = {
        {"empty store keeps the model's preset",
         {},
         S::aggressive,
         {S::aggressive, defaults, true}},
        {"unknown preset name, numbers still load",
         {{"pref.sensitivity", "Delicate"},
          {"pref.thresholdDB", -41.5},
          {"pref.minPause", 0.9},
          {"pref.padding", 0.2}},
         S::standard,
         {S::standard, {-41.5, 0.9, 0.2, true}, true}},
        {"a preset name does not bring its numbers",
         {{"pref.sensitivity", "delicate"}},
         S::standard,
         {S::delicate, defaults, true}},
        {"text that is not a number reads as zero",
         {{"pref.minPause", "about a second"}},
         S::standard,
         {S::standard, {-35.0, 0.0, 0.15, true}, true}},
        {"numbers written as text are numbers",
         {{"pref.thresholdDB", "-20"}, {"pref.padding", "0.5"}},
         S::standard,
         {S::standard, {-20.0, 0.6, 0.5, true}, true}},
        {"a string that is not true or false is not a boolean",
         {{"pref.frameAccurate", "no"}, {"pref.skipPausesInPreview", "0"}},
         S::standard,
         {S::standard, defaults, true}},
        {"booleans as the file keeps them",
         {{"pref.frameAccurate", "false"}, {"pref.skipPausesInPreview", "false"}},
         S::standard,
         {S::standard, {-35.0, 0.6, 0.15, false}, false}},
        {"no range checks",
         {{"pref.sensitivity", "custom"},
          {"pref.thresholdDB", 6.0},
          {"pref.minPause", -1.0},
          {"pref.padding", 30.0},
          {"pref.frameAccurate", false},
          {"pref.skipPausesInPreview", true}},
         S::standard,
         {S::custom, {6.0, -1.0, 30.0, false}, true}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        PreferenceSandboxTest::SetUp();
        store(row.stored);
        EditorPreferences before;
        before.sensitivity = row.before;
        // Values that no row expects, so a field the load forgot shows up.
        before.settings = {-99.0, 99.0, 99.0, false};
        before.skipPausesInPreview = false;
        expectSame(loaded(before), row.expected);
    }
}

TEST_F(Preferences, whatIsSavedLoadsBackUnchanged)
{
    const EditorPreferences cases[] = {
        {S::aggressive, {-30.0, 0.4, 0.1, false}, false},
        {S::custom, {-47.25, 1.0 / 3.0, 0.07, true}, true},
        {S::delicate, {-45.0, 1.0, 0.25, false}, true},
    };
    for (const EditorPreferences& saved : cases) {
        Prefs::save(saved);
        expectSame(loaded(EditorPreferences{}), saved);
    }
}

TEST_F(Preferences, saveWritesAllSixKeysToTheUsersConfigurationFile)
{
    Prefs::save(EditorPreferences{});
    PreferenceStore().sync();

    const QString expectedFile =
        QDir(qEnvironmentVariable("XDG_CONFIG_HOME")).filePath("Hushpane/Hushpane.conf");
    EXPECT_EQ(storeFile(), expectedFile);
    QFile file(expectedFile);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(file.readAll());
    for (const char* line :
         {"pref.sensitivity=standard", "pref.thresholdDB=-35", "pref.minPause=0.6",
          "pref.padding=0.15", "pref.frameAccurate=true", "pref.skipPausesInPreview=true"})
        EXPECT_TRUE(text.contains(QLatin1String(line))) << line << "\n" << text.toStdString();
    EXPECT_EQ(PreferenceStore().allKeys().size(), 6);
}
