#include "CommandLineMode.h"
#include "HushpaneApp.h"
#include "LaunchArgs.h"
#include "LaunchLocations.h"
#include "Localization.h"
#include "SelfTest.h"

#include <QCoreApplication>
#include <QDir>
#include <QUrl>

namespace {

QStringList argumentList(int argc, char** argv)
{
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments << QString::fromLocal8Bit(argv[i]);
    return arguments;
}

// The terminal modes create no GUI application; a core one carries the string tables.
template <typename Mode> int runWithoutWindow(int& argc, char** argv, Mode mode)
{
    QCoreApplication app(argc, argv);
    installStringTables();
    return mode();
}

} // namespace

int main(int argc, char** argv)
{
    initialFileURL.reset();
    initialBatchURL.reset();
    const QStringList arguments = argumentList(argc, argv);
    const LaunchPlan plan = scanLaunchArguments(arguments, QDir::currentPath());
    switch (plan.mode) {
    case LaunchMode::selfTest:
        return runWithoutWindow(argc, argv, [] { return runSelfTest(); });
    case LaunchMode::commandLine:
        return runWithoutWindow(argc, argv, [&] { return runCLI(arguments); });
    case LaunchMode::window:
        break;
    }
    if (plan.openPath)
        initialFileURL = QUrl::fromLocalFile(*plan.openPath);
    if (plan.batchPath)
        initialBatchURL = QUrl::fromLocalFile(*plan.batchPath);
    return runApplication(argc, argv);
}
