#pragma once

#include <QString>

// The desktop's shared list of recently used files, the freedesktop XBEL file that file
// choosers and launchers read: $XDG_DATA_HOME/recently-used.xbel.
namespace RecentDocuments {

QString listPath();

// Adds `filePath` to the list, or refreshes its entry when it is there already. Entries of
// other applications stay as they are. A list that cannot be read as XBEL is left alone
// rather than replaced, and the file is not added; returns false then, and when the list
// cannot be written.
bool add(const QString& filePath);

} // namespace RecentDocuments
