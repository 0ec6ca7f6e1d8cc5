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
    QStringList expected;
    for (int i = 0; i < 8; ++i)
        expected << "  ok   " + checkNames[i];
    expected << "  FAIL batch folder expands to videos"
             << "1 self-test(s) FAILED.";
    EXPECT_EQ(result.standardOutput.split('\n', Qt::SkipEmptyParts), expected);
    EXPECT_EQ(result.exitCode, 1);
}
