#include "LevelReader.h"

#include "AudioMixReader.h"
#include "Localization.h"
#include "MediaError.h"
#include "TidleError.h"

#include <algorithm>
#include <cmath>

LevelReader::LevelReader(double duration)
    : m_expected(std::max(duration / (double(windowSamples) / sampleRate), 1.0))
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

LevelReading readLevels(MediaFile& file, double duration, const std::atomic<bool>& cancelRequested,
                        const std::function<void(double)>& onProgress)
{
    LevelReader reader(duration);
    int64_t sampleCount = 0;
    try {
        AudioMixReader mix(file, cancelRequested);
        const bool finished = mix.read([&](std::span<const float> samples) {
            if (onProgress && reader.levelCount() % 20 == 0)
                onProgress(std::min(double(reader.levelCount()) / reader.expectedLevels(), 1.0));
            reader.add(samples);
        });
        if (!finished)
            throw TidleError::cancelled();
        sampleCount = mix.samplesRead();
    } catch (const AudioTrackDecoder::FormatError&) {
        throw TidleError::unreadable(localized("diag.audioFormat"));
    } catch (const AudioTrackDecoder::TruncatedError&) {
        throw TidleError::unreadable(localized("diag.truncated"));
    } catch (const MediaError& error) {
        const QString message = error.message();
        throw TidleError::unreadable(message.isEmpty() ? localized("diag.audioRead") : message);
    }
    return {reader.finish(), sampleCount};
}
