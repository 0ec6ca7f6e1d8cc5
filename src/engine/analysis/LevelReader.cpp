#include "LevelReader.h"

#include "AudioMixReader.h"
#include "FfmpegCheck.h"
#include "LevelPart.h"
#include "Localization.h"
#include "MediaError.h"
#include "MediaFile.h"
#include "TidleError.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <future>
#include <memory>
#include <optional>
#include <thread>

LevelReader::LevelReader(double duration)
    : m_expected(duration > 1.0 / sampleRate ? std::max(duration * sampleRate / windowSamples, 1.0)
                                             : 1.0)
{
    m_levels.reserve(std::size_t(m_expected) + 1);
}

void LevelReader::add(std::span<const float> samples)
{
    // Kept in locals so that the loop stays in registers; the order of additions is the
    // plain sequential one, which the levels are defined by.
    float sum = m_sum;
    int count = m_count;
    for (const float x : samples) {
        sum += x * x;
        if (++count == windowSamples) {
            m_levels.push_back(std::sqrt(sum / float(windowSamples)));
            sum = 0.0f;
            count = 0;
        }
    }
    m_sum = sum;
    m_count = count;
}

std::vector<float> LevelReader::finish()
{
    if (m_count > 0)
        m_levels.push_back(std::sqrt(m_sum / float(m_count)));
    m_sum = 0.0f;
    m_count = 0;
    return std::move(m_levels);
}

namespace {

using Progress = std::function<void(double)>;

// Shorter stretches gain less from a core of their own than opening and settling cost.
constexpr double minPartSeconds = 30.0;

bool lengthKnown(double duration)
{
    return std::isfinite(duration) && duration > 0.0;
}

// Decoders that, started anywhere, give the very samples of a decoding from the start once a
// second is behind them. AAC's is not among them: it fills noise bands from a random sequence
// that runs from the stream's start, and AC-3's dithers likewise.
bool settlesAfterSeek(AVCodecID codec)
{
    if (codec >= AV_CODEC_ID_FIRST_AUDIO && codec < AV_CODEC_ID_ADPCM_IMA_QT)
        return true; // PCM of every kind
    switch (codec) {
    case AV_CODEC_ID_MP1:
    case AV_CODEC_ID_MP2:
    case AV_CODEC_ID_MP3:
    case AV_CODEC_ID_OPUS:
    case AV_CODEC_ID_VORBIS:
    case AV_CODEC_ID_FLAC:
    case AV_CODEC_ID_ALAC:
        return true;
    default:
        return false;
    }
}

// Stretches read apart agree only where every frame's timestamp names its exact first
// sample and a seek lands where asked: timestamps of a coarse time base (Matroska's and
// FLV's milliseconds) leave a stretch read from the middle up to half a millisecond out
// against one read from the start, and a guessed length may lie.
bool splittable(const MediaFile& file)
{
    const AVFormatContext* context = file.context();
    if (!context->pb || !(context->pb->seekable & AVIO_SEEKABLE_NORMAL) ||
        file.durationIsEstimated())
        return false;
    return std::all_of(file.audioStreams().begin(), file.audioStreams().end(), [&](int index) {
        const AVStream* stream = context->streams[index];
        const int64_t rate = stream->codecpar->sample_rate;
        return settlesAfterSeek(stream->codecpar->codec_id) && rate > 0 &&
               stream->time_base.num > 0 &&
               int64_t(stream->time_base.num) * rate <= int64_t(stream->time_base.den);
    });
}

int cores()
{
    return int(std::max(1u, std::thread::hardware_concurrency()));
}

int automaticParts(double duration)
{
    return std::clamp(int(duration / minPartSeconds), 1, cores());
}

// Reports the levels measured by all stretches together, in steps of 20 levels. The first
// report is 0.0, made before any stretch starts: the stretches run in parallel, so whichever
// reports first may already have counted levels of its own.
class SplitProgress {
public:
    SplitProgress(const Progress& onProgress, double expected,
                  const std::vector<std::unique_ptr<LevelPart>>& parts)
        : m_onProgress(onProgress)
        , m_expected(expected)
        , m_parts(parts)
    {
    }

    void start()
    {
        if (m_onProgress)
            m_onProgress(0.0);
    }

    void report()
    {
        if (!m_onProgress)
            return;
        std::size_t levels = 0;
        for (const auto& part : m_parts)
            levels += part->levelCount();
        const std::size_t step = levels / 20;
        if (step <= m_lastStep)
            return;
        m_lastStep = step;
        m_onProgress(std::min(double(step * 20) / m_expected, 1.0));
    }

private:
    const Progress& m_onProgress;
    double m_expected;
    const std::vector<std::unique_ptr<LevelPart>>& m_parts;
    std::size_t m_lastStep = 0;
};

// Reads `count` stretches at once, the first on this thread. Gives nothing when a stretch
// failed or does not continue the one before it; a fault of the file itself then shows in
// the reading from the start that follows.
std::optional<LevelReading> readSplit(MediaFile& file, double duration, int count,
                                      const std::atomic<bool>& cancelRequested,
                                      const Progress& onProgress)
{
    const auto total = int64_t(duration * LevelReader::sampleRate);
    const int64_t window = LevelReader::windowSamples;
    std::vector<std::unique_ptr<LevelPart>> parts;
    for (int k = 0; k < count; ++k) {
        const int64_t start = total * k / count / window * window;
        const int64_t end =
            k + 1 < count ? total * (k + 1) / count / window * window : LevelPart::unbounded;
        const double seconds =
            double((k + 1 < count ? end : total) - start) / LevelReader::sampleRate;
        parts.push_back(std::make_unique<LevelPart>(start, end, seconds));
    }

    std::atomic<bool> abandoned{false};
    SplitProgress progress(onProgress, std::max(duration * 20.0, 1.0), parts);
    progress.start();
    std::vector<std::future<bool>> others;
    for (int k = 1; k < count; ++k)
        others.push_back(std::async(std::launch::async, [&, k] {
            return parts[std::size_t(k)]->read(file, cancelRequested, &abandoned, {});
        }));
    const auto stopOthers = [&] {
        abandoned.store(true);
        for (auto& other : others)
            other.wait();
    };

    bool finished = false;
    try {
        // The first stretch decodes from the start as one reading would, so its faults are
        // the file's.
        finished = parts[0]->read(file, cancelRequested, &abandoned, [&] { progress.report(); });
    } catch (...) {
        stopOthers();
        throw;
    }
    if (!finished) {
        stopOthers();
        throw TidleError::cancelled();
    }
    bool failed = false;
    for (auto& other : others) {
        while (other.wait_for(std::chrono::milliseconds(100)) != std::future_status::ready)
            progress.report();
        try {
            finished = other.get() && finished;
        } catch (const std::exception& error) {
            qCWarning(lcMedia, "a stretch read apart failed (%s); reading from the start",
                      error.what());
            failed = true;
        }
    }
    if (cancelRequested.load() || !finished)
        throw TidleError::cancelled();
    if (failed)
        return std::nullopt;
    for (std::size_t k = 1; k < parts.size(); ++k) {
        if (!parts[k]->continues(*parts[k - 1])) {
            qCWarning(lcMedia,
                      "stretch %zu does not continue the one before; reading from the "
                      "start",
                      k);
            return std::nullopt;
        }
    }

    LevelReading reading;
    reading.parts = count;
    reading.sampleCount = parts[0]->reached();
    for (const auto& part : parts) {
        if (part->reached() > part->start())
            reading.sampleCount = part->reached();
        std::vector<float> levels = part->takeLevels();
        reading.levels.insert(reading.levels.end(), levels.begin(), levels.end());
    }
    return reading;
}

LevelReading readWhole(MediaFile& file, double duration, bool decodeAhead,
                       const std::atomic<bool>& cancelRequested, const Progress& onProgress)
{
    const bool known = lengthKnown(duration);
    LevelPart whole(0, LevelPart::unbounded, known ? duration : 0.0);
    if (decodeAhead)
        whole.decodeAhead();
    const double expected = known ? std::max(duration * 20.0, 1.0) : 1.0;
    const bool finished = whole.read(file, cancelRequested, nullptr, [&] {
        const std::size_t levels = whole.levelCount();
        if (!onProgress || levels % 20 != 0)
            return;
        // Without a length, the share of the file read stands in for the share of the sound.
        onProgress(known ? std::min(double(levels) / expected, 1.0) : whole.fileFraction());
    });
    if (!finished)
        throw TidleError::cancelled();
    LevelReading reading;
    reading.sampleCount = whole.reached();
    reading.levels = whole.takeLevels();
    reading.decodedAhead = decodeAhead;
    return reading;
}

} // namespace

LevelReading readLevels(MediaFile& file, double duration, const std::atomic<bool>& cancelRequested,
                        const std::function<void(double)>& onProgress, int parts)
{
    try {
        const int count = !lengthKnown(duration) || !splittable(file) ? 1
                          : parts > 0                                 ? parts
                                                                      : automaticParts(duration);
        const bool decodeAhead = parts != 1 && cores() > 1;
        if (count > 1) {
            if (std::optional<LevelReading> reading =
                    readSplit(file, duration, count, cancelRequested, onProgress))
                return std::move(*reading);
            // Reports start again from the start; they never go back.
            double reported = 0.0;
            const Progress forward = [&](double fraction) {
                reported = std::max(reported, fraction);
                if (onProgress)
                    onProgress(reported);
            };
            MediaFile again(file.path());
            return readWhole(again, duration, decodeAhead, cancelRequested, forward);
        }
        return readWhole(file, duration, decodeAhead, cancelRequested, onProgress);
    } catch (const AudioTrackDecoder::FormatError&) {
        throw TidleError::unreadable(localized("diag.audioFormat"));
    } catch (const AudioTrackDecoder::TruncatedError&) {
        throw TidleError::unreadable(localized("diag.truncated"));
    } catch (const MediaError& error) {
        const QString message = error.message();
        throw TidleError::unreadable(message.isEmpty() ? localized("diag.audioRead") : message);
    }
}
