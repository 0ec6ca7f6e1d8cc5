#pragma once

#include <QPixmap>
#include <QStyledItemDelegate>

// Paints a pause row (check box, label with even-width digits, listen button at the end) and
// turns clicks into a toggle request or a listen request. One delegate paints every row, so
// thousands of pauses cost no widgets.
class PauseRowDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    static constexpr int rowSpacing = 6;
    static constexpr int listenIconSize = 16;
    static constexpr int listenButtonSize = 20;

    explicit PauseRowDelegate(QWidget* view);

    // Where the listen button of the row at `row` lies, in the view's coordinates.
    static QRect listenRect(const QRect& row);
    // The check box and its label: everything left of the listen button.
    static QRect checkArea(const QRect& row);

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    bool editorEvent(QEvent* event, QAbstractItemModel* model, const QStyleOptionViewItem& option,
                     const QModelIndex& index) override;
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;

signals:
    void listenRequested(int row);

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;

private:
    enum class Part { none, check, listen };
    static Part partAt(const QRect& row, QPointF position);
    const QPixmap& listenIcon(const QColor& color, qreal devicePixelRatio) const;

    QFont m_font;
    Part m_pressedPart = Part::none;
    int m_pressedRow = -1;
    mutable QPixmap m_listenIcon;
    mutable QColor m_listenIconColor;
};
