#include "PassThroughExport.h"

#include "AudioPacketCopier.h"
#include "AudioTranscoder.h"
#include "ExportFailure.h"
#include "MediaFile.h"
#include "NalUnits.h"
#include "OutputFile.h"
#include "PacketReader.h"
#include "StreamTags.h"
#include "TidleError.h"
#include "VideoSplicer.h"

#include <QLoggingCategory>
#include <cstring>
#include <memory>

extern "C" {
#include <libavutil/mathematics.h>
}

Q_DECLARE_LOGGING_CATEGORY(lcSplice)

namespace {

// Share of the progress bar taken by the first reading of the video's timing.
constexpr double scanShare = 0.2;

AVStream* addCopiedStream(OutputFile& output, const AVStream* source)
{
    AVStream* stream = output.addStream();
    checkExportStep(avcodec_parameters_copy(stream->codecpar, source->codecpar),
                    "copying the stream parameters");
    // Keep the source's codec tag only where the new container knows it.
    const AVOutputFormat* format = output.context()->oformat;
    const unsigned tag = source->codecpar->codec_tag;
    if (tag == 0 || !format->codec_tag ||
        av_codec_get_id(format->codec_tag, tag) != source->codecpar->codec_id)
        stream->codecpar->codec_tag = 0;
    // HEVC from Matroska or from an 'hev1' file: 'hvc1' is the tag every player takes,
    // with the parameter sets in the sample description, where they already are.
    if (source->codecpar->codec_id == AV_CODEC_ID_HEVC)
        stream->codecpar->codec_tag = MKTAG('h', 'v', 'c', '1');
    stream->time_base = source->time_base;
    stream->avg_frame_rate = source->avg_frame_rate;
    stream->sample_aspect_ratio = source->sample_aspect_ratio;
    StreamTags::copyStreamTags(source, stream);
    return stream;
}

void replaceExtradata(AVCodecParameters* parameters, const QByteArray& data)
{
    av_freep(&parameters->extradata);
    parameters->extradata_size = 0;
    parameters->extradata =
        static_cast<uint8_t*>(av_mallocz(std::size_t(data.size()) + AV_INPUT_BUFFER_PADDING_SIZE));
    if (!parameters->extradata)
        throwExportFailure("copying the stream parameters", AVERROR(ENOMEM));
    std::memcpy(parameters->extradata, data.constData(), std::size_t(data.size()));
    parameters->extradata_size = int(data.size());
}

// Sound packets carry their length; where one does not, the codec's frame size tells it.
int64_t soundDuration(const AVPacket* packet, const AVStream* stream)
{
    const AVCodecParameters* parameters = stream->codecpar;
    if (packet->duration > 0 || parameters->frame_size <= 0 || parameters->sample_rate <= 0)
        return packet->duration;
    return av_rescale_q(parameters->frame_size, {1, parameters->sample_rate}, stream->time_base);
}

// Sound copied as it is only where players of the container expect it: FFmpeg would also
// write Opus, FLAC or Vorbis into some of these, but then few players read them back.
bool copiesSound(const OutputFile& output, const AVCodecParameters* parameters)
{
    switch (parameters->codec_id) {
    case AV_CODEC_ID_AAC:
    case AV_CODEC_ID_MP3:
    case AV_CODEC_ID_ALAC:
    case AV_CODEC_ID_AC3:
    case AV_CODEC_ID_EAC3:
        return true;
    default:
        break;
    }
    const bool pcm = parameters->codec_id >= AV_CODEC_ID_PCM_S16LE &&
                     parameters->codec_id < AV_CODEC_ID_ADPCM_IMA_QT;
    return pcm && std::strcmp(output.context()->oformat->name, "mov") == 0 &&
           avformat_query_codec(output.context()->oformat, parameters->codec_id,
                                FF_COMPLIANCE_NORMAL) == 1;
}

// Whether a copy may start at this keyframe after pictures it does not follow in the
// source: an IDR for H.264 (a recovery point leaves references to earlier pictures), any
// random-access picture for HEVC (the join marks the end of a sequence before a CRA).
bool isRestartPoint(const AVCodecParameters* parameters, const AVPacket* packet)
{
    if (!(packet->flags & AV_PKT_FLAG_KEY))
        return false;
    const bool avc = parameters->codec_id == AV_CODEC_ID_H264;
    const bool hevc = parameters->codec_id == AV_CODEC_ID_HEVC;
    if (!avc && !hevc)
        return true;
    // Stored with length fields (their size in the configuration record) or start codes.
    int lengthSize = 0;
    const uint8_t* config = parameters->extradata;
    if (config && parameters->extradata_size > 21 && config[0] == 1)
        lengthSize = (config[avc ? 4 : 21] & 3) + 1;
    else if (avc && config && parameters->extradata_size > 4 && config[0] == 1)
        lengthSize = (config[4] & 3) + 1;
    bool restart = false;
    NalUnits::forEach(packet->data, packet->size, lengthSize, [&](NalUnits::Unit unit) {
        if (avc) {
            const int type = NalUnits::h264Type(unit);
            if (type >= 1 && type <= 5) {
                restart = type == 5;
                return false;
            }
            return true;
        }
        const int type = NalUnits::hevcType(unit);
        if (type < 32) {
            restart = type >= 16 && type <= 23;
            return false;
        }
        return true;
    });
    return restart;
}

} // namespace

void PassThroughExport::run()
{
    const int videoIndex = m_job.input.videoStreams().front();
    const int soundIndex = m_job.input.audioStreams().front();
    // The copy reads a second demuxer from the start; the first reads the video's timing.
    MediaFile source(m_job.input.path());
    const AVStream* video = m_job.input.context()->streams[videoIndex];
    QString whyNot;
    auto splice = SpliceEncoder::settingsFor(video, whyNot);
    QByteArray spliceConfig;
    try {
        if (splice)
            spliceConfig = SpliceEncoder::decoderConfig(*splice);
    } catch (const TidleError& error) {
        // This x264 may lack the stream's bit depth, say: the copy then snaps to keyframes.
        whyNot = error.payload();
        splice.reset();
    }
    OutputFile output(m_job.destination, m_job.container);
    StreamTags::copyFileMetadata(source.context(), output.context());
    const Streams streams = addStreams(source, videoIndex, soundIndex, spliceConfig, output);
    output.open();

    const CutList videoCuts = m_job.cuts.rescaled(
        video->time_base, av_rescale_q(m_job.sourceOrigin(), AV_TIME_BASE_Q, video->time_base));
    const std::vector<VideoPacketTiming> packets = scanVideo(videoIndex, videoCuts.sourceEnd());
    const AVRational rate =
        video->avg_frame_rate.num > 0 ? video->avg_frame_rate : video->r_frame_rate;
    const double frameDuration =
        rate.num > 0 && rate.den > 0 ? 1.0 / (av_q2d(rate) * av_q2d(video->time_base)) : 0.0;
    PassThroughPlan plan(packets, videoCuts, true, frameDuration);
    const bool needsEncoder =
        std::any_of(plan.runs().begin(), plan.runs().end(),
                    [](const auto& r) { return r.kind == VideoRun::Kind::encode; });
    if (needsEncoder && !splice) {
        // Every picture a keyframe (ProRes, MJPEG) cuts exactly without it; others start
        // each span at a keyframe.
        qCInfo(lcSplice, "fast export of %s: %s; spans start at keyframes",
               avcodec_get_name(video->codecpar->codec_id), qUtf8Printable(whyNot));
        plan = PassThroughPlan(packets, videoCuts, false);
    }
    copyPackets(plan, source, streams, splice, output);
    output.commit();
}

std::vector<VideoPacketTiming> PassThroughExport::scanVideo(int videoIndex, int64_t until)
{
    AVFormatContext* input = m_job.input.context();
    const AVCodecParameters* parameters = input->streams[videoIndex]->codecpar;
    std::vector<VideoPacketTiming> packets;
    PacketReader reader(input, {videoIndex}, m_job.cancel);
    PacketPtr packet = makePacket();
    // Past the last keep, reading goes on to the next keyframe and the first picture shown
    // after it: by then every picture before the keep's end has come, with what it needs.
    int64_t keyAfterEnd = AV_NOPTS_VALUE;
    int64_t previous = 0;
    while (reader.read(packet.get())) {
        VideoPacketTiming timing;
        timing.pts = packet->pts != AV_NOPTS_VALUE   ? packet->pts
                     : packet->dts != AV_NOPTS_VALUE ? packet->dts
                                                     : previous + 1;
        timing.duration = packet->duration;
        timing.key = packet->flags & AV_PKT_FLAG_KEY;
        timing.restart = isRestartPoint(parameters, packet.get());
        av_packet_unref(packet.get());
        previous = timing.pts;
        packets.push_back(timing);
        if (until > 0)
            m_job.progress.update(scanShare * double(timing.pts) / double(until));
        if (keyAfterEnd != AV_NOPTS_VALUE && timing.pts > keyAfterEnd)
            break;
        if (keyAfterEnd == AV_NOPTS_VALUE && timing.key && timing.pts >= until)
            keyAfterEnd = timing.pts;
    }
    return packets;
}

PassThroughExport::Streams PassThroughExport::addStreams(const MediaFile& source, int videoIndex,
                                                         int soundIndex,
                                                         const QByteArray& spliceConfig,
                                                         OutputFile& output)
{
    Streams streams;
    streams.videoIndex = videoIndex;
    streams.soundIndex = soundIndex;
    const AVStream* videoIn = source.context()->streams[videoIndex];
    const AVStream* soundIn = source.context()->streams[soundIndex];
    AVStream* videoOut = addCopiedStream(output, videoIn);
    // The re-encoded pictures' parameter sets beside the source's, under their own id.
    if (!spliceConfig.isEmpty())
        replaceExtradata(videoOut->codecpar, spliceConfig);
    streams.videoOut = videoOut;
    if (copiesSound(output, soundIn->codecpar)) {
        streams.soundOut = addCopiedStream(output, soundIn);
    } else {
        streams.soundEncoder = std::make_unique<AudioTranscoder>(soundIn, output);
        StreamTags::copyStreamTags(soundIn, streams.soundEncoder->outputStream());
    }
    return streams;
}

void PassThroughExport::copyPackets(const PassThroughPlan& plan, const MediaFile& source,
                                    const Streams& streams,
                                    const std::optional<SpliceEncoder::Settings>& splice,
                                    OutputFile& output)
{
    AVFormatContext* input = source.context();
    const int videoIndex = streams.videoIndex;
    const int soundIndex = streams.soundIndex;
    const AVStream* soundIn = input->streams[soundIndex];
    const CutList& spans = plan.cutList();
    std::unique_ptr<AudioPacketCopier> soundCopier;
    AudioTranscoder* soundEncoder = streams.soundEncoder.get();
    if (soundEncoder)
        soundEncoder->setCuts(spans, 0); // span times are the stream's own
    else
        soundCopier = std::make_unique<AudioPacketCopier>(spans.rescaled(soundIn->time_base));

    VideoSplicer video(input->streams[videoIndex], plan, splice, output, streams.videoOut->index);
    std::size_t videoPacket = 0;
    bool videoDone = false;
    bool soundDone = false;
    const int64_t first = spans.empty() ? 0 : spans.cuts().front().sourceStart;
    const double length = double(spans.sourceEnd() - first);

    PacketReader reader(input, {videoIndex, soundIndex}, m_job.cancel);
    PacketPtr packet = makePacket();
    while (!(videoDone && soundDone) && reader.read(packet.get())) {
        if (packet->stream_index == videoIndex && !videoDone) {
            const int64_t time = packet->pts != AV_NOPTS_VALUE ? packet->pts : packet->dts;
            video.take(videoPacket, packet.get());
            videoDone = video.doneAfter(++videoPacket);
            if (length > 0 && time != AV_NOPTS_VALUE)
                m_job.progress.update(scanShare +
                                      (1.0 - scanShare) * double(time - first) / length);
        } else if (packet->stream_index == soundIndex && !soundDone && soundEncoder) {
            soundEncoder->decode(packet.get());
            soundDone = soundEncoder->done();
        } else if (packet->stream_index == soundIndex && !soundDone) {
            const int64_t time = packet->dts != AV_NOPTS_VALUE ? packet->dts : packet->pts;
            if (time != AV_NOPTS_VALUE) {
                const int64_t pts = packet->pts != AV_NOPTS_VALUE ? packet->pts : time;
                soundDone = soundCopier->pastEnd(pts);
                if (const auto placed =
                        soundCopier->place(pts, soundDuration(packet.get(), soundIn))) {
                    packet->pts = packet->dts = *placed;
                    packet->stream_index = streams.soundOut->index;
                    output.write(packet.get(), soundIn->time_base);
                }
            }
        }
        av_packet_unref(packet.get());
    }
    video.finish();
    if (soundEncoder)
        soundEncoder->finish();
}
