#pragma once

#include <QWidget>

class AppModel;
class QCheckBox;
class QLabel;
class QPushButton;
class TimelineBlock;
class VideoPreview;

// The preview: picture, timeline with legend, play control, position and the skip switch.
class PlayerSection : public QWidget {
    Q_OBJECT
public:
    explicit PlayerSection(AppModel& model, QWidget* parent = nullptr);

    QPushButton* playButton() const { return m_play; }
    QLabel* timeLabel() const { return m_time; }
    QCheckBox* skipPausesSwitch() const { return m_skipPauses; }
    TimelineBlock* timelineBlock() const { return m_timeline; }
    VideoPreview* videoPreview() const { return m_video; }

private:
    void showPlayState();
    void showTime();
    void showPhase();

    AppModel& m_model;
    VideoPreview* m_video;
    TimelineBlock* m_timeline;
    QPushButton* m_play;
    QLabel* m_time;
    QCheckBox* m_skipPauses;
};
