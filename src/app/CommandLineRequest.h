#pragma once

#include <QString>
#include <QStringList>
#include <optional>

// What the command-line mode is asked to do, read from the whole argument vector.
struct CommandLineRequest {
    QString input;  // absolute
    QString output; // absolute
    bool fast = false;

    // "--cli" and "--fast" may stand anywhere; every other element is positional, element
    // 0 being the executable. Without an output path the result goes beside the input as
    // "<name without its last extension>_tidled.mp4". Relative paths resolve against
    // `workingDirectory`. No input path gives none.
    static std::optional<CommandLineRequest> parse(const QStringList& arguments,
                                                   const QString& workingDirectory);
};
