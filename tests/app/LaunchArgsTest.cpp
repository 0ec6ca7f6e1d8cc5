#include "LaunchArgs.h"

#include <gtest/gtest.h>

namespace {

struct ScanCase {
    const char* name;
    QStringList arguments; // without element 0
    LaunchPlan expected;
};

void PrintTo(const ScanCase& c, std::ostream* out)
{
    *out << c.name;
}

class ScanLaunchArguments : public testing::TestWithParam<ScanCase> {};

TEST_P(ScanLaunchArguments, choosesModeAndLocations)
{
    const ScanCase& c = GetParam();
    const LaunchPlan plan =
        scanLaunchArguments(QStringList{"/usr/bin/hushpane"} + c.arguments, "/home/ann");
    EXPECT_EQ(plan.mode, c.expected.mode);
    EXPECT_EQ(plan.openPath, c.expected.openPath);
    EXPECT_EQ(plan.batchPath, c.expected.batchPath);
    EXPECT_EQ(plan.openPaths, c.expected.openPaths);
}

using M = LaunchMode;
using P = LaunchPlan;

INSTANTIATE_TEST_SUITE_P(
    Table, ScanLaunchArguments,
    testing::Values(
        ScanCase{"nothing", {}, P{M::window, {}, {}}},
        ScanCase{"selfTestWinsAfterCli", {"--cli", "--selftest"}, P{M::selfTest, {}, {}}},
        ScanCase{"selfTestWinsBeforeCli", {"--selftest", "--cli", "x"}, P{M::selfTest, {}, {}}},
        ScanCase{"cliIgnoresOpen", {"--open", "a.mov", "--cli"}, P{M::commandLine, {}, {}}},
        ScanCase{
            "openRelative", {"--open", "talks/a.mov"}, P{M::window, "/home/ann/talks/a.mov", {}}},
        ScanCase{"openAbsolute", {"--open", "/tmp/a.mov"}, P{M::window, "/tmp/a.mov", {}}},
        ScanCase{"openLastSetsNothing", {"x", "--open"}, P{M::window, {}, {}, {"/home/ann/x"}}},
        ScanCase{"firstOpenWins",
                 {"--open", "a.mov", "--open", "b.mov"},
                 P{M::window, "/home/ann/a.mov", {}}},
        ScanCase{"openAndBatch",
                 {"--open", "a.mov", "--batch", "/rec"},
                 P{M::window, "/home/ann/a.mov", "/rec"}},
        ScanCase{"valueIsTakenEvenIfItLooksLikeAFlag",
                 {"--open", "--batch", "x"},
                 P{M::window, "/home/ann/--batch", "/home/ann/x"}},
        ScanCase{"flagsMatchWholeElementsOnly",
                 {"--open=a.mov", "--Open", "b", "--CLI", "--selftest2"},
                 P{M::window, {}, {}, {"/home/ann/b"}}},
        ScanCase{"barePathsAreFilesToOpen",
                 {"talk.mp4", "--batch", "rec", "/tmp/b.wav", "-x"},
                 P{M::window, {}, "/home/ann/rec", {"/home/ann/talk.mp4", "/tmp/b.wav"}}},
        ScanCase{"dotDotIsResolved", {"--batch", "../bob/rec"}, P{M::window, {}, "/home/bob/rec"}}),
    [](const testing::TestParamInfo<ScanCase>& info) { return std::string(info.param.name); });

} // namespace
