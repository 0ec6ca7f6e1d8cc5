#include "AvcConfig.h"

#include "NalUnits.h"

#include <set>

namespace {

// Reads Exp-Golomb codes from the start of a NAL unit's payload, skipping emulation
// prevention bytes (00 00 03).
class BitReader {
public:
    BitReader(const QByteArray& unit, int offset)
    {
        int zeros = 0;
        for (int i = offset; i < unit.size() && m_bytes.size() < 32; ++i) {
            const auto byte = uint8_t(unit[i]);
            if (zeros >= 2 && byte == 3) {
                zeros = 0;
                continue;
            }
            zeros = byte == 0 ? zeros + 1 : 0;
            m_bytes.push_back(byte);
        }
    }

    std::optional<unsigned> readUnsignedExpGolomb()
    {
        int leadingZeros = 0;
        for (;;) {
            const auto bit = readBit();
            if (!bit)
                return std::nullopt;
            if (*bit)
                break;
            if (++leadingZeros > 31)
                return std::nullopt;
        }
        unsigned value = 0;
        for (int i = 0; i < leadingZeros; ++i) {
            const auto bit = readBit();
            if (!bit)
                return std::nullopt;
            value = (value << 1) | *bit;
        }
        return (1u << leadingZeros) - 1 + value;
    }

private:
    std::optional<unsigned> readBit()
    {
        if (m_position >= int(m_bytes.size()) * 8)
            return std::nullopt;
        const unsigned bit = (m_bytes[m_position / 8] >> (7 - m_position % 8)) & 1;
        ++m_position;
        return bit;
    }

    std::vector<uint8_t> m_bytes;
    int m_position = 0;
};

// An SPS names its id after the header, profile, constraint flags and level.
std::optional<unsigned> sequenceSetId(const QByteArray& unit)
{
    return BitReader(unit, 4).readUnsignedExpGolomb();
}

// A PPS names its own id first.
std::optional<unsigned> pictureSetId(const QByteArray& unit)
{
    return BitReader(unit, 1).readUnsignedExpGolomb();
}

void appendUnits(QByteArray& out, const QList<QByteArray>& units)
{
    for (const QByteArray& unit : units) {
        out.append(char((unit.size() >> 8) & 0xff));
        out.append(char(unit.size() & 0xff));
        out.append(unit);
    }
}

} // namespace

std::optional<AvcConfig> AvcConfig::parse(const QByteArray& record)
{
    if (record.size() < 7 || record[0] != 1)
        return std::nullopt;
    AvcConfig config;
    config.m_record = record;
    int position = 5;
    const auto readUnits = [&](int count, QList<QByteArray>& units) {
        for (int i = 0; i < count; ++i) {
            if (position + 2 > record.size())
                return false;
            const int length = (uint8_t(record[position]) << 8) | uint8_t(record[position + 1]);
            position += 2;
            if (length == 0 || position + length > record.size())
                return false;
            units.append(record.mid(position, length));
            position += length;
        }
        return true;
    };
    const int sequenceCount = uint8_t(record[position++]) & 0x1f;
    if (!readUnits(sequenceCount, config.m_sequenceSets) || position >= record.size())
        return std::nullopt;
    const int pictureCount = uint8_t(record[position++]);
    if (!readUnits(pictureCount, config.m_pictureSets))
        return std::nullopt;
    config.m_trailer = record.mid(position);
    return config;
}

std::optional<int> AvcConfig::freeParameterSetId() const
{
    std::set<unsigned> taken;
    for (const QByteArray& unit : m_sequenceSets) {
        const auto id = sequenceSetId(unit);
        if (!id)
            return std::nullopt;
        taken.insert(*id);
    }
    for (const QByteArray& unit : m_pictureSets) {
        const auto id = pictureSetId(unit);
        if (!id)
            return std::nullopt;
        taken.insert(*id);
    }
    // SPS ids go up to 31; the encoder gives its PPS the same number.
    for (int id = 0; id < 32; ++id) {
        if (!taken.count(unsigned(id)))
            return id;
    }
    return std::nullopt;
}

QByteArray AvcConfig::withParameterSets(const QList<QByteArray>& sequenceSets,
                                        const QList<QByteArray>& pictureSets) const
{
    QByteArray out = m_record.left(5);
    out.append(char(0xe0 | ((m_sequenceSets.size() + sequenceSets.size()) & 0x1f)));
    appendUnits(out, m_sequenceSets);
    appendUnits(out, sequenceSets);
    out.append(char(m_pictureSets.size() + pictureSets.size()));
    appendUnits(out, m_pictureSets);
    appendUnits(out, pictureSets);
    out.append(m_trailer);
    return out;
}

void AvcConfig::splitParameterSets(const QByteArray& annexB, QList<QByteArray>& sequenceSets,
                                   QList<QByteArray>& pictureSets)
{
    NalUnits::forEach(reinterpret_cast<const uint8_t*>(annexB.constData()), int(annexB.size()), 0,
                      [&](NalUnits::Unit unit) {
                          const QByteArray bytes(reinterpret_cast<const char*>(unit.data),
                                                 unit.size);
                          if (NalUnits::h264Type(unit) == 7)
                              sequenceSets.append(bytes);
                          else if (NalUnits::h264Type(unit) == 8)
                              pictureSets.append(bytes);
                          return true;
                      });
}
