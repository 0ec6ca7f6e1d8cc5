#include "PauseListView.h"
#include "DocumentTestSupport.h"
#include "PauseListModel.h"
#include "PauseRowDelegate.h"

#include <QListView>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

namespace {

class PauseListViewTest : public testing::Test {
protected:
    void show(std::vector<Segment> silences)
    {
        view.onToggle = [this](int i) { toggles.push_back(i); };
        view.onSeek = [this](double t) { seeks.push_back(t); };
        view.setSilences(std::move(silences));
        view.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&view));
    }

    QRect rowRect(int row) const
    {
        QListView* list = view.list();
        const QModelIndex index = list->model()->index(row, 0);
        list->scrollTo(index);
        return list->visualRect(index);
    }
    void clickListen(int row)
    {
        QTest::mouseClick(view.list()->viewport(), Qt::LeftButton, {},
                          PauseRowDelegate::listenRect(rowRect(row)).center());
    }
    void clickCheck(int row)
    {
        const QRect area = PauseRowDelegate::checkArea(rowRect(row));
        QTest::mouseClick(view.list()->viewport(), Qt::LeftButton, {},
                          QPoint(area.left() + 8, area.center().y()));
    }
    Qt::CheckState checkState(int row) const
    {
        return view.model()->index(row).data(Qt::CheckStateRole).value<Qt::CheckState>();
    }

    PauseListView view;
    std::vector<int> toggles;
    std::vector<double> seeks;
};

TEST(PauseListModel, LabelShowsStartAndLength)
{
    PauseListModel model;
    model.setSilences({{65.0, 66.5}, {3725.0, 3727.04}, {0.4, 1.0}});
    EXPECT_EQ(model.label(0), QStringLiteral("1:05 \u00B7 1.5 s"));
    EXPECT_EQ(model.label(1), QStringLiteral("1:02:05 \u00B7 2.0 s"));
    EXPECT_EQ(model.label(2), QStringLiteral("0:00 \u00B7 0.6 s"));
    EXPECT_EQ(model.index(0).data().toString(), model.label(0));
}

TEST_F(PauseListViewTest, ListeningSeeksAndTickingAsksTheOwnerWhoseAnswerTheRowFollows)
{
    show({{0.4, 1.2}, {10.0, 11.0}, {20.0, 21.0}});
    // Listening starts a second before the pause, but not before zero.
    clickListen(0);
    clickListen(1);
    EXPECT_EQ(seeks, (std::vector<double>{0.0, 9.0}));
    EXPECT_TRUE(toggles.empty());

    const QRect box = PauseRowDelegate::checkArea(rowRect(2));
    const QImage ticked = view.list()->viewport()->grab(box).toImage();
    clickCheck(2);
    EXPECT_EQ(toggles, (std::vector<int>{2}));
    EXPECT_EQ(seeks.size(), 2u);
    // The row only changes once the owner gives the pause back, and then looks unticked.
    EXPECT_EQ(checkState(2), Qt::Checked);
    view.setDisabledSilences({1, 2});
    EXPECT_EQ(checkState(0), Qt::Checked);
    EXPECT_EQ(checkState(1), Qt::Unchecked);
    EXPECT_EQ(checkState(2), Qt::Unchecked);
    runEventLoop(20);
    EXPECT_NE(view.list()->viewport()->grab(box).toImage(), ticked);
    // The index handed over is the row's place among all pauses, not among the given-back.
    clickCheck(1);
    // Space ticks the current row from the keyboard.
    view.list()->setFocus(Qt::TabFocusReason);
    view.list()->setCurrentIndex(view.model()->index(0));
    QTest::keyClick(view.list(), Qt::Key_Space);
    EXPECT_EQ(toggles, (std::vector<int>{2, 1, 0}));
}

TEST_F(PauseListViewTest, ThousandsOfPausesScrollInsideTheFixedSize)
{
    std::vector<Segment> silences;
    for (int i = 0; i < 2000; ++i)
        silences.push_back({i * 5.0 + 2.0, i * 5.0 + 3.0});
    show(silences);
    EXPECT_EQ(view.list()->height(), PauseListView::maximumListHeight);
    EXPECT_LT(view.height(), 400);
    EXPECT_GT(view.list()->verticalScrollBar()->maximum(), 0);
    // The last pause is reachable and answers like the first.
    clickListen(1999);
    clickCheck(1999);
    EXPECT_EQ(seeks, (std::vector<double>{1999 * 5.0 + 1.0}));
    EXPECT_EQ(toggles, (std::vector<int>{1999}));
    EXPECT_EQ(view.width(), PauseListView::totalWidth);
}

TEST(PauseListPopup, OpensBelowItsAnchorAndReportsClosing)
{
    QWidget window;
    window.resize(640, 400);
    auto* anchor = new QWidget(&window);
    anchor->setGeometry(300, 100, 80, 20);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));

    PauseListView popup;
    popup.setSilences({{1, 2}, {3, 4}});
    QSignalSpy closed(&popup, &PauseListView::closed);
    popup.showBelow(anchor);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&popup));
    const QRect anchorFrame(anchor->mapToGlobal(QPoint(0, 0)), anchor->size());
    EXPECT_GT(popup.geometry().top(), anchorFrame.bottom());
    EXPECT_NEAR(popup.geometry().center().x(), anchorFrame.center().x(), 1);

    QTest::keyClick(&popup, Qt::Key_Escape);
    EXPECT_TRUE(waitUntil([&] { return !popup.isVisible(); }, 2000));
    EXPECT_EQ(closed.count(), 1);
}

} // namespace
