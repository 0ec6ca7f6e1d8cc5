#pragma once

#include <QStringList>
#include <QWidget>

// A row of mutually exclusive choices drawn as one control, the chosen one filled with the
// accent colour. Left and right arrows move the choice when it has the keyboard focus.
class SegmentedPicker : public QWidget {
    Q_OBJECT
public:
    explicit SegmentedPicker(QStringList titles = {}, QWidget* parent = nullptr);

    void setTitles(const QStringList& titles);
    const QStringList& titles() const { return m_titles; }
    int currentIndex() const { return m_current; }
    // Shows `index` as chosen without announcing it; -1 shows none.
    void setCurrentIndex(int index);
    // The rectangle of choice `index`, for tests and accessibility.
    QRect segmentRect(int index) const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

signals:
    // The user picked `index`; never emitted by setCurrentIndex().
    void activated(int index);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    int segmentAt(const QPoint& point) const;
    void choose(int index);

    QStringList m_titles;
    int m_current = -1;
    int m_pressed = -1;
};
