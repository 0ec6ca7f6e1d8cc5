#pragma once

#include <QColor>
#include <QFont>
#include <QPalette>

// The desktop's colours and fonts in the roles the window uses. Colours follow the palette,
// so a dark desktop gets light text and the dark variants of the signal colours.
namespace Appearance {

bool isDark(const QPalette& palette);

QColor primaryText(const QPalette& palette);
QColor secondaryText(const QPalette& palette);
QColor tertiaryText(const QPalette& palette);
// `color` with its opacity multiplied by `opacity`.
QColor faded(QColor color, qreal opacity);

QColor green(const QPalette& palette);
QColor orange(const QPalette& palette);
QColor red(const QPalette& palette);
QColor mint(const QPalette& palette);

// Sizes relative to the desktop's own font, so the user's font settings carry through.
QFont body();
QFont headline();
QFont caption();
QFont title();
// The large removed-percent figure.
QFont hero();
// `base` where all its digits are equally wide (most desktop fonts), else the fixed-width
// font at its size: changing figures and columns of times then do not jitter.
QFont withEvenDigits(const QFont& base);

} // namespace Appearance
