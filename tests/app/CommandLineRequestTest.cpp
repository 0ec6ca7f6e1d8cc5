#include "CommandLineRequest.h"

#include <gtest/gtest.h>

namespace {

struct RequestCase {
    const char* name;
    QStringList arguments; // without element 0
    std::optional<CommandLineRequest> expected;
};

void PrintTo(const RequestCase& c, std::ostream* out)
{
    *out << c.name;
}

class ParseCommandLine : public testing::TestWithParam<RequestCase> {};

TEST_P(ParseCommandLine, findsInputOutputAndMode)
{
    const RequestCase& c = GetParam();
    const auto request =
        CommandLineRequest::parse(QStringList{"/usr/bin/hushpane"} + c.arguments, "/home/ann");
    ASSERT_EQ(request.has_value(), c.expected.has_value());
    if (!request)
        return;
    EXPECT_EQ(request->input, c.expected->input);
    EXPECT_EQ(request->output, c.expected->output);
    EXPECT_EQ(request->fast, c.expected->fast);
}

using R = CommandLineRequest;

INSTANTIATE_TEST_SUITE_P(
    Table, ParseCommandLine,
    testing::Values(RequestCase{"cliAlone", {"--cli"}, std::nullopt},
                    RequestCase{"fastWithoutInput", {"--cli", "--fast"}, std::nullopt},
                    RequestCase{"inputOnly",
                                {"--cli", "/rec/talk.final.mov"},
                                R{"/rec/talk.final.mov", "/rec/talk.final_tidled.mp4", false}},
                    RequestCase{"inputWithoutExtension",
                                {"--cli", "/rec/talk"},
                                R{"/rec/talk", "/rec/talk_tidled.mp4", false}},
                    RequestCase{"hiddenFileHasNoExtension",
                                {"--cli", "/rec/.talk"},
                                R{"/rec/.talk", "/rec/.talk_tidled.mp4", false}},
                    RequestCase{"fastBeforeCli",
                                {"--fast", "--cli", "/rec/a.mp4", "/out/b.mp4"},
                                R{"/rec/a.mp4", "/out/b.mp4", true}},
                    RequestCase{"fastAfterThePaths",
                                {"--cli", "/rec/a.mp4", "/out/b.mp4", "--fast"},
                                R{"/rec/a.mp4", "/out/b.mp4", true}},
                    RequestCase{"thirdPathIgnored",
                                {"--cli", "/rec/a.m4a", "/out/b.m4a", "/out/c.m4a"},
                                R{"/rec/a.m4a", "/out/b.m4a", false}},
                    RequestCase{"relativePathsFromTheWorkingDirectory",
                                {"--cli", "rec/a.m4a", "../b.m4a"},
                                R{"/home/ann/rec/a.m4a", "/home/b.m4a", false}},
                    RequestCase{"otherFlagsArePositional",
                                {"--cli", "--open", "x.mov"},
                                R{"/home/ann/--open", "/home/ann/x.mov", false}}),
    [](const auto& info) { return std::string(info.param.name); });

} // namespace
