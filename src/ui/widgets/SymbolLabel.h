#pragma once

#include "Symbols.h"

#include <QBrush>
#include <QWidget>
#include <functional>

// A symbol in a fixed square, painted in a colour taken from the palette when it paints, so
// it follows light and dark desktops and every scale factor.
class SymbolLabel : public QWidget {
    Q_OBJECT
public:
    using Paint = std::function<QBrush(const QPalette&)>;

    SymbolLabel(Symbol symbol, int size, Paint paint, QWidget* parent = nullptr);

    void setSymbol(Symbol symbol);
    void setPaint(Paint paint);
    Symbol symbol() const { return m_symbol; }

    QSize sizeHint() const override { return {m_size, m_size}; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Symbol m_symbol;
    int m_size;
    Paint m_paint;
};
