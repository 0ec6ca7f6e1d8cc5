#pragma once

#include <QWidget>

// The welcome screen's target: a dashed, rounded frame that lights up in the accent colour
// while files hover over the window. A click anywhere in it asks for the open dialog.
class DropZone : public QWidget {
    Q_OBJECT
public:
    explicit DropZone(QWidget* parent = nullptr);

    void setTargeted(bool targeted);
    bool isTargeted() const { return m_targeted; }

signals:
    void clicked();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    bool m_targeted = false;
};
