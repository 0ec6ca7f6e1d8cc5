#include "ResultTexts.h"

#include <gtest/gtest.h>

namespace {

const QString minus = QString(QChar(0x2212));

struct HeroCase {
    double removed;
    double duration;
    std::optional<int> percent;
};

TEST(ResultTextsTest, HeroPercentTruncatesAndHidesNearlyNothing)
{
    const HeroCase cases[] = {
        {37.9, 100.0, 37}, // truncated, not rounded
        {0.4, 100.0, 0},   // shown as −0%: something goes, though little
        {0.01, 100.0, 0},  // the smallest removal that counts
        {0.009, 100.0, std::nullopt},
        {0.0, 100.0, std::nullopt},
        {5.0, 0.0, std::nullopt}, // no length: no figure rather than a division by zero
        {100.0, 100.0, 100},
    };
    for (const HeroCase& c : cases)
        EXPECT_EQ(ResultTexts::heroPercent(c.removed, c.duration), c.percent)
            << c.removed << " of " << c.duration;
    EXPECT_EQ(ResultTexts::heroPercentText(37), minus + "37%");
}

TEST(ResultTextsTest, PercentagesAreTruncatedTowardZero)
{
    EXPECT_EQ(ResultTexts::progressPercent(0.999), "99 %");
    EXPECT_EQ(ResultTexts::progressPercent(0.0), "0 %");
    EXPECT_EQ(ResultTexts::progressPercent(1.0), "100 %");
    EXPECT_EQ(ResultTexts::removedPercent(0.374), minus + "37 %");
    EXPECT_EQ(ResultTexts::removedPercent(0.0049), minus + "0 %");
    EXPECT_EQ(ResultTexts::durationChange(3725.0, 61.0), QString::fromUtf8("1:02:05 → 1:01"));
}

} // namespace
