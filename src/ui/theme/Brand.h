#pragma once

#include <QColor>
#include <QLinearGradient>
#include <QRectF>

// The application's own colours; everything else uses the desktop palette.
namespace Brand {

QColor start();
QColor end();
// Accent of the window's controls (selection, focus, slider groove, links).
QColor tint();
// The two-stop gradient, running from the left edge of `area` to its right edge.
QLinearGradient gradient(const QRectF& area);

} // namespace Brand
