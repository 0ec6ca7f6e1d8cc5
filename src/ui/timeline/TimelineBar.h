#pragma once

#include "Segment.h"
#include "TimelineGeometry.h"

#include <QImage>
#include <QSet>
#include <QWidget>
#include <functional>
#include <optional>
#include <vector>

// The strip under the preview: the loudness as bars coloured by what becomes of each moment,
// the playhead, and an invisible click target on every pause. Dragging across it seeks;
// clicking a pause asks for it to be given back or cut again. It holds no document: the
// owner sets every input and acts on the two callbacks.
class TimelineBar : public QWidget {
    Q_OBJECT

public:
    static constexpr int stripHeight = 44;

    explicit TimelineBar(QWidget* parent = nullptr);

    void setAnalysisData(double duration, std::vector<Segment> keeps, std::vector<Segment> silences,
                         std::vector<float> levels, double levelWindow);
    void setKeeps(std::vector<Segment> keeps);
    void setDisabledSilences(const QSet<int>& disabled);
    void setPlayhead(double seconds);

    double duration() const { return m_duration; }
    double playhead() const { return m_playhead; }
    const std::vector<Segment>& silences() const { return m_silences; }
    const QSet<int>& disabledSilences() const { return m_disabled; }
    std::optional<int> hoveredSilence() const { return m_hoveredSilence; }
    // Where the click target of pause `index` lies, in the strip's coordinates.
    QRectF pauseArea(int index) const;

    // Called with a time in seconds while the user drags across the strip.
    std::function<void(double)> onSeek;
    // Called with a pause's index in `silences` when the user clicks it.
    std::function<void(int)> onToggle;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool event(QEvent* event) override;

private:
    // Precomputation, run when the data or the size changes; painting only reads the results.
    void computeBarHeights();
    void computeBarKinds();
    void renderWaveformLayer();
    void renderPlayheadSprite();
    void computePauseAreas();

    void setHoveredSilence(std::optional<int> index);
    void seekTo(double x);
    int pauseUnder(QPointF position) const;
    QRect playheadDirtyRect() const;
    QRect pauseDirtyRect(int index) const;

    double m_duration = 0.0;
    std::vector<Segment> m_keeps;
    std::vector<Segment> m_silences;
    QSet<int> m_disabled;
    std::vector<float> m_levels;
    double m_levelWindow = 0.05;
    double m_playhead = 0.0;
    float m_peak = TimelineGeometry::minimumPeak;

    std::vector<double> m_barHalfHeights;
    std::vector<TimelineGeometry::BarKind> m_barKinds;
    // The track and the bars, drawn once per change at the screen's pixel density.
    QImage m_waveformLayer;
    // The playhead, drawn once per size: stroking its outline on every player tick would
    // cost more than the whole rest of a frame.
    QImage m_playheadSprite;
    std::vector<QRectF> m_pauseAreas;

    std::optional<int> m_hoveredSilence;
    int m_pressedSilence = -1;
    std::optional<QPointF> m_dragOrigin;
    bool m_dragging = false;
};
