#include "CutListFiles.h"

#include "CutListSource.h"
#include "EdlWriter.h"
#include "Localization.h"
#include "TidleError.h"
#include "XmemlWriter.h"

#include <QFileInfo>
#include <QSaveFile>
#include <memory>

namespace {

QString withoutCutListSuffix(const QString& path)
{
    for (const QLatin1String suffix : {QLatin1String(".edl"), QLatin1String(".xml")}) {
        if (path.endsWith(suffix, Qt::CaseInsensitive))
            return path.chopped(suffix.size());
    }
    return path;
}

bool sameFile(const QString& a, const QString& b)
{
    const QFileInfo first(a);
    const QFileInfo second(b);
    if (first.exists() && second.exists())
        return first.canonicalFilePath() == second.canonicalFilePath();
    return first.absoluteFilePath() == second.absoluteFilePath();
}

} // namespace

namespace CutListFiles {

QStringList paths(const QString& basePath)
{
    const QString base = withoutCutListSuffix(basePath);
    return {base + QStringLiteral(".edl"), base + QStringLiteral(".xml")};
}

void write(const QString& mediaPath, const std::vector<Segment>& keeps, const QString& basePath)
{
    const QStringList targets = paths(basePath);
    for (const QString& target : targets) {
        if (sameFile(target, mediaPath))
            throw TidleError::exportFailed(localized("diag.sameFile"));
    }
    const CutListSource source = CutListSource::probe(mediaPath);
    const QString title = QFileInfo(targets.front()).completeBaseName();
    const QString texts[] = {EdlWriter::text(source, keeps, title),
                             XmemlWriter::text(source, keeps, title)};

    // Both are written in full under temporary names before either replaces anything.
    std::vector<std::unique_ptr<QSaveFile>> files;
    for (int i = 0; i < targets.size(); ++i) {
        auto file = std::make_unique<QSaveFile>(targets[i]);
        if (!file->open(QIODevice::WriteOnly) || file->write(texts[i].toUtf8()) < 0)
            throw TidleError::exportFailed(file->errorString());
        files.push_back(std::move(file));
    }
    for (const auto& file : files) {
        if (!file->commit())
            throw TidleError::exportFailed(file->errorString());
    }
}

} // namespace CutListFiles
