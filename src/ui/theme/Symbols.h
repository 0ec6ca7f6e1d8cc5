#pragma once

#include <QBrush>
#include <QIcon>
#include <QPixmap>

// The small pictures of the window. The desktop's symbolic icon is used where its theme has
// one, this project's own drawing otherwise; either is painted in one colour or gradient.
enum class Symbol {
    scissors,
    waveform,
    film,
    play,
    pause,
    info,
    clockCheck,
    checkmarkFilled,
    warningFilled,
    circle,
    minusCircle,
    folder,
    playCircle,
    stack,
};

namespace Symbols {

// A square picture `size` logical pixels wide, sharp at `devicePixelRatio`.
QPixmap pixmap(Symbol symbol, const QBrush& paint, int size, qreal devicePixelRatio);
// The same as an icon for buttons, in the normal and disabled looks.
QIcon icon(Symbol symbol, const QBrush& paint, int size, qreal devicePixelRatio);

} // namespace Symbols
