#include "SerialQueue.h"

#include <pthread.h>

SerialQueue::SerialQueue(const QString& label)
    : m_label(label)
{
    m_worker = std::thread([this] { runJobs(); });
    // Linux keeps at most 15 characters of a thread name.
    pthread_setname_np(m_worker.native_handle(), m_label.left(15).toUtf8().constData());
}

SerialQueue::~SerialQueue()
{
    {
        std::lock_guard lock(m_mutex);
        m_stopping = true;
        if (!m_keepPending)
            m_jobs.clear();
    }
    m_wake.notify_one();
    m_worker.join();
}

void SerialQueue::submit(std::function<void()> job)
{
    {
        std::lock_guard lock(m_mutex);
        m_jobs.push_back(std::move(job));
    }
    m_wake.notify_one();
}

void SerialQueue::keepPendingJobs()
{
    std::lock_guard lock(m_mutex);
    m_keepPending = true;
}

void SerialQueue::runJobs()
{
    for (;;) {
        std::function<void()> job;
        {
            std::unique_lock lock(m_mutex);
            m_wake.wait(lock, [this] { return m_stopping || !m_jobs.empty(); });
            if (m_stopping && m_jobs.empty())
                return;
            job = std::move(m_jobs.front());
            m_jobs.pop_front();
        }
        job();
    }
}
