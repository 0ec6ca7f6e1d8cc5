#include "AdvancedSlider.h"
#include "AdvancedSliders.h"
#include "BrandButton.h"
#include "ElidedLabel.h"
#include "FileHeader.h"
#include "Fixtures.h"
#include "FormatTime.h"
#include "HeroPercent.h"
#include "LinkButton.h"
#include "Localization.h"
#include "PauseListModel.h"
#include "PauseListView.h"
#include "PlayerSection.h"
#include "ResultSection.h"
#include "SegmentedPicker.h"
#include "SettingsSection.h"
#include "Stats.h"
#include "TimelineBar.h"
#include "TimelineBlock.h"
#include "WelcomeScreen.h"
#include "WindowTestFixture.h"
#include "WorkScreen.h"

#include <QAction>
#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QProgressBar>
#include <QRegularExpression>
#include <QSlider>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>

namespace {

using Phase = AppModel::Phase;
using Screen = ContentView::Screen;

class ContentViewTest : public WindowTest {
protected:
    void SetUp() override
    {
        WindowTest::SetUp();
        m_app->window().show();
    }

    ResultSection* result() const { return content()->workScreen()->result(); }
    SettingsSection* settings() const { return content()->workScreen()->settings(); }

    // Which result rows a person sees.
    QList<QWidget*> visibleRows() const
    {
        QList<QWidget*> rows;
        for (QWidget* row : {result()->analyzingRow(), result()->readyRow(),
                             result()->encodingRow(), result()->doneRow(), result()->failedRow()})
            if (row->isVisible())
                rows << row;
        return rows;
    }
};

TEST_F(ContentViewTest, OneDroppedFileOpensItAndSeveralFillTheBatch)
{
    EXPECT_EQ(content()->currentScreen(), Screen::welcome);
    EXPECT_TRUE(content()->welcomeScreen()->isVisible());
    const int welcomeHeight = m_app->window().height();

    // Upper-case extensions are recordings too.
    const QUrl talk = copyInto(Recordings::speechWithPauses(), "TALK.WAV");
    ASSERT_TRUE(drop({talk}));
    EXPECT_EQ(model().inputURL(), talk);
    EXPECT_EQ(content()->currentScreen(), Screen::work);
    EXPECT_TRUE(content()->workScreen()->isVisible());
    EXPECT_FALSE(content()->welcomeScreen()->isVisible());
    // The window is as tall as what it shows, and always as wide.
    EXPECT_NE(m_app->window().height(), welcomeHeight);
    EXPECT_EQ(content()->width(), ContentView::contentWidth);

    const QUrl tone = copyInto(Recordings::steadyTone(), "tone.wav");
    ASSERT_TRUE(drop({talk, tone}));
    EXPECT_EQ(content()->currentScreen(), Screen::batch);
    EXPECT_EQ(batch().items().size(), 2);

    batch().clear();
    ASSERT_TRUE(drop({QUrl::fromLocalFile(m_folder.path())}));
    EXPECT_EQ(content()->currentScreen(), Screen::batch);
    EXPECT_EQ(batch().items().size(), 2);
}

TEST_F(ContentViewTest, FilesOfOtherKindsGoToTheDocumentWhichSaysWhy)
{
    QDir(m_folder.path()).mkdir("empty");

    // A folder without recordings changes nothing.
    ASSERT_TRUE(drop({QUrl::fromLocalFile(m_folder.filePath("empty"))}));
    EXPECT_EQ(content()->currentScreen(), Screen::welcome);

    ASSERT_TRUE(openAndWait(copyInto(Recordings::brokenFile(), "notes.txt").toLocalFile()));
    EXPECT_EQ(content()->currentScreen(), Screen::work);
    EXPECT_EQ(model().phase(), Phase::failed);
    EXPECT_EQ(visibleRows(), QList<QWidget*>{result()->failedRow()});
    EXPECT_EQ(result()->failureText()->text(), model().errorMessage());
    EXPECT_FALSE(result()->failureText()->text().isEmpty());
    EXPECT_TRUE(result()->retryButton()->isVisible());
}

TEST_F(ContentViewTest, ReadyRowSummarisesThePlanThatTheTimelineAndPauseListChange)
{
    ASSERT_TRUE(openAndWait(copyInto(Recordings::speechWithPauses(), "talk.wav").toLocalFile()));
    ASSERT_EQ(model().phase(), Phase::ready);
    const Analysis analysis = *model().analysis();
    ASSERT_EQ(analysis.silences.size(), 2u);

    EXPECT_EQ(visibleRows(), QList<QWidget*>{result()->readyRow()});
    EXPECT_EQ(result()->summaryText(),
              localizedCount("result.found", 2) + "\n" + formatTime(analysis.duration) +
                  QString::fromUtf8(" → ") + formatTime(analysis.keptSeconds()));
    EXPECT_TRUE(result()->heroPercent()->isVisible());
    EXPECT_TRUE(result()->saveButton()->isEnabled());
    EXPECT_EQ(result()->saveButton()->text(), localized("result.save.audio"));
    EXPECT_EQ(content()->workScreen()->header()->durationLabel()->text(),
              formatTime(analysis.duration));
    TimelineBlock* timeline = content()->workScreen()->player()->timelineBlock();
    TimelineBar* bar = timeline->bar();
    EXPECT_TRUE(timeline->showsBar());
    EXPECT_TRUE(timeline->pausesLink()->isVisible());
    EXPECT_FALSE(timeline->resetLink()->isVisible());

    // A click on the second pause gives it back: the plan keeps it from now on.
    QTest::mouseClick(bar, Qt::LeftButton, {}, bar->pauseArea(1).center().toPoint());
    EXPECT_EQ(model().disabledSilences(), QSet<int>{1});
    EXPECT_EQ(bar->disabledSilences(), QSet<int>{1});
    EXPECT_LT(model().analysis()->keeps.size(), analysis.keeps.size());
    EXPECT_TRUE(timeline->resetLink()->isVisible());
    EXPECT_TRUE(timeline->restoredLegend()->isVisible());

    // The pause list opens from the count under the timeline and shows the same state.
    timeline->pausesLink()->click();
    PauseListView* list = timeline->pauseList();
    ASSERT_NE(list, nullptr);
    EXPECT_TRUE(list->isVisible());
    const auto ticked = [&](int row) {
        return list->model()->index(row).data(Qt::CheckStateRole).value<Qt::CheckState>();
    };
    EXPECT_EQ(ticked(1), Qt::Unchecked);
    list->onSeek(3.5);
    EXPECT_EQ(model().playhead(), 3.5);
    ASSERT_FALSE(m_player->seeks.empty());
    EXPECT_EQ(m_player->seeks.back(), 3.5);
    list->onToggle(0);
    EXPECT_EQ(ticked(0), Qt::Unchecked);
    // Every pause given back: nothing left to remove, so nothing to save.
    EXPECT_EQ(result()->summaryText(), localized("result.allKept"));
    EXPECT_FALSE(result()->heroPercent()->isVisible());
    EXPECT_FALSE(result()->saveButton()->isEnabled());
    EXPECT_FALSE(m_app->window().saveAction()->isEnabled());

    timeline->resetLink()->click();
    EXPECT_TRUE(model().disabledSilences().isEmpty());
    EXPECT_EQ(model().analysis()->keeps, analysis.keeps);
    EXPECT_TRUE(result()->saveButton()->isEnabled());
    EXPECT_FALSE(timeline->resetLink()->isVisible());
}

TEST_F(ContentViewTest, AFileWithoutPausesCannotBeSaved)
{
    ASSERT_TRUE(openAndWait(copyInto(Recordings::steadyTone(), "tone.wav").toLocalFile()));
    ASSERT_EQ(model().phase(), Phase::ready);
    EXPECT_EQ(result()->summaryText(), localized("result.noPauses"));
    EXPECT_FALSE(result()->heroPercent()->isVisible());
    EXPECT_FALSE(result()->saveButton()->isEnabled());
    EXPECT_FALSE(content()->workScreen()->player()->timelineBlock()->pausesLink()->isVisible());
}

TEST_F(ContentViewTest, SavingShowsProgressThenTheWrittenFile)
{
    const QUrl talk = copyInto(Recordings::speechWithPauses(), "talk.wav");
    ASSERT_TRUE(openAndWait(talk.toLocalFile()));
    // A cancelled save panel writes nothing.
    m_panels->destination = std::nullopt;
    result()->saveButton()->click();
    EXPECT_EQ(model().phase(), Phase::ready);
    const QUrl output = QUrl::fromLocalFile(m_folder.filePath("short talk.m4a"));
    m_panels->destination = output;

    result()->saveButton()->click();
    EXPECT_EQ(m_panels->askedFolder, m_folder.path());
    EXPECT_EQ(m_panels->askedName, AppModel::defaultOutputName(talk, "m4a"));
    EXPECT_EQ(m_panels->askedMessage, localized("panel.save.audio"));
    ASSERT_EQ(model().phase(), Phase::encoding);
    EXPECT_EQ(visibleRows(), QList<QWidget*>{result()->encodingRow()});
    // Nothing else may start while the file is written.
    EXPECT_FALSE(drop({talk}));
    EXPECT_FALSE(settings()->isEnabled());
    EXPECT_FALSE(content()->workScreen()->header()->otherFileButton()->isEnabled());

    ASSERT_TRUE(waitUntil([&] { return model().phase() != Phase::encoding; }));
    ASSERT_EQ(model().phase(), Phase::done);
    EXPECT_EQ(visibleRows(), QList<QWidget*>{result()->doneRow()});
    EXPECT_EQ(result()->doneText()->text(),
              localized("result.done")
                  .arg("short talk.m4a", formatTime(model().analysis()->keptSeconds())));
    EXPECT_TRUE(QFile::exists(output.toLocalFile()));

    result()->openButton()->click();
    ASSERT_EQ(opened.size(), 1);
    EXPECT_EQ(opened.front(), output);
    // The saved time now shows on the welcome screen.
    EXPECT_GE(Stats::totalSecondsSaved(), 1.0);
    model().clear();
    EXPECT_TRUE(content()->welcomeScreen()->showsSavedTime());
}

TEST_F(ContentViewTest, CancellingASaveReturnsToReadyWithoutAFile)
{
    ASSERT_TRUE(openAndWait(copyInto(Recordings::longVideo(), "lecture.mp4").toLocalFile()));
    ASSERT_EQ(model().phase(), Phase::ready);
    EXPECT_EQ(result()->saveButton()->text(), localized("result.save.video"));
    const QString output = m_folder.filePath("cancelled.mp4");
    m_panels->destination = QUrl::fromLocalFile(output);
    QObject::connect(&model(), &AppModel::progressChanged, result(), [this] {
        if (model().phase() == Phase::encoding && model().progress() < 1.0 &&
            result()->cancelSaveButton()->isVisible())
            result()->cancelSaveButton()->click();
    });

    result()->saveButton()->click();
    ASSERT_EQ(model().phase(), Phase::encoding);
    EXPECT_EQ(m_panels->askedMessage, localized("panel.save.video"));
    ASSERT_TRUE(waitUntil([&] { return model().phase() != Phase::encoding; }));
    EXPECT_EQ(model().phase(), Phase::ready);
    EXPECT_EQ(visibleRows(), QList<QWidget*>{result()->readyRow()});
    EXPECT_EQ(QDir(m_folder.path()).entryList(QDir::Files | QDir::Hidden),
              QStringList{"lecture.mp4"});
}

TEST_F(ContentViewTest, AnalysisShowsASpinnerThenAProgressBarAndCanBeCancelled)
{
    content()->accept({copyInto(Recordings::speechWithPauses(), "talk.wav")});
    ASSERT_EQ(model().phase(), Phase::analyzing);
    EXPECT_EQ(visibleRows(), QList<QWidget*>{result()->analyzingRow()});
    EXPECT_TRUE(result()->analyzingText()->isVisible());
    EXPECT_FALSE(result()->analysisBar()->isVisible());
    EXPECT_FALSE(content()->workScreen()->player()->timelineBlock()->showsBar());

    result()->cancelAnalysisButton()->click();
    // Nothing was analysed yet, so the window is empty again.
    EXPECT_EQ(content()->currentScreen(), Screen::welcome);
}

TEST_F(ContentViewTest, ASliderMakesThePresetCustomButTheSaveModeDoesNot)
{
    ASSERT_TRUE(openAndWait(copyInto(Recordings::speechWithPauses(), "talk.wav").toLocalFile()));
    SegmentedPicker* presets = settings()->presetPicker();
    EXPECT_FALSE(settings()->showsAdvanced());

    QTest::mouseClick(presets, Qt::LeftButton, {}, presets->segmentRect(3).center());
    ASSERT_EQ(model().sensitivity(), Sensitivity::custom);
    ASSERT_TRUE(settings()->showsAdvanced());
    AdvancedSliders* advanced = settings()->advancedPanel();

    // The save mode is no detection number.
    QTest::mouseClick(presets, Qt::LeftButton, {}, presets->segmentRect(0).center());
    SegmentedPicker* saveMode = advanced->saveModePicker();
    QTest::mouseClick(saveMode, Qt::LeftButton, {}, saveMode->segmentRect(1).center());
    EXPECT_FALSE(model().settings().frameAccurate);
    EXPECT_EQ(model().sensitivity(), Sensitivity::delicate);
    // Once opened, the numbers stay in view under another preset.
    EXPECT_TRUE(settings()->showsAdvanced());

    QSlider* padding = advanced->paddingSlider()->slider();
    const double before = model().settings().padding;
    padding->setFocus();
    QTest::keyClick(padding, Qt::Key_Right);
    EXPECT_EQ(model().sensitivity(), Sensitivity::custom);
    EXPECT_NEAR(model().settings().padding, before + 0.05, 1e-9);
    EXPECT_EQ(advanced->paddingSlider()->valueText(),
              localized("unit.seconds").arg(QString::asprintf("%.2f", before + 0.05)));
    EXPECT_EQ(presets->currentIndex(), 3);
}

TEST_F(ContentViewTest, ASliderAloneDoesNotOpenTheAdvancedPanel)
{
    // Custom chosen by a slider elsewhere (here: directly on the model) leaves showAdvanced
    // alone; the panel shows because the preset is custom, and goes with another preset.
    ASSERT_TRUE(openAndWait(copyInto(Recordings::steadyTone(), "tone.wav").toLocalFile()));
    model().assignSensitivity(Sensitivity::custom);
    EXPECT_TRUE(settings()->showsAdvanced());
    EXPECT_FALSE(model().showAdvanced());
    model().setSensitivity(Sensitivity::standard);
    EXPECT_FALSE(settings()->showsAdvanced());
    EXPECT_EQ(settings()->hintLabel()->text(), SensitivityPresets::hint(Sensitivity::standard));
}

TEST_F(ContentViewTest, PlayControlAndTimeFollowThePreview)
{
    ASSERT_TRUE(openAndWait(copyInto(Recordings::speechWithPauses(), "talk.wav").toLocalFile()));
    PlayerSection* player = content()->workScreen()->player();
    // Without skipping, a reported time only moves the playhead.
    player->skipPausesSwitch()->click();
    EXPECT_FALSE(model().skipPausesInPreview());
    player->playButton()->click();
    EXPECT_EQ(m_player->plays, 1);
    ASSERT_TRUE(waitUntil([&] { return model().isPlaying(); }, 2000));
    EXPECT_EQ(player->playButton()->accessibleName(), localized("preview.pause"));
    m_player->report(2.2);
    EXPECT_EQ(player->timeLabel()->text(), "0:02 / " + formatTime(model().analysis()->duration));
    // Space plays and pauses from anywhere in the work screen.
    QTest::keyClick(&m_app->window(), Qt::Key_Space);
    EXPECT_EQ(m_player->pauses, 1);
}

} // namespace

TEST_F(ContentViewTest, TheCutListCommandWritesAnEdlAndAnXmlOfTheCurrentKeeps)
{
    QAction* menuItem = m_app->window().saveCutListAction();
    EXPECT_FALSE(menuItem->isEnabled());
    const QUrl talk = copyInto(Recordings::speechWithPauses(), "talk.wav");
    ASSERT_TRUE(openAndWait(talk.toLocalFile()));
    ASSERT_EQ(model().phase(), Phase::ready);
    EXPECT_TRUE(menuItem->isEnabled());
    EXPECT_TRUE(result()->cutListLink()->isVisible());
    // A pause given back joins two keeps, and the cut list follows.
    model().toggleSilence(0);
    const std::size_t keeps = model().analysis()->keeps.size();

    m_panels->destination = QUrl::fromLocalFile(m_folder.filePath("talk cuts.edl"));
    menuItem->trigger();
    EXPECT_EQ(m_panels->askedName, "talk");
    EXPECT_EQ(m_panels->askedExtension, "edl");
    EXPECT_EQ(m_panels->askedMessage, localized("panel.cutList"));
    QFile edl(m_folder.filePath("talk cuts.edl"));
    QFile xml(m_folder.filePath("talk cuts.xml"));
    ASSERT_TRUE(edl.open(QIODevice::ReadOnly));
    ASSERT_TRUE(xml.open(QIODevice::ReadOnly));
    const QString edlText = QString::fromUtf8(edl.readAll());
    EXPECT_TRUE(edlText.startsWith("TITLE: talk cuts\n"));
    EXPECT_EQ(edlText.count(QRegularExpression("^\\d{3}  ", QRegularExpression::MultilineOption)),
              qsizetype(keeps));
    EXPECT_TRUE(QString::fromUtf8(xml.readAll()).contains(talk.toString(QUrl::FullyEncoded)));

    // The link under the save button does the same; a cancelled dialog writes nothing.
    m_panels->destination = std::nullopt;
    m_panels->askedName.clear();
    result()->cutListLink()->click();
    EXPECT_EQ(m_panels->askedName, "talk");
    EXPECT_EQ(QDir(m_folder.path()).entryList(QDir::Files).size(), 3);
}
