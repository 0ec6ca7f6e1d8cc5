#include "LaunchArgs.h"

#include <QDir>

namespace {

QString absolutePath(const QString& path, const QString& workingDirectory)
{
    return QDir::cleanPath(QDir(workingDirectory).absoluteFilePath(path));
}

// The index of the element after the first occurrence of `flag`, if there is one.
std::optional<qsizetype> valueIndexAfter(const QStringList& arguments, const QString& flag)
{
    const qsizetype index = arguments.indexOf(flag);
    if (index < 0 || index + 1 >= arguments.size())
        return std::nullopt;
    return index + 1;
}

// Arguments that are neither options nor the value of a flag. Every element after an
// "--open" or "--batch" is that flag's value, even where only the first flag counts.
QStringList bareArguments(const QStringList& arguments)
{
    const QStringList flagsWithValues = {QStringLiteral("--open"), QStringLiteral("--batch")};
    QStringList bare;
    for (qsizetype i = 1; i < arguments.size(); ++i) {
        const bool isValue = flagsWithValues.contains(arguments[i - 1]);
        if (!isValue && !arguments[i].startsWith(QLatin1Char('-')))
            bare << arguments[i];
    }
    return bare;
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
    if (const auto index = valueIndexAfter(arguments, QStringLiteral("--open")))
        plan.openPath = absolutePath(arguments[*index], workingDirectory);
    if (const auto index = valueIndexAfter(arguments, QStringLiteral("--batch")))
        plan.batchPath = absolutePath(arguments[*index], workingDirectory);
    for (const QString& path : bareArguments(arguments))
        plan.openPaths << absolutePath(path, workingDirectory);
    return plan;
}
