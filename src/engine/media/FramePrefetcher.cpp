#include "FramePrefetcher.h"

#include <algorithm>

// Waking a thread costs more than converting a frame: the decoder runs until the queue is
// full and then rests until it is half empty, and the reader, once it ran dry, rests until a
// batch is ready, so the two wake each other a few times a second rather than every frame.
FramePrefetcher::FramePrefetcher(Decode decode, std::size_t capacity)
    : m_decode(std::move(decode))
    , m_capacity(capacity)
    , m_batch(std::max<std::size_t>(capacity / 4, 1))
    , m_thread([this] { run(); })
{
}

FramePrefetcher::~FramePrefetcher()
{
    {
        const std::lock_guard lock(m_mutex);
        m_stopping = true;
    }
    m_decoderMayGo.notify_all();
    m_thread.join();
}

bool FramePrefetcher::next(AVFrame* frame)
{
    std::unique_lock lock(m_mutex);
    if (m_frames.empty() && !m_ended) {
        m_readerWaiting = true;
        m_framesReady.wait(lock, [this] { return m_frames.size() >= m_batch || m_ended; });
        m_readerWaiting = false;
    }
    if (m_frames.empty()) {
        if (m_failure)
            std::rethrow_exception(m_failure);
        return false;
    }
    av_frame_move_ref(frame, m_frames.front().get());
    m_spare.push_back(std::move(m_frames.front()));
    m_frames.pop_front();
    const bool wakeDecoder = m_decoderWaiting && m_frames.size() <= m_capacity / 2;
    lock.unlock();
    if (wakeDecoder)
        m_decoderMayGo.notify_one();
    return true;
}

void FramePrefetcher::run()
{
    std::exception_ptr failure;
    try {
        FramePtr frame = makeFrame();
        for (;;) {
            const bool decoded = m_decode(frame.get());
            std::unique_lock lock(m_mutex);
            if (m_frames.size() >= m_capacity) {
                m_decoderWaiting = true;
                m_decoderMayGo.wait(
                    lock, [this] { return m_stopping || m_frames.size() <= m_capacity / 2; });
                m_decoderWaiting = false;
            }
            if (m_stopping || !decoded)
                break;
            m_frames.push_back(std::move(frame));
            const bool wakeReader = m_readerWaiting && m_frames.size() >= m_batch;
            if (m_spare.empty()) {
                lock.unlock();
                frame = makeFrame();
            } else {
                frame = std::move(m_spare.back());
                m_spare.pop_back();
                lock.unlock();
            }
            if (wakeReader)
                m_framesReady.notify_one();
        }
    } catch (...) {
        failure = std::current_exception();
    }
    {
        const std::lock_guard lock(m_mutex);
        m_failure = failure;
        m_ended = true;
    }
    m_framesReady.notify_all();
}
