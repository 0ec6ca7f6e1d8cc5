#include "CommandLineMode.h"
#include "HushpaneApp.h"
#include "LaunchArgs.h"
#include "LaunchLocations.h"
#include "Localization.h"
#include "SelfTest.h"

#include <QApplication>
#include <QCoreApplication>
#include <QDir>
#include <QUrl>
#include <cstdio>

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
    if (!windowSystemAvailable()) {
        return runWithoutWindow(argc, argv, [] {
            std::printf("%s\n", qPrintable(localized("noDisplay")));
            return 1;
        });
    }
    // The application takes away Qt's own options (-platform, -style...) before the paths
    // are read, so that an option's value is never taken for a file.
    QApplication app(argc, argv);
    const LaunchPlan window = scanLaunchArguments(app.arguments(), QDir::currentPath());
    if (window.openPath)
        initialFileURL = QUrl::fromLocalFile(*window.openPath);
    if (window.batchPath)
        initialBatchURL = QUrl::fromLocalFile(*window.batchPath);
    return runApplication(app, LaunchRequest{window.openPaths, {}});
}
