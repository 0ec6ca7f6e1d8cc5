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
    const char* source;
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

class FastSource : public testing::TestWithParam<FastCase> {};

TEST_P(FastSource, exportsAFileOfTheKeepsLengthWithSoundInPlace)
{
    const FastCase& c = GetParam();
    QTemporaryDir folder;
    const QString output =
        folder.filePath(c.container == OutputContainer::MPEG4 ? "out.mp4" : "out.mov");
    TidleSettings settings;
    settings.frameAccurate = false;
    TidleEngine engine;
    engine.encode(ExportFixtures::media(c.source), output,
                  ExportFixtures::analysis(keeps, 8.0, true, c.container), settings, [](double) {});
    EXPECT_EQ(Fixtures::decodeErrors(output).toStdString(), "");
    const auto video = ExportProbe::streams(output, "video");
    const auto sound = ExportProbe::streams(output, "audio");
    ASSERT_EQ(video.size(), 1u);
    ASSERT_EQ(sound.size(), 1u);
    EXPECT_EQ(video[0].value("codec_name").toString(), c.videoCodec);
    EXPECT_EQ(video[0].value("codec_tag_string").toString(), c.videoTag);
    // Opus has no place in an MPEG-4 or QuickTime file that players read: it becomes AAC.
    EXPECT_EQ(sound[0].value("codec_name").toString(), "aac");

    const double videoLength = ExportProbe::streamDuration(video[0]);
    if (c.exact) {
        // 2.8 s at 25 fps, give or take the picture a cut falls into.
        EXPECT_NEAR(videoLength, kept, frame);
        EXPECT_NEAR(ExportProbe::countVideoFrames(output), 70, 1);
    } else {
        EXPECT_GE(videoLength, kept - 0.001);
        EXPECT_LE(videoLength, kept + 2 * (1.0 + 0.2));
    }
    EXPECT_NEAR(ExportProbe::streamDuration(sound[0]), videoLength, 0.05);

    // Output 0.5 s is source 1.8 s, or 1.5 s where the span starts at the keyframe at 1.0 s;
    // output 1.6 s is source 4.8 s, or about 4.4 s: each within one tone of the source.
    for (const auto [at, source] : {std::pair{0.5, 1.8}, std::pair{1.6, 4.8}}) {
        const auto samples = ExportProbe::decodeSound(output, at, 0.1, 48000);
        const double expected = toneFrequencyAt(source);
        EXPECT_NEAR(ExportProbe::toneFrequency(samples, 48000), expected, expected * 0.04)
            << "at " << at << " s";
    }
}

INSTANTIATE_TEST_SUITE_P(
    Table, FastSource,
    testing::Values(
        FastCase{"h264Matroska", "bframes.mkv", OutputContainer::MPEG4, "h264", "avc1", true},
        FastCase{"h264OpenGop", "open-gop.mp4", OutputContainer::MPEG4, "h264", "avc1", true},
        FastCase{"hevcMatroska", "hevc.mkv", OutputContainer::MPEG4, "hevc", "hvc1", false},
        FastCase{"vp9Webm", "vp9.webm", OutputContainer::QuickTimeMovie, "h264", "avc1", true}),
    [](const auto& info) { return std::string(info.param.name); });

} // namespace
