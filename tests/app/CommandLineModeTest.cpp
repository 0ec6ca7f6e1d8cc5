#include "Fixtures.h"
#include "Recordings.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <csignal>
#include <gtest/gtest.h>

namespace {

using Fixtures::runHushpane;

const QString usage = "usage: Hushpane --cli [--fast] <input> [output]\n";

// 3 s of a steady tone: no pause at all.
QString steadyTone()
{
    return Fixtures::makeWithFfmpeg(
        "cli-steady.m4a", {"-f", "lavfi", "-i", "sine=f=440:d=3:sample_rate=48000", "-c:a", "aac"});
}

// 3 s of digital silence: one pause over everything.
QString allQuiet()
{
    return Fixtures::makeWithFfmpeg(
        "cli-quiet.m4a",
        {"-f", "lavfi", "-i", "anullsrc=r=48000:cl=mono", "-t", "3", "-c:a", "aac"});
}

// 3 s of H.264 (a keyframe every second) with a steady tone.
QString steadyVideo()
{
    return Fixtures::makeWithFfmpeg(
        "cli-video.mp4", {"-f",       "lavfi",   "-i",      "testsrc2=s=160x120:r=25:d=3",
                          "-f",       "lavfi",   "-i",      "sine=f=440:d=3:sample_rate=48000",
                          "-c:v",     "libx264", "-preset", "veryfast",
                          "-crf",     "30",      "-g",      "25",
                          "-pix_fmt", "yuv420p", "-c:a",    "aac"});
}

QStringList lines(const QString& output)
{
    return output.split('\n', Qt::SkipEmptyParts);
}

QByteArray contents(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// The executable run from `folder`, for relative paths.
Fixtures::ProcessResult runIn(const QString& folder, const QStringList& arguments)
{
    QProcess process;
    process.setWorkingDirectory(folder);
    process.start(HUSHPANE_BINARY, arguments);
    if (!process.waitForFinished(120000))
        return {};
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

std::vector<int> videoPacketSizes(const QString& file)
{
    const auto result =
        Fixtures::run("ffprobe", {"-v", "error", "-select_streams", "v:0", "-show_entries",
                                  "packet=size", "-of", "csv=p=0", file});
    std::vector<int> sizes;
    for (const QString& line : lines(result.standardOutput))
        sizes.push_back(line.toInt());
    return sizes;
}

TEST(CommandLineMode, withoutAnInputPrintsTheUsageAndExitsWithTwo)
{
    const auto result = runHushpane({"--cli"});
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.standardOutput, usage);
    EXPECT_EQ(result.standardError, "");
}

// The report, then a percentage counting up on one line until "done" goes over it.
TEST(CommandLineMode, reportsThePlanAndWritesTheKeptSound)
{
    const struct {
        QString (*input)();
        QStringList report;
        double outputSeconds;
    } rows[] = {
        {steadyTone,
         {"duration: 0:03", "pauses:   0, removing 0:00", "keeping:  0:03 across 1 segments"},
         3.0},
        // The first and the last 0.15 s.
        {allQuiet,
         {"duration: 0:03", "pauses:   1, removing 0:03", "keeping:  0:00 across 2 segments"},
         0.3},
    };
    for (const auto& row : rows) {
        QTemporaryDir folder;
        const QString output = folder.filePath("out.m4a");
        const auto result = runHushpane({"--cli", row.input(), output});
        EXPECT_EQ(result.exitCode, 0);
        EXPECT_EQ(result.standardError, "");
        const QStringList printed = lines(result.standardOutput);
        ASSERT_EQ(printed.size(), 4) << result.standardOutput.toStdString();
        EXPECT_EQ(printed.mid(0, 3), row.report);
        EXPECT_TRUE(printed[3].endsWith("\r100.0%\rdone: " + output)) << printed[3].toStdString();
        EXPECT_TRUE(
            QRegularExpression(R"(^(\r[ \d]{2}\d\.\d%)+\rdone: )").match(printed[3]).hasMatch());
        EXPECT_EQ(Fixtures::decodeErrors(output), "");
        EXPECT_NEAR(Fixtures::probeDuration(output), row.outputSeconds, 0.03);
    }
}

TEST(CommandLineMode, aBrokenFileGivesTheErrorLineAndStatusOne)
{
    QTemporaryDir folder;
    const QString input = folder.filePath("broken.m4a");
    QFile file(input);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("this is not a recording");
    file.close();
    const auto result = runHushpane({"--cli", input});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.standardError, "");
    const QStringList printed = lines(result.standardOutput);
    ASSERT_EQ(printed.size(), 1);
    EXPECT_TRUE(printed[0].startsWith("error: ")) << printed[0].toStdString();
    EXPECT_GT(printed[0].size(), QString("error: ").size());
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden), QStringList{"broken.m4a"});
}

// A relative input counts from the working directory.
TEST(CommandLineMode, writesBesideTheInputUnderTheDefaultName)
{
    QTemporaryDir folder;
    ASSERT_TRUE(QFile::copy(steadyTone(), folder.filePath("talk.final.m4a")));
    const auto result = runIn(folder.path(), {"--cli", "talk.final.m4a"});
    EXPECT_EQ(result.exitCode, 0);
    const QString output = folder.filePath("talk.final_tidled.mp4");
    EXPECT_TRUE(result.standardOutput.endsWith("\rdone: " + output + "\n"));
    // The name says .mp4; the sound-only container is what goes in.
    const QJsonObject format = Fixtures::probe(output).value("format").toObject();
    EXPECT_EQ(format.value("tags").toObject().value("major_brand").toString(), "M4A ");
}

TEST(CommandLineMode, fastBeforeCliCopiesTheVideo)
{
    QTemporaryDir folder;
    const QString fast = folder.filePath("fast.mp4");
    const QString accurate = folder.filePath("accurate.mp4");
    ASSERT_EQ(runHushpane({"--fast", "--cli", steadyVideo(), fast}).exitCode, 0);
    ASSERT_EQ(runHushpane({"--cli", steadyVideo(), accurate}).exitCode, 0);
    // Nothing is cut, so a copy holds the source's packets as they were; a re-encode does not.
    const auto source = videoPacketSizes(steadyVideo());
    EXPECT_EQ(videoPacketSizes(fast), source);
    EXPECT_NE(videoPacketSizes(accurate), source);
    EXPECT_EQ(Fixtures::decodeErrors(fast), "");
}

// The report comes first; the input is never written over, reached by another path or not.
TEST(CommandLineMode, anExportFailureFollowsTheReportAndLeavesTheInputAlone)
{
    QTemporaryDir folder;
    const QString input = folder.filePath("talk.m4a");
    ASSERT_TRUE(QFile::copy(steadyTone(), input));
    const QByteArray before = contents(input);
    const auto result = runHushpane({"--cli", input, folder.filePath("missing/out.m4a")});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.standardError, "");
    const QStringList printed = lines(result.standardOutput);
    ASSERT_EQ(printed.size(), 4);
    EXPECT_TRUE(printed[0].startsWith("duration: "));
    EXPECT_EQ(printed[3],
              "error: The new file could not be written: creating the new file: No such "
              "file or directory.");

    const auto overInput = runHushpane({"--cli", input, folder.path() + "/./talk.m4a"});
    EXPECT_EQ(overInput.exitCode, 1);
    EXPECT_TRUE(lines(overInput.standardOutput).last().startsWith("error: "));
    EXPECT_EQ(contents(input), before);
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden), QStringList{"talk.m4a"});
}

class InterruptedExport : public testing::TestWithParam<int> {};

TEST_P(InterruptedExport, cancelsAndLeavesOnlyTheInput)
{
    QTemporaryDir folder;
    const QString input = folder.filePath("talk.mp4");
    ASSERT_TRUE(QFile::copy(Recordings::longVideo(), input));
    QProcess process;
    process.start(HUSHPANE_BINARY, {"--cli", input});
    ASSERT_TRUE(process.waitForStarted());
    QByteArray printed;
    // The first percentage means the export has its temporary file open.
    while (!printed.contains('%') && process.state() == QProcess::Running) {
        process.waitForReadyRead(1000);
        printed += process.readAllStandardOutput();
    }
    ASSERT_TRUE(printed.contains('%')) << printed.toStdString();
    ASSERT_EQ(::kill(pid_t(process.processId()), GetParam()), 0);
    ASSERT_TRUE(process.waitForFinished(60000));
    printed += process.readAllStandardOutput();
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(process.exitCode(), 1);
    EXPECT_TRUE(lines(QString::fromUtf8(printed)).last().contains("%error: "))
        << printed.toStdString();
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden), QStringList{"talk.mp4"});
}

INSTANTIATE_TEST_SUITE_P(BySignal, InterruptedExport, testing::Values(SIGINT, SIGTERM),
                         [](const auto& info) {
                             return std::string(info.param == SIGINT ? "ctrlC" : "sigterm");
                         });

} // namespace
