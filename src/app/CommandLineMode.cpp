#include "CommandLineMode.h"

#include <cstdio>

int runCLI(const QStringList&)
{
    std::printf("The command-line mode of Hushpane is not built yet.\n");
    return 1;
}
