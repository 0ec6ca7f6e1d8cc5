// Analyses one file with the standard preset and prints how many pauses it found, for timing
// the analysis as a whole process against the ffmpeg command line.
#include "Localization.h"
#include "Sensitivity.h"
#include "TidleEngine.h"
#include "UserMessage.h"

#include <QCoreApplication>
#include <cstdio>
#include <exception>

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    installStringTables();
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s <media file>\n", argv[0]);
        return 2;
    }
    TidleSettings settings;
    SensitivityPresets::applyNumbers(Sensitivity::standard, settings);
    settings.frameAccurate = false;
    try {
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
