#pragma once

#include <QString>
#include <QStringList>
#include <optional>

enum class LaunchMode { selfTest, commandLine, window };

struct LaunchPlan {
    LaunchMode mode = LaunchMode::window;
    std::optional<QString> openPath;  // absolute path after "--open"
    std::optional<QString> batchPath; // absolute path after "--batch"
    // Absolute paths given without a flag, as a file manager passes the files it opens with
    // the application; options (starting with "-") are not paths.
    QStringList openPaths;

    bool operator==(const LaunchPlan&) const = default;
};

// Chooses the mode from the whole argument vector (element 0 is the executable) and, for
// the window, the two launch locations. Relative paths resolve against `workingDirectory`.
// Flags match whole elements exactly; everything else is ignored.
LaunchPlan scanLaunchArguments(const QStringList& arguments, const QString& workingDirectory);
