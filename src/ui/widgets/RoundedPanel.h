#pragma once

#include <QWidget>

// A quiet backdrop: a rounded rectangle in the text colour at a low opacity, so it reads as
// a light grey on light desktops and a dark grey on dark ones.
class RoundedPanel : public QWidget {
    Q_OBJECT
public:
    RoundedPanel(qreal radius, qreal opacity, QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    qreal m_radius;
    qreal m_opacity;
};
