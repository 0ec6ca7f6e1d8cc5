#pragma once

#include "FfmpegPtr.h"

#include <atomic>
#include <vector>

// Reads the packets of the streams an export uses. The demuxer skips the other streams,
// and the cancel flag is looked at before every packet.
class PacketReader {
public:
    PacketReader(AVFormatContext* input, const std::vector<int>& streams,
                 const std::atomic<bool>& cancel);

    // Fills `packet` with the next packet of a used stream; false at the end of the file.
    // Throws TidleError::cancelled() once the flag is set.
    bool read(AVPacket* packet);

private:
    AVFormatContext* m_input;
    std::vector<bool> m_used;
    const std::atomic<bool>& m_cancel;
};
