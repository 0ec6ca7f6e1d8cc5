#pragma once

#include <QPushButton>

class QPropertyAnimation;

// The look of the primary buttons (pick a file, save, run the batch): white text on the
// brand gradient, which alone fades when the button is disabled.
namespace BrandButtonStyle {

inline constexpr int horizontalPadding = 14;
inline constexpr int verticalPadding = 7;
inline constexpr qreal cornerRadius = 7.0;
inline constexpr qreal disabledBackgroundOpacity = 0.4;
inline constexpr qreal pressedScale = 0.97;

QFont font();

} // namespace BrandButtonStyle

// A push button in BrandButtonStyle that shrinks a little while pressed and springs back.
class BrandButton : public QPushButton {
    Q_OBJECT
    Q_PROPERTY(qreal pressScale READ pressScale WRITE setPressScale)

public:
    explicit BrandButton(const QString& text = {}, QWidget* parent = nullptr);

    qreal pressScale() const { return m_pressScale; }
    void setPressScale(qreal scale);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;

private:
    void animateScaleTo(qreal target);

    qreal m_pressScale = 1.0;
    bool m_keyboardFocus = false;
    QPropertyAnimation* m_scaleAnimation;
};
