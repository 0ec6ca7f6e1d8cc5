#include "Fixtures.h"

#include <gtest/gtest.h>

using Fixtures::runHushpane;

// The real executable: the self-test wins over the command line in either order, and the
// command-line mode is chosen over the window whatever else is given.
TEST(Entry, selfTestWinsOverCommandLineInEitherOrder)
{
    const auto selfTest = runHushpane({"--selftest"});
    const auto commandLine = runHushpane({"--cli"});
    EXPECT_NE(selfTest.standardOutput, commandLine.standardOutput);
    for (const QStringList& both :
         {QStringList{"--cli", "--selftest"}, QStringList{"--selftest", "--cli"}}) {
        const auto result = runHushpane(both);
        EXPECT_EQ(result.exitCode, selfTest.exitCode);
        EXPECT_EQ(result.standardOutput, selfTest.standardOutput);
    }
    // "--open" is only a path to the command-line mode, which then fails to read it.
    const auto withOpen = runHushpane({"--open", "x.mov", "--cli"});
    EXPECT_EQ(withOpen.exitCode, 1);
    EXPECT_TRUE(withOpen.standardOutput.startsWith("error: "));
}

TEST(Entry, terminalModesWriteNothingToStandardError)
{
    EXPECT_EQ(runHushpane({"--selftest"}).standardError, "");
    EXPECT_EQ(runHushpane({"--cli"}).standardError, "");
}
