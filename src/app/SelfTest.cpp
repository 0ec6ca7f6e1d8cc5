#include "SelfTest.h"

#include "BatchItem.h"
#include "BatchModel.h"
#include "PausePlanner.h"
#include "TidleEngine.h"

#include <QDir>
#include <QFile>
#include <QUrl>
#include <QUuid>
#include <cmath>
#include <cstdio>
#include <vector>

namespace {

constexpr double tolerance = 1e-9;

bool near(double actual, double expected)
{
    return std::fabs(actual - expected) < tolerance;
}

double removedTime(const std::vector<Segment>& keeps, double duration)
{
    double kept = 0.0;
    for (const Segment& keep : keeps)
        kept += keep.end - keep.start;
    return duration - kept;
}

bool batchFormatFilterHolds()
{
    const struct {
        const char* path;
        bool supported;
    } cases[] = {{"/x/a.mp4", true},     {"/x/B.MOV", true},   {"/x/pod.mp3", true},
                 {"/x/voice.m4a", true}, {"/x/rec.WAV", true}, {"/x/c.txt", false},
                 {"/x/d.mkv", false}};
    for (const auto& c : cases) {
        if (isSupported(QUrl::fromLocalFile(QString::fromLatin1(c.path))) != c.supported)
            return false;
    }
    return true;
}

bool batchFolderExpandsToVideos()
{
    const QString folder = QDir(QDir::tempPath())
                               .filePath(QStringLiteral("hushpane-selftest-") +
                                         QUuid::createUuid().toString(QUuid::WithoutBraces));
    // Failures to create are not reported on their own: they show as a wrong item count.
    QDir().mkpath(folder);
    for (const char* name : {"one.mp4", "two.mov", "notes.txt"}) {
        QFile file(QDir(folder).filePath(QString::fromLatin1(name)));
        file.open(QIODevice::WriteOnly);
    }
    BatchModel model;
    model.setItems({QUrl::fromLocalFile(folder)});
    const bool passed = model.items().size() == 2;
    QDir(folder).removeRecursively();
    return passed;
}

} // namespace

int runSelfTest()
{
    int failures = 0;
    const auto check = [&failures](const char* name, bool passed) {
        std::printf("%s%s\n", passed ? "  ok   " : "  FAIL ", name);
        if (!passed)
            ++failures;
    };

    const std::vector<float> levels = {0.5f,   0.5f,   0.5f, 0.001f, 0.001f,
                                       0.001f, 0.001f, 0.5f, 0.5f,   0.5f};
    {
        const auto pauses = findSilences(levels, 0.1, -35.0, 0.2, 1.0);
        check("silence run detected",
              pauses.size() == 1 && near(pauses[0].start, 0.3) && near(pauses[0].end, 0.7));
    }
    {
        const std::vector<float> oneQuietWindow = {0.5f, 0.5f, 0.001f, 0.5f, 0.5f};
        check("short pause ignored", findSilences(oneQuietWindow, 0.1, -35.0, 0.2, 0.5).empty());
    }
    {
        const std::vector<float> quietToTheEnd = {0.5f, 0.5f, 0.001f, 0.001f, 0.001f};
        const auto pauses = findSilences(quietToTheEnd, 0.1, -35.0, 0.2, 0.5);
        check("trailing silence to end", pauses.size() == 1 && near(pauses[0].end, 0.5));
    }
    const std::vector<Segment> onePause = {{3.0, 6.0}};
    {
        const auto keeps = TidleEngine::keepSegments(onePause, 10.0, 0.0, 0.05);
        check("keeps complement pause",
              keeps.size() == 2 && near(keeps[0].end, 3.0) && near(keeps[1].start, 6.0));
    }
    {
        const auto keeps = TidleEngine::keepSegments(onePause, 10.0, 0.25, 0.05);
        check("padding shrinks cut",
              keeps.size() >= 2 && near(keeps[0].end, 3.25) && near(keeps[1].start, 5.75));
    }
    {
        const auto keeps = TidleEngine::keepSegments({}, 10.0, 0.15, 0.05);
        check("no pauses keeps all", keeps.size() == 1 && near(keeps[0].end, 10.0));
    }
    {
        const auto both = TidleEngine::keepSegments({{3.0, 6.0}, {12.0, 16.0}}, 20.0, 0.0, 0.05);
        const auto secondOnly = TidleEngine::keepSegments({{12.0, 16.0}}, 20.0, 0.0, 0.05);
        check("keeping a pause restores its span",
              near(removedTime(secondOnly, 20.0), 4.0) && near(removedTime(both, 20.0), 7.0));
    }
    check("batch format filter", batchFormatFilterHolds());
    check("batch folder expands to videos", batchFolderExpandsToVideos());

    if (failures == 0) {
        std::printf("All self-tests passed.\n");
        return 0;
    }
    std::printf("%d self-test(s) FAILED.\n", failures);
    return 1;
}
