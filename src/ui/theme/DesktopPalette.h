#pragma once

// Follows the desktop's light or dark preference. Desktops whose Qt theme already supplies a
// dark palette need nothing; elsewhere (GNOME without a Qt theme, for one) the preference is
// read from the freedesktop settings portal and a dark palette is installed when it asks.
namespace DesktopPalette {

void apply();

} // namespace DesktopPalette
