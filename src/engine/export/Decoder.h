#pragma once

#include "FfmpegPtr.h"

// Decodes one input stream. Frames come out in presentation order.
class Decoder {
public:
    // `what` names the stream in error messages ("sound", "video").
    Decoder(const AVStream* stream, const char* what);

    AVCodecContext* context() const { return m_context.get(); }

    // Sends a packet, or null to drain, and hands every frame that is ready to `consume`,
    // which may take the frame's contents.
    template <typename Consume> void decode(const AVPacket* packet, Consume consume)
    {
        if (!send(packet))
            return;
        while (receive())
            consume(m_frame.get());
    }

private:
    bool send(const AVPacket* packet);
    bool receive();

    const char* m_what;
    CodecContextPtr m_context;
    FramePtr m_frame = makeFrame();
};
