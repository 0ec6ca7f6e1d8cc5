#pragma once

#include <QObject>
#include <QUrl>

// The media player behind the preview, reduced to what the document model drives. Lives on
// the GUI thread. A test gives the model a fake one; the application gives it QtPreviewPlayer.
class PreviewPlayer : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    // Replaces the current file without pausing; an empty location removes it.
    virtual void setSource(const QUrl& source) = 0;
    // Stops and removes the current file.
    virtual void clear() = 0;
    virtual void play() = 0;
    virtual void pause() = 0;
    // Moves to `seconds`. The preview asks for nothing before the target and at most 0.05 s
    // after it; a player that cannot promise that seeks as close as it can.
    virtual void seek(double seconds) = 0;
    virtual bool isPlaying() const = 0;
    // Where the picture goes (a video widget or sink); nullptr drops it.
    virtual void setVideoOutput(QObject* output) = 0;

signals:
    // The position in seconds: every 1/30 s while playing, and where a seek landed while paused.
    void positionReported(double seconds);
    void playingChanged(bool playing);
};
