#include "Fixtures.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

const QStringList checkNames = {"silence run detected",
                                "short pause ignored",
                                "trailing silence to end",
                                "keeps complement pause",
                                "padding shrinks cut",
                                "no pauses keeps all",
                                "keeping a pause restores its span",
                                "batch format filter",
                                "batch folder expands to videos"};

// The executable with its temporary directory pointed at `tmp`.
Fixtures::ProcessResult runSelfTestWithTemp(const QString& tmp)
{
    const QByteArray saved = qgetenv("TMPDIR");
    qputenv("TMPDIR", tmp.toLocal8Bit());
    const auto result = Fixtures::runHushpane({"--selftest"});
    qputenv("TMPDIR", saved);
    return result;
}

} // namespace

TEST(SelfTest, passesAllNineChecksAndLeavesNoFolderBehind)
{
    QTemporaryDir tmp;
    ASSERT_TRUE(tmp.isValid());
    const auto result = runSelfTestWithTemp(tmp.path());
    QStringList expected;
    for (const QString& name : checkNames)
        expected << "  ok   " + name;
    expected << "All self-tests passed."
             << "";
    EXPECT_EQ(result.standardOutput.split('\n'), expected);
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(QDir(tmp.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden),
              QStringList());
}

TEST(SelfTest, aFolderThatCannotBeMadeFailsTheLastCheckAndTheVerdict)
{
    QTemporaryDir tmp;
    ASSERT_TRUE(tmp.isValid());
    // A file where the temporary directory should be: nothing can be created inside it.
    const QString notAFolder = QDir(tmp.path()).filePath("plain-file");
    QFile file(notAFolder);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.close();

    const auto result = runSelfTestWithTemp(notAFolder);
    const QStringList lines = result.standardOutput.split('\n', Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 10);
    for (int i = 0; i < 8; ++i)
        EXPECT_EQ(lines[i], "  ok   " + checkNames[i]);
    EXPECT_EQ(lines[8], "  FAIL batch folder expands to videos");
    EXPECT_EQ(lines[9], "1 self-test(s) FAILED.");
    EXPECT_EQ(result.exitCode, 1);
}
