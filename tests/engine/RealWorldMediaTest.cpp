#include "EngineFixtures.h"
#include "Fixtures.h"
#include "Sensitivity.h"
#include "TidleEngine.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <memory>

namespace {

using namespace EngineFixtures;

TidleSettings standard()
{
    TidleSettings settings;
    SensitivityPresets::applyNumbers(Sensitivity::standard, settings);
    settings.frameAccurate = false;
    return settings;
}

// The pause is found where the sound is quiet, the sound around it where it plays, and the
// length is that of the decoded sound (where ffprobe states none, as ffmpeg decodes it).
TEST(RealWorldFile, givesThePauseWhereTheSoundIsQuiet)
{
    for (RealWorld (*fixture)() :
         {gappedAac, flvStream, liveWebm, liveMatroska, unknownTrackBesideSound}) {
        const RealWorld file = fixture();
        SCOPED_TRACE(file.file.toStdString());
        TidleEngine engine;
        const Analysis analysis = engine.analyze(file.file, standard());
        ASSERT_EQ(analysis.silences.size(), 1u);
        EXPECT_NEAR(analysis.silences[0].start, file.pauseStart, 0.06);
        EXPECT_NEAR(analysis.silences[0].end, file.pauseEnd, 0.06);
        ASSERT_EQ(analysis.keeps.size(), 2u);
        const double stated = Fixtures::probeDuration(file.file);
        EXPECT_NEAR(analysis.duration, stated > 0.0 ? stated : decodedSeconds(file.file), 0.05);
        const auto levelAt = [&](double seconds) {
            return analysis.levels.at(std::size_t(seconds / 0.05));
        };
        // Lossy coding leaves a tone's level within a few percent.
        EXPECT_NEAR(levelAt(file.pauseStart - 0.3), toneLevel, 0.03);
        EXPECT_NEAR(levelAt(file.pauseEnd + 0.3), toneLevel, 0.03);
        EXPECT_LT(levelAt((file.pauseStart + file.pauseEnd) / 2), 0.001);
    }
}

// Analyses a file and exports its keeps into a folder of its own.
struct Exported {
    QTemporaryDir folder;
    QString output;
    double kept = 0.0; // seconds the analysis keeps
};

std::unique_ptr<Exported> exportKeeps(const RealWorld& file)
{
    auto exported = std::make_unique<Exported>();
    TidleEngine engine;
    const Analysis analysis = engine.analyze(file.file, standard());
    exported->output = exported->folder.filePath("out.m4a");
    engine.encode(file.file, exported->output, analysis, standard(), [](double) {});
    for (const Segment& keep : analysis.keeps)
        exported->kept += keep.end - keep.start;
    return exported;
}

// What the analysis cuts is what the export cuts: after a timestamp gap, the output holds
// both stretches of tone and no more quiet than the padding on each side of the cut.
TEST(RealWorldExport, cutsThePauseAcrossATimestampGap)
{
    const auto exported = exportKeeps(gappedAac());
    EXPECT_NEAR(Fixtures::probeDuration(exported->output), exported->kept, 0.05);
    EXPECT_NEAR(exported->kept, 7.0 - 3.0 + 2 * 0.15, 0.1);
    const auto quiet = Fixtures::run("ffmpeg", {"-hide_banner", "-i", exported->output, "-af",
                                                "silencedetect=n=-35dB:d=0.4", "-f", "null", "-"});
    EXPECT_FALSE(quiet.standardError.contains("silence_start"))
        << quiet.standardError.toStdString();
}

// The export leaves out the track nobody can hear, as the analysis did.
TEST(RealWorldExport, leavesOutTheUndecodableTrack)
{
    const auto exported = exportKeeps(unknownTrackBesideSound());
    EXPECT_EQ(Fixtures::decodeErrors(exported->output), "");
    EXPECT_NEAR(Fixtures::probeDuration(exported->output), 4.0 - 1.0 + 2 * 0.15, 0.1);
}

} // namespace
