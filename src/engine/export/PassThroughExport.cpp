#include "PassThroughExport.h"

#include "AudioPacketCopier.h"
#include "AudioTranscoder.h"
#include "ExportFailure.h"
#include "MediaFile.h"
#include "OutputFile.h"
#include "PacketReader.h"
#include "StreamTags.h"

#include <memory>

extern "C" {
#include <libavutil/mathematics.h>
}

namespace {

// Share of the progress bar taken by the first reading of the video's timing.
constexpr double scanShare = 0.2;

int64_t packetTime(const AVPacket* packet)
{
    return packet->dts != AV_NOPTS_VALUE ? packet->dts : packet->pts;
}

AVStream* addCopiedStream(OutputFile& output, const AVStream* source)
{
    AVStream* stream = output.addStream();
    checkExportStep(avcodec_parameters_copy(stream->codecpar, source->codecpar),
                    "copying the stream parameters");
    // Keep the source's codec tag only where the new container knows it (hvc1 stays hvc1).
    const AVOutputFormat* format = output.context()->oformat;
    const unsigned tag = source->codecpar->codec_tag;
    if (tag == 0 || !format->codec_tag ||
        av_codec_get_id(format->codec_tag, tag) != source->codecpar->codec_id)
        stream->codecpar->codec_tag = 0;
    stream->time_base = source->time_base;
    stream->avg_frame_rate = source->avg_frame_rate;
    stream->sample_aspect_ratio = source->sample_aspect_ratio;
    StreamTags::copyStreamTags(source, stream);
    return stream;
}

// Sound packets carry their length; where one does not, the codec's frame size tells it.
int64_t soundDuration(const AVPacket* packet, const AVStream* stream)
{
    const AVCodecParameters* parameters = stream->codecpar;
    if (packet->duration > 0 || parameters->frame_size <= 0 || parameters->sample_rate <= 0)
        return packet->duration;
    return av_rescale_q(parameters->frame_size, {1, parameters->sample_rate}, stream->time_base);
}

bool containerTakes(const OutputFile& output, const AVCodecParameters* parameters)
{
    return avformat_query_codec(output.context()->oformat, parameters->codec_id,
                                FF_COMPLIANCE_NORMAL) == 1;
}

} // namespace

void PassThroughExport::run()
{
    const int videoIndex = m_job.input.videoStreams().front();
    const int soundIndex = m_job.input.audioStreams().front();
    // The copy reads a second demuxer from the start; the first reads the video's timing.
    MediaFile source(m_job.input.path());
    OutputFile output(m_job.destination, m_job.container);
    StreamTags::copyFileMetadata(source.context(), output.context());
    const Streams streams = addStreams(source, videoIndex, soundIndex, output);
    output.open();

    const AVStream* video = m_job.input.context()->streams[videoIndex];
    const CutList videoCuts = m_job.cuts.rescaled(
        video->time_base, av_rescale_q(m_job.sourceOrigin(), AV_TIME_BASE_Q, video->time_base));
    const PassThroughPlan plan(scanVideo(videoIndex), videoCuts);
    copyPackets(plan, source, streams, output);
    output.commit();
}

std::vector<VideoPacketTiming> PassThroughExport::scanVideo(int videoIndex)
{
    AVFormatContext* input = m_job.input.context();
    const AVRational timeBase = input->streams[videoIndex]->time_base;
    const double duration = m_job.input.duration();
    std::vector<VideoPacketTiming> packets;
    PacketReader reader(input, {videoIndex}, m_job.cancel);
    PacketPtr packet = makePacket();
    while (reader.read(packet.get())) {
        VideoPacketTiming timing;
        timing.dts = packetTime(packet.get());
        timing.pts = packet->pts != AV_NOPTS_VALUE ? packet->pts : timing.dts;
        timing.duration = packet->duration;
        timing.key = packet->flags & AV_PKT_FLAG_KEY;
        av_packet_unref(packet.get());
        if (timing.dts == AV_NOPTS_VALUE)
            continue;
        packets.push_back(timing);
        if (duration > 0)
            m_job.progress.update(scanShare * av_q2d(timeBase) * double(timing.dts) / duration);
    }
    return packets;
}

PassThroughExport::Streams PassThroughExport::addStreams(const MediaFile& source, int videoIndex,
                                                         int soundIndex, OutputFile& output)
{
    Streams streams;
    streams.videoIndex = videoIndex;
    streams.soundIndex = soundIndex;
    const AVStream* videoIn = source.context()->streams[videoIndex];
    const AVStream* soundIn = source.context()->streams[soundIndex];
    streams.videoOut = addCopiedStream(output, videoIn);
    if (containerTakes(output, soundIn->codecpar)) {
        streams.soundOut = addCopiedStream(output, soundIn);
    } else {
        streams.soundEncoder = std::make_unique<AudioTranscoder>(soundIn, output);
        StreamTags::copyStreamTags(soundIn, streams.soundEncoder->outputStream());
    }
    return streams;
}

void PassThroughExport::copyPackets(const PassThroughPlan& plan, const MediaFile& source,
                                    const Streams& streams, OutputFile& output)
{
    AVFormatContext* input = source.context();
    const int videoIndex = streams.videoIndex;
    const int soundIndex = streams.soundIndex;
    const AVStream* videoIn = input->streams[videoIndex];
    const AVStream* soundIn = input->streams[soundIndex];
    const CutList spans = plan.cutList();
    std::unique_ptr<AudioPacketCopier> soundCopier;
    AudioTranscoder* soundEncoder = streams.soundEncoder.get();
    if (soundEncoder)
        soundEncoder->setCuts(spans, 0); // span times are the stream's own
    else
        soundCopier = std::make_unique<AudioPacketCopier>(spans.rescaled(soundIn->time_base));

    const std::vector<CopySpan>& copySpans = plan.spans();
    std::size_t span = 0;
    int64_t lastVideoDts = AV_NOPTS_VALUE;
    bool videoDone = false;
    bool soundDone = false;
    const int64_t first = spans.empty() ? 0 : spans.cuts().front().sourceStart;
    const double length = double(spans.sourceEnd() - first);

    PacketReader reader(input, {videoIndex, soundIndex}, m_job.cancel);
    PacketPtr packet = makePacket();
    while (!(videoDone && soundDone) && reader.read(packet.get())) {
        const int64_t time = packetTime(packet.get());
        if (packet->stream_index == videoIndex && !videoDone && time != AV_NOPTS_VALUE) {
            while (span < copySpans.size() &&
                   (!copySpans[span].hasVideo() || time > copySpans[span].lastDts))
                ++span;
            videoDone = span == copySpans.size();
            const int64_t pts = packet->pts != AV_NOPTS_VALUE ? packet->pts : time;
            if (!videoDone && copySpans[span].copiesVideoPacket(time, pts)) {
                const Cut& cut = copySpans[span].cut;
                const int64_t shift = cut.outputStart - cut.sourceStart;
                packet->pts = pts + shift;
                packet->dts = time + shift;
                // Joins can bring two decode times together; the muxer wants them rising.
                if (lastVideoDts != AV_NOPTS_VALUE && packet->dts <= lastVideoDts)
                    packet->dts = lastVideoDts + 1;
                lastVideoDts = packet->dts;
                packet->stream_index = streams.videoOut->index;
                output.write(packet.get(), videoIn->time_base);
            }
            if (length > 0)
                m_job.progress.update(scanShare +
                                      (1.0 - scanShare) * double(time - first) / length);
        } else if (packet->stream_index == soundIndex && !soundDone && soundEncoder) {
            soundEncoder->decode(packet.get());
            soundDone = soundEncoder->done();
        } else if (packet->stream_index == soundIndex && !soundDone && time != AV_NOPTS_VALUE) {
            const int64_t pts = packet->pts != AV_NOPTS_VALUE ? packet->pts : time;
            soundDone = soundCopier->pastEnd(pts);
            if (const auto placed = soundCopier->place(pts, soundDuration(packet.get(), soundIn))) {
                packet->pts = packet->dts = *placed;
                packet->stream_index = streams.soundOut->index;
                output.write(packet.get(), soundIn->time_base);
            }
        }
        av_packet_unref(packet.get());
    }
    if (soundEncoder)
        soundEncoder->finish();
}
