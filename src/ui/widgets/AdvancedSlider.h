#pragma once

#include <QWidget>
#include <functional>

class QLabel;
class QSlider;

// One row of the advanced settings: title, slider over a range in fixed steps, and the value
// as text. The slider works in whole steps so that every position is a value the user can read.
class AdvancedSlider : public QWidget {
    Q_OBJECT
public:
    struct Range {
        double minimum;
        double maximum;
        double step;
    };
    using Display = std::function<QString(double)>;

    AdvancedSlider(const QString& title, Range range, Display display, QWidget* parent = nullptr);

    // Shows `value` (snapped to the nearest step) without announcing it.
    void setValue(double value);
    double value() const;
    QSlider* slider() const { return m_slider; }
    QString valueText() const;

signals:
    // The user moved the slider.
    void valueEdited(double value);

private:
    void showValue();
    double valueAt(int position) const;
    int positionOf(double value) const;

    Range m_range;
    Display m_display;
    QSlider* m_slider;
    QLabel* m_valueText;
};
