#include "BatchItem.h"

#include <QFileInfo>

const QStringList& supportedExtensions()
{
    static const QStringList extensions = {
        QStringLiteral("mp4"),  QStringLiteral("mov"), QStringLiteral("m4v"), QStringLiteral("qt"),
        QStringLiteral("mp3"),  QStringLiteral("m4a"), QStringLiteral("wav"), QStringLiteral("aac"),
        QStringLiteral("aiff"), QStringLiteral("aif"), QStringLiteral("caf")};
    return extensions;
}

bool isSupported(const QUrl& location)
{
    // suffix() is the text after the last dot; empty when the name has none.
    const QString extension = QFileInfo(location.path()).suffix().toLower();
    return !extension.isEmpty() && supportedExtensions().contains(extension);
}
