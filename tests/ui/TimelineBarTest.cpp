#include "TimelineBar.h"
#include "Appearance.h"
#include "Brand.h"
#include "DocumentTestSupport.h"

#include <QImage>
#include <QPaintEvent>
#include <QTest>
#include <gtest/gtest.h>

namespace {

// One minute on 600 px: 10 px a second, so every time below is easy to place.
constexpr double duration = 60.0;
constexpr int width = 600;
constexpr int middle = TimelineBar::stripHeight / 2;

class TimelineBarTest : public testing::Test {
protected:
    void SetUp() override
    {
        // Loud everywhere, so every bar is full height and its colour easy to read.
        std::vector<float> levels(static_cast<std::size_t>(duration / 0.05), 0.8f);
        silences = {{10.0, 12.0}, {30.0, 30.2}, {45.0, 50.0}};
        keeps = {{0.0, 10.1}, {11.9, 30.0}, {30.2, 45.1}, {49.9, 60.0}};
        bar.setAnalysisData(duration, keeps, silences, levels, 0.05);
        bar.onSeek = [this](double t) { seeks.push_back(t); };
        bar.onToggle = [this](int i) { toggles.push_back(i); };
        bar.resize(width, TimelineBar::stripHeight);
        bar.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&bar));
    }

    QPoint centreOf(int pause) const { return bar.pauseArea(pause).center().toPoint(); }
    QImage image() { return bar.grab().toImage().convertToFormat(QImage::Format_ARGB32); }

    TimelineBar bar;
    std::vector<Segment> silences;
    std::vector<Segment> keeps;
    std::vector<double> seeks;
    std::vector<int> toggles;
};

bool near(const QColor& a, const QColor& b, int tolerance = 14)
{
    return std::abs(a.red() - b.red()) <= tolerance &&
           std::abs(a.green() - b.green()) <= tolerance &&
           std::abs(a.blue() - b.blue()) <= tolerance;
}

// Pointer gestures as press, moves and release: a click on a pause toggles it, a drag of
// ten pixels or more seeks (up to the end), anything else does nothing.
TEST_F(TimelineBarTest, ClicksTogglePausesAndLongDragsSeek)
{
    const QPoint pause0 = centreOf(0);
    const QPoint pause1 = centreOf(1);
    const QPoint pause2 = centreOf(2);
    const struct {
        const char* what;
        std::vector<QPoint> path;
        std::vector<int> toggles;
        std::vector<double> seeks;
    } rows[] = {
        {"clicks on pauses", {pause2, pause2}, {2}, {}},
        {"a click on the track", {{200, middle}, {200, middle}}, {}, {}},
        {"a short drag",
         {{200, middle}, {205, middle}, {208, middle + 3}, {208, middle + 3}},
         {},
         {}},
        {"a longer drag",
         {{200, middle}, {215, middle}, {150, middle}, {width + 40, middle}, {width + 40, middle}},
         {},
         {21.5, 15.0, duration, duration}},
        // Released away from the pause: like a button, the click is taken back.
        {"a press on a pause", {pause0, pause0 + QPoint(80, 0), pause0 + QPoint(80, 0)}, {}, {}},
        {"another pause", {pause1, pause1}, {1}, {}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        toggles.clear();
        seeks.clear();
        QTest::mousePress(&bar, Qt::LeftButton, {}, row.path.front());
        for (std::size_t i = 1; i + 1 < row.path.size(); ++i)
            QTest::mouseMove(&bar, row.path[i]);
        QTest::mouseRelease(&bar, Qt::LeftButton, {}, row.path.back());
        EXPECT_EQ(toggles, row.toggles);
        ASSERT_GE(seeks.size(), std::min<std::size_t>(row.seeks.size(), 3));
        if (row.seeks.empty()) {
            EXPECT_TRUE(seeks.empty());
        } else {
            EXPECT_DOUBLE_EQ(seeks[0], row.seeks[0]);
            EXPECT_DOUBLE_EQ(seeks[1], row.seeks[1]);
            EXPECT_DOUBLE_EQ(seeks.back(), row.seeks.back());
        }
    }
}

TEST_F(TimelineBarTest, HoverOutlinesThePauseUnderThePointer)
{
    const QRectF area = bar.pauseArea(1);
    // 0.2 s is 2 px on screen: the target is widened to 8 px from the pause's start.
    ASSERT_DOUBLE_EQ(area.width(), 8.0);
    // The left column of the target, at the centre line: under the outline once hovered.
    const QPoint edge(qRound(area.left()), middle);
    const QColor before = image().pixelColor(edge);

    QTest::mouseMove(&bar, centreOf(1));
    ASSERT_EQ(bar.hoveredSilence(), std::optional<int>(1));
    const QColor outlined = image().pixelColor(edge);
    EXPECT_GT(outlined.lightness(), before.lightness() + 40);

    QTest::mouseMove(&bar, QPoint(200, middle));
    EXPECT_EQ(bar.hoveredSilence(), std::nullopt);
    EXPECT_EQ(image().pixelColor(edge), before);
}

TEST_F(TimelineBarTest, BarsShowWhatBecomesOfEachMoment)
{
    bar.setDisabledSilences({2});
    bar.setPlayhead(0.0);
    const QImage shot = image();
    // Bars are 2 px wide every 3 px; x = 3 i + 1 is inside bar i, at the centre line.
    const auto colourAt = [&](double seconds) {
        const int i = static_cast<int>(seconds * 10.0 / 3.0);
        return shot.pixelColor(3 * i + 1, middle);
    };
    const QColor window = bar.palette().color(QPalette::Window);
    // Kept bars follow the gradient across the strip: blue on the left, violet on the right.
    EXPECT_TRUE(near(colourAt(2.0), Brand::start(), 20)) << colourAt(2.0).name().toStdString();
    EXPECT_TRUE(near(colourAt(58.0), Brand::end(), 20)) << colourAt(58.0).name().toStdString();
    // The given-back pause at 45..50 s is mint, the cut one at 10..12 s is grey.
    const QColor mint = Appearance::mint(bar.palette());
    EXPECT_TRUE(near(colourAt(47.0), mint, 30)) << colourAt(47.0).name().toStdString();
    const QColor cut = colourAt(11.0);
    EXPECT_LT(std::abs(cut.red() - cut.blue()), 10);
    EXPECT_NE(cut, window);
}

// Collects the areas the strip is asked to repaint.
class PaintRecorder : public QObject {
public:
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Paint)
            painted += static_cast<QPaintEvent*>(event)->region();
        return false;
    }
    QRegion painted;
};

TEST_F(TimelineBarTest, APlayerTickRepaintsOnlyTheOldAndNewPlayhead)
{
    runEventLoop(50);
    PaintRecorder recorder;
    bar.installEventFilter(&recorder);
    bar.setPlayhead(30.0);
    runEventLoop(50);
    bar.removeEventFilter(&recorder);
    // Two thin strips at x = 0 and x = 300, not the 600 px strip.
    EXPECT_TRUE(recorder.painted.contains(QPoint(1, middle)));
    EXPECT_TRUE(recorder.painted.contains(QPoint(301, middle)));
    EXPECT_FALSE(recorder.painted.contains(QPoint(150, middle)));
    int area = 0;
    for (const QRect& r : recorder.painted)
        area += r.width() * r.height();
    EXPECT_LE(area, 2 * 6 * (TimelineBar::stripHeight + 2));
}

TEST_F(TimelineBarTest, PausesAnswerAfterAResizeAndWithoutLevels)
{
    bar.resize(width / 2, TimelineBar::stripHeight);
    EXPECT_DOUBLE_EQ(bar.pauseArea(2).left(), 45.0 * 5.0);
    QTest::mouseClick(&bar, Qt::LeftButton, {}, QPoint(240, middle));
    bar.setAnalysisData(20.0, {{0, 5}, {7, 20}}, {{5.0, 7.0}}, {}, 0.05);
    // 5..7 s of 20 s on 300 px: clear of every earlier target.
    QTest::mouseClick(&bar, Qt::LeftButton, {}, QPoint(90, middle));
    EXPECT_EQ(toggles, (std::vector<int>{2, 0}));
    EXPECT_FALSE(bar.accessibleName().isEmpty());
    EXPECT_NE(bar.accessibleName(), QStringLiteral("timeline.accessible.name"));
}

} // namespace
