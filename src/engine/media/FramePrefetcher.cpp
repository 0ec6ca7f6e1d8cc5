#include "FramePrefetcher.h"

FramePrefetcher::FramePrefetcher(Decode decode, std::size_t capacity)
    : m_decode(std::move(decode))
    , m_capacity(capacity)
    , m_thread([this] { run(); })
{
}

FramePrefetcher::~FramePrefetcher()
{
    {
        const std::lock_guard lock(m_mutex);
        m_stopping = true;
    }
    m_changed.notify_all();
    m_thread.join();
}

bool FramePrefetcher::next(AVFrame* frame)
{
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [this] { return !m_frames.empty() || m_ended; });
    if (m_frames.empty()) {
        if (m_failure)
            std::rethrow_exception(m_failure);
        return false;
    }
    av_frame_move_ref(frame, m_frames.front().get());
    m_frames.pop_front();
    lock.unlock();
    m_changed.notify_all();
    return true;
}

void FramePrefetcher::run()
{
    std::exception_ptr failure;
    try {
        for (;;) {
            FramePtr frame = makeFrame();
            const bool decoded = m_decode(frame.get());
            std::unique_lock lock(m_mutex);
            m_changed.wait(lock, [this] { return m_stopping || m_frames.size() < m_capacity; });
            if (m_stopping || !decoded)
                break;
            m_frames.push_back(std::move(frame));
            lock.unlock();
            m_changed.notify_all();
        }
    } catch (...) {
        failure = std::current_exception();
    }
    {
        const std::lock_guard lock(m_mutex);
        m_failure = failure;
        m_ended = true;
    }
    m_changed.notify_all();
}
