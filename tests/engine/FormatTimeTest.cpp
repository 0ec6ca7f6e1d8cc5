#include "FormatTime.h"

#include <gtest/gtest.h>

TEST(FormatTime, roundsHalvesUpAndSwitchesToHoursAtOneHour)
{
    const std::pair<double, const char*> cases[] = {
        {0, "0:00"},           {59.4, "0:59"},      {59.5, "1:00"},        {61, "1:01"},
        {599.5, "10:00"},      {3599.4, "59:59"},   {3599.5, "1:00:00"},   {3600, "1:00:00"},
        {3725, "1:02:05"},     {36000, "10:00:00"}, {360000, "100:00:00"}, {0.49999, "0:00"},
        {86399.6, "24:00:00"},
    };
    for (auto [seconds, expected] : cases)
        EXPECT_EQ(formatTime(seconds), QString::fromLatin1(expected)) << "for " << seconds;
}
