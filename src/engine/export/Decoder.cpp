#include "Decoder.h"

#include "ExportFailure.h"

#include <string>

Decoder::Decoder(const AVStream* stream, const char* what)
    : m_what(what)
{
    const std::string opening = std::string("opening the ") + what + " decoder";
    const AVCodec* codec = avcodec_find_decoder(stream->codecpar->codec_id);
    if (!codec)
        throwExportFailure(opening.c_str(), AVERROR_DECODER_NOT_FOUND);
    m_context.reset(avcodec_alloc_context3(codec));
    if (!m_context)
        throwExportFailure(opening.c_str(), AVERROR(ENOMEM));
    checkExportStep(avcodec_parameters_to_context(m_context.get(), stream->codecpar),
                    opening.c_str());
    m_context->pkt_timebase = stream->time_base;
    m_context->thread_count = 0; // as many as the codec can use
    checkExportStep(avcodec_open2(m_context.get(), codec, nullptr), opening.c_str());
}

bool Decoder::send(const AVPacket* packet)
{
    const int result = avcodec_send_packet(m_context.get(), packet);
    // A damaged packet costs a frame, as in any player; the rest of the file still counts.
    if (result == AVERROR_INVALIDDATA)
        return false;
    // Frames are always drained after a send, so EAGAIN cannot come up; EOF means drained.
    if (result == AVERROR_EOF)
        return true;
    checkExportStep(result, (std::string("decoding the ") + m_what).c_str());
    return true;
}

bool Decoder::receive()
{
    for (;;) {
        av_frame_unref(m_frame.get());
        const int result = avcodec_receive_frame(m_context.get(), m_frame.get());
        if (result == AVERROR(EAGAIN) || result == AVERROR_EOF)
            return false;
        if (result == AVERROR_INVALIDDATA)
            continue;
        checkExportStep(result, (std::string("decoding the ") + m_what).c_str());
        return true;
    }
}
