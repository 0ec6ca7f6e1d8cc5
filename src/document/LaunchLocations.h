#pragma once

#include <QUrl>
#include <optional>

// Locations given on the command line of the windowed mode. Written once by the program
// entry before the application starts, read afterwards on the GUI thread only.
extern std::optional<QUrl> initialFileURL;
extern std::optional<QUrl> initialBatchURL;
