#include "PauseRowDelegate.h"

#include "Appearance.h"
#include "Localization.h"
#include "Symbols.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QFontDatabase>
#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>
#include <algorithm>

namespace {

QRect contentOf(const QRect& row)
{
    const int half = PauseRowDelegate::rowSpacing / 2;
    return row.adjusted(0, half, 0, -(PauseRowDelegate::rowSpacing - half));
}

} // namespace

PauseRowDelegate::PauseRowDelegate(QWidget* view)
    : QStyledItemDelegate(view)
    , m_font(Appearance::withEvenDigits(view->font()))
{
}

QRect PauseRowDelegate::listenRect(const QRect& row)
{
    const QRect content = contentOf(row);
    QRect button(0, 0, listenButtonSize, listenButtonSize);
    button.moveCenter(content.center());
    button.moveRight(content.right());
    return button;
}

QRect PauseRowDelegate::checkArea(const QRect& row)
{
    QRect area = contentOf(row);
    area.setRight(listenRect(row).left() - 1);
    return area;
}

PauseRowDelegate::Part PauseRowDelegate::partAt(const QRect& row, QPointF position)
{
    const QPoint point = position.toPoint();
    if (listenRect(row).contains(point))
        return Part::listen;
    if (checkArea(row).contains(point))
        return Part::check;
    return Part::none;
}

void PauseRowDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    option->font = m_font;
    option->fontMetrics = QFontMetrics(m_font);
    // Rows are not selected, only ticked.
    option->state &= ~QStyle::State_Selected;
}

QSize PauseRowDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    const QSize content = QStyledItemDelegate::sizeHint(option, index);
    const int height = std::max(content.height(), listenButtonSize);
    return {option.rect.width(), height + rowSpacing};
}

void PauseRowDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                             const QModelIndex& index) const
{
    QStyleOptionViewItem row = option;
    row.rect = checkArea(option.rect);
    QStyledItemDelegate::paint(painter, row, index);

    const QRect button = listenRect(option.rect);
    const QPixmap& icon =
        listenIcon(Appearance::primaryText(option.palette), painter->device()->devicePixelRatioF());
    const int offset = (listenButtonSize - listenIconSize) / 2;
    painter->drawPixmap(button.topLeft() + QPoint(offset, offset), icon);
}

const QPixmap& PauseRowDelegate::listenIcon(const QColor& color, qreal devicePixelRatio) const
{
    // Drawing the symbol means rasterising its picture: once, not once per row and frame.
    if (m_listenIcon.isNull() || m_listenIconColor != color ||
        !qFuzzyCompare(m_listenIcon.devicePixelRatio(), devicePixelRatio)) {
        m_listenIcon = Symbols::pixmap(Symbol::playCircle, color, listenIconSize, devicePixelRatio);
        m_listenIconColor = color;
    }
    return m_listenIcon;
}

bool PauseRowDelegate::editorEvent(QEvent* event, QAbstractItemModel* model,
                                   const QStyleOptionViewItem& option, const QModelIndex& index)
{
    const QEvent::Type type = event->type();
    if (type != QEvent::MouseButtonPress && type != QEvent::MouseButtonRelease &&
        type != QEvent::MouseButtonDblClick)
        return QStyledItemDelegate::editorEvent(event, model, option, index);

    const auto* mouse = static_cast<QMouseEvent*>(event);
    if (mouse->button() != Qt::LeftButton)
        return false;
    const Part part = partAt(option.rect, mouse->position());
    if (type == QEvent::MouseButtonPress) {
        m_pressedPart = part;
        m_pressedRow = index.row();
        return part != Part::none;
    }
    if (type == QEvent::MouseButtonDblClick)
        return part != Part::none;

    // A click is a press and a release on the same part of the same row.
    const bool clicked = part == m_pressedPart && index.row() == m_pressedRow;
    m_pressedPart = Part::none;
    m_pressedRow = -1;
    if (!clicked)
        return part != Part::none;
    if (part == Part::listen) {
        emit listenRequested(index.row());
    } else if (part == Part::check) {
        const bool checked = index.data(Qt::CheckStateRole).value<Qt::CheckState>() == Qt::Checked;
        model->setData(index, checked ? Qt::Unchecked : Qt::Checked, Qt::CheckStateRole);
    }
    return part != Part::none;
}

bool PauseRowDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view,
                                 const QStyleOptionViewItem& option, const QModelIndex& index)
{
    if (event->type() == QEvent::ToolTip && listenRect(option.rect).contains(event->pos())) {
        QToolTip::showText(event->globalPos(), localized("pauseList.listen.help"), view->viewport(),
                           listenRect(option.rect));
        return true;
    }
    return QStyledItemDelegate::helpEvent(event, view, option, index);
}
