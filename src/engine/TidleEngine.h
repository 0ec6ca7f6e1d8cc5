#pragma once

#include "Analysis.h"
#include "PausePlanner.h"
#include "Segment.h"
#include "TidleSettings.h"

#include <QString>
#include <atomic>
#include <functional>
#include <utility>
#include <vector>

class MediaFile;

// Analyses one file into an Analysis and writes the kept spans to a new file.
// Both operations block the calling thread (never the GUI thread) and throw TidleError for
// the engine's own findings, or MediaError for a failure of the media library while opening
// or loading the file. One job at a time per engine.
class TidleEngine {
public:
    using ProgressCallback = std::function<void(double)>;

    static constexpr double levelWindow = 0.05;
    static constexpr double minKeep = 0.05;

    TidleEngine() = default;
    TidleEngine(const TidleEngine&) = delete;
    TidleEngine& operator=(const TidleEngine&) = delete;

    Analysis analyze(const QString& path, const TidleSettings& settings,
                     const ProgressCallback& onProgress = {});

    // Writes the keeps of `analysis` from `input` to `output`, replacing a file there.
    // Reports progress at most every 0.2 s and exactly 1.0 on success. A failed or
    // cancelled export leaves no file at `output`; the input is never touched.
    void encode(const QString& input, const QString& output, const Analysis& analysis,
                const TidleSettings& settings, const ProgressCallback& onProgress);

    // Callable from any thread at any time: the running analysis or export stops at its
    // next packet with TidleError::cancelled.
    void cancel() { m_cancelRequested.store(true); }

    static std::vector<Segment> keepSegments(const std::vector<Segment>& silences, double duration,
                                             double padding, double minKeep)
    {
        return ::keepSegments(silences, duration, padding, minKeep);
    }

private:
    // The container an export of `file` writes, and its file-name extension.
    static std::pair<OutputContainer, QString> outputPlan(const MediaFile& file,
                                                          bool frameAccurate);

    std::atomic<bool> m_cancelRequested{false};
};
