#include "Localization.h"

#include <QCoreApplication>
#include <gtest/gtest.h>

// Tests run with a core application so that string tables, queued calls and timers work.
int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    installStringTables();
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
