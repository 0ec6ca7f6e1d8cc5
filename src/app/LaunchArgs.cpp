#include "LaunchArgs.h"

#include <QDir>

namespace {

// The element after the first occurrence of `flag`, whatever it holds, if there is one.
std::optional<QString> valueAfter(const QStringList& arguments, const QString& flag,
                                  const QString& workingDirectory)
{
    const qsizetype index = arguments.indexOf(flag);
    if (index < 0 || index + 1 >= arguments.size())
        return std::nullopt;
    return QDir::cleanPath(QDir(workingDirectory).absoluteFilePath(arguments.at(index + 1)));
}

} // namespace

LaunchPlan scanLaunchArguments(const QStringList& arguments, const QString& workingDirectory)
{
    LaunchPlan plan;
    if (arguments.contains(QStringLiteral("--selftest"))) {
        plan.mode = LaunchMode::selfTest;
        return plan;
    }
    if (arguments.contains(QStringLiteral("--cli"))) {
        plan.mode = LaunchMode::commandLine;
        return plan;
    }
    plan.openPath = valueAfter(arguments, QStringLiteral("--open"), workingDirectory);
    plan.batchPath = valueAfter(arguments, QStringLiteral("--batch"), workingDirectory);
    return plan;
}
