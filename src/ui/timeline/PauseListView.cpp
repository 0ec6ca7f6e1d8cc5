#include "PauseListView.h"

#include "Appearance.h"
#include "Localization.h"
#include "PauseListModel.h"
#include "PauseRowDelegate.h"

#include <QKeyEvent>
#include <QLabel>
#include <QListView>
#include <QPainter>
#include <QScreen>
#include <QVBoxLayout>
#include <algorithm>

namespace {

// Room between the anchor and the popup, so it reads as belonging to it without covering it.
constexpr int anchorGap = 4;
constexpr qreal borderOpacity = 0.2;

} // namespace

PauseListView::PauseListView(QWidget* parent)
    : QFrame(parent)
    , m_model(new PauseListModel(this))
    , m_title(new QLabel(localized("pauseList.title"), this))
    , m_list(new QListView(this))
{
    m_title->setFont(Appearance::headline());

    auto* delegate = new PauseRowDelegate(m_list);
    m_list->setModel(m_model);
    m_list->setItemDelegate(delegate);
    // Every row has the same height, so the view never measures thousands of them.
    m_list->setUniformItemSizes(true);
    m_list->setSelectionMode(QAbstractItemView::NoSelection);
    m_list->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_list->setFrameShape(QFrame::NoFrame);
    // The rows sit on the popup itself, not on a white list box.
    m_list->viewport()->setAutoFillBackground(false);
    // Reachable by Tab for ticking with Space; a click does not leave a focus frame behind.
    m_list->setFocusPolicy(Qt::TabFocus);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(padding, padding, padding, padding);
    layout->setSpacing(spacing);
    layout->addWidget(m_title);
    layout->addWidget(m_list);

    setFixedWidth(totalWidth);
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(localized("pauseList.title"));

    connect(m_model, &PauseListModel::toggleRequested, this, [this](int row) {
        if (onToggle)
            onToggle(row);
    });
    connect(delegate, &PauseRowDelegate::listenRequested, this, &PauseListView::listen);
    fitHeight();
}

void PauseListView::setSilences(std::vector<Segment> silences)
{
    m_model->setSilences(std::move(silences));
    fitHeight();
}

void PauseListView::setDisabledSilences(const QSet<int>& disabled)
{
    m_model->setDisabledSilences(disabled);
}

void PauseListView::listen(int row)
{
    const std::vector<Segment>& silences = m_model->silences();
    if (row < 0 || static_cast<std::size_t>(row) >= silences.size() || !onSeek)
        return;
    onSeek(std::max(0.0, silences[static_cast<std::size_t>(row)].start - listenLeadIn));
}

void PauseListView::fitHeight()
{
    const int rows = m_model->rowCount();
    const int rowHeight = rows > 0 ? m_list->sizeHintForRow(0) : 0;
    const int content = rows * rowHeight + 2 * m_list->frameWidth();
    m_list->setFixedHeight(std::min(content, maximumListHeight));
    setFixedHeight(layout()->totalSizeHint().height());
}

void PauseListView::showBelow(QWidget* anchor)
{
    if (!isWindow() || !(windowFlags() & Qt::Popup))
        setWindowFlags(Qt::Popup);
    const QRect anchorFrame(anchor->mapToGlobal(QPoint(0, 0)), anchor->size());
    QRect frame(0, 0, width(), height());
    frame.moveTop(anchorFrame.bottom() + 1 + anchorGap);
    frame.moveLeft(anchorFrame.center().x() - width() / 2);
    // Inside the window where it fits, so a link at the window's edge opens its list inward.
    const QRect window = anchor->window()->geometry();
    if (window.width() >= width())
        frame.moveLeft(std::clamp(frame.left(), window.left(), window.right() + 1 - width()));
    if (const QScreen* screen = anchor->screen()) {
        const QRect available = screen->availableGeometry();
        // Not enough room below: open above the anchor instead.
        if (frame.bottom() > available.bottom())
            frame.moveBottom(anchorFrame.top() - 1 - anchorGap);
        frame.moveLeft(std::clamp(frame.left(), available.left(),
                                  std::max(available.left(), available.right() + 1 - width())));
        frame.moveTop(std::max(frame.top(), available.top()));
    }
    move(frame.topLeft());
    // The popup itself takes the keyboard (Escape closes it); the list is one Tab away, so
    // its first row does not open marked as current.
    setFocus(Qt::PopupFocusReason);
    show();
}

void PauseListView::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape && isWindow()) {
        close();
        return;
    }
    QFrame::keyPressEvent(event);
}

void PauseListView::hideEvent(QHideEvent* event)
{
    QFrame::hideEvent(event);
    if (isWindow())
        emit closed();
}

void PauseListView::paintEvent(QPaintEvent* event)
{
    QFrame::paintEvent(event);
    if (!isWindow())
        return;
    // A popup needs an edge to stand out from the window below it.
    QPainter painter(this);
    painter.setPen(Appearance::faded(Appearance::primaryText(palette()), borderOpacity));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}
