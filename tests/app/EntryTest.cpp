#include "SingleInstance.h"

#include <QDir>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <gtest/gtest.h>

// The test plays the window already running: a windowed launch hands it what the program
// entry put into the launch globals, the file to open first, and ends.
TEST(Entry, aWindowedLaunchHandsItsLaunchLocationsToTheRunningWindow)
{
    QTemporaryDir runtime;
    QTemporaryDir work;
    ASSERT_TRUE(runtime.isValid() && work.isValid());
    SingleInstance window(QDir(runtime.path()).filePath("hushpane.socket"));
    ASSERT_TRUE(window.listen());
    QSignalSpy received(&window, &SingleInstance::requestReceived);
    const QDir here(work.path());

    const struct {
        QStringList arguments;
        LaunchRequest expected;
    } rows[] = {
        {{"--open", "a.wav", "--batch", "rec"}, {{here.filePath("a.wav")}, here.filePath("rec")}},
        {{"--batch", "rec", "--batch", "other"}, {{}, here.filePath("rec")}},
        {{"talk.mp4", "--open", "b.wav", "--open", "c.wav"},
         {{here.filePath("b.wav"), here.filePath("talk.mp4")}, {}}},
        {{"-platform", "offscreen", "--open", "/tmp/d.wav"}, {{"/tmp/d.wav"}, {}}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.arguments.join(' ').toStdString());
        received.clear();
        QProcess launch;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("XDG_RUNTIME_DIR", runtime.path());
        environment.insert("QT_QPA_PLATFORM", "offscreen");
        // Qt's platform plugins keep allocations to the end in a sanitized build; the hand-over
        // is what is under test here.
        environment.insert("ASAN_OPTIONS", "detect_leaks=0");
        launch.setProcessEnvironment(environment);
        launch.setWorkingDirectory(work.path());
        launch.start(HUSHPANE_BINARY, row.arguments);
        ASSERT_TRUE(received.wait(60000)) << launch.readAllStandardError().toStdString();
        ASSERT_TRUE(launch.waitForFinished(60000));
        EXPECT_EQ(launch.exitCode(), 0);
        ASSERT_EQ(received.count(), 1);
        EXPECT_EQ(received.at(0).at(0).value<LaunchRequest>(), row.expected);
    }
}
