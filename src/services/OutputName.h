#pragma once

#include <QString>
#include <QUrl>

// The name proposed for the file written from `input`: the input's name without its last
// extension in the localized "file.suffix" format, then "." and `ext`. Only the name; the
// caller picks the folder (the batch writes beside the input).
QString defaultOutputName(const QUrl& input, const QString& ext);
