#pragma once

#include <QUrl>
#include <functional>

// Hands files to the rest of the desktop: the file manager and the default applications.
namespace DesktopFiles {

// Shows the file selected in its folder through the freedesktop FileManager1 service; where
// no file manager offers that, opens the folder instead.
void reveal(const QUrl& file);
// Opens the file with the desktop's default application for its type.
void open(const QUrl& file);

// Where locations go instead of QDesktopServices::openUrl; an empty function restores it.
// Lets tests see what would have been opened without starting applications.
using UrlOpener = std::function<void(const QUrl&)>;
void setUrlOpener(UrlOpener opener);

} // namespace DesktopFiles
