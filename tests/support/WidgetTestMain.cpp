#include "Localization.h"

#include <QApplication>
#include <gtest/gtest.h>

// Widget tests need a GUI application; they run on the offscreen platform, also when CTest
// lists them without the test environment.
int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    installStringTables();
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
