#include "ExportFixtures.h"
#include "ExportProbe.h"
#include "ExportProgress.h"
#include "Exporter.h"
#include "Fixtures.h"
#include "Localization.h"
#include "MediaError.h"
#include "TidleEngine.h"
#include "TidleError.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <chrono>
#include <gtest/gtest.h>
#include <optional>

namespace {

using ExportFixtures::analysis;

const Analysis toneAnalysis =
    analysis({{1.0, 2.5}, {4.0, 6.0}}, 8.0, false, OutputContainer::AppleM4A);

TidleSettings settings(bool frameAccurate)
{
    TidleSettings result;
    result.frameAccurate = frameAccurate;
    return result;
}

QByteArray fileHash(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QCryptographicHash::hash(file.readAll(), QCryptographicHash::Sha256);
}

void writeFile(const QString& path, const QByteArray& contents)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(contents);
}

// Runs `call`, which must throw a TidleError, and returns it.
template <typename Call> TidleError engineError(Call call)
{
    try {
        call();
    } catch (const TidleError& error) {
        return error;
    }
    ADD_FAILURE() << "no TidleError thrown";
    return TidleError::exportFailed("none");
}

TEST(ExportSafety, replacesAFileAlreadyAtTheDestination)
{
    QTemporaryDir folder;
    const QString output = folder.filePath("talk.m4a");
    writeFile(output, "an older file that is not media");
    TidleEngine engine;
    engine.encode(ExportFixtures::media("tones.m4a"), output, toneAnalysis, settings(true),
                  [](double) {});
    EXPECT_EQ(Fixtures::decodeErrors(output), "");
    EXPECT_NEAR(Fixtures::probeDuration(output), 3.5, 0.03);
    EXPECT_EQ(ExportProbe::folderEntries(folder.path()), QStringList{"talk.m4a"});
}

TEST(ExportSafety, reportsRisingProgressEndingAtExactlyOne)
{
    QTemporaryDir folder;
    std::vector<double> reports;
    TidleEngine engine;
    engine.encode(ExportFixtures::media("long.mp4"), folder.filePath("out.mp4"),
                  analysis({{1.0, 19.0}}, 20.0, true, OutputContainer::MPEG4), settings(true),
                  [&](double fraction) { reports.push_back(fraction); });
    ASSERT_GE(reports.size(), 2u) << "a re-encode of 18 s reports along the way";
    EXPECT_EQ(reports.back(), 1.0);
    for (std::size_t i = 0; i < reports.size(); ++i) {
        EXPECT_GE(reports[i], 0.0);
        EXPECT_LE(reports[i], 1.0);
        if (i > 0) {
            EXPECT_GE(reports[i], reports[i - 1]);
        }
        if (i + 1 < reports.size()) {
            EXPECT_LT(reports[i], 1.0);
        }
    }
}

// However far the work says it is, 1.0 waits for the file to be in place.
TEST(ExportSafety, progressSaysOneOnlyOnceFinished)
{
    std::vector<double> reports;
    ExportProgress progress([&](double fraction) { reports.push_back(fraction); },
                            std::chrono::milliseconds(0));
    progress.update(1.0);
    progress.finish();
    ASSERT_EQ(reports.size(), 2u);
    EXPECT_LT(reports[0], 1.0);
    EXPECT_EQ(reports[1], 1.0);
}

TEST(ExportSafety, cancelMidwayLeavesNoFileAndNoTemporaryFile)
{
    QTemporaryDir folder;
    const QString output = folder.filePath("out.mp4");
    writeFile(output, "replaced before the export starts");
    TidleEngine engine;
    int reports = 0;
    const TidleError error = engineError([&] {
        engine.encode(ExportFixtures::media("long.mp4"), output,
                      analysis({{0.0, 20.0}}, 20.0, true, OutputContainer::MPEG4), settings(true),
                      [&](double) {
                          ++reports;
                          engine.cancel();
                      });
    });
    EXPECT_EQ(error.kind(), TidleError::Kind::cancelled);
    EXPECT_EQ(reports, 1);
    EXPECT_TRUE(ExportProbe::folderEntries(folder.path()).isEmpty());
}

// A cancel already set when the packets start flowing, in each strategy: the temporary
// file exists by then and must go.
TEST(ExportSafety, aCancelInAnyStrategyLeavesNothingBehind)
{
    const struct {
        const char* strategy;
        QString input;
        OutputContainer container;
        bool frameAccurate;
    } rows[] = {
        {"audio only", ExportFixtures::media("tones.m4a"), OutputContainer::AppleM4A, true},
        {"re-encode", ExportFixtures::media("flash.mp4"), OutputContainer::MPEG4, true},
        {"pass-through", ExportFixtures::media("flash.mp4"), OutputContainer::MPEG4, false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.strategy);
        QTemporaryDir folder;
        const Exporter::Request request{
            row.input, folder.filePath("out"), row.container, {{0.5, 1.5}}, row.frameAccurate};
        const std::atomic<bool> cancel{true};
        const TidleError error =
            engineError([&] { Exporter::run(request, cancel, [](double) {}); });
        EXPECT_EQ(error.kind(), TidleError::Kind::cancelled);
        EXPECT_TRUE(ExportProbe::folderEntries(folder.path()).isEmpty());
    }
}

TEST(ExportSafety, anUnusableDestinationFailsClearlyAndWritesNothing)
{
    // Inside a fresh folder that holds a folder "sub" and a file "file".
    const std::pair<const char*, const char*> rows[] = {
        {"sub", "choosing the destination: Is a directory"},
        {"missing/out.m4a", "creating the new file: No such file or directory"},
        {"file/out.m4a", "creating the new file: Not a directory"},
    };
    for (const auto& [destination, payload] : rows) {
        SCOPED_TRACE(destination);
        QTemporaryDir folder;
        ASSERT_TRUE(QDir(folder.path()).mkdir("sub"));
        writeFile(folder.filePath("file"), "x");
        TidleEngine engine;
        const TidleError error = engineError([&] {
            engine.encode(ExportFixtures::media("tones.m4a"), folder.filePath(destination),
                          toneAnalysis, settings(true), [](double) {});
        });
        EXPECT_EQ(error.kind(), TidleError::Kind::exportFailed);
        EXPECT_EQ(error.payload(), payload);
        EXPECT_EQ(
            QDir(folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
            (QStringList{"file", "sub"}));
        EXPECT_TRUE(ExportProbe::folderEntries(folder.filePath("sub")).isEmpty());
    }
}

// However the path reaches the input, the export is refused and the input stays as it was.
TEST(ExportSafety, anOutputThatIsTheInputIsRefused)
{
    for (const char* output :
         {"dir/talk.m4a", "dir/./talk.m4a", "dir/../dir/talk.m4a", "link.m4a"}) {
        SCOPED_TRACE(output);
        QTemporaryDir folder;
        ASSERT_TRUE(QDir(folder.path()).mkdir("dir"));
        const QString input = folder.filePath("dir/talk.m4a");
        ASSERT_TRUE(QFile::copy(ExportFixtures::media("tones.m4a"), input));
        ASSERT_TRUE(QFile::link(input, folder.filePath("link.m4a")));
        const QByteArray before = fileHash(input);
        TidleEngine engine;
        const TidleError error = engineError([&] {
            engine.encode(input, folder.path() + "/" + output, toneAnalysis, settings(true),
                          [](double) {});
        });
        EXPECT_EQ(error.kind(), TidleError::Kind::exportFailed);
        EXPECT_EQ(error.payload(), localized("diag.sameFile"));
        EXPECT_EQ(fileHash(input), before);
        EXPECT_EQ(ExportProbe::folderEntries(folder.filePath("dir")), QStringList{"talk.m4a"});
    }
}

// Exports that fail once under way, each with its own error; the input stays as it was.
TEST(ExportSafety, aFailureLeavesNoFileBehind)
{
    const struct {
        const char* what;
        const char* input;       // none: no input at all
        const char* destination; // "/proc/..." cannot be created, even by root
        Analysis analysis;
        bool frameAccurate;
        std::optional<TidleError::Kind> kind; // none: the media library's own error
        const char* payloadStart;
    } rows[] = {
        // ProRes cannot go into an .mp4: the container refuses it once the file is open.
        {"prores into mp4", "prores.mov", "out.mp4",
         analysis({{0.5, 1.5}}, 2.0, true, OutputContainer::MPEG4), false,
         TidleError::Kind::exportFailed, "writing the file header: "},
        {"read-only place", "tones.m4a", "/proc/hushpane-out.m4a", toneAnalysis, true,
         TidleError::Kind::exportFailed, "creating the new file: "},
        {"no sound", "silent.mp4", "out.mp4",
         analysis({{0.5, 1.5}}, 2.0, true, OutputContainer::MPEG4), true,
         TidleError::Kind::noAudioTrack, ""},
        {"missing input", nullptr, "out.m4a", toneAnalysis, true, std::nullopt, ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        QTemporaryDir folder;
        const QString input = folder.filePath("input");
        if (row.input) {
            ASSERT_TRUE(QFile::copy(ExportFixtures::media(row.input), input));
        }
        const QByteArray before = fileHash(input);
        const QString output = QDir(folder.path()).filePath(row.destination);
        TidleEngine engine;
        const auto encode = [&] {
            engine.encode(input, output, row.analysis, settings(row.frameAccurate), [](double) {});
        };
        if (row.kind) {
            const TidleError error = engineError(encode);
            EXPECT_EQ(error.kind(), *row.kind);
            if (*row.payloadStart) {
                EXPECT_TRUE(error.payload().startsWith(row.payloadStart))
                    << error.payload().toStdString();
            }
        } else {
            EXPECT_THROW(encode(), MediaError);
        }
        EXPECT_EQ(fileHash(input), before);
        EXPECT_EQ(ExportProbe::folderEntries(folder.path()),
                  row.input ? QStringList{"input"} : QStringList{});
    }
}

// Names up to the file system's limit of 255 bytes, some in two-byte characters: the hidden
// name the file is first written under must fit as well.
TEST(ExportSafety, aNameNearTheLengthLimitIsWrittenAndLeavesNothingElse)
{
    for (const QString& name : {QString(240, 'a') + ".m4a", QString(251, 'b') + ".m4a",
                                QString(125, QChar(0x00e9)) + ".m4a"}) {
        SCOPED_TRACE(name.size());
        QTemporaryDir folder;
        ASSERT_LE(QFile::encodeName(name).size(), 255);
        TidleEngine engine;
        engine.encode(ExportFixtures::media("tones.m4a"), folder.filePath(name), toneAnalysis,
                      settings(true), [](double) {});
        EXPECT_EQ(ExportProbe::folderEntries(folder.path()), QStringList{name});
        EXPECT_EQ(Fixtures::decodeErrors(folder.filePath(name)), "");
    }
}

} // namespace
