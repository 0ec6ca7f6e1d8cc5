#include "Exporter.h"

#include "AudioOnlyExport.h"
#include "MediaFile.h"
#include "PassThroughExport.h"
#include "ReencodeExport.h"
#include "TidleError.h"

#include <QLoggingCategory>

Q_DECLARE_LOGGING_CATEGORY(lcSplice)

namespace {

// FFmpeg writes VP9 and AV1 only into MP4, and some codecs into neither: a QuickTime
// movie of those gets its pictures re-encoded, or there would be no file at all.
bool movieTakesAsItIs(const AVCodecParameters* video)
{
    if (video->codec_id == AV_CODEC_ID_VP9 || video->codec_id == AV_CODEC_ID_AV1)
        return false;
    return avformat_query_codec(av_guess_format("mov", nullptr, nullptr), video->codec_id,
                                FF_COMPLIANCE_NORMAL) == 1;
}

} // namespace

void Exporter::run(const Request& request, const std::atomic<bool>& cancel,
                   const ExportProgress::Callback& onProgress)
{
    MediaFile input(request.input);
    if (input.audioStreams().empty())
        throw TidleError::noAudioTrack();
    CutList cuts = CutList::fromKeeps(request.keeps);
    if (cuts.empty())
        throw TidleError::allSilent();

    ExportProgress progress(onProgress);
    const ExportJob job{input,   request.destination, request.container, std::move(cuts), cancel,
                        progress};
    if (input.videoStreams().empty())
        AudioOnlyExport(job).run();
    else if (request.frameAccurate)
        ReencodeExport(job).run();
    else if (request.container == OutputContainer::QuickTimeMovie &&
             !movieTakesAsItIs(input.context()->streams[input.videoStreams().front()]->codecpar)) {
        qCInfo(lcSplice, "fast export: %s cannot go into a QuickTime movie as it is; re-encoding",
               avcodec_get_name(
                   input.context()->streams[input.videoStreams().front()]->codecpar->codec_id));
        ReencodeExport(job).run();
    } else {
        PassThroughExport(job).run();
    }
    progress.finish();
}
