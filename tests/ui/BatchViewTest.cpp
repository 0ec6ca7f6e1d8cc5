#include "BatchView.h"
#include "BatchRow.h"
#include "DocumentTestSupport.h"
#include "Fixtures.h"
#include "Localization.h"
#include "SegmentedPicker.h"
#include "WindowTestFixture.h"

#include <QDir>
#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>

namespace {

const QString minus = QString(QChar(0x2212));

struct RowCase {
    const char* name;
    BatchItem::Status status;
    QString trailing;
    bool spinner;
    bool reveal;
};

TEST(BatchRowTest, ShowsEveryStatusAndRevealsTheWrittenFile)
{
    const QUrl output = QUrl::fromLocalFile("/rec/out/talk (no pauses).m4a");
    const RowCase cases[] = {
        {"waiting", BatchItem::Waiting{}, localized("batch.row.waiting"), false, false},
        {"analyzing", BatchItem::Analyzing{}, localized("batch.row.analyzing"), true, false},
        {"encoding", BatchItem::Encoding{0.999}, "99 %", true, false},
        {"done", BatchItem::Done{0.374, output}, minus + "37 %", false, true},
        {"skipped", BatchItem::Skipped{"No pauses to remove"}, "No pauses to remove", false, false},
        {"failed", BatchItem::Failed{"This file cannot be read."}, "This file cannot be read.",
         false, false},
    };
    BatchItem item;
    item.url = QUrl::fromLocalFile("/rec/a very long name of a recorded talk.m4a");
    BatchRow row(item);
    row.resize(600, 40);
    row.show();
    for (const RowCase& c : cases) {
        item.status = c.status;
        row.setItem(item);
        EXPECT_EQ(row.trailingText(), c.trailing) << c.name;
        EXPECT_EQ(row.showsSpinner(), c.spinner) << c.name;
        EXPECT_EQ(row.revealButton()->isVisible(), c.reveal) << c.name;
        EXPECT_EQ(row.fileNameText(), "a very long name of a recorded talk.m4a") << c.name;
    }

    QList<QUrl> opened;
    DesktopFiles::setUrlOpener([&](const QUrl& url) { opened << url; });
    // No session bus in the test: the folder opens the ordinary way.
    const QByteArray bus = qgetenv("DBUS_SESSION_BUS_ADDRESS");
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent/bus");
    item.status = BatchItem::Done{0.3, output};
    row.setItem(item);
    row.revealButton()->click();
    waitUntil([&] { return !opened.isEmpty(); }, 5000);
    qputenv("DBUS_SESSION_BUS_ADDRESS", bus);
    DesktopFiles::setUrlOpener({});
    EXPECT_EQ(opened, QList<QUrl>{QUrl::fromLocalFile("/rec/out")});
}

class BatchViewTest : public WindowTest {
protected:
    BatchView* view() const { return content()->batchView(); }
};

TEST_F(BatchViewTest, OffersThePresetsButNeverCustom)
{
    batch().setItems({copyInto(Recordings::steadyTone(), "a.wav")});
    SegmentedPicker* picker = view()->presetPicker();
    EXPECT_EQ(picker->titles(), QStringList({SensitivityPresets::title(Sensitivity::delicate),
                                             SensitivityPresets::title(Sensitivity::standard),
                                             SensitivityPresets::title(Sensitivity::aggressive)}));
    EXPECT_EQ(picker->currentIndex(), 1);
    m_app->window().show();
    QTest::mouseClick(picker, Qt::LeftButton, {}, picker->segmentRect(2).center());
    EXPECT_EQ(batch().sensitivity(), Sensitivity::aggressive);
}

TEST_F(BatchViewTest, RunsTheListAndClearsItWhenIdle)
{
    batch().setItems({copyInto(Recordings::speechWithPauses(), "talk.wav"),
                      copyInto(Recordings::steadyTone(), "tone.wav")});
    m_app->window().show();
    ASSERT_EQ(content()->currentScreen(), ContentView::Screen::batch);
    ASSERT_EQ(view()->rows().size(), 2u);
    EXPECT_TRUE(view()->clearButton()->isVisible());
    EXPECT_FALSE(view()->stopButton()->isVisible());

    view()->runButton()->click();
    EXPECT_TRUE(batch().isRunning());
    // While running: no clear, no preset change, a stop button.
    EXPECT_FALSE(view()->clearButton()->isVisible());
    EXPECT_FALSE(view()->presetPicker()->isEnabled());
    EXPECT_TRUE(view()->stopButton()->isVisible());
    ASSERT_TRUE(waitUntil([&] { return !batch().isRunning(); }));

    EXPECT_EQ(view()->rows()[0]->trailingText().left(1), minus);
    EXPECT_EQ(view()->rows()[1]->trailingText(), localized("batch.skip.noPauses"));
    EXPECT_EQ(view()->summaryLabel()->text(), batch().summary());
    EXPECT_TRUE(QFile::exists(m_folder.filePath("talk (no pauses).m4a")));

    view()->clearButton()->click();
    EXPECT_EQ(content()->currentScreen(), ContentView::Screen::welcome);
}

TEST_F(BatchViewTest, StopEndsTheRunningFile)
{
    batch().setItems({copyInto(Recordings::speechWithPauses(), "one.wav"),
                      copyInto(Recordings::speechWithPauses(), "two.wav")});
    m_app->window().show();
    view()->runButton()->click();
    view()->stopButton()->click();
    ASSERT_TRUE(waitUntil([&] { return !batch().isRunning(); }));
    EXPECT_TRUE(view()->runButton()->isVisible());
    // The second file was never started.
    EXPECT_EQ(view()->rows()[1]->trailingText(), localized("batch.row.waiting"));
}

} // namespace
