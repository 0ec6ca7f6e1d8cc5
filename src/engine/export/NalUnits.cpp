#include "NalUnits.h"

namespace NalUnits {

namespace {

// The next start code (00 00 01, possibly after more zeros) at or after `from`; `size`
// when there is none. `codeLength` receives its length.
int findStartCode(const uint8_t* data, int size, int from, int& codeLength)
{
    for (int i = from; i + 2 < size; ++i) {
        if (data[i] == 0 && data[i + 1] == 0 && data[i + 2] == 1) {
            int start = i;
            while (start > from && data[start - 1] == 0)
                --start;
            codeLength = i + 3 - start;
            return start;
        }
    }
    codeLength = 0;
    return size;
}

void forEachAnnexB(const uint8_t* data, int size, const std::function<bool(Unit)>& visit)
{
    int codeLength = 0;
    int start = findStartCode(data, size, 0, codeLength);
    while (start < size) {
        const int unitStart = start + codeLength;
        int nextLength = 0;
        const int next = findStartCode(data, size, unitStart, nextLength);
        if (next > unitStart && !visit({data + unitStart, next - unitStart}))
            return;
        start = next;
        codeLength = nextLength;
    }
}

} // namespace

void forEach(const uint8_t* data, int size, int lengthSize, const std::function<bool(Unit)>& visit)
{
    if (lengthSize == 0) {
        forEachAnnexB(data, size, visit);
        return;
    }
    int position = 0;
    while (position + lengthSize <= size) {
        int64_t length = 0;
        for (int i = 0; i < lengthSize; ++i)
            length = (length << 8) | data[position + i];
        position += lengthSize;
        if (length <= 0 || length > size - position)
            return;
        if (!visit({data + position, int(length)}))
            return;
        position += int(length);
    }
}

QByteArray toLengthPrefixed(const uint8_t* data, int size, int lengthSize)
{
    QByteArray out;
    out.reserve(size + 16);
    forEachAnnexB(data, size, [&](Unit unit) {
        for (int i = lengthSize - 1; i >= 0; --i)
            out.append(char((unit.size >> (8 * i)) & 0xff));
        out.append(reinterpret_cast<const char*>(unit.data), unit.size);
        return true;
    });
    return out;
}

int h264Type(const Unit& unit)
{
    return unit.size > 0 ? unit.data[0] & 0x1f : -1;
}

int hevcType(const Unit& unit)
{
    return unit.size > 0 ? (unit.data[0] >> 1) & 0x3f : -1;
}

} // namespace NalUnits
