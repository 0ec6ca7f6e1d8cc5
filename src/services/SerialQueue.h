#pragma once

#include <QString>
#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>

// One worker thread running submitted jobs one after another, in the order submitted.
// Jobs report back to the GUI thread themselves (queued invocations on a context object).
class SerialQueue {
public:
    explicit SerialQueue(const QString& label);
    // Drops the jobs not yet started (unless told to keep them) and waits for the running
    // one: whoever owns the queue cancels its running work first.
    ~SerialQueue();
    SerialQueue(const SerialQueue&) = delete;
    SerialQueue& operator=(const SerialQueue&) = delete;

    void submit(std::function<void()> job);
    // From now on the destructor runs every job already submitted before it returns.
    void keepPendingJobs();
    const QString& label() const { return m_label; }

private:
    void runJobs();

    QString m_label;
    std::mutex m_mutex;
    std::condition_variable m_wake;
    std::deque<std::function<void()>> m_jobs;
    bool m_stopping = false;
    bool m_keepPending = false;
    std::thread m_worker;
};
