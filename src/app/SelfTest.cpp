#include "SelfTest.h"

#include <cstdio>

int runSelfTest()
{
    std::printf("The self-test of Hushpane is not built yet.\n");
    return 1;
}
