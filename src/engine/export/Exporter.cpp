#include "Exporter.h"

#include "AudioOnlyExport.h"
#include "MediaFile.h"
#include "PassThroughExport.h"
#include "ReencodeExport.h"
#include "TidleError.h"

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
    else
        PassThroughExport(job).run();
    progress.finish();
}
