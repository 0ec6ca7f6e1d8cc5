#pragma once

#include "PreviewPlayer.h"

#include <QAudioOutput>
#include <QMediaPlayer>
#include <QTimer>

// The preview on Qt Multimedia: sound through the default audio device, the picture wherever
// the window points it with setVideoOutput().
class QtPreviewPlayer : public PreviewPlayer {
    Q_OBJECT
public:
    static constexpr int tickIntervalMs = 33; // 1/30 s, rounded to the timer's milliseconds

    explicit QtPreviewPlayer(QObject* parent = nullptr);
    ~QtPreviewPlayer() override;

    void setSource(const QUrl& source) override;
    void clear() override;
    void play() override;
    void pause() override;
    void seek(double seconds) override;
    bool isPlaying() const override;
    void setVideoOutput(QObject* output) override;

    QMediaPlayer* mediaPlayer() { return &m_player; }

private:
    void onPlaybackStateChanged(QMediaPlayer::PlaybackState state);
    void onMediaStatusChanged(QMediaPlayer::MediaStatus status);
    void onPositionChanged(qint64 positionMs);
    void reportPosition();

    QMediaPlayer m_player;
    QAudioOutput m_audioOutput;
    QTimer m_tick;
};
