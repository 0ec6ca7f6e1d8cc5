#include "AvcConfig.h"

#include <gtest/gtest.h>

namespace {

// SPS and PPS units with just enough of their heads to carry ids: an SPS names its id after
// profile (High), constraints and level; a PPS names its own id, then its SPS's.
const QByteArray spsId0("\x67\x64\x00\x1f\x80", 5);
const QByteArray spsId1("\x67\x64\x00\x1f\x40", 5);
const QByteArray spsId3("\x67\x64\x00\x1f\x20", 5);
const QByteArray ppsId0("\x68\xc0", 2);
const QByteArray ppsId2("\x68\x70", 2); // id 2, SPS 0

QByteArray record(const QList<QByteArray>& sequenceSets, const QList<QByteArray>& pictureSets)
{
    QByteArray out("\x01\x64\x00\x1f\xff", 5);
    out.append(char(0xe0 | sequenceSets.size()));
    for (const QByteArray& unit : sequenceSets)
        out.append(char(0)).append(char(unit.size())).append(unit);
    out.append(char(pictureSets.size()));
    for (const QByteArray& unit : pictureSets)
        out.append(char(0)).append(char(unit.size())).append(unit);
    return out;
}

TEST(AvcConfig, readsProfileLevelAndLengthSize)
{
    const auto config = AvcConfig::parse(record({spsId0}, {ppsId0}));
    ASSERT_TRUE(config);
    EXPECT_EQ(config->profile(), 100);
    EXPECT_EQ(config->level(), 31);
    EXPECT_EQ(config->lengthSize(), 4);
}

TEST(AvcConfig, refusesWhatIsNoConfigurationRecord)
{
    EXPECT_FALSE(AvcConfig::parse(QByteArray("\x00\x00\x00\x01\x67\x64", 6)));
    QByteArray truncated = record({spsId0}, {ppsId0});
    truncated.chop(1);
    EXPECT_FALSE(AvcConfig::parse(truncated));
}

TEST(AvcConfig, freeIdIsTheLowestThatNoSetUses)
{
    const struct {
        QList<QByteArray> sequenceSets;
        QList<QByteArray> pictureSets;
        int free;
    } rows[] = {
        {{spsId0}, {ppsId0}, 1},
        {{spsId0, spsId1}, {ppsId0, ppsId2}, 3},
        {{spsId1, spsId3}, {ppsId2}, 0},
    };
    for (const auto& row : rows) {
        const auto config = AvcConfig::parse(record(row.sequenceSets, row.pictureSets));
        ASSERT_TRUE(config);
        EXPECT_EQ(config->freeParameterSetId(), row.free);
    }
}

TEST(AvcConfig, addsParameterSetsAfterItsOwnAndKeepsTheRest)
{
    const QByteArray source = record({spsId0}, {ppsId0}) + QByteArray("\xfd\xf8\xf8\x00", 4);
    const auto config = AvcConfig::parse(source);
    ASSERT_TRUE(config);
    const QByteArray merged = config->withParameterSets({spsId1}, {QByteArray("\x68\x50", 2)});
    // Header as before, two SPS, two PPS, then the high profiles' trailer unchanged.
    QByteArray expected = record({spsId0, spsId1}, {ppsId0, QByteArray("\x68\x50", 2)});
    expected.append(QByteArray("\xfd\xf8\xf8\x00", 4));
    EXPECT_EQ(merged, expected);
    const auto reread = AvcConfig::parse(merged);
    ASSERT_TRUE(reread);
    EXPECT_EQ(reread->freeParameterSetId(), 2);
}

TEST(AvcConfig, splitsAnEncodersHeadersIntoSequenceAndPictureSets)
{
    const QByteArray headers = QByteArray("\x00\x00\x00\x01", 4) + spsId1 +
                               QByteArray("\x00\x00\x00\x01", 4) + QByteArray("\x68\x50", 2);
    QList<QByteArray> sequenceSets;
    QList<QByteArray> pictureSets;
    AvcConfig::splitParameterSets(headers, sequenceSets, pictureSets);
    EXPECT_EQ(sequenceSets, QList<QByteArray>{spsId1});
    EXPECT_EQ(pictureSets, QList<QByteArray>{QByteArray("\x68\x50", 2)});
}

} // namespace
