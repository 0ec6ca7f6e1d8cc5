#include "ModelTestFixture.h"

#include "Fixtures.h"
#include "LaunchLocations.h"
#include "PreferenceStore.h"
#include "RecentDocuments.h"
#include "TidleEngine.h"

#include <QFile>
#include <QTemporaryDir>
#include <QThread>
#include <gtest/gtest.h>

namespace {

using Phase = AppModel::Phase;

const std::vector<Segment> toneKeeps = {{1.0, 4.0}, {6.0, 9.0}};

void expectSegmentsNear(const std::vector<Segment>& actual, const std::vector<Segment>& expected)
{
    ASSERT_EQ(actual.size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        EXPECT_NEAR(actual[i].start, expected[i].start, 1e-9) << "segment " << i;
        EXPECT_NEAR(actual[i].end, expected[i].end, 1e-9) << "segment " << i;
    }
}

// The worker finishes a short file well within this; the GUI thread sleeps through it, so
// the result waits in the event queue behind whatever the test does next.
void letTheWorkerFinish()
{
    QThread::msleep(3000);
}

QByteArray contents(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool copyFile(const QString& from, const QString& to)
{
    QFile::remove(to);
    return QFile::copy(from, to);
}

bool overwrite(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly | QIODevice::Truncate) &&
           file.write(bytes) == bytes.size();
}

using AnalysisTest = ModelTest;

TEST_F(AnalysisTest, StartsEmptyWithStoredPreferences)
{
    EditorPreferences stored;
    stored.sensitivity = Sensitivity::aggressive;
    stored.settings = {-28.0, 0.45, 0.12, false};
    stored.skipPausesInPreview = false;
    makeModel(stored);

    EXPECT_EQ(m_model->phase(), Phase::idle);
    EXPECT_TRUE(m_model->inputURL().isEmpty());
    EXPECT_FALSE(m_model->analysis());
    EXPECT_EQ(m_model->sensitivity(), Sensitivity::aggressive);
    EXPECT_EQ(m_model->settings(), stored.settings);
    EXPECT_FALSE(m_model->skipPausesInPreview());
    EXPECT_FALSE(m_model->showAdvanced());
    EXPECT_EQ(m_model->engine(), nullptr);
    // Loaded values are no change: nothing starts an analysis, not even with a file later.
    runEventLoop(AppModel::analyzeDelayMs + 200);
    EXPECT_EQ(m_analysesStarted, 0);
}

TEST_F(AnalysisTest, LoadingAFileAnalysesItAndNotesItAsRecent)
{
    makeModel();
    const QString speech = DocumentFixtures::speechWithPauses();
    const QUrl url = QUrl::fromLocalFile(speech);
    ASSERT_TRUE(loadAndWait(speech));

    ASSERT_EQ(m_model->phase(), Phase::ready) << m_model->errorMessage().toStdString();
    EXPECT_EQ(m_model->inputURL(), url);
    EXPECT_EQ(m_player->source, url);
    ASSERT_TRUE(m_model->analysis());
    const Analysis& analysis = *m_model->analysis();
    EXPECT_NEAR(analysis.duration, Fixtures::probeDuration(speech), 0.05);
    // Two gaps of 1.5 s between the sentences, whatever quiet espeak leaves at the ends.
    EXPECT_GE(analysis.silences.size(), 2u);
    EXPECT_GE(analysis.keeps.size(), 3u);
    EXPECT_TRUE(m_model->disabledSilences().isEmpty());
    EXPECT_NE(m_model->engine(), nullptr);
    EXPECT_TRUE(m_model->errorMessage().isEmpty());
    EXPECT_GT(m_model->analysisProgress(), 0.0);
    EXPECT_LE(m_model->analysisProgress(), 1.0);
    EXPECT_EQ(m_analysesStarted, 1);

    ASSERT_TRUE(loadAndWait(speech));
    EXPECT_EQ(m_model->phase(), Phase::ready);
    const QString href = QString::fromUtf8(url.toEncoded());
    const Fixtures::ProcessResult entries =
        Fixtures::run("xmllint", {"--xpath", "count(/xbel/bookmark[@href='" + href + "'])",
                                  RecentDocuments::listPath()});
    EXPECT_EQ(entries.standardOutput.trimmed(), "1");
}

TEST_F(AnalysisTest, ABrokenFileFailsWithAMessage)
{
    makeModel();
    ASSERT_TRUE(loadAndWait(DocumentFixtures::brokenFile()));
    EXPECT_EQ(m_model->phase(), Phase::failed);
    EXPECT_FALSE(m_model->errorMessage().isEmpty());
    EXPECT_FALSE(m_model->analysis());
    EXPECT_EQ(m_model->engine(), nullptr);
}

TEST_F(AnalysisTest, SettingsChangesCloseTogetherGiveOneAnalysis)
{
    makeModel();
    ASSERT_TRUE(loadAndWait(DocumentFixtures::shortSine()));
    m_analysesStarted = 0;

    setPadding(0.2);
    runEventLoop(200);
    setPadding(0.25);
    runEventLoop(AppModel::analyzeDelayMs + 500);
    ASSERT_TRUE(analysisEnded());
    EXPECT_EQ(m_analysesStarted, 1);
    EXPECT_EQ(m_model->phase(), Phase::ready);
}

TEST_F(AnalysisTest, OnlyChangedSettingsStartAnAnalysis)
{
    makeModel();
    ASSERT_TRUE(loadAndWait(DocumentFixtures::shortSine()));
    m_analysesStarted = 0;

    // There and back again: both assignments differ from the one before.
    setPadding(0.2);
    setPadding(0.15);
    runEventLoop(AppModel::analyzeDelayMs + 500);
    ASSERT_TRUE(analysisEnded());
    EXPECT_EQ(m_analysesStarted, 1);

    // The same value as the last one that passed.
    setPadding(0.15);
    m_model->setSettings(m_model->settings());
    runEventLoop(AppModel::analyzeDelayMs + 500);
    EXPECT_EQ(m_analysesStarted, 1);
}

TEST_F(AnalysisTest, TheFirstSettingsAssignmentAlwaysCounts)
{
    makeModel();
    ASSERT_TRUE(loadAndWait(DocumentFixtures::shortSine()));
    m_analysesStarted = 0;
    m_model->setSettings(m_model->settings());
    runEventLoop(AppModel::analyzeDelayMs + 500);
    ASSERT_TRUE(analysisEnded());
    EXPECT_EQ(m_analysesStarted, 1);
}

TEST_F(AnalysisTest, SettingsChangesWithoutAFileDoNothing)
{
    makeModel();
    setPadding(0.3);
    runEventLoop(AppModel::analyzeDelayMs + 300);
    EXPECT_EQ(m_analysesStarted, 0);
    EXPECT_EQ(m_model->phase(), Phase::idle);
}

TEST_F(AnalysisTest, ChoosingAPresetSetsItsNumbersOnce)
{
    makeModel();
    ASSERT_TRUE(loadAndWait(DocumentFixtures::shortSine()));
    m_analysesStarted = 0;
    const bool frameAccurate = m_model->settings().frameAccurate;

    m_model->setSensitivity(Sensitivity::aggressive);
    EXPECT_EQ(m_model->sensitivity(), Sensitivity::aggressive);
    EXPECT_EQ(m_model->settings(), (TidleSettings{-30.0, 0.4, 0.1, frameAccurate}));
    EXPECT_FALSE(m_model->showAdvanced());
    runEventLoop(AppModel::analyzeDelayMs + 500);
    ASSERT_TRUE(analysisEnded());
    EXPECT_EQ(m_analysesStarted, 1);
}

TEST_F(AnalysisTest, ChoosingCustomOpensTheAdvancedSettingsOnly)
{
    makeModel();
    ASSERT_TRUE(loadAndWait(DocumentFixtures::shortSine()));
    m_analysesStarted = 0;
    const TidleSettings before = m_model->settings();

    m_model->setSensitivity(Sensitivity::custom);
    EXPECT_EQ(m_model->sensitivity(), Sensitivity::custom);
    EXPECT_TRUE(m_model->showAdvanced());
    EXPECT_EQ(m_model->settings(), before);
    runEventLoop(AppModel::analyzeDelayMs + 300);
    EXPECT_EQ(m_analysesStarted, 0);
}

TEST_F(AnalysisTest, ChangesAreStoredAfterAQuietMoment)
{
    makeModel();
    m_model->setSkipPausesInPreview(false);
    m_model->setSensitivity(Sensitivity::delicate);
    runEventLoop(AppModel::saveDelayMs + 300);

    EditorPreferences stored;
    Prefs::load(stored);
    EXPECT_FALSE(stored.skipPausesInPreview);
    EXPECT_EQ(stored.sensitivity, Sensitivity::delicate);
    EXPECT_EQ(stored.settings, (TidleSettings{-45.0, 1.0, 0.25, true}));
}

TEST_F(AnalysisTest, TheLoadedValuesAreWrittenBackOnceAfterStart)
{
    makeModel();
    PreferenceStore().setValue("pref.sensitivity", "Standard");
    PreferenceStore().setValue("pref.frameAccurate", "maybe");
    runEventLoop(AppModel::saveDelayMs + 300);

    const PreferenceStore store;
    EXPECT_EQ(store.value("pref.sensitivity").toString(), "standard");
    EXPECT_EQ(store.boolean("pref.frameAccurate"), std::optional<bool>(true));
}

TEST_F(AnalysisTest, WithoutAnAnalysisPlayStartsWhereThePlayerStands)
{
    makeModel();
    m_model->seek(29.95);
    m_model->togglePlayback();
    EXPECT_EQ(m_player->seeks, std::vector<double>{29.95});
    EXPECT_EQ(m_player->plays, 1);
    EXPECT_EQ(m_model->playhead(), 29.95);
}

TEST_F(AnalysisTest, AnOlderResultIsDroppedForANewerRequest)
{
    makeModel();
    m_model->load(QUrl::fromLocalFile(DocumentFixtures::shortSine()));
    letTheWorkerFinish();
    m_model->analyze();

    ASSERT_TRUE(analysisEnded());
    EXPECT_EQ(m_model->phase(), Phase::ready);
    runEventLoop(300);
    EXPECT_EQ(m_analysesStarted, 2);
    EXPECT_EQ(m_analysesInstalled, 1);
}

TEST_F(AnalysisTest, CancellingTheFirstAnalysisClosesTheFile)
{
    makeModel();
    m_model->load(QUrl::fromLocalFile(DocumentFixtures::shortSine()));
    letTheWorkerFinish();
    m_model->cancelAnalysis();
    runEventLoop(300);

    EXPECT_EQ(m_model->phase(), Phase::idle);
    EXPECT_TRUE(m_model->inputURL().isEmpty());
    EXPECT_FALSE(m_model->analysis());
    EXPECT_EQ(m_analysesInstalled, 0);
    EXPECT_EQ(m_player->clears, 1);
}

TEST_F(AnalysisTest, CancellingAReAnalysisKeepsTheEarlierOne)
{
    makeModel(withPadding(0.0));
    ASSERT_TRUE(loadAndWait(DocumentFixtures::toneWithGaps()));
    ASSERT_EQ(m_model->phase(), Phase::ready);
    expectSegmentsNear(m_model->analysis()->keeps, toneKeeps);

    setPadding(0.5);
    ASSERT_TRUE(waitUntil([this] { return m_model->phase() == Phase::analyzing; }));
    letTheWorkerFinish();
    m_model->cancelAnalysis();
    EXPECT_EQ(m_model->phase(), Phase::ready);
    runEventLoop(300);

    EXPECT_EQ(m_model->phase(), Phase::ready);
    EXPECT_EQ(m_analysesInstalled, 1);
    expectSegmentsNear(m_model->analysis()->keeps, toneKeeps);
}

TEST_F(AnalysisTest, AFailedReAnalysisKeepsTheEarlierOne)
{
    QTemporaryDir folder;
    const QString copy = folder.filePath("tone.wav");
    ASSERT_TRUE(copyFile(DocumentFixtures::toneWithGaps(), copy));
    makeModel(withPadding(0.0));
    ASSERT_TRUE(loadAndWait(copy));
    ASSERT_EQ(m_model->phase(), Phase::ready);
    m_model->toggleSilence(1);

    ASSERT_TRUE(overwrite(copy, contents(DocumentFixtures::brokenFile())));
    m_model->analyze();
    ASSERT_TRUE(analysisEnded());

    EXPECT_EQ(m_model->phase(), Phase::failed);
    EXPECT_FALSE(m_model->errorMessage().isEmpty());
    ASSERT_TRUE(m_model->analysis());
    expectSegmentsNear(m_model->analysis()->keeps, {{1.0, 9.0}});
    // In `failed` the pauses cannot be toggled, but the overrides can still be taken back.
    m_model->toggleSilence(0);
    EXPECT_EQ(m_model->disabledSilences(), QSet<int>{1});
    m_model->resetSilenceOverrides();
    EXPECT_TRUE(m_model->disabledSilences().isEmpty());
    expectSegmentsNear(m_model->analysis()->keeps, toneKeeps);
}

TEST_F(AnalysisTest, TogglingAPauseTwiceRestoresThePlan)
{
    makeModel(withPadding(0.0));
    ASSERT_TRUE(loadAndWait(DocumentFixtures::toneWithGaps()));
    ASSERT_EQ(m_model->phase(), Phase::ready);
    const Analysis engineResult = *m_model->analysis();
    expectSegmentsNear(engineResult.silences, {{0.0, 1.0}, {4.0, 6.0}, {9.0, 30.0}});
    expectSegmentsNear(engineResult.keeps, toneKeeps);

    m_model->toggleSilence(1);
    EXPECT_EQ(m_model->disabledSilences(), QSet<int>{1});
    expectSegmentsNear(m_model->analysis()->keeps, {{1.0, 9.0}});
    EXPECT_EQ(m_model->analysis()->silences, engineResult.silences);
    EXPECT_EQ(m_model->analysis()->levels, engineResult.levels);

    m_model->toggleSilence(1);
    EXPECT_TRUE(m_model->disabledSilences().isEmpty());
    EXPECT_EQ(m_model->analysis()->keeps, engineResult.keeps);
}

TEST_F(AnalysisTest, ReplanningUsesTheCurrentPadding)
{
    makeModel(withPadding(0.0));
    ASSERT_TRUE(loadAndWait(DocumentFixtures::toneWithGaps()));
    ASSERT_EQ(m_model->phase(), Phase::ready);
    setPadding(0.25);
    m_model->toggleSilence(2);
    // The quarter second left before the first cut is still long enough to keep.
    expectSegmentsNear(m_model->analysis()->keeps, {{0.0, 0.25}, {0.75, 4.25}, {5.75, 30.0}});
}

TEST_F(AnalysisTest, TogglesOutOfRangeAreIgnored)
{
    makeModel(withPadding(0.0));
    ASSERT_TRUE(loadAndWait(DocumentFixtures::toneWithGaps()));
    int announcements = 0;
    QObject::connect(m_model.get(), &AppModel::disabledSilencesChanged, m_model.get(),
                     [&announcements] { ++announcements; });
    const int count = static_cast<int>(m_model->analysis()->silences.size());
    for (int index : {-1, count, count + 5}) {
        m_model->toggleSilence(index);
        EXPECT_TRUE(m_model->disabledSilences().isEmpty()) << index;
    }
    EXPECT_EQ(announcements, 0);
    expectSegmentsNear(m_model->analysis()->keeps, toneKeeps);
}

TEST_F(AnalysisTest, TogglesWhileAnalysingAreIgnored)
{
    makeModel(withPadding(0.0));
    ASSERT_TRUE(loadAndWait(DocumentFixtures::toneWithGaps()));
    m_model->analyze();
    ASSERT_EQ(m_model->phase(), Phase::analyzing);
    m_model->toggleSilence(1);
    EXPECT_TRUE(m_model->disabledSilences().isEmpty());
    expectSegmentsNear(m_model->analysis()->keeps, toneKeeps);
    ASSERT_TRUE(analysisEnded());
}

TEST_F(AnalysisTest, ResetTakesBackEveryGivenBackPause)
{
    makeModel(withPadding(0.0));
    ASSERT_TRUE(loadAndWait(DocumentFixtures::toneWithGaps()));
    int announcements = 0;
    QObject::connect(m_model.get(), &AppModel::analysisChanged, m_model.get(),
                     [&announcements] { ++announcements; });
    m_model->resetSilenceOverrides();
    EXPECT_EQ(announcements, 0);

    m_model->toggleSilence(0);
    m_model->toggleSilence(1);
    expectSegmentsNear(m_model->analysis()->keeps, {{0.0, 9.0}});
    m_model->resetSilenceOverrides();
    EXPECT_TRUE(m_model->disabledSilences().isEmpty());
    expectSegmentsNear(m_model->analysis()->keeps, toneKeeps);
}

TEST_F(AnalysisTest, ANewAnalysisForgetsTheGivenBackPauses)
{
    makeModel(withPadding(0.0));
    ASSERT_TRUE(loadAndWait(DocumentFixtures::toneWithGaps()));
    m_model->toggleSilence(1);
    m_model->analyze();
    ASSERT_TRUE(analysisEnded());
    EXPECT_TRUE(m_model->disabledSilences().isEmpty());
    expectSegmentsNear(m_model->analysis()->keeps, toneKeeps);
}

TEST_F(AnalysisTest, ClearReturnsToTheEmptyState)
{
    makeModel(withPadding(0.0));
    ASSERT_TRUE(loadAndWait(DocumentFixtures::toneWithGaps()));
    const auto engine = m_model->engine();
    m_model->seek(3.0);
    m_model->clear();

    EXPECT_EQ(m_model->phase(), Phase::idle);
    EXPECT_TRUE(m_model->inputURL().isEmpty());
    EXPECT_FALSE(m_model->analysis());
    EXPECT_EQ(m_model->playhead(), 0.0);
    EXPECT_TRUE(m_player->source.isEmpty());
    EXPECT_EQ(m_model->engine(), engine);
    m_model->analyze();
    EXPECT_EQ(m_model->phase(), Phase::idle);
}

TEST_F(AnalysisTest, TheLaunchFileIsLoadedAfterConstruction)
{
    const QUrl url = QUrl::fromLocalFile(DocumentFixtures::shortSine());
    initialFileURL = url;
    makeModel();
    initialFileURL.reset();
    EXPECT_TRUE(m_model->inputURL().isEmpty());
    ASSERT_TRUE(waitUntil([this] { return m_model->phase() == Phase::ready; }));
    EXPECT_EQ(m_model->inputURL(), url);
}

TEST_F(AnalysisTest, AModelGoneBeforeItsLaunchFileLoadsDoesNothing)
{
    QTemporaryDir folder;
    const QString launchFile = folder.filePath("launch.wav");
    ASSERT_TRUE(copyFile(DocumentFixtures::shortSine(), launchFile));
    initialFileURL = QUrl::fromLocalFile(launchFile);
    makeModel();
    initialFileURL.reset();
    m_model.reset();
    runEventLoop(200);
    // A load would have noted the file as recently used.
    EXPECT_FALSE(contents(RecentDocuments::listPath()).contains("launch.wav"));
}

// The sanitizers fail this test if a step posted by the worker reaches the freed model.
TEST_F(AnalysisTest, AModelGoneDuringItsAnalysisDropsTheResult)
{
    makeModel();
    m_model->load(QUrl::fromLocalFile(DocumentFixtures::speechWithPauses()));
    ASSERT_EQ(m_model->phase(), Phase::analyzing);
    m_model.reset();
    runEventLoop(500);
    EXPECT_EQ(m_analysesInstalled, 0);
}

} // namespace
