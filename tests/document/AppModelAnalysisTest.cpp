#include "ModelTestFixture.h"

#include "Fixtures.h"
#include "LaunchLocations.h"
#include "PreferenceStore.h"
#include "RecentDocuments.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

using Phase = AppModel::Phase;

const std::vector<Segment> toneKeeps = {{1.0, 4.0}, {6.0, 9.0}};

QByteArray contents(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

using AnalysisTest = ModelTest;

TEST_F(AnalysisTest, LoadingAFileAnalysesItOrSaysWhyNotAndNotesItAsRecent)
{
    makeModel();
    ASSERT_TRUE(loadAndWait(Recordings::brokenFile()));
    EXPECT_EQ(m_model->phase(), Phase::failed);
    EXPECT_FALSE(m_model->errorMessage().isEmpty());
    EXPECT_FALSE(m_model->analysis());
    EXPECT_EQ(m_model->engine(), nullptr);

    const QString speech = Recordings::speechWithPauses();
    const QUrl url = QUrl::fromLocalFile(speech);
    ASSERT_TRUE(loadAndWait(speech));
    ASSERT_EQ(m_model->phase(), Phase::ready) << m_model->errorMessage().toStdString();
    EXPECT_TRUE(m_model->errorMessage().isEmpty());
    EXPECT_EQ(m_model->inputURL(), url);
    EXPECT_EQ(m_player->source, url);
    ASSERT_TRUE(m_model->analysis());
    EXPECT_NEAR(m_model->analysis()->duration, Fixtures::probeDuration(speech), 0.05);
    // Two gaps of 1.5 s between the sentences, whatever quiet espeak leaves at the ends.
    EXPECT_GE(m_model->analysis()->silences.size(), 2u);
    EXPECT_NE(m_model->engine(), nullptr);
    EXPECT_GT(m_model->analysisProgress(), 0.0);
    EXPECT_LE(m_model->analysisProgress(), 1.0);

    // Loaded again, it is analysed again and stays one entry of the list.
    ASSERT_TRUE(loadAndWait(speech));
    EXPECT_EQ(m_analysesStarted, 3);
    const QString href = QString::fromUtf8(url.toEncoded());
    const Fixtures::ProcessResult entries =
        Fixtures::run("xmllint", {"--xpath", "count(/xbel/bookmark[@href='" + href + "'])",
                                  RecentDocuments::listPath()});
    EXPECT_EQ(entries.standardOutput.trimmed(), "1");
}

// Padding assignments in a row; `same` assigns the current settings again, `pause` waits for
// the analysis the changes so far start.
TEST_F(AnalysisTest, SettingsChangesCloseTogetherStartOneAnalysisAndOnlyWhenChanged)
{
    constexpr double same = -1.0;
    constexpr double pause = -2.0;
    const struct {
        const char* what;
        bool withFile;
        std::vector<double> steps;
        int analyses;
    } rows[] = {
        {"two changes close together", true, {0.2, 0.25}, 1},
        {"there and back again", true, {0.2, 0.15}, 1},
        {"the first assignment counts even unchanged", true, {same}, 1},
        {"the value that passed last is no change", true, {0.2, pause, 0.2, same}, 1},
        {"a change after the quiet moment", true, {0.2, pause, 0.3}, 2},
        {"without a file", false, {0.3}, 0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        makeModel();
        if (row.withFile) {
            ASSERT_TRUE(loadAndWait(Recordings::steadyTone()));
        }
        m_analysesStarted = 0;
        for (double step : row.steps) {
            if (step == pause) {
                runEventLoop(AppModel::analyzeDelayMs + 200);
                ASSERT_TRUE(analysisEnded());
            } else if (step == same) {
                m_model->setSettings(m_model->settings());
            } else {
                setPadding(step);
                runEventLoop(50);
            }
        }
        runEventLoop(AppModel::analyzeDelayMs + 300);
        ASSERT_TRUE(analysisEnded());
        EXPECT_EQ(m_analysesStarted, row.analyses);
        EXPECT_EQ(m_model->phase(), row.withFile ? Phase::ready : Phase::idle);
    }
}

TEST_F(AnalysisTest, APresetSetsItsNumbersOnceAndCustomOnlyOpensTheSliders)
{
    const struct {
        Sensitivity preset;
        TidleSettings expected;
        bool showAdvanced;
        int analyses;
    } rows[] = {
        {Sensitivity::aggressive, {-30.0, 0.4, 0.1, false}, false, 1},
        {Sensitivity::delicate, {-45.0, 1.0, 0.25, false}, false, 1},
        {Sensitivity::custom, {-35.0, 0.6, 0.15, false}, true, 0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(SensitivityPresets::rawValue(row.preset).toStdString());
        EditorPreferences preferences;
        preferences.settings.frameAccurate = false;
        makeModel(preferences);
        ASSERT_TRUE(loadAndWait(Recordings::steadyTone()));
        m_analysesStarted = 0;
        m_model->setSensitivity(row.preset);
        EXPECT_EQ(m_model->sensitivity(), row.preset);
        EXPECT_EQ(m_model->settings(), row.expected);
        EXPECT_EQ(m_model->showAdvanced(), row.showAdvanced);
        runEventLoop(AppModel::analyzeDelayMs + 500);
        ASSERT_TRUE(analysisEnded());
        EXPECT_EQ(m_analysesStarted, row.analyses);
    }
}

TEST_F(AnalysisTest, PreferencesAreWrittenOnceAfterABurstOfChanges)
{
    makeModel();
    // The values just loaded are written back once, repairing what the store held.
    PreferenceStore().setValue("pref.sensitivity", "Standard");
    PreferenceStore().setValue("pref.frameAccurate", "maybe");
    runEventLoop(AppModel::saveDelayMs + 300);
    EXPECT_EQ(PreferenceStore().value("pref.sensitivity").toString(), "standard");
    EXPECT_EQ(PreferenceStore().boolean("pref.frameAccurate"), std::optional<bool>(true));

    // A preset is four assignments; none of them writes until the burst is over.
    m_model->setSkipPausesInPreview(false);
    m_model->setSensitivity(Sensitivity::delicate);
    EditorPreferences stored;
    Prefs::load(stored);
    EXPECT_TRUE(stored.skipPausesInPreview);
    EXPECT_EQ(stored.sensitivity, Sensitivity::standard);
    EXPECT_EQ(stored.settings.padding, 0.15);

    runEventLoop(AppModel::saveDelayMs + 300);
    Prefs::load(stored);
    EXPECT_FALSE(stored.skipPausesInPreview);
    EXPECT_EQ(stored.sensitivity, Sensitivity::delicate);
    EXPECT_EQ(stored.settings, (TidleSettings{-45.0, 1.0, 0.25, true}));

    // Custom changes no number and is written all the same.
    m_model->setSensitivity(Sensitivity::custom);
    runEventLoop(AppModel::saveDelayMs + 300);
    Prefs::load(stored);
    EXPECT_EQ(stored.sensitivity, Sensitivity::custom);
}

// Behind a stalled recording the worker has not started the next analysis when a newer
// request or a cancel comes; the engine forgets that cancel, so the older result surely arrives.
TEST_F(AnalysisTest, OlderResultsArriveAndAreDroppedForANewerRequestOrACancel)
{
    for (bool cancel : {false, true}) {
        SCOPED_TRACE(cancel ? "cancelled" : "newer request");
        StalledInput stalled;
        makeModel();
        m_model->load(QUrl::fromLocalFile(stalled.path()));
        m_model->load(QUrl::fromLocalFile(Recordings::steadyTone()));
        if (cancel) {
            m_model->cancelAnalysis();
        } else {
            setPadding(0.25);
            m_model->analyze();
        }
        stalled.release();
        if (!cancel)
            ASSERT_TRUE(waitUntil([this] { return m_model->phase() == Phase::ready; }));
        runEventLoop(cancel ? 1000 : 300);

        EXPECT_EQ(m_model->phase(), cancel ? Phase::idle : Phase::ready);
        EXPECT_TRUE(m_model->errorMessage().isEmpty());
        EXPECT_EQ(m_analysesInstalled, cancel ? 0 : 1);
        EXPECT_EQ(m_model->inputURL().isEmpty(), cancel);
        EXPECT_EQ(m_player->clears, cancel ? 1 : 0);
        if (!cancel)
            EXPECT_EQ(m_analysesStarted, 3);
    }
}

TEST_F(AnalysisTest, ACancelledOrFailedReAnalysisKeepsTheEarlierOne)
{
    for (bool cancel : {true, false}) {
        SCOPED_TRACE(cancel ? "cancelled" : "failed");
        QTemporaryDir folder;
        const QString input = folder.filePath("tone.wav");
        ASSERT_TRUE(QFile::copy(Recordings::toneWithGaps(), input));
        makeModel(withPadding(0.0));
        ASSERT_TRUE(loadAndWait(input));
        ASSERT_EQ(m_model->phase(), Phase::ready);
        m_model->toggleSilence(1);

        // The file turns into one that never finishes arriving, then into no recording.
        const int installed = m_analysesInstalled;
        StalledInput stalled(input);
        m_model->analyze();
        if (cancel) {
            m_model->cancelAnalysis();
            EXPECT_EQ(m_model->phase(), Phase::ready);
        }
        stalled.release();
        ASSERT_TRUE(analysisEnded());
        runEventLoop(300);

        EXPECT_EQ(m_model->phase(), cancel ? Phase::ready : Phase::failed);
        EXPECT_EQ(m_model->errorMessage().isEmpty(), cancel);
        EXPECT_EQ(m_analysesInstalled, installed);
        ASSERT_TRUE(m_model->analysis());
        expectSegmentsNear(m_model->analysis()->keeps, {{1.0, 9.0}});
        if (!cancel) {
            // Failed, the pauses cannot be toggled, but the given-back ones can be taken back.
            m_model->toggleSilence(0);
            EXPECT_EQ(m_model->disabledSilences(), QSet<int>{1});
        }
        m_model->resetSilenceOverrides();
        EXPECT_TRUE(m_model->disabledSilences().isEmpty());
        expectSegmentsNear(m_model->analysis()->keeps, toneKeeps);
    }
}

TEST_F(AnalysisTest, GivingBackPausesReplansWithTheCurrentPadding)
{
    makeModel(withPadding(0.0));
    ASSERT_TRUE(loadAndWait(Recordings::toneWithGaps()));
    ASSERT_EQ(m_model->phase(), Phase::ready);
    const Analysis engineResult = *m_model->analysis();
    expectSegmentsNear(engineResult.silences, {{0.0, 1.0}, {4.0, 6.0}, {9.0, 30.0}});
    expectSegmentsNear(engineResult.keeps, toneKeeps);
    int announcements = 0;
    QObject::connect(m_model.get(), &AppModel::disabledSilencesChanged, m_model.get(),
                     [&announcements] { ++announcements; });

    for (int index : {-1, 3, 8})
        m_model->toggleSilence(index);
    m_model->resetSilenceOverrides();
    EXPECT_EQ(announcements, 0);

    m_model->toggleSilence(1);
    EXPECT_EQ(m_model->disabledSilences(), QSet<int>{1});
    expectSegmentsNear(m_model->analysis()->keeps, {{1.0, 9.0}});
    EXPECT_EQ(m_model->analysis()->silences, engineResult.silences);
    EXPECT_EQ(m_model->analysis()->levels, engineResult.levels);
    m_model->toggleSilence(1);
    EXPECT_TRUE(m_model->disabledSilences().isEmpty());
    EXPECT_EQ(m_model->analysis()->keeps, engineResult.keeps);

    m_model->toggleSilence(0);
    m_model->toggleSilence(1);
    expectSegmentsNear(m_model->analysis()->keeps, {{0.0, 9.0}});
    m_model->resetSilenceOverrides();
    EXPECT_TRUE(m_model->disabledSilences().isEmpty());
    expectSegmentsNear(m_model->analysis()->keeps, toneKeeps);

    // The padding counts as it is now; a quarter second before the first cut is still kept.
    setPadding(0.25);
    m_model->toggleSilence(2);
    expectSegmentsNear(m_model->analysis()->keeps, {{0.0, 0.25}, {0.75, 4.25}, {5.75, 30.0}});

    // Toggles wait for a running analysis, whose result forgets the given-back pauses.
    m_model->analyze();
    ASSERT_EQ(m_model->phase(), Phase::analyzing);
    m_model->toggleSilence(0);
    EXPECT_EQ(m_model->disabledSilences(), QSet<int>{2});
    ASSERT_TRUE(analysisEnded());
    EXPECT_TRUE(m_model->disabledSilences().isEmpty());
    expectSegmentsNear(m_model->analysis()->keeps,
                       {{0.0, 0.25}, {0.75, 4.25}, {5.75, 9.25}, {29.75, 30.0}});
}

TEST_F(AnalysisTest, AModelStartsEmptyAndLoadsTheLaunchFileUnlessItIsGone)
{
    QTemporaryDir folder;
    const QString launchFile = folder.filePath("launch.wav");
    ASSERT_TRUE(QFile::copy(Recordings::steadyTone(), launchFile));
    initialFileURL = QUrl::fromLocalFile(launchFile);
    makeModel();
    m_model.reset();
    runEventLoop(200);
    // A load would have noted the file as recently used.
    EXPECT_FALSE(contents(RecentDocuments::listPath()).contains("launch.wav"));

    // A new model starts empty, with the stored preferences.
    EditorPreferences stored;
    stored.sensitivity = Sensitivity::aggressive;
    stored.settings = {-28.0, 0.45, 0.12, false};
    stored.skipPausesInPreview = false;
    makeModel(stored);
    initialFileURL.reset();
    EXPECT_EQ(m_model->phase(), Phase::idle);
    EXPECT_TRUE(m_model->inputURL().isEmpty());
    EXPECT_FALSE(m_model->analysis());
    EXPECT_EQ(m_model->sensitivity(), Sensitivity::aggressive);
    EXPECT_EQ(m_model->settings(), stored.settings);
    EXPECT_FALSE(m_model->skipPausesInPreview());
    ASSERT_TRUE(waitUntil([this] { return m_model->phase() == Phase::ready; }));
    EXPECT_EQ(m_model->inputURL(), QUrl::fromLocalFile(launchFile));
}

// The sanitizers fail this test if a step posted by the worker reaches the freed model.
TEST_F(AnalysisTest, AModelGoneDuringItsAnalysisDropsTheResult)
{
    makeModel();
    m_model->load(QUrl::fromLocalFile(Recordings::speechWithPauses()));
    ASSERT_EQ(m_model->phase(), Phase::analyzing);
    m_model.reset();
    runEventLoop(500);
    EXPECT_EQ(m_analysesInstalled, 0);
}

} // namespace
