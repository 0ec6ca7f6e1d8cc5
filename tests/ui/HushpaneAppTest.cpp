#include "AboutDialog.h"
#include "LaunchLocations.h"
#include "Localization.h"
#include "SingleInstance.h"
#include "Stats.h"
#include "WindowTestFixture.h"

#include <QAbstractButton>
#include <QApplication>
#include <QFile>
#include <QLabel>
#include <QMessageBox>
#include <QTimer>
#include <gtest/gtest.h>

namespace {

using Screen = ContentView::Screen;

class HushpaneAppTest : public WindowTest {
protected:
    void TearDown() override
    {
        initialFileURL.reset();
        initialBatchURL.reset();
        WindowTest::TearDown();
    }
};

TEST_F(HushpaneAppTest, OpenRequestsLoadOnlyRecordingsAndOnlyWithoutABatch)
{
    const QUrl text = copyInto(Recordings::brokenFile(), "notes.txt");
    m_app->handleOpenRequest(text);
    EXPECT_TRUE(model().inputURL().isEmpty());

    // A second launch's files come the same way.
    const QUrl movie = copyInto(Recordings::steadyTone(), "CLIP.MOV");
    m_app->handleLaunchRequest({{movie.toLocalFile()}, {}});
    EXPECT_EQ(model().inputURL(), movie);

    const QUrl tone = copyInto(Recordings::steadyTone(), "tone.wav");
    batch().setItems({tone});
    const QUrl other = copyInto(Recordings::steadyTone(), "other.wav");
    m_app->handleOpenRequest(other);
    EXPECT_EQ(model().inputURL(), movie);
    EXPECT_EQ(content()->currentScreen(), Screen::batch);
}

TEST_F(HushpaneAppTest, LaunchPathsFillTheBatchWhenTheWindowFirstShows)
{
    copyInto(Recordings::steadyTone(), "a.wav");
    copyInto(Recordings::steadyTone(), "b.m4a");
    initialBatchURL = QUrl::fromLocalFile(m_folder.path());
    EXPECT_TRUE(batch().items().isEmpty());
    m_app->show();
    EXPECT_EQ(batch().items().size(), 2);
    EXPECT_EQ(content()->currentScreen(), Screen::batch);
}

TEST_F(HushpaneAppTest, WithNobodyListeningALaunchIsTheFirstEvenOverALeftoverSocket)
{
    EXPECT_FALSE(SingleInstance(m_folder.filePath("nobody.socket")).handOver({{"x"}, {}}));
    const QString socket = m_folder.filePath("stale.socket");
    {
        QFile leftover(socket);
        ASSERT_TRUE(leftover.open(QIODevice::WriteOnly));
    }
    SingleInstance first(socket);
    EXPECT_FALSE(first.handOver({{"x"}, {}}));
    EXPECT_TRUE(first.listen());
}

TEST_F(HushpaneAppTest, TheHelpMenuOpensAboutWhoseCreditsFollowTheSavedTime)
{
    m_app->show();
    m_app->window().aboutAction()->trigger();
    AboutDialog* about = m_app->aboutDialog();
    ASSERT_NE(about, nullptr);
    EXPECT_TRUE(about->isVisible());
    const QString before = about->creditsLabel()->text();
    EXPECT_EQ(before, localized("about.credits").arg(Stats::savedDescription()));
    Stats::add(3 * 3600.0);
    m_app->showAbout();
    EXPECT_EQ(m_app->aboutDialog(), about);
    EXPECT_NE(about->creditsLabel()->text(), before);
    EXPECT_EQ(about->creditsLabel()->text(),
              localized("about.credits").arg(Stats::savedDescription()));
}

// Answers the question the window asks when it is closed during work.
void answerQuitQuestion(const QString& button)
{
    QTimer::singleShot(0, [button] {
        auto* question = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(question, nullptr);
        for (QAbstractButton* choice : question->buttons())
            if (choice->text() == button)
                choice->click();
    });
}

TEST_F(HushpaneAppTest, ClosingDuringASaveAsksAndQuittingLeavesNoFile)
{
    m_app->show();
    content()->accept({copyInto(Recordings::longVideo(), "lecture.mp4")});
    ASSERT_TRUE(waitUntil([&] { return model().phase() == AppModel::Phase::ready; }));
    const QString output = m_folder.filePath("lecture (no pauses).mp4");
    model().tidle(QUrl::fromLocalFile(output));
    ASSERT_EQ(model().phase(), AppModel::Phase::encoding);

    answerQuitQuestion(localized("quit.busy.keep"));
    EXPECT_FALSE(m_app->window().close());
    EXPECT_TRUE(m_app->window().isVisible());
    EXPECT_EQ(model().phase(), AppModel::Phase::encoding);

    answerQuitQuestion(localized("quit.busy.quit"));
    EXPECT_TRUE(m_app->window().close());
    ASSERT_TRUE(waitUntil([&] { return model().phase() != AppModel::Phase::encoding; }));
    EXPECT_EQ(model().phase(), AppModel::Phase::ready);
    EXPECT_FALSE(QFile::exists(output));
    // Idle, the window closes without a question.
    m_app->show();
    EXPECT_TRUE(m_app->window().close());
}

} // namespace
