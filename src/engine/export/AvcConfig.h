#pragma once

#include <QByteArray>
#include <QList>
#include <optional>

// An H.264 decoder configuration record (the 'avcC' box of MP4, Matroska's codec private
// data): the stream's profile and level, the size of its NAL length fields and its
// parameter sets.
class AvcConfig {
public:
    // None when `record` is not such a record (a raw stream's start-code headers, say).
    static std::optional<AvcConfig> parse(const QByteArray& record);

    int profile() const { return uint8_t(m_record[1]); }
    int level() const { return uint8_t(m_record[3]); }
    int lengthSize() const { return (uint8_t(m_record[4]) & 3) + 1; }

    // The lowest id that none of the record's sequence or picture parameter sets uses, so
    // a second set of headers under it can sit beside the first; none when all are taken.
    std::optional<int> freeParameterSetId() const;

    // The record with `sequenceSets` and `pictureSets` (raw NAL units) added after its own:
    // a decoder then knows both, and each picture names the ones it was coded with.
    QByteArray withParameterSets(const QList<QByteArray>& sequenceSets,
                                 const QList<QByteArray>& pictureSets) const;

    // The SPS and PPS units of a raw stream's headers (start codes), such as an encoder's.
    static void splitParameterSets(const QByteArray& annexB, QList<QByteArray>& sequenceSets,
                                   QList<QByteArray>& pictureSets);

private:
    QByteArray m_record;
    QList<QByteArray> m_sequenceSets;
    QList<QByteArray> m_pictureSets;
    QByteArray m_trailer; // the high profiles' chroma and bit-depth fields, kept as they are
};
