#include "Timecode.h"

#include <gtest/gtest.h>

namespace {

const TimecodeRate pal{25, false};
const TimecodeRate ntsc30{30, true};
const TimecodeRate ntsc60{60, true};
const TimecodeRate film{24, true};

} // namespace

TEST(Timecode, labelsFramesInNonDropAndDropFrame)
{
    const struct {
        qint64 frame;
        TimecodeRate rate;
        const char* text;
    } cases[] = {
        {0, pal, "00:00:00:00"},
        {25, pal, "00:00:01:00"},
        {90000, pal, "01:00:00:00"},
        {24 * 3600 * 25 + 3, pal, "00:00:00:03"}, // a day later the clock starts over
        {24, film, "00:00:01:00"},                // 23.976 counts like 24, without dropping
        {0, ntsc30, "00:00:00;00"},
        {1799, ntsc30, "00:00:59;29"},
        {1800, ntsc30, "00:01:00;02"}, // ;00 and ;01 do not exist at minute 1
        {3598, ntsc30, "00:02:00;02"},
        {17981, ntsc30, "00:09:59;29"},
        {17982, ntsc30, "00:10:00;00"},  // every tenth minute keeps its first labels
        {107892, ntsc30, "01:00:00;00"}, // an hour of 29.97 is 107892 frames
        {3599, ntsc60, "00:00:59;59"},
        {3600, ntsc60, "00:01:00;04"}, // 59.94 skips four labels a minute
        {35964, ntsc60, "00:10:00;00"},
        {-5, pal, "00:00:00:00"}, // before the start reads as the start
    };
    for (const auto& c : cases)
        EXPECT_EQ(Timecode::text(c.frame, c.rate), QString::fromLatin1(c.text))
            << "frame " << c.frame << " at timebase " << c.rate.timebase;
}

TEST(Timecode, dropFrameLabelsReadBackToTheirFramesAndNeverRepeat)
{
    for (const TimecodeRate rate : {ntsc30, ntsc60}) {
        QString previous;
        for (qint64 frame = 0; frame < rate.timebase * 60 * 21; ++frame) {
            const QString label = Timecode::text(frame, rate);
            ASSERT_EQ(Timecode::parse(label, rate), frame) << label.toStdString();
            // Fixed-width labels sort in time order.
            ASSERT_LT(previous, label);
            previous = label;
        }
    }
}

TEST(Timecode, refusesMalformedLabelsAndTheOnesDropFrameSkips)
{
    const struct {
        const char* text;
        TimecodeRate rate;
    } refused[] = {
        {"00:01:00;00", ntsc30}, {"00:01:00;01", ntsc30},
        {"00:01:00;03", ntsc60}, {"00:00:00:25", pal},
        {"00:60:00:00", pal},    {"00:00:60:00", pal},
        {"1:00:00:00", pal},     {"01:00:00", pal},
        {"aa:00:00:00", pal},    {"", pal},
    };
    for (const auto& c : refused)
        EXPECT_FALSE(Timecode::parse(QString::fromLatin1(c.text), c.rate).has_value()) << c.text;

    EXPECT_EQ(Timecode::parse(QStringLiteral("00:01:00;02"), ntsc30), 1800);
    EXPECT_EQ(Timecode::parse(QStringLiteral("00:10:00;00"), ntsc30), 17982);
    EXPECT_EQ(Timecode::parse(QStringLiteral("01:00:00:00"), pal), 90000);
    // Drop-frame labels written with colons or dots everywhere still read.
    EXPECT_EQ(Timecode::parse(QStringLiteral("00:01:00:02"), ntsc30), 1800);
    EXPECT_EQ(Timecode::parse(QStringLiteral("00.01.00.02"), ntsc30), 1800);
}

TEST(Timecode, framesRoundToTheNearestFrameStartAtTheRealRate)
{
    EXPECT_EQ(Timecode::frameAt(1.0, pal), 25);
    EXPECT_EQ(Timecode::frameAt(0.02, pal), 1); // half a frame rounds up
    EXPECT_EQ(Timecode::frameAt(0.019, pal), 0);
    EXPECT_EQ(Timecode::frameAt(1.0, ntsc30), 30);    // 29.97
    EXPECT_EQ(Timecode::frameAt(60.0, ntsc30), 1798); // 1798.2
    EXPECT_EQ(Timecode::frameAt(3600.0, ntsc30), 107892);
    EXPECT_EQ(Timecode::frameAt(3600.0, film), 86314); // 86313.7
}

TEST(TimecodeRate, takesTheEditorsRateForAStreamRate)
{
    const struct {
        int numerator;
        int denominator;
        TimecodeRate expected;
    } cases[] = {
        {30000, 1001, {30, true}}, {24000, 1001, {24, true}}, {60000, 1001, {60, true}},
        {2987, 100, {30, true}},   {25, 1, {25, false}},      {30, 1, {30, false}},
        {15, 1, {15, false}},      {25, 2, {25, false}},      {0, 0, {25, false}},
        {1, 0, {25, false}},       {-30, 1, {25, false}},
    };
    for (const auto& c : cases) {
        const TimecodeRate rate = TimecodeRate::fromFrameRate(c.numerator, c.denominator);
        EXPECT_EQ(rate.timebase, c.expected.timebase) << c.numerator << "/" << c.denominator;
        EXPECT_EQ(rate.ntsc, c.expected.ntsc) << c.numerator << "/" << c.denominator;
    }
}
