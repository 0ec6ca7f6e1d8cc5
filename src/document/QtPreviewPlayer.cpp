#include "QtPreviewPlayer.h"

#include <cmath>

QtPreviewPlayer::QtPreviewPlayer(QObject* parent)
    : PreviewPlayer(parent)
{
    m_player.setAudioOutput(&m_audioOutput);
    m_tick.setInterval(tickIntervalMs);
    m_tick.setTimerType(Qt::PreciseTimer);
    connect(&m_tick, &QTimer::timeout, this, &QtPreviewPlayer::reportPosition);
    connect(&m_player, &QMediaPlayer::playbackStateChanged, this,
            &QtPreviewPlayer::onPlaybackStateChanged);
    connect(&m_player, &QMediaPlayer::positionChanged, this, &QtPreviewPlayer::onPositionChanged);
}

QtPreviewPlayer::~QtPreviewPlayer()
{
    // Stopping during destruction must not reach listeners through half-destroyed members.
    m_player.disconnect(this);
    m_tick.stop();
}

void QtPreviewPlayer::setSource(const QUrl& source)
{
    m_player.setSource(source);
}

void QtPreviewPlayer::clear()
{
    m_player.stop();
    m_player.setSource(QUrl());
}

void QtPreviewPlayer::play()
{
    m_player.play();
}

void QtPreviewPlayer::pause()
{
    m_player.pause();
}

void QtPreviewPlayer::seek(double seconds)
{
    // Targets are whole 1/600 s, like every time the preview hands out; Qt takes milliseconds
    // and has no tolerances of its own.
    const double onGrid = std::round(seconds * 600.0) / 600.0;
    m_player.setPosition(std::llround(onGrid * 1000.0));
}

bool QtPreviewPlayer::isPlaying() const
{
    return m_player.playbackState() == QMediaPlayer::PlayingState;
}

void QtPreviewPlayer::setVideoOutput(QObject* output)
{
    m_player.setVideoOutput(output);
}

void QtPreviewPlayer::onPlaybackStateChanged(QMediaPlayer::PlaybackState state)
{
    const bool playing = state == QMediaPlayer::PlayingState;
    if (playing)
        m_tick.start();
    else
        m_tick.stop();
    emit playingChanged(playing);
}

void QtPreviewPlayer::onPositionChanged(qint64)
{
    // While playing the tick reports; a paused player reports where a seek landed. A stopped
    // one (end of file, no file) has nothing worth reporting.
    if (m_player.playbackState() == QMediaPlayer::PausedState)
        reportPosition();
}

void QtPreviewPlayer::reportPosition()
{
    emit positionReported(static_cast<double>(m_player.position()) / 1000.0);
}
