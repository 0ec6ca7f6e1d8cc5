// Times the timeline strip for a short and a very long recording: painting (the whole strip,
// the thin repaint a playhead step asks for, the whole strip with a pause outlined), the
// precomputation after a width change, and taking in new analysis data. Painting should cost
// the same whatever the length.
//
//   hushpane_bench_timeline [frames]            both recordings, a table and the ratios
//   hushpane_bench_timeline paint 3min|3h N     only N full paints of one, for timing the
//                                               whole process from outside
//
// Runs on the offscreen platform; the strip is 600 px wide, as in the main window.

#include "TidleEngine.h"
#include "TimelineBar.h"
#include "TimelineGeometry.h"

#include <QApplication>
#include <QCursor>
#include <QImage>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <random>
#include <vector>

namespace {

constexpr int stripWidth = 600;
constexpr double levelWindow = 0.05;

struct Recording {
    const char* name;
    double duration;
    std::vector<float> levels;
    std::vector<Segment> silences;
    std::vector<Segment> keeps;
};

// Speech-like loudness at 0.05 s windows with a pause every 2 to 8 s, 0.6 to 2 s long, and
// the keeps planned from them as the app does (standard padding).
Recording makeRecording(const char* name, double duration)
{
    Recording recording{name, duration, {}, {}, {}};
    std::mt19937 random(42);
    std::uniform_real_distribution<double> gap(2.0, 8.0);
    std::uniform_real_distribution<double> pauseLength(0.6, 2.0);
    std::uniform_real_distribution<float> loudness(0.05f, 0.6f);
    for (double t = gap(random); t < duration - 2.0; t += gap(random)) {
        const double length = pauseLength(random);
        recording.silences.push_back({t, std::min(t + length, duration)});
        t += length;
    }
    const auto windows = static_cast<std::size_t>(std::ceil(duration / levelWindow));
    recording.levels.resize(windows);
    std::size_t pause = 0;
    for (std::size_t i = 0; i < windows; ++i) {
        const double t = static_cast<double>(i) * levelWindow;
        while (pause < recording.silences.size() && recording.silences[pause].end < t)
            ++pause;
        const bool quiet =
            pause < recording.silences.size() && recording.silences[pause].start <= t;
        recording.levels[i] = quiet ? 0.002f : loudness(random);
    }
    recording.keeps = TidleEngine::keepSegments(recording.silences, duration, 0.1, 0.05);
    return recording;
}

using Clock = std::chrono::steady_clock;

double microsecondsSince(Clock::time_point start)
{
    return std::chrono::duration<double, std::micro>(Clock::now() - start).count();
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    const std::size_t n = values.size();
    return n % 2 ? values[n / 2] : (values[n / 2 - 1] + values[n / 2]) / 2.0;
}

struct Figures {
    double fullPaint;
    double playheadRepaint;
    double hoveredPaint;
    double widthChange;
    double newData;
};

// Shows the strip with the pointer parked below it, so no pause is outlined unless asked.
void showStrip(TimelineBar& bar)
{
    bar.resize(stripWidth, TimelineBar::stripHeight);
    bar.show();
    QApplication::processEvents();
    QCursor::setPos(bar.mapToGlobal(QPoint(0, 4 * TimelineBar::stripHeight)));
    QApplication::processEvents();
}

void hoverPause(TimelineBar& bar, int index)
{
    const QPointF at = bar.pauseArea(index).center();
    QMouseEvent move(QEvent::MouseMove, at, bar.mapToGlobal(at), Qt::NoButton, Qt::NoButton,
                     Qt::NoModifier);
    QApplication::sendEvent(&bar, &move);
}

void load(TimelineBar& bar, const Recording& recording)
{
    bar.setAnalysisData(recording.duration, recording.keeps, recording.silences, recording.levels,
                        levelWindow);
}

Figures measure(const Recording& recording, int frames)
{
    TimelineBar bar;
    showStrip(bar);
    load(bar, recording);
    bar.setDisabledSilences({1, 3, 5});

    QImage image(bar.size(), QImage::Format_ARGB32_Premultiplied);
    std::vector<double> full;
    std::vector<double> thin;
    // The playhead walks across the whole recording, as during playback.
    for (int frame = -frames / 10; frame < frames; ++frame) {
        const double playhead = recording.duration * std::abs(frame) / frames;
        image.fill(Qt::transparent);
        bar.setPlayhead(playhead);
        auto start = Clock::now();
        bar.render(&image);
        const double wholeStrip = microsecondsSince(start);

        // What a 1/30 s player tick repaints: the playhead's old and new place.
        const QRect before = TimelineGeometry::playheadRect(playhead, recording.duration,
                                                            stripWidth, TimelineBar::stripHeight)
                                 .toAlignedRect()
                                 .adjusted(-1, -1, 1, 1);
        const double next = playhead + 1.0 / 30.0;
        bar.setPlayhead(next);
        const QRect after = TimelineGeometry::playheadRect(next, recording.duration, stripWidth,
                                                           TimelineBar::stripHeight)
                                .toAlignedRect()
                                .adjusted(-1, -1, 1, 1);
        start = Clock::now();
        bar.render(&image, QPoint(), QRegion(before).united(after));
        const double playheadOnly = microsecondsSince(start);
        if (frame >= 0) {
            full.push_back(wholeStrip);
            thin.push_back(playheadOnly);
        }
    }

    // The pointer resting on a pause adds its outline to every frame.
    hoverPause(bar, static_cast<int>(recording.silences.size() / 2));
    std::vector<double> hovered;
    for (int frame = 0; frame < frames / 4; ++frame) {
        bar.setPlayhead(recording.duration * frame / (frames / 4));
        const auto start = Clock::now();
        bar.render(&image);
        hovered.push_back(microsecondsSince(start));
    }
    if (!bar.hoveredSilence())
        std::fprintf(stderr, "the hovered paint had no pause under the pointer\n");

    std::vector<double> resizes;
    for (int i = 0; i < 400; ++i) {
        const auto start = Clock::now();
        bar.resize(stripWidth + (i % 2), TimelineBar::stripHeight);
        resizes.push_back(microsecondsSince(start));
    }

    std::vector<double> loads;
    for (int i = 0; i < 40; ++i) {
        const auto start = Clock::now();
        load(bar, recording);
        loads.push_back(microsecondsSince(start));
    }
    return {median(full), median(thin), median(hovered), median(resizes), median(loads)};
}

int paintOnly(const char* which, int frames)
{
    const bool longOne = std::strcmp(which, "3h") == 0;
    const Recording recording =
        longOne ? makeRecording("3 h", 3 * 3600.0) : makeRecording("3 min", 180.0);
    TimelineBar bar;
    showStrip(bar);
    load(bar, recording);
    QImage image(bar.size(), QImage::Format_ARGB32_Premultiplied);
    for (int frame = 0; frame < frames; ++frame) {
        bar.setPlayhead(recording.duration * frame / frames);
        bar.render(&image);
    }
    std::printf("%d paints of %s\n", frames, recording.name);
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);

    if (argc == 4 && std::strcmp(argv[1], "paint") == 0)
        return paintOnly(argv[2], std::max(1, std::atoi(argv[3])));
    const int frames = argc > 1 ? std::max(10, std::atoi(argv[1])) : 2000;

    const Recording shortOne = makeRecording("3 min", 180.0);
    const Recording longOne = makeRecording("3 h", 3 * 3600.0);
    const Figures a = measure(shortOne, frames);
    const Figures b = measure(longOne, frames);

    std::printf("%-11s %8s %7s %14s %14s %14s %14s %14s\n", "recording", "levels", "pauses",
                "paint (us)", "playhead (us)", "hovered (us)", "resize (us)", "new data (us)");
    for (const auto& [recording, figures] : {std::pair{&shortOne, a}, std::pair{&longOne, b}})
        std::printf("%-11s %8zu %7zu %14.1f %14.1f %14.1f %14.1f %14.1f\n", recording->name,
                    recording->levels.size(), recording->silences.size(), figures.fullPaint,
                    figures.playheadRepaint, figures.hoveredPaint, figures.widthChange,
                    figures.newData);
    std::printf("%-11s %8s %7s %14.2f %14.2f %14.2f %14.2f %14.2f\n", "3 h / 3 min", "", "",
                b.fullPaint / a.fullPaint, b.playheadRepaint / a.playheadRepaint,
                b.hoveredPaint / a.hoveredPaint, b.widthChange / a.widthChange,
                b.newData / a.newData);
    std::printf("medians of %d paints each, %d px wide; resize = precompute after a width "
                "change; new data = setAnalysisData\n",
                frames, stripWidth);
    return 0;
}
