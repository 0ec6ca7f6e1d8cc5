#include "Sensitivity.h"

#include <gtest/gtest.h>

using namespace SensitivityPresets;

TEST(Sensitivity, rawValuesRoundTripExactlyAndNothingElseParses)
{
    for (Sensitivity s : allCases)
        EXPECT_EQ(fromRawValue(rawValue(s)), s);
    EXPECT_EQ(rawValue(Sensitivity::aggressive), "aggressive");
    for (const char* text : {"Standard", "", "STANDARD", " standard", "medium"})
        EXPECT_FALSE(fromRawValue(QString::fromLatin1(text)).has_value()) << text;
}

TEST(Sensitivity, presetsCarryTheirNumbersAndLeaveFrameAccurateAlone)
{
    struct Row {
        Sensitivity sensitivity;
        double threshold, minPause, padding;
    };
    for (const Row& row : {Row{Sensitivity::delicate, -45.0, 1.0, 0.25},
                           Row{Sensitivity::standard, -35.0, 0.6, 0.15},
                           Row{Sensitivity::aggressive, -30.0, 0.4, 0.1}}) {
        TidleSettings settings{0, 0, 0, false};
        ASSERT_TRUE(applyNumbers(row.sensitivity, settings));
        EXPECT_EQ(settings, (TidleSettings{row.threshold, row.minPause, row.padding, false}));
    }
    TidleSettings mine{-20, 2, 0.5, true};
    EXPECT_FALSE(applyNumbers(Sensitivity::custom, mine));
    EXPECT_EQ(mine, (TidleSettings{-20, 2, 0.5, true}));
}
