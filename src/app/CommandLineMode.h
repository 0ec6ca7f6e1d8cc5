#pragma once

#include <QStringList>

// Analyses and exports one file from a terminal; returns the process exit status
// (0 written, 1 failed, 2 usage). Prints everything to standard output.
int runCLI(const QStringList& arguments);
