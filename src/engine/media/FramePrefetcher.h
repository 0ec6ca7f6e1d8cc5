#pragma once

#include "FfmpegPtr.h"

#include <condition_variable>
#include <deque>
#include <exception>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

// Decodes ahead on a thread of its own: while the caller converts and measures one frame,
// the next ones are being decoded. Frames come out in the order decoded, and a failure comes
// out where it arose, after the frames before it.
class FramePrefetcher {
public:
    // Fills the frame and gives true, or gives false at the end; may throw. Once the
    // prefetcher runs, only its thread may touch what `decode` uses.
    using Decode = std::function<bool(AVFrame*)>;

    explicit FramePrefetcher(Decode decode, std::size_t capacity = 64);
    // Stops decoding and waits for the thread.
    ~FramePrefetcher();
    FramePrefetcher(const FramePrefetcher&) = delete;
    FramePrefetcher& operator=(const FramePrefetcher&) = delete;

    // Moves the next frame into `frame` and gives true; false at the end. Rethrows what
    // `decode` threw once the frames before the failure are taken.
    bool next(AVFrame* frame);

private:
    void run();

    Decode m_decode;
    std::size_t m_capacity;
    std::size_t m_batch;
    std::mutex m_mutex;
    std::condition_variable m_framesReady;
    std::condition_variable m_decoderMayGo;
    std::deque<FramePtr> m_frames;
    std::vector<FramePtr> m_spare; // emptied frames, to be filled again
    std::exception_ptr m_failure;
    bool m_ended = false;
    bool m_stopping = false;
    bool m_readerWaiting = false;
    bool m_decoderWaiting = false;
    std::thread m_thread; // last: starts once everything above exists
};
