#pragma once

#include "PreviewPlayer.h"

#include <QString>
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

namespace DocumentFixtures {

// 30 s at 16 kHz: a tone from 1 to 4 s and from 6 to 9 s, digital silence elsewhere.
QString toneWithGaps();
// Three spoken sentences with 1.5 s of silence between them.
QString speechWithPauses();
// 3 s of a steady tone, no pause in it.
QString shortSine();
// A file named like audio that holds no media at all.
QString brokenFile();

} // namespace DocumentFixtures
