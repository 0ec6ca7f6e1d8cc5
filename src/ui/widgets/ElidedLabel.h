#pragma once

#include <QWidget>

// One line of text that shortens itself with "…" to the width it gets.
class ElidedLabel : public QWidget {
    Q_OBJECT
public:
    explicit ElidedLabel(Qt::TextElideMode mode, QWidget* parent = nullptr);

    void setText(const QString& text);
    const QString& text() const { return m_text; }
    // What is drawn at the current width.
    QString shownText() const;
    void setColor(const QColor& color);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Qt::TextElideMode m_mode;
    QString m_text;
    QColor m_color;
};
