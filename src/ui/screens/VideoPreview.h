#pragma once

#include <QWidget>

class QVideoWidget;
class SymbolLabel;

// The picture of the preview in a rounded frame. A recording without a picture shows a
// waveform symbol on the same dark ground, so the screen keeps its shape.
class VideoPreview : public QWidget {
    Q_OBJECT
public:
    static constexpr int height = 320;

    explicit VideoPreview(QWidget* parent = nullptr);

    // Where the player draws.
    QObject* videoOutput() const;
    void setHasPicture(bool hasPicture);
    bool showsPicture() const;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QVideoWidget* m_video;
    SymbolLabel* m_soundOnly;
};
