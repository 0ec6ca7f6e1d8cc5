#include "DocumentTestSupport.h"

#include "Fixtures.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QFile>
#include <QSaveFile>
#include <QTemporaryDir>
#include <QThread>
#include <gtest/gtest.h>

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

// The media backend's sound-server client and GLib keep a few allocations until the process
// ends, and so does Qt's offscreen platform for the native window of a video widget (a bare
// QVideoWidget shown and deleted leaks the same); none of them is ours. Read by
// LeakSanitizer at exit.
extern "C" const char* __lsan_default_suppressions()
{
    return "leak:libpulse.so\nleak:libglib-2.0.so\nleak:libqoffscreen.so\n"
           "leak:QBackingStore::QBackingStore\n";
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

namespace DocumentFixtures {

QString toneWithGaps()
{
    return Fixtures::makeWithFfmpeg(
        "document-tone-gaps.wav",
        {"-f", "lavfi", "-i",
         "aevalsrc='0.5*sin(2*PI*440*t)*(gte(t,1)*lt(t,4)+gte(t,6)*lt(t,9))':s=16000:d=30", "-c:a",
         "pcm_s16le"});
}

QString speechWithPauses()
{
    const QString first =
        Fixtures::makeSpeech("document-speech-1.wav", "The first part of the talk starts here.");
    const QString second =
        Fixtures::makeSpeech("document-speech-2.wav", "After a long pause the speaker goes on.");
    const QString third =
        Fixtures::makeSpeech("document-speech-3.wav", "And that is the end of the story.");
    const QString gap = "anullsrc=r=22050:cl=mono:d=1.5";
    return Fixtures::makeWithFfmpeg("document-speech-pauses.wav",
                                    {"-i",
                                     first,
                                     "-f",
                                     "lavfi",
                                     "-i",
                                     gap,
                                     "-i",
                                     second,
                                     "-f",
                                     "lavfi",
                                     "-i",
                                     gap,
                                     "-i",
                                     third,
                                     "-filter_complex",
                                     "[0:a][1:a][2:a][3:a][4:a]concat=n=5:v=0:a=1",
                                     "-ar",
                                     "22050",
                                     "-ac",
                                     "1",
                                     "-c:a",
                                     "pcm_s16le"});
}

QString shortSine()
{
    return Fixtures::makeWithFfmpeg("document-sine-3s.wav",
                                    {"-f", "lavfi", "-i",
                                     "sine=frequency=440:sample_rate=16000:duration=3", "-c:a",
                                     "pcm_s16le"});
}

QString brokenFile()
{
    const QString path = Fixtures::path("document-broken.wav");
    if (!QFile::exists(path)) {
        // Written whole or not at all: other test processes may read it meanwhile.
        QSaveFile file(path);
        if (file.open(QIODevice::WriteOnly)) {
            file.write(QByteArray("this is not a recording\n").repeated(64));
            file.commit();
        }
    }
    return path;
}

} // namespace DocumentFixtures
