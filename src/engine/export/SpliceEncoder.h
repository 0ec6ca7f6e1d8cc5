#pragma once

#include "FfmpegPtr.h"

#include <QByteArray>
#include <QString>
#include <functional>
#include <map>
#include <optional>

// Re-encodes the pictures of one stretch of an H.264 stream so that they can stand between
// packets copied from it: the same size, pixel format, colour tags, profile and level, NAL
// length fields of the same size, and parameter sets under an id the source does not use,
// so that both sets can sit side by side in the file's decoder configuration. Each
// stretch opens with an IDR picture and needs nothing before it; x264 writes no B-frames
// and holds nothing back here, so each picture's packet comes out at once.
class SpliceEncoder {
public:
    struct Settings {
        int width = 0;
        int height = 0;
        AVPixelFormat format = AV_PIX_FMT_NONE;
        AVRational timeBase{0, 1};
        AVRational frameRate{0, 1};
        AVRational aspect{0, 1};
        AVColorPrimaries primaries = AVCOL_PRI_UNSPECIFIED;
        AVColorTransferCharacteristic transfer = AVCOL_TRC_UNSPECIFIED;
        AVColorSpace space = AVCOL_SPC_UNSPECIFIED;
        AVColorRange range = AVCOL_RANGE_UNSPECIFIED;
        AVChromaLocation chromaLocation = AVCHROMA_LOC_UNSPECIFIED;
        const char* profile = nullptr;
        int level = 0;
        int parameterSetId = 0;
        int lengthSize = 4;
        QByteArray sourceConfig; // the source's avcC
    };

    // x264 speed preset and quality of the re-encoded stretches: they sit right beside the
    // original pictures, so they get a little more quality than a full re-encode.
    static constexpr const char* preset = "veryfast";
    static constexpr const char* quality = "16";

    // How to re-encode stretches of `source`, or the reason it cannot be done.
    static std::optional<Settings> settingsFor(const AVStream* source, QString& whyNot);

    // The source's decoder configuration with this encoder's parameter sets added.
    static QByteArray decoderConfig(const Settings& settings);

    using Sink = std::function<void(AVPacket*)>;

    explicit SpliceEncoder(const Settings& settings);

    // `frame` shown from `pts` for `duration`, both in the settings' time base; the first
    // picture of a stretch `startsRun`.
    void encode(AVFrame* frame, int64_t pts, int64_t duration, bool startsRun, const Sink& sink);
    void finish(const Sink& sink);

private:
    void send(const AVFrame* frame, const Sink& sink);

    Settings m_settings;
    CodecContextPtr m_encoder;
    PacketPtr m_packet = makePacket();
    std::map<int64_t, int64_t> m_durations;
};
