#include "TidleEngine.h"

#include "LevelReader.h"
#include "Localization.h"
#include "MediaFile.h"
#include "PausePlanner.h"
#include "TidleError.h"

#include <QFileInfo>
#include <algorithm>
#include <array>
#include <cmath>

Analysis TidleEngine::analyze(const QString& path, const TidleSettings& settings,
                              const ProgressCallback& onProgress)
{
    m_cancelRequested.store(false);

    // An empty file has no length; FFmpeg would only say that its content did not parse.
    const QFileInfo info(path);
    if (info.isFile() && info.size() == 0)
        throw TidleError::unreadable(localized("diag.zeroDuration"));

    MediaFile file(path);
    double duration = file.duration();
    // Files written as a stream (browser recordings, piped or recovered Matroska) may state no
    // length at all: their decoded sound gives it.
    const bool lengthStated = std::isfinite(duration);
    if (!(lengthStated && duration > 0.0) && (lengthStated || file.audioStreams().empty()))
        throw TidleError::unreadable(localized("diag.zeroDuration"));
    if (file.audioStreams().empty()) {
        // Sound that no decoder knows cannot be heard, but it is not the absence of sound.
        if (!file.undecodableAudioStreams().empty())
            throw TidleError::unreadable(localized("diag.audioRead"));
        throw TidleError::noAudioTrack();
    }

    LevelReading reading = readLevels(file, duration, m_cancelRequested, onProgress);
    // A length FFmpeg only estimated from the bitrate can be off by a second either way;
    // the decoded sound is the real length then, so no keep runs past it.
    if (!lengthStated || file.durationIsEstimated())
        duration = double(reading.sampleCount) / LevelReader::sampleRate;
    if (!(duration > 0.0))
        throw TidleError::unreadable(localized("diag.zeroDuration"));

    Analysis analysis;
    analysis.silences = findSilences(reading.levels, levelWindow, settings.thresholdDB,
                                     settings.minPause, duration);
    analysis.keeps = keepSegments(analysis.silences, duration, settings.padding, minKeep);
    if (analysis.keeps.empty())
        throw TidleError::allSilent();

    const auto [container, extension] = outputPlan(file, settings.frameAccurate);
    analysis.duration = duration;
    analysis.levels = std::move(reading.levels);
    analysis.levelWindow = levelWindow;
    analysis.hasVideo = !file.videoStreams().empty();
    analysis.outputFileType = container;
    analysis.outputExtension = extension;
    return analysis;
}

std::pair<OutputContainer, QString> TidleEngine::outputPlan(const MediaFile& file,
                                                            bool frameAccurate)
{
    if (file.videoStreams().empty())
        return {OutputContainer::AppleM4A, QStringLiteral("m4a")};
    if (frameAccurate)
        return {OutputContainer::MPEG4, QStringLiteral("mp4")};
    // A pass-through export copies the first video track as it is: these formats go into
    // an .mp4 unchanged, every other one needs a QuickTime movie.
    static const std::array<QString, 3> mpeg4Ready = {
        QStringLiteral("avc1"), QStringLiteral("hvc1"), QStringLiteral("mp4v")};
    const QString tag = file.codecTag(file.videoStreams().front());
    if (std::find(mpeg4Ready.begin(), mpeg4Ready.end(), tag) != mpeg4Ready.end())
        return {OutputContainer::MPEG4, QStringLiteral("mp4")};
    return {OutputContainer::QuickTimeMovie, QStringLiteral("mov")};
}
