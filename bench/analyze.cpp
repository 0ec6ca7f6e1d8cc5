// Analyses one file with the standard preset and prints how many pauses it found, for timing
// the analysis as a whole process against the ffmpeg command line.
//   hushpane_bench_analyze <file>             the analysis as the application runs it
//   hushpane_bench_analyze --compare <file>   levels read in parts against one reading from
//                                             the start: parts used, levels, largest difference
#include "LevelReader.h"
#include "Localization.h"
#include "MediaFile.h"
#include "Sensitivity.h"
#include "TidleEngine.h"
#include "UserMessage.h"

#include <QCoreApplication>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <exception>

namespace {

int compare(const QString& path)
{
    const std::atomic<bool> cancel{false};
    MediaFile first(path);
    const LevelReading whole = readLevels(first, first.duration(), cancel, {}, 1);
    MediaFile second(path);
    const LevelReading split = readLevels(second, second.duration(), cancel, {});
    double largest = 0.0;
    std::size_t differing = 0;
    const std::size_t common = std::min(whole.levels.size(), split.levels.size());
    for (std::size_t i = 0; i < common; ++i) {
        const double a = whole.levels[i];
        const double b = split.levels[i];
        if (a != b)
            ++differing;
        if (a != 0.0 || b != 0.0)
            largest = std::max(largest, std::abs(a - b) / std::max(std::abs(a), std::abs(b)));
    }
    std::printf("parts: %d%s\nlevels: %zu / %zu\ndiffering: %zu\nlargest relative difference: "
                "%.3g\nsamples: %lld / %lld\n",
                split.parts, split.decodedAhead ? " (decoded ahead)" : "", whole.levels.size(),
                split.levels.size(), differing, largest, static_cast<long long>(whole.sampleCount),
                static_cast<long long>(split.sampleCount));
    const bool same = whole.levels.size() == split.levels.size() && largest <= 1e-6 &&
                      whole.sampleCount == split.sampleCount;
    return same ? 0 : 1;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    installStringTables();
    const bool comparing = argc == 3 && std::strcmp(argv[1], "--compare") == 0;
    if (argc != 2 && !comparing) {
        std::fprintf(stderr, "usage: %s [--compare] <media file>\n", argv[0]);
        return 2;
    }
    TidleSettings settings;
    SensitivityPresets::applyNumbers(Sensitivity::standard, settings);
    settings.frameAccurate = false;
    try {
        if (comparing)
            return compare(QString::fromLocal8Bit(argv[2]));
        TidleEngine engine;
        const Analysis analysis = engine.analyze(QString::fromLocal8Bit(argv[1]), settings);
        std::printf("pauses: %zu\nduration: %.3f\nlevels: %zu\n", analysis.silences.size(),
                    analysis.duration, analysis.levels.size());
    } catch (const std::exception& error) {
        std::printf("failed: %s\n", qUtf8Printable(userMessage(error)));
        return 1;
    }
    return 0;
}
