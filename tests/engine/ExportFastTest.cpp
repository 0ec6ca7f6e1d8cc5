#include "ExportFixtures.h"
#include "ExportProbe.h"
#include "Fixtures.h"
#include "TidleEngine.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

using ExportFixtures::toneFrequencyAt;

// Inputs that fast mode used to fail on or to cut loosely, each exported once with keeps
// that start and end between keyframes.
struct FastCase {
    const char* name;
    QString (*source)();
    OutputContainer container;
    const char* videoCodec;
    const char* videoTag;
    bool exact; // cut where the keeps say, or from the keyframe before
};

void PrintTo(const FastCase& c, std::ostream* out)
{
    *out << c.name;
}

const std::vector<Segment> keeps = {{1.3, 2.2}, {4.1, 6.0}};
constexpr double kept = 2.8;
constexpr double frame = 0.04;

class FastSource : public testing::TestWithParam<FastCase> {
protected:
    static QString output()
    {
        static QTemporaryDir folder;
        const FastCase& c = GetParam();
        const QString path = folder.filePath(
            QString(c.name) + (c.container == OutputContainer::MPEG4 ? ".mp4" : ".mov"));
        if (!QFile::exists(path)) {
            TidleSettings settings;
            settings.frameAccurate = false;
            TidleEngine engine;
            engine.encode(c.source(), path, ExportFixtures::analysis(keeps, 8.0, true, c.container),
                          settings, [](double) {});
        }
        return path;
    }
};

TEST_P(FastSource, exportsAFileThatDecodesWithoutError)
{
    EXPECT_EQ(Fixtures::decodeErrors(output()).toStdString(), "");
    const auto video = ExportProbe::streams(output(), "video");
    const auto sound = ExportProbe::streams(output(), "audio");
    ASSERT_EQ(video.size(), 1u);
    ASSERT_EQ(sound.size(), 1u);
    EXPECT_EQ(video[0].value("codec_name").toString(), GetParam().videoCodec);
    EXPECT_EQ(video[0].value("codec_tag_string").toString(), GetParam().videoTag);
    // Opus has no place in an MPEG-4 or QuickTime file that players read: it becomes AAC.
    EXPECT_EQ(sound[0].value("codec_name").toString(), "aac");
}

TEST_P(FastSource, keepsPicturesAndSoundTheLengthOfTheKeeps)
{
    const double video = ExportProbe::streamDuration(ExportProbe::streams(output(), "video").at(0));
    const double sound = ExportProbe::streamDuration(ExportProbe::streams(output(), "audio").at(0));
    if (GetParam().exact) {
        // 2.8 s at 25 fps, give or take the picture a cut falls into.
        EXPECT_NEAR(video, kept, frame);
        EXPECT_NEAR(ExportProbe::countVideoFrames(output()), 70, 1);
    } else {
        EXPECT_GE(video, kept - 0.001);
        EXPECT_LE(video, kept + 2 * (1.0 + 0.2));
    }
    EXPECT_NEAR(sound, video, 0.05);
}

TEST_P(FastSource, placesEachKeepsSoundWhereItsPicturesAre)
{
    // Output 0.5 s is source 1.8 s, or 1.5 s where the span starts at the keyframe at 1.0 s;
    // output 1.6 s is source 4.8 s, or about 4.4 s: each within one tone of the source.
    for (const auto [at, source] : {std::pair{0.5, 1.8}, std::pair{1.6, 4.8}}) {
        const auto samples = ExportProbe::decodeSound(output(), at, 0.1, 48000);
        const double expected = toneFrequencyAt(source);
        EXPECT_NEAR(ExportProbe::toneFrequency(samples, 48000), expected, expected * 0.04)
            << "at " << at << " s";
    }
}

INSTANTIATE_TEST_SUITE_P(Table, FastSource,
                         testing::Values(FastCase{"h264Matroska", ExportFixtures::h264Matroska,
                                                  OutputContainer::MPEG4, "h264", "avc1", true},
                                         FastCase{"h264OpenGop", ExportFixtures::h264OpenGop,
                                                  OutputContainer::MPEG4, "h264", "avc1", true},
                                         FastCase{"hevcMatroska", ExportFixtures::hevcMatroska,
                                                  OutputContainer::MPEG4, "hevc", "hvc1", false},
                                         FastCase{"vp9Webm", ExportFixtures::vp9Webm,
                                                  OutputContainer::QuickTimeMovie, "h264", "avc1",
                                                  true}),
                         [](const auto& info) { return std::string(info.param.name); });

} // namespace
