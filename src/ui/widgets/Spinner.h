#pragma once

#include <QTimer>
#include <QWidget>

// A small indeterminate progress indicator: an arc that turns while it is visible.
class Spinner : public QWidget {
    Q_OBJECT
public:
    explicit Spinner(int size = 16, QWidget* parent = nullptr);

    QSize sizeHint() const override { return {m_size, m_size}; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    int m_size;
    int m_angle = 0;
    QTimer m_timer;
};
