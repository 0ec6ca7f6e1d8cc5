#include "ReencodeExport.h"

#include "AudioTranscoder.h"
#include "MediaFile.h"
#include "OutputFile.h"
#include "PacketReader.h"
#include "StreamTags.h"
#include "VideoTranscoder.h"

void ReencodeExport::run()
{
    AVFormatContext* input = m_job.input.context();
    const int videoIndex = m_job.input.videoStreams().front();
    const int soundIndex = m_job.input.audioStreams().front();

    OutputFile output(m_job.destination, m_job.container);
    StreamTags::copyFileMetadata(input, output.context());
    VideoTranscoder video(input, videoIndex, m_job.cuts, m_job.sourceOrigin(), output);
    StreamTags::copyStreamTags(input->streams[videoIndex], video.outputStream());
    AudioTranscoder sound(input->streams[soundIndex], m_job.cuts, m_job.sourceOrigin(), output);
    StreamTags::copyStreamTags(input->streams[soundIndex], sound.outputStream());
    output.open();

    PacketReader reader(input, {videoIndex, soundIndex}, m_job.cancel);
    PacketPtr packet = makePacket();
    while (!(video.done() && sound.done()) && reader.read(packet.get())) {
        if (packet->stream_index == videoIndex)
            video.decode(packet.get());
        else
            sound.decode(packet.get());
        av_packet_unref(packet.get());
        m_job.progress.update(video.progress());
    }
    video.finish();
    sound.finish();
    output.commit();
}
