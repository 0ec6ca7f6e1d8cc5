#include "TimelineBar.h"

#include "Appearance.h"
#include "Brand.h"
#include "Localization.h"

#include <QCursor>
#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>
#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr qreal trackRadius = 6.0;
constexpr qreal trackOpacity = 0.12;
constexpr qreal givenBackOpacity = 0.9;
constexpr qreal cutOpacity = 0.4;
constexpr qreal hoverRadius = 4.0;
constexpr qreal hoverLineWidth = 1.5;
constexpr qreal hoverOpacity = 0.8;
constexpr qreal playheadLineWidth = 0.5;
constexpr qreal playheadLineOpacity = 0.85;

// A rectangle that covers `area` including the fringe antialiasing paints around it.
QRect dirtyRect(const QRectF& area)
{
    return area.toAlignedRect().adjusted(-1, -1, 1, 1);
}

} // namespace

TimelineBar::TimelineBar(QWidget* parent)
    : QWidget(parent)
{
    setFixedHeight(stripHeight);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setMouseTracking(true);
    // The pause targets are for the pointer only, as are the strip's drags.
    setFocusPolicy(Qt::NoFocus);
    setAccessibleName(localized("timeline.accessible.name"));
    setAccessibleDescription(localized("timeline.accessible.description"));
}

void TimelineBar::setAnalysisData(double duration, std::vector<Segment> keeps,
                                  std::vector<Segment> silences, std::vector<float> levels,
                                  double levelWindow)
{
    m_duration = duration;
    m_keeps = std::move(keeps);
    m_silences = std::move(silences);
    m_levels = std::move(levels);
    m_levelWindow = levelWindow;
    m_peak = TimelineGeometry::peakLevel(m_levels);
    m_pressedSilence = -1;
    computeBarHeights();
    computeBarKinds();
    renderWaveformLayer();
    computePauseAreas();
    update();
}

void TimelineBar::setKeeps(std::vector<Segment> keeps)
{
    m_keeps = std::move(keeps);
    computeBarKinds();
    renderWaveformLayer();
    update();
}

void TimelineBar::setDisabledSilences(const QSet<int>& disabled)
{
    m_disabled = disabled;
    computeBarKinds();
    renderWaveformLayer();
    update();
}

void TimelineBar::setPlayhead(double seconds)
{
    const QRect before = playheadDirtyRect();
    m_playhead = seconds;
    const QRect after = playheadDirtyRect();
    // The player reports 30 times a second; only the two thin strips need painting.
    if (after != before) {
        update(before);
        update(after);
    }
}

QRectF TimelineBar::pauseArea(int index) const
{
    if (index < 0 || static_cast<std::size_t>(index) >= m_pauseAreas.size())
        return {};
    return m_pauseAreas[static_cast<std::size_t>(index)];
}

QSize TimelineBar::sizeHint() const
{
    return {400, stripHeight};
}

QSize TimelineBar::minimumSizeHint() const
{
    return {0, stripHeight};
}

void TimelineBar::computeBarHeights()
{
    m_barHalfHeights = TimelineGeometry::barHalfHeights(width(), height(), m_duration, m_levels,
                                                        m_levelWindow, m_peak);
}

void TimelineBar::computeBarKinds()
{
    m_barKinds = TimelineGeometry::barKinds(
        width(), m_duration, m_keeps, TimelineGeometry::givenBackSpans(m_silences, m_disabled));
}

void TimelineBar::renderWaveformLayer()
{
    const qreal scale = devicePixelRatioF();
    const QSize pixels = size() * scale;
    if (pixels.isEmpty()) {
        m_waveformLayer = QImage();
        return;
    }
    if (m_waveformLayer.size() != pixels)
        m_waveformLayer = QImage(pixels, QImage::Format_ARGB32_Premultiplied);
    m_waveformLayer.setDevicePixelRatio(scale);
    m_waveformLayer.fill(Qt::transparent);

    QPainter painter(&m_waveformLayer);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const QRectF strip = rect();
    const QColor secondary = Appearance::secondaryText(palette());
    painter.setBrush(Appearance::faded(secondary, trackOpacity));
    painter.drawRoundedRect(strip, trackRadius, trackRadius);

    // Bar by bar rather than one path per colour: the rasteriser keeps each scan line's
    // edges in a sorted list, so one path spanning the strip costs the square of its bars.
    const std::size_t count = std::min(m_barHalfHeights.size(), m_barKinds.size());
    const auto drawBars = [&](TimelineGeometry::BarKind kind, const QBrush& brush) {
        painter.setBrush(brush);
        for (std::size_t i = 0; i < count; ++i)
            if (m_barKinds[i] == kind)
                painter.drawRoundedRect(
                    TimelineGeometry::barRect(static_cast<int>(i), m_barHalfHeights[i], height()),
                    TimelineGeometry::barCornerSize, TimelineGeometry::barCornerSize);
    };
    // One gradient across the whole strip, so a bar's colour says where it is in the file.
    drawBars(TimelineGeometry::BarKind::kept, Brand::gradient(strip));
    drawBars(TimelineGeometry::BarKind::givenBack,
             Appearance::faded(Appearance::mint(palette()), givenBackOpacity));
    drawBars(TimelineGeometry::BarKind::cut, Appearance::faded(secondary, cutOpacity));
}

void TimelineBar::renderPlayheadSprite()
{
    const qreal scale = devicePixelRatioF();
    const QRectF head(0.0, 0.0, TimelineGeometry::playheadWidth, height());
    m_playheadSprite = QImage((head.size() * scale).toSize(), QImage::Format_ARGB32_Premultiplied);
    m_playheadSprite.setDevicePixelRatio(scale);
    if (m_playheadSprite.isNull())
        return;
    m_playheadSprite.fill(Qt::transparent);

    QPainter painter(&m_playheadSprite);
    painter.setRenderHint(QPainter::Antialiasing);
    const qreal radius = head.width() / 2.0;
    painter.setPen(Qt::NoPen);
    painter.setBrush(Brand::gradient(head));
    painter.drawRoundedRect(head, radius, radius);
    const qreal inset = playheadLineWidth / 2.0;
    painter.setPen(QPen(Appearance::faded(Qt::white, playheadLineOpacity), playheadLineWidth));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(head.adjusted(inset, inset, -inset, -inset), radius - inset,
                            radius - inset);
}

void TimelineBar::computePauseAreas()
{
    m_pauseAreas = TimelineGeometry::pauseHitRects(m_silences, m_duration, width(), height());
    // The targets moved under a resting pointer: what it hovers is whatever lies there now.
    if (underMouse())
        setHoveredSilence(pauseUnder(mapFromGlobal(QCursor::pos())));
    else
        setHoveredSilence(std::nullopt);
}

void TimelineBar::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    computeBarHeights();
    computeBarKinds();
    renderWaveformLayer();
    renderPlayheadSprite();
    computePauseAreas();
}

void TimelineBar::paintEvent(QPaintEvent*)
{
    const qreal scale = devicePixelRatioF();
    // Moved to a screen of another density: redraw the layers once, sharp there.
    if (!qFuzzyCompare(m_playheadSprite.devicePixelRatio(), scale)) {
        renderWaveformLayer();
        renderPlayheadSprite();
    }
    QPainter painter(this);
    painter.drawImage(QPointF(0.0, 0.0), m_waveformLayer);

    if (m_hoveredSilence) {
        // The outline sits on the inner edge of the target.
        painter.setRenderHint(QPainter::Antialiasing);
        const qreal inset = hoverLineWidth / 2.0;
        const QRectF area = pauseArea(*m_hoveredSilence).adjusted(inset, inset, -inset, -inset);
        painter.setPen(QPen(Appearance::faded(Qt::white, hoverOpacity), hoverLineWidth));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(area, hoverRadius - inset, hoverRadius - inset);
    }

    // On whole device pixels, so the sprite is copied, not resampled.
    const double x = TimelineGeometry::playheadX(m_playhead, m_duration, width());
    painter.drawImage(QPointF(std::round(x * scale) / scale, 0.0), m_playheadSprite);
}

void TimelineBar::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton) {
        QWidget::mousePressEvent(event);
        return;
    }
    // A pause's target lies above the track: a press there belongs to the pause, not a drag.
    m_pressedSilence = pauseUnder(event->position());
    m_dragging = false;
    if (m_pressedSilence < 0)
        m_dragOrigin = event->position();
    else
        m_dragOrigin.reset();
}

void TimelineBar::mouseMoveEvent(QMouseEvent* event)
{
    setHoveredSilence(pauseUnder(event->position()));
    if (!m_dragOrigin || !(event->buttons() & Qt::LeftButton))
        return;
    if (!m_dragging)
        m_dragging = TimelineGeometry::isDrag(*m_dragOrigin, event->position());
    if (m_dragging)
        seekTo(event->position().x());
}

void TimelineBar::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton) {
        QWidget::mouseReleaseEvent(event);
        return;
    }
    const int pressed = std::exchange(m_pressedSilence, -1);
    const std::optional<QPointF> origin = std::exchange(m_dragOrigin, std::nullopt);
    const bool dragging = std::exchange(m_dragging, false);
    if (pressed >= 0) {
        // Like a button: releasing elsewhere takes the click back.
        if (pauseUnder(event->position()) == pressed && onToggle)
            onToggle(pressed);
        return;
    }
    if (origin && (dragging || TimelineGeometry::isDrag(*origin, event->position())))
        seekTo(event->position().x());
}

void TimelineBar::changeEvent(QEvent* event)
{
    // The track and the cut bars take the palette's text colour: follow a light/dark switch.
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::StyleChange) {
        renderWaveformLayer();
        update();
    }
    QWidget::changeEvent(event);
}

void TimelineBar::leaveEvent(QEvent* event)
{
    setHoveredSilence(std::nullopt);
    QWidget::leaveEvent(event);
}

bool TimelineBar::event(QEvent* event)
{
    if (event->type() == QEvent::ToolTip) {
        auto* help = static_cast<QHelpEvent*>(event);
        const int index = pauseUnder(help->pos());
        if (index >= 0)
            QToolTip::showText(help->globalPos(), localized("timeline.pauseButton.help"), this,
                               pauseDirtyRect(index));
        else
            QToolTip::hideText();
        return true;
    }
    return QWidget::event(event);
}

void TimelineBar::setHoveredSilence(std::optional<int> index)
{
    if (index && *index < 0)
        index.reset();
    if (index == m_hoveredSilence)
        return;
    if (m_hoveredSilence)
        update(pauseDirtyRect(*m_hoveredSilence));
    m_hoveredSilence = index;
    if (m_hoveredSilence)
        update(pauseDirtyRect(*m_hoveredSilence));
}

void TimelineBar::seekTo(double x)
{
    if (onSeek)
        onSeek(m_duration * TimelineGeometry::dragFraction(x, width()));
}

int TimelineBar::pauseUnder(QPointF position) const
{
    if (position.y() < 0.0 || position.y() >= height())
        return -1;
    return TimelineGeometry::pauseAt(m_pauseAreas, position.x());
}

QRect TimelineBar::playheadDirtyRect() const
{
    return dirtyRect(TimelineGeometry::playheadRect(m_playhead, m_duration, width(), height()));
}

QRect TimelineBar::pauseDirtyRect(int index) const
{
    return dirtyRect(pauseArea(index));
}
