#include "CommandLineRequest.h"

#include <QDir>
#include <QFileInfo>

namespace {

QString absolutePath(const QString& path, const QString& workingDirectory)
{
    return QDir::cleanPath(QDir(workingDirectory).absoluteFilePath(path));
}

// "talk.final.mov" gives "talk.final"; a name whose only dot leads it has no extension.
QString withoutLastExtension(const QString& fileName)
{
    const qsizetype dot = fileName.lastIndexOf('.');
    return dot > 0 ? fileName.left(dot) : fileName;
}

} // namespace

std::optional<CommandLineRequest> CommandLineRequest::parse(const QStringList& arguments,
                                                            const QString& workingDirectory)
{
    const QString cli = QStringLiteral("--cli");
    const QString fast = QStringLiteral("--fast");
    QStringList positional;
    for (const QString& argument : arguments) {
        if (argument != cli && argument != fast)
            positional << argument;
    }
    if (positional.size() < 2)
        return std::nullopt;

    CommandLineRequest request;
    request.fast = arguments.contains(fast);
    request.input = absolutePath(positional.at(1), workingDirectory);
    if (positional.size() >= 3) {
        request.output = absolutePath(positional.at(2), workingDirectory);
    } else {
        const QFileInfo input(request.input);
        request.output = input.dir().filePath(withoutLastExtension(input.fileName()) +
                                              QStringLiteral("_tidled.mp4"));
    }
    return request;
}
