#include "SymbolLabel.h"

#include <QPainter>

SymbolLabel::SymbolLabel(Symbol symbol, int size, Paint paint, QWidget* parent)
    : QWidget(parent)
    , m_symbol(symbol)
    , m_size(size)
    , m_paint(std::move(paint))
{
    setFixedSize(size, size);
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

void SymbolLabel::setSymbol(Symbol symbol)
{
    if (symbol == m_symbol)
        return;
    m_symbol = symbol;
    update();
}

void SymbolLabel::setPaint(Paint paint)
{
    m_paint = std::move(paint);
    update();
}

void SymbolLabel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const QBrush brush = m_paint(palette());
    painter.drawPixmap(0, 0, Symbols::pixmap(m_symbol, brush, m_size, devicePixelRatioF()));
}
