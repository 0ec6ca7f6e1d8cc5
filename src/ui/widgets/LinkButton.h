#pragma once

#include <QPushButton>

// A text-only button in the accent colour, for secondary actions next to other text.
class LinkButton : public QPushButton {
    Q_OBJECT
public:
    explicit LinkButton(const QString& text = {}, QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    bool m_hovered = false;
};
