#include "PacketReader.h"

#include "ExportFailure.h"
#include "TidleError.h"

PacketReader::PacketReader(AVFormatContext* input, const std::vector<int>& streams,
                           const std::atomic<bool>& cancel)
    : m_input(input)
    , m_used(input->nb_streams, false)
    , m_cancel(cancel)
{
    for (int index : streams)
        m_used[index] = true;
    for (unsigned i = 0; i < input->nb_streams; ++i)
        input->streams[i]->discard = m_used[i] ? AVDISCARD_DEFAULT : AVDISCARD_ALL;
}

bool PacketReader::read(AVPacket* packet)
{
    for (;;) {
        if (m_cancel.load(std::memory_order_relaxed))
            throw TidleError::cancelled();
        const int result = av_read_frame(m_input, packet);
        if (result == AVERROR_EOF)
            return false;
        checkExportStep(result, "reading the recording");
        if (packet->stream_index >= 0 && unsigned(packet->stream_index) < m_used.size() &&
            m_used[packet->stream_index])
            return true;
        av_packet_unref(packet);
    }
}
