#pragma once

#include <QString>
#include <exception>

// The user-facing text of any failure the engine lets through: a TidleError's description,
// or the media library's own message for a failure while opening or loading a file (the
// text of "diag.unknown" when that message is empty).
QString userMessage(const std::exception& error);
