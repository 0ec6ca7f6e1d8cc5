#pragma once

#include <QSettings>
#include <QVariant>
#include <optional>

// The per-user store of preferences and statistics: ~/.config/Hushpane/Hushpane.conf.
// Names are given explicitly so the store is the same whatever the running application is
// called (the tests, the terminal modes and the window all share it). Instances are cheap:
// every instance in a process shares one cached copy of the file.
class PreferenceStore : public QSettings {
public:
    PreferenceStore();

    // The value under `key` read as a number; none when nothing is stored there. Text that is
    // not a number reads as 0, not as none: presence alone decides.
    std::optional<double> number(const QString& key) const;
    // The value under `key` when it is a boolean; none when absent or of another kind.
    // The file keeps booleans as the words true and false; any other text is not a boolean.
    std::optional<bool> boolean(const QString& key) const;
};
