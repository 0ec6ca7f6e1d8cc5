#pragma once

#include <QByteArray>
#include <cstdint>
#include <functional>

// The NAL units of one H.264 or HEVC packet, stored either as MP4 and Matroska do (each
// unit after its length in `lengthSize` bytes) or as a raw stream does (after start codes,
// `lengthSize` 0).
namespace NalUnits {

struct Unit {
    const uint8_t* data = nullptr; // from the unit header on
    int size = 0;
};

// Calls `visit` for each unit in order; stops early when it returns false. Damaged length
// fields end the walk.
void forEach(const uint8_t* data, int size, int lengthSize, const std::function<bool(Unit)>& visit);

// The units of a raw stream (start codes) written with lengths of `lengthSize` bytes.
QByteArray toLengthPrefixed(const uint8_t* data, int size, int lengthSize);

int h264Type(const Unit& unit);
int hevcType(const Unit& unit);

} // namespace NalUnits
