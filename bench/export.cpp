// Times our export against other tools on the same cuts.
//
//   hushpane_bench_export analyse <input> <keeps.txt>
//       analyses with the standard preset and writes one "start end" line per keep
//   hushpane_bench_export export <input> <keeps.txt> <output> audio|accurate|fast
//       writes those keeps as the app would, and nothing else
//
// Analysing once and handing the same keep list to every tool times the export alone.

#include "Sensitivity.h"
#include "TidleEngine.h"
#include "UserMessage.h"

#include <QCoreApplication>
#include <QFile>
#include <QTextStream>
#include <cstdio>
#include <exception>

extern "C" {
#include <libavutil/log.h>
}

namespace {

TidleSettings standardSettings(bool frameAccurate)
{
    TidleSettings settings;
    SensitivityPresets::applyNumbers(Sensitivity::standard, settings);
    settings.frameAccurate = frameAccurate;
    return settings;
}

int analyse(const QString& input, const QString& keepsPath)
{
    TidleEngine engine;
    const Analysis analysis = engine.analyze(input, standardSettings(true));
    QFile file(keepsPath);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return 1;
    QTextStream out(&file);
    out.setRealNumberPrecision(17);
    for (const Segment& keep : analysis.keeps)
        out << keep.start << ' ' << keep.end << '\n';
    std::printf("%zu keeps, %.1f s of %.1f s kept\n", analysis.keeps.size(), analysis.keptSeconds(),
                analysis.duration);
    return 0;
}

int exportKeeps(const QString& input, const QString& keepsPath, const QString& output,
                const QString& mode)
{
    QFile file(keepsPath);
    if (!file.open(QIODevice::ReadOnly))
        return 1;
    Analysis analysis;
    QTextStream in(&file);
    while (!in.atEnd()) {
        Segment keep;
        in >> keep.start >> keep.end;
        if (in.status() != QTextStream::Ok)
            break;
        analysis.keeps.push_back(keep);
    }
    analysis.hasVideo = mode != "audio";
    analysis.outputFileType = mode == "audio" ? OutputContainer::AppleM4A : OutputContainer::MPEG4;
    TidleEngine engine;
    engine.encode(input, output, analysis, standardSettings(mode != "fast"), [](double) {});
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    av_log_set_level(AV_LOG_QUIET);
    const QStringList arguments = app.arguments();
    try {
        if (arguments.size() == 4 && arguments[1] == "analyse")
            return analyse(arguments[2], arguments[3]);
        if (arguments.size() == 6 && arguments[1] == "export")
            return exportKeeps(arguments[2], arguments[3], arguments[4], arguments[5]);
    } catch (const std::exception& error) {
        std::printf("error: %s\n", userMessage(error).toUtf8().constData());
        return 1;
    }
    std::printf("usage: hushpane_bench_export analyse <input> <keeps.txt>\n"
                "       hushpane_bench_export export <input> <keeps.txt> <output> "
                "audio|accurate|fast\n");
    return 2;
}
