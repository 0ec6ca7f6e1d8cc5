#include "SegmentedPicker.h"

#include "Appearance.h"
#include "Brand.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>

namespace {

constexpr int segmentPadding = 12;
constexpr int verticalPadding = 5;
constexpr qreal cornerRadius = 6.0;

} // namespace

SegmentedPicker::SegmentedPicker(QStringList titles, QWidget* parent)
    : QWidget(parent)
    , m_titles(std::move(titles))
{
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setCursor(Qt::PointingHandCursor);
}

void SegmentedPicker::setTitles(const QStringList& titles)
{
    m_titles = titles;
    if (m_current >= m_titles.size())
        m_current = -1;
    updateGeometry();
    update();
}

void SegmentedPicker::setCurrentIndex(int index)
{
    m_current = (index >= 0 && index < m_titles.size()) ? index : -1;
    // Screen readers announce the choice as the control's value.
    setAccessibleDescription(m_current >= 0 ? m_titles[m_current] : QString());
    update();
}

QSize SegmentedPicker::sizeHint() const
{
    const QFontMetrics metrics(font());
    int widest = 0;
    for (const QString& title : m_titles)
        widest = qMax(widest, metrics.horizontalAdvance(title));
    const int count = qMax<qsizetype>(1, m_titles.size());
    return {count * (widest + 2 * segmentPadding), metrics.height() + 2 * verticalPadding};
}

QSize SegmentedPicker::minimumSizeHint() const
{
    return sizeHint();
}

QRect SegmentedPicker::segmentRect(int index) const
{
    if (m_titles.isEmpty())
        return {};
    const qreal width = static_cast<qreal>(this->width()) / m_titles.size();
    const int left = qRound(index * width);
    const int right = qRound((index + 1) * width);
    return {left, 0, right - left, height()};
}

int SegmentedPicker::segmentAt(const QPoint& point) const
{
    for (int i = 0; i < m_titles.size(); ++i)
        if (segmentRect(i).contains(point))
            return i;
    return -1;
}

void SegmentedPicker::choose(int index)
{
    if (index < 0 || index >= m_titles.size())
        return;
    setCurrentIndex(index);
    emit activated(index);
}

void SegmentedPicker::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return QWidget::mousePressEvent(event);
    m_pressed = segmentAt(event->position().toPoint());
    update();
}

void SegmentedPicker::mouseReleaseEvent(QMouseEvent* event)
{
    const int pressed = m_pressed;
    m_pressed = -1;
    update();
    if (event->button() == Qt::LeftButton && pressed >= 0 &&
        segmentAt(event->position().toPoint()) == pressed)
        choose(pressed);
}

void SegmentedPicker::keyPressEvent(QKeyEvent* event)
{
    const int last = static_cast<int>(m_titles.size()) - 1;
    switch (event->key()) {
    case Qt::Key_Left:
        if (m_current > 0)
            choose(m_current - 1);
        break;
    case Qt::Key_Right:
        if (m_current < last)
            choose(m_current + 1);
        break;
    default:
        QWidget::keyPressEvent(event);
    }
}

void SegmentedPicker::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::EnabledChange || event->type() == QEvent::PaletteChange)
        update();
    QWidget::changeEvent(event);
}

void SegmentedPicker::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QPalette& colors = palette();
    const QRectF frame = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    painter.setOpacity(isEnabled() ? 1.0 : 0.5);

    QPainterPath outline;
    outline.addRoundedRect(frame, cornerRadius, cornerRadius);
    painter.fillPath(outline, Appearance::faded(Appearance::primaryText(colors), 0.06));
    painter.setPen(QPen(Appearance::faded(Appearance::primaryText(colors), 0.18), 1.0));
    painter.drawPath(outline);

    for (int i = 0; i < m_titles.size(); ++i) {
        const QRectF segment = QRectF(segmentRect(i)).adjusted(2, 2, -2, -2);
        const bool chosen = i == m_current;
        if (chosen) {
            QPainterPath fill;
            fill.addRoundedRect(segment, cornerRadius - 2, cornerRadius - 2);
            painter.fillPath(fill, Brand::tint());
        } else if (i == m_pressed) {
            QPainterPath fill;
            fill.addRoundedRect(segment, cornerRadius - 2, cornerRadius - 2);
            painter.fillPath(fill, Appearance::faded(Appearance::primaryText(colors), 0.1));
        } else if (i > 0 && i - 1 != m_current) {
            // A thin separator between two unchosen neighbours.
            painter.setPen(QPen(Appearance::faded(Appearance::primaryText(colors), 0.15), 1.0));
            const qreal x = segmentRect(i).left() + 0.5;
            painter.drawLine(QPointF(x, 6), QPointF(x, height() - 6));
        }
        painter.setPen(chosen ? QColor(Qt::white) : Appearance::primaryText(colors));
        painter.drawText(segment, Qt::AlignCenter, m_titles[i]);
    }
    if (hasFocus()) {
        painter.setOpacity(1.0);
        painter.setPen(QPen(Appearance::faded(Brand::tint(), 0.6), 2.0));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(frame.adjusted(0.5, 0.5, -0.5, -0.5), cornerRadius, cornerRadius);
    }
}
