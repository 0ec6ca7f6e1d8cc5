#include "Fixtures.h"
#include "Localization.h"
#include "Sensitivity.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QLibraryInfo>
#include <QProcess>
#include <gtest/gtest.h>

namespace {

QProcessEnvironment environment(const QStringList& assignments)
{
    QProcessEnvironment env;
    for (const QString& assignment : assignments)
        env.insert(assignment.section('=', 0, 0), assignment.section('=', 1));
    return env;
}

// Leaves the English tables in place for the tests after it.
class GermanTables : public testing::Test {
protected:
    void SetUp() override { installStringTables(QStringLiteral("de")); }
    void TearDown() override { installStringTables(QStringLiteral("en")); }
};

} // namespace

TEST(LanguageChoice, readsLanguageThenTheFirstLocaleVariableAsGettextDoes)
{
    const struct {
        QStringList environment;
        QStringList languages;
        const char* table;
    } cases[] = {
        {{"LANGUAGE=de"}, {"de"}, "de"},
        {{"LANG=de_DE.UTF-8"}, {"de_DE"}, "de"},
        {{"LANGUAGE=", "LANG=de_DE.UTF-8"}, {"de_DE"}, "de"},
        {{"LANGUAGE=fr:de", "LANG=en_US.UTF-8"}, {"fr", "de", "en_US"}, "de"},
        {{"LANGUAGE=en:de"}, {"en", "de"}, "en"},
        {{"LANGUAGE=en_GB:de"}, {"en_GB", "de"}, "en"},
        {{"LANGUAGE=:de:"}, {"de"}, "de"},
        {{"LANGUAGE=de", "LC_ALL=C.UTF-8"}, {"de", "en"}, "de"},
        {{"LC_ALL=de_AT.UTF-8@euro"}, {"de_AT"}, "de"},
        {{"LC_MESSAGES=de_CH.UTF-8", "LANG=en_GB.UTF-8"}, {"de_CH"}, "de"},
        {{"LC_ALL=en_US.UTF-8", "LC_MESSAGES=de_DE.UTF-8"}, {"en_US"}, "en"},
        {{"LANG=fr_FR.UTF-8"}, {"fr_FR"}, "en"},
        {{"LANG=POSIX"}, {"en"}, "en"},
        {{"LANG=C", "LANGUAGE=fr"}, {"fr", "en"}, "en"},
        {{}, {}, "en"},
    };
    for (const auto& c : cases) {
        const QStringList languages = preferredLanguages(environment(c.environment));
        EXPECT_EQ(languages, c.languages) << c.environment.join(' ').toStdString();
        EXPECT_EQ(tableLanguage(languages), QString::fromLatin1(c.table))
            << c.environment.join(' ').toStdString();
    }
}

TEST_F(GermanTables, textsComeFromTheGermanTableWithGermanPlurals)
{
    EXPECT_EQ(localized("result.cancel"), QStringLiteral("Abbrechen"));
    EXPECT_EQ(localizedCount("result.found", 1), QStringLiteral("1 Pause gefunden"));
    EXPECT_EQ(localizedCount("result.found", 0), QStringLiteral("0 Pausen gefunden"));
    EXPECT_EQ(localizedCount("result.found", 12), QStringLiteral("12 Pausen gefunden"));
    EXPECT_EQ(localizedCount("batch.summary.files", 1), QStringLiteral("1 Datei"));
    EXPECT_EQ(localizedCount("batch.summary.files", 2), QStringLiteral("2 Dateien"));
    // Keys made at run time find their texts too.
    for (const Sensitivity sensitivity : SensitivityPresets::allCases) {
        const QString raw = SensitivityPresets::rawValue(sensitivity);
        EXPECT_NE(SensitivityPresets::title(sensitivity), "sensitivity." + raw);
        EXPECT_NE(SensitivityPresets::hint(sensitivity), "sensitivity." + raw + ".hint");
    }
    EXPECT_EQ(SensitivityPresets::title(Sensitivity::delicate), QStringLiteral("Behutsam"));

    installStringTables(QStringLiteral("en"));
    EXPECT_EQ(localized("result.cancel"), QStringLiteral("Cancel"));
    EXPECT_EQ(localizedCount("result.found", 1), QStringLiteral("1 pause found"));
}

TEST_F(GermanTables, qtsOwnButtonsAreGermanWhenItsTranslationsAreInstalled)
{
    const QString qtTables = QLibraryInfo::path(QLibraryInfo::TranslationsPath);
    if (!QFile::exists(QDir(qtTables).filePath("qtbase_de.qm")))
        GTEST_SKIP() << "Qt's translations are not installed in " << qtTables.toStdString();
    EXPECT_EQ(QCoreApplication::translate("QPlatformTheme", "Cancel"), QStringLiteral("Abbrechen"));
    installStringTables(QStringLiteral("en"));
    EXPECT_EQ(QCoreApplication::translate("QPlatformTheme", "Cancel"), QStringLiteral("Cancel"));
}

TEST(LanguageChoice, theProgramSpeaksTheLanguageOfItsLocale)
{
    // The command-line mode reports in the language of the environment.
    const QString silentFilm = Fixtures::makeWithFfmpeg(
        "language-no-sound.mp4", {"-f", "lavfi", "-i", "testsrc2=size=64x48:rate=10:duration=1",
                                  "-c:v", "libx264", "-preset", "veryfast", "-pix_fmt", "yuv420p"});
    QProcess process;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.remove("LANGUAGE");
    env.remove("LC_ALL");
    env.remove("LC_MESSAGES");
    env.insert("LANG", "de_DE.UTF-8");
    process.setProcessEnvironment(env);
    process.start(QStringLiteral(HUSHPANE_BINARY),
                  {"--cli", silentFilm, QDir::temp().filePath("language-test-output.mp4")});
    ASSERT_TRUE(process.waitForFinished(60000));
    const QString output = QString::fromUtf8(process.readAllStandardOutput());
    EXPECT_EQ(process.exitCode(), 1);
    EXPECT_TRUE(output.contains("error: Diese Datei hat keinen Ton, mit dem sich arbeiten ließe."))
        << output.toStdString();
}
