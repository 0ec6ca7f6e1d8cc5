#include "NalUnits.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using Bytes = std::vector<uint8_t>;

std::vector<Bytes> units(const Bytes& data, int lengthSize)
{
    std::vector<Bytes> found;
    NalUnits::forEach(data.data(), int(data.size()), lengthSize, [&](NalUnits::Unit unit) {
        found.emplace_back(unit.data, unit.data + unit.size);
        return true;
    });
    return found;
}

TEST(NalUnits, splitsARawStreamAtThreeAndFourByteStartCodes)
{
    const Bytes stream = {0, 0, 0, 1, 0x67, 1, 2, 0, 0, 1, 0x68, 3, 0, 0, 0, 1, 0x65, 4, 5};
    EXPECT_EQ(units(stream, 0), (std::vector<Bytes>{{0x67, 1, 2}, {0x68, 3}, {0x65, 4, 5}}));
}

TEST(NalUnits, walksLengthFieldsAndStopsAtADamagedOne)
{
    const Bytes stored = {0, 0, 0, 2, 0x65, 1, 0, 0, 0, 1, 0x06, 0, 0, 0, 9, 0x01};
    EXPECT_EQ(units(stored, 4), (std::vector<Bytes>{{0x65, 1}, {0x06}}));
    const Bytes shortFields = {0, 3, 0x41, 7, 8, 0, 1, 0x01};
    EXPECT_EQ(units(shortFields, 2), (std::vector<Bytes>{{0x41, 7, 8}, {0x01}}));
}

TEST(NalUnits, writesARawStreamWithLengthFields)
{
    const Bytes stream = {0, 0, 0, 1, 0x65, 1, 2, 3, 0, 0, 1, 0x06, 9};
    const QByteArray stored = NalUnits::toLengthPrefixed(stream.data(), int(stream.size()), 4);
    const Bytes bytes(stored.begin(), stored.end());
    EXPECT_EQ(bytes, (Bytes{0, 0, 0, 4, 0x65, 1, 2, 3, 0, 0, 0, 2, 0x06, 9}));
    EXPECT_EQ(units(bytes, 4), units(stream, 0));
}

TEST(NalUnits, readsTheTypeOfEachCodec)
{
    const uint8_t idr[] = {0x65};
    const uint8_t cra[] = {0x2a, 0x01};
    EXPECT_EQ(NalUnits::h264Type({idr, 1}), 5);
    EXPECT_EQ(NalUnits::hevcType({cra, 2}), 21);
}

} // namespace
