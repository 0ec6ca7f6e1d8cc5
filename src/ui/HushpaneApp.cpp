#include "HushpaneApp.h"

#include <cstdio>

int runApplication(int&, char**)
{
    std::printf("The window of Hushpane is not built yet. Use: hushpane --cli <input> [output]\n");
    return 1;
}
