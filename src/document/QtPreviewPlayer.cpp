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
    connect(&m_player, &QMediaPlayer::mediaStatusChanged, this,
            &QtPreviewPlayer::onMediaStatusChanged);
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
    // Qt stops on a new source; a playing preview goes on playing the new file, a paused one
    // pauses on its first picture so there is something to see before play is pressed.
    const bool wasPlaying = m_player.playbackState() == QMediaPlayer::PlayingState;
    m_player.setSource(source);
    if (source.isEmpty())
        return;
    if (wasPlaying)
        m_player.play();
    else
        m_player.pause();
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
    // Asked to play but still loading or waiting for data is not playing yet.
    switch (m_player.mediaStatus()) {
    case QMediaPlayer::LoadingMedia:
    case QMediaPlayer::BufferingMedia:
    case QMediaPlayer::StalledMedia:
        return false;
    default:
        return m_player.playbackState() == QMediaPlayer::PlayingState;
    }
}

void QtPreviewPlayer::setVideoOutput(QObject* output)
{
    m_player.setVideoOutput(output);
}

void QtPreviewPlayer::onPlaybackStateChanged(QMediaPlayer::PlaybackState state)
{
    if (state == QMediaPlayer::PlayingState)
        m_tick.start();
    else
        m_tick.stop();
    emit playingChanged(isPlaying());
}

void QtPreviewPlayer::onMediaStatusChanged(QMediaPlayer::MediaStatus status)
{
    // The player stops by itself at the end and forgets where it was; reporting the end lets
    // the next play start over from the beginning of what is kept.
    if (status == QMediaPlayer::EndOfMedia)
        emit positionReported(static_cast<double>(m_player.duration()) / 1000.0);
    emit playingChanged(isPlaying());
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
