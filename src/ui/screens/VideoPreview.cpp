#include "VideoPreview.h"

#include "Localization.h"
#include "SymbolLabel.h"

#include <QEvent>
#include <QPainter>
#include <QPainterPath>
#include <QVBoxLayout>
#include <QVideoWidget>

namespace {

constexpr qreal cornerRadius = 10.0;
const QColor ground(24, 24, 28);

QRegion roundedRegion(const QSize& size)
{
    QPainterPath shape;
    shape.addRoundedRect(QRectF(QPointF(0, 0), size), cornerRadius, cornerRadius);
    return QRegion(shape.toFillPolygon().toPolygon());
}

} // namespace

VideoPreview::VideoPreview(QWidget* parent)
    : QWidget(parent)
    , m_video(new QVideoWidget(this))
    , m_soundOnly(new SymbolLabel(
          Symbol::waveform, 56, [](const QPalette&) { return QBrush(QColor(255, 255, 255, 90)); },
          this))
{
    setFixedHeight(height);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_video);
    layout->addWidget(m_soundOnly, 0, Qt::AlignCenter);
    m_soundOnly->hide();
    m_video->installEventFilter(this);
    setAccessibleName(localized("a11y.preview"));
}

QObject* VideoPreview::videoOutput() const
{
    return m_video;
}

void VideoPreview::setHasPicture(bool hasPicture)
{
    m_video->setVisible(hasPicture);
    m_soundOnly->setVisible(!hasPicture);
}

bool VideoPreview::showsPicture() const
{
    return !m_video->isHidden();
}

bool VideoPreview::eventFilter(QObject* watched, QEvent* event)
{
    // The player draws in a window of its own, which painting cannot round off; a mask can.
    if (watched == m_video && event->type() == QEvent::Resize)
        m_video->setMask(roundedRegion(m_video->size()));
    return QWidget::eventFilter(watched, event);
}

void VideoPreview::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QPainterPath shape;
    shape.addRoundedRect(QRectF(rect()), cornerRadius, cornerRadius);
    painter.fillPath(shape, ground);
}
