#include "OutputName.h"

#include "Localization.h"

#include <QFileInfo>

QString defaultOutputName(const QUrl& input, const QString& ext)
{
    const QString name = QFileInfo(input.path()).fileName();
    // talk.final.mov gives talk.final; a name that only starts with a dot has no extension.
    const qsizetype dot = name.lastIndexOf(QLatin1Char('.'));
    const QString base = dot > 0 ? name.left(dot) : name;
    return localized("file.suffix").arg(base) + QLatin1Char('.') + ext;
}
