#include "ModelTestFixture.h"

#include "Completion.h"
#include "Fixtures.h"
#include "FormatTime.h"
#include "Localization.h"
#include "Stats.h"
#include "TidleEngine.h"
#include "TidleError.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

using Phase = AppModel::Phase;

QByteArray contents(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// The spoken fixture, analysed and ready; notifications are collected instead of shown.
class SaveTest : public ModelTest {
protected:
    void SetUp() override
    {
        ModelTest::SetUp();
        Completion::setDelivery([this](const QString& title, const QString& body) {
            m_announcements.push_back({title, body});
        });
        ASSERT_TRUE(m_folder.isValid());
        m_input = m_folder.filePath("talk.wav");
        ASSERT_TRUE(QFile::copy(Recordings::speechWithPauses(), m_input));
        makeModel();
        ASSERT_TRUE(loadAndWait(m_input));
        ASSERT_EQ(m_model->phase(), Phase::ready) << m_model->errorMessage().toStdString();
    }
    void TearDown() override
    {
        ModelTest::TearDown();
        Completion::setDelivery({});
    }

    bool saveEnded()
    {
        return waitUntil([this] { return m_model->phase() != Phase::encoding; });
    }

    QStringList folderEntries() const
    {
        return QDir(m_folder.path()).entryList(QDir::Files | QDir::Hidden | QDir::NoDotAndDotDot);
    }

    QTemporaryDir m_folder;
    QString m_input;
    std::vector<std::pair<QString, QString>> m_announcements;
};

// Each failure keeps the plan, the input and the time saved as they were.
TEST_F(SaveTest, ASaveOntoTheInputOrIntoNoFolderFailsWithAMessage)
{
    const QByteArray inputContents = contents(m_input);
    const double totalBefore = Stats::totalSecondsSaved();
    const struct {
        QString output;
        QString message; // empty: any
    } rows[] = {
        // The model refuses the input at once; the engine refuses it under another name.
        {m_input, localized("error.overwrite")},
        {m_folder.path() + "/./talk.wav",
         TidleError::exportFailed(localized("diag.sameFile")).errorDescription()},
        {m_folder.filePath("no such folder/out.m4a"), {}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.output.toStdString());
        if (m_model->phase() != Phase::ready) {
            m_model->analyze();
            ASSERT_TRUE(analysisEnded());
        }
        m_model->toggleSilence(1);
        const std::vector<Segment> keeps = m_model->analysis()->keeps;
        m_model->tidle(QUrl::fromLocalFile(row.output));
        ASSERT_TRUE(saveEnded());

        EXPECT_EQ(m_model->phase(), Phase::failed);
        EXPECT_FALSE(m_model->errorMessage().isEmpty());
        if (!row.message.isEmpty())
            EXPECT_EQ(m_model->errorMessage(), row.message);
        EXPECT_TRUE(m_model->outputURL().isEmpty());
        EXPECT_EQ(m_model->analysis()->keeps, keeps);
        EXPECT_EQ(m_model->disabledSilences(), QSet<int>{1});
        m_model->tidle(QUrl::fromLocalFile(m_folder.filePath("after.m4a")));
        EXPECT_EQ(m_model->phase(), Phase::failed);
    }
    runEventLoop(300);
    EXPECT_EQ(contents(m_input), inputContents);
    EXPECT_EQ(Stats::totalSecondsSaved(), totalBefore);
    EXPECT_TRUE(m_announcements.empty());
    EXPECT_EQ(folderEntries(), QStringList{"talk.wav"});
}

// Saving starts only when ready, and what comes in while it runs waits. The new file holds the
// kept spans, the input is left as it was, and the time saved is counted and announced.
TEST_F(SaveTest, ASaveWaitsItsTurnAndIsCountedAndAnnounced)
{
    const auto output = [this](const char* name) {
        return QUrl::fromLocalFile(m_folder.filePath(name));
    };
    m_model->analyze();
    m_model->tidle(output("analysing.m4a"));
    EXPECT_EQ(m_model->phase(), Phase::analyzing);
    ASSERT_TRUE(analysisEnded());

    const Analysis analysis = *m_model->analysis();
    const double totalBefore = Stats::totalSecondsSaved();
    const QByteArray inputContents = contents(m_input);
    m_player->setPlaying(true);
    ASSERT_TRUE(waitUntil([this] { return m_model->isPlaying(); }));
    double lastProgress = -1.0;
    QObject::connect(m_model.get(), &AppModel::progressChanged, m_model.get(),
                     [&] { lastProgress = m_model->progress(); });
    const QUrl saved = output("talk (no pauses).m4a");
    m_model->tidle(saved);
    EXPECT_EQ(m_model->progress(), 0.0);
    EXPECT_FALSE(m_player->playing);

    const QUrl other = QUrl::fromLocalFile(Recordings::steadyTone());
    m_model->load(other);
    m_model->analyze();
    m_model->clear();
    m_model->cancelAnalysis();
    m_model->tidle(output("while saving.m4a"));
    EXPECT_EQ(m_model->phase(), Phase::encoding);
    EXPECT_EQ(m_model->inputURL(), QUrl::fromLocalFile(m_input));
    EXPECT_NE(m_player->source, other);
    ASSERT_TRUE(saveEnded());
    ASSERT_EQ(m_model->phase(), Phase::done) << m_model->errorMessage().toStdString();
    EXPECT_EQ(m_model->outputURL(), saved);
    EXPECT_EQ(lastProgress, 1.0);
    EXPECT_NEAR(Fixtures::probeDuration(saved.toLocalFile()), analysis.keptSeconds(), 0.1);
    EXPECT_EQ(contents(m_input), inputContents);
    const double removed = analysis.removedSeconds();
    ASSERT_GT(removed, 2.0);
    EXPECT_NEAR(Stats::totalSecondsSaved() - totalBefore, removed, 1e-9);
    ASSERT_EQ(m_announcements.size(), 1u);
    EXPECT_EQ(m_announcements[0].first, localized("notify.video.title"));
    EXPECT_EQ(m_announcements[0].second,
              localized("notify.video.body").arg("talk (no pauses).m4a", formatTime(removed)));

    // A saved plan is saved again only once it has changed.
    m_model->tidle(output("unchanged.m4a"));
    EXPECT_EQ(m_model->phase(), Phase::done);
    m_model->toggleSilence(0);
    EXPECT_EQ(m_model->phase(), Phase::ready);
    EXPECT_TRUE(m_model->outputURL().isEmpty());
    m_model->toggleSilence(0);
    m_model->tidle(output("second.m4a"));
    ASSERT_TRUE(saveEnded());
    EXPECT_EQ(m_model->phase(), Phase::done);

    m_model->clear();
    m_model->tidle(output("idle.m4a"));
    EXPECT_EQ(m_model->phase(), Phase::idle);
    runEventLoop(300);
    EXPECT_EQ(folderEntries(), (QStringList{"second.m4a", "talk (no pauses).m4a", "talk.wav"}));
    EXPECT_EQ(m_announcements.size(), 2u);
}

// The long recording gives time to cancel, and then to drop the model while its file is still
// being written: that save is finished, not cancelled, and still counts.
TEST_F(SaveTest, ACancelledSaveLeavesNoFileAndASaveOutlivesItsModel)
{
    ASSERT_TRUE(loadAndWait(Recordings::longVideo()));
    ASSERT_EQ(m_model->phase(), Phase::ready) << m_model->errorMessage().toStdString();
    ASSERT_TRUE(m_model->settings().frameAccurate);
    const QStringList entriesBefore = folderEntries();
    const double totalBefore = Stats::totalSecondsSaved();
    bool cancel = true;
    QObject::connect(m_model.get(), &AppModel::progressChanged, m_model.get(), [&] {
        if (cancel && m_model->phase() == Phase::encoding && m_model->progress() < 1.0)
            m_model->engine()->cancel();
    });
    const QUrl output = QUrl::fromLocalFile(m_folder.filePath("cut.mp4"));
    m_model->tidle(output);
    ASSERT_TRUE(saveEnded());

    EXPECT_EQ(m_model->phase(), Phase::ready);
    EXPECT_TRUE(m_model->errorMessage().isEmpty());
    EXPECT_TRUE(m_model->outputURL().isEmpty());
    runEventLoop(300);
    EXPECT_EQ(folderEntries(), entriesBefore);
    EXPECT_EQ(Stats::totalSecondsSaved(), totalBefore);
    EXPECT_TRUE(m_announcements.empty());

    cancel = false;
    const double removed = m_model->analysis()->removedSeconds();
    const double kept = m_model->analysis()->keptSeconds();
    m_model->tidle(output);
    ASSERT_TRUE(waitUntil([this] { return m_model->progress() > 0.0; }));
    ASSERT_EQ(m_model->phase(), Phase::encoding);
    m_model.reset();
    ASSERT_TRUE(waitUntil([&] { return !m_announcements.empty(); }));
    EXPECT_NEAR(Fixtures::probeDuration(output.toLocalFile()), kept, 0.1);
    EXPECT_NEAR(Stats::totalSecondsSaved() - totalBefore, removed, 1e-9);
    ASSERT_EQ(m_announcements.size(), 1u);
    EXPECT_TRUE(m_announcements[0].second.startsWith("cut.mp4"));
}

} // namespace
