#include "DocumentTestSupport.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QThread>
#include <cerrno>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

bool waitUntil(const std::function<bool()>& done, int timeoutMs)
{
    QDeadlineTimer deadline(timeoutMs);
    while (!done()) {
        if (deadline.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        QThread::msleep(2);
    }
    return true;
}

void runEventLoop(int ms)
{
    QDeadlineTimer deadline(ms);
    while (!deadline.hasExpired()) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        QThread::msleep(2);
    }
    QCoreApplication::processEvents();
}

// Allocations kept to the end by the media backend, GLib and Qt's offscreen platform (a bare
// QVideoWidget shown and deleted leaks the same); none of them is ours. Where GStreamer's
// Vulkan plugin is installed, Qt Multimedia's device monitor makes it leak a string from
// vasprintf called in GLib, whose frames the fast unwinder cannot follow past vasprintf.
extern "C" const char* __lsan_default_suppressions()
{
    return "leak:libpulse.so\nleak:libglib-2.0.so\nleak:libqoffscreen.so\n"
           "leak:QBackingStore::QBackingStore\nleak:__vasprintf_internal\n";
}

namespace {

// The recent-files list of the test run goes to a folder of its own (the preference store
// has its sandbox already).
class IsolatedDataFolder : public testing::Environment {
public:
    void SetUp() override
    {
        ASSERT_TRUE(m_data.isValid());
        qputenv("XDG_DATA_HOME", m_data.path().toLocal8Bit());
    }

private:
    QTemporaryDir m_data;
};

[[maybe_unused]] testing::Environment* const isolatedDataFolder =
    testing::AddGlobalTestEnvironment(new IsolatedDataFolder);

} // namespace

StalledInput::StalledInput(const QString& path)
    : m_path(path.isEmpty() ? m_folder.filePath("arriving.wav") : path)
{
    QFile::remove(m_path);
    if (::mkfifo(QFile::encodeName(m_path).constData(), 0600) != 0)
        ADD_FAILURE() << "cannot make a named pipe at " << m_path.toStdString();
}

StalledInput::~StalledInput()
{
    release();
}

void StalledInput::release()
{
    if (m_released)
        return;
    m_released = true;
    // A writer can open without waiting only once a reader has: that is the worker, blocked
    // in its open until now. Closing the writer at once gives it an empty stream.
    const QByteArray name = QFile::encodeName(m_path);
    QElapsedTimer clock;
    clock.start();
    for (;;) {
        const int fd = ::open(name.constData(), O_WRONLY | O_NONBLOCK | O_CLOEXEC);
        if (fd >= 0) {
            ::close(fd);
            break;
        }
        if (errno != ENXIO || clock.elapsed() > 60000) {
            ADD_FAILURE() << "no reader came for " << m_path.toStdString();
            break;
        }
        QThread::msleep(1);
    }
    QFile::remove(m_path);
}
