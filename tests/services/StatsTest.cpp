#include "Stats.h"
#include "Localization.h"
#include "PreferenceSandbox.h"
#include "PreferenceStore.h"

#include <limits>

namespace {

class SavedTime : public PreferenceSandboxTest {
protected:
    static void setTotal(double seconds)
    {
        PreferenceStore().setValue("totalSecondsSaved", seconds);
    }
};

} // namespace

TEST_F(SavedTime, amountsThatAreNotPositiveLeaveTheTotalAlone)
{
    for (double amount : {0.0, -3.0, std::numeric_limits<double>::quiet_NaN()}) {
        Stats::add(amount);
        EXPECT_FALSE(PreferenceStore().contains("totalSecondsSaved")) << amount;
        setTotal(10.0);
        Stats::add(amount);
        EXPECT_EQ(Stats::totalSecondsSaved(), 10.0) << amount;
        PreferenceStore().remove("totalSecondsSaved");
    }
}

TEST_F(SavedTime, additionsAccumulateFromAnAbsentTotal)
{
    EXPECT_EQ(Stats::totalSecondsSaved(), 0.0);
    EXPECT_EQ(Stats::savedDescription(), localized("saved.seconds").arg("0"));
    Stats::add(12.5);
    EXPECT_EQ(PreferenceStore().value("totalSecondsSaved").toDouble(), 12.5);
    Stats::add(0.25);
    Stats::add(100.0);
    EXPECT_EQ(Stats::totalSecondsSaved(), 112.75);
}

TEST_F(SavedTime, descriptionPicksTheUnitOnTheRawTotalAndRoundsLikePrintf)
{
    struct Row {
        double total;
        const char* key;
        const char* number;
    };
    const Row rows[] = {
        {0.0, "saved.seconds", "0"},  {59.6, "saved.seconds", "60"},
        {60.0, "saved.minutes", "1"}, {3599.0, "saved.minutes", "60"},
        {3600.0, "saved.hours", "1"}, {5400.0, "saved.hours", "2"},
        {9000.0, "saved.hours", "2"}, // 2.5 h: printf rounds half to even
    };
    for (const Row& row : rows) {
        setTotal(row.total);
        EXPECT_EQ(Stats::savedDescription(), localized(row.key).arg(row.number)) << row.total;
    }
    EXPECT_EQ(localized("saved.minutes").arg("1"), "1 min");
}
