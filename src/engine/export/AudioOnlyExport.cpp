#include "AudioOnlyExport.h"

#include "AudioTranscoder.h"
#include "MediaFile.h"
#include "OutputFile.h"
#include "PacketReader.h"
#include "StreamTags.h"

void AudioOnlyExport::run()
{
    AVFormatContext* input = m_job.input.context();
    const int soundIndex = m_job.input.audioStreams().front();

    OutputFile output(m_job.destination, m_job.container);
    StreamTags::copyFileMetadata(input, output.context());
    AudioTranscoder sound(input->streams[soundIndex], m_job.cuts, m_job.sourceOrigin(), output);
    StreamTags::copyStreamTags(input->streams[soundIndex], sound.outputStream());
    output.open();

    PacketReader reader(input, {soundIndex}, m_job.cancel);
    PacketPtr packet = makePacket();
    while (!sound.done() && reader.read(packet.get())) {
        sound.decode(packet.get());
        av_packet_unref(packet.get());
        m_job.progress.update(sound.progress());
    }
    sound.finish();
    output.commit();
}
