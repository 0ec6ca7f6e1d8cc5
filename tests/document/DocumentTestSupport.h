#pragma once

#include "PreviewPlayer.h"
#include "Recordings.h"

#include <QString>
#include <QTemporaryDir>
#include <QUrl>
#include <functional>
#include <vector>

// Runs the event loop until `done` holds or `timeoutMs` pass; returns whether it held.
bool waitUntil(const std::function<bool()>& done, int timeoutMs = 60000);
// Runs the event loop for `ms` milliseconds, so timers and queued calls get their turn.
void runEventLoop(int ms);

// A player that plays nothing and remembers what it was asked to do. Its play state changes
// at once and is reported by signal, as a real player's would be.
class FakePlayer : public PreviewPlayer {
public:
    void setSource(const QUrl& url) override { source = url; }
    void clear() override
    {
        ++clears;
        source.clear();
        setPlaying(false);
    }
    void play() override
    {
        ++plays;
        setPlaying(true);
    }
    void pause() override
    {
        ++pauses;
        setPlaying(false);
    }
    void seek(double seconds) override { seeks.push_back(seconds); }
    bool isPlaying() const override { return playing; }
    void setVideoOutput(QObject*) override {}

    void report(double seconds) { emit positionReported(seconds); }
    void setPlaying(bool value)
    {
        playing = value;
        emit playingChanged(value);
    }

    QUrl source;
    std::vector<double> seeks;
    int plays = 0;
    int pauses = 0;
    int clears = 0;
    bool playing = false;
};

// A recording that never finishes arriving: a named pipe, on which the worker that opens it
// waits until release(), and so does the work queued behind it.
class StalledInput {
public:
    explicit StalledInput(const QString& path = {});
    ~StalledInput();
    StalledInput(const StalledInput&) = delete;
    StalledInput& operator=(const StalledInput&) = delete;

    QString path() const { return m_path; }
    // Waits until a reader has the pipe open, then ends it empty: the reader fails to parse it.
    void release();

private:
    QTemporaryDir m_folder;
    QString m_path;
    bool m_released = false;
};
