#include "BatchModel.h"

#include "Localization.h"

#include <QDir>
#include <QFileInfo>
#include <QSet>

namespace {

QList<QUrl> supportedEntries(const QString& folder)
{
    QList<QUrl> entries;
    // Hidden entries count like any other; sub-folders are not entered, but one whose name
    // has a supported extension (a bundle, say) is listed like a file.
    const QDir dir(folder);
    const QStringList names = dir.entryList(
        QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Unsorted);
    for (const QString& name : names) {
        const QUrl entry = QUrl::fromLocalFile(dir.filePath(name));
        if (isSupported(entry))
            entries.append(entry);
    }
    return entries;
}

} // namespace

BatchModel::BatchModel(QObject* parent)
    : QObject(parent)
{
}

void BatchModel::setSensitivity(Sensitivity sensitivity)
{
    m_sensitivity = sensitivity;
    emit sensitivityChanged();
}

void BatchModel::setItems(const QList<QUrl>& locations)
{
    if (m_running)
        return;
    QList<QUrl> candidates;
    for (const QUrl& location : locations) {
        const QFileInfo info(location.toLocalFile());
        if (!info.exists())
            continue;
        if (info.isDir())
            candidates += supportedEntries(info.filePath());
        else if (isSupported(location))
            candidates.append(location);
    }
    QSet<QString> seen;
    QList<BatchItem> items;
    for (const QUrl& candidate : candidates) {
        const QString path = candidate.path();
        if (seen.contains(path))
            continue;
        seen.insert(path);
        items.append(BatchItem{QUuid::createUuid(), candidate, BatchItem::Waiting{}});
    }
    setItemList(std::move(items));
}

void BatchModel::clear()
{
    if (m_running)
        return;
    setItemList({});
}

QString BatchModel::summarize(const QList<BatchItem>& items)
{
    int done = 0;
    int notWritten = 0;
    for (const BatchItem& item : items) {
        if (std::holds_alternative<BatchItem::Done>(item.status))
            ++done;
        else if (std::holds_alternative<BatchItem::Skipped>(item.status) ||
                 std::holds_alternative<BatchItem::Failed>(item.status))
            ++notWritten;
    }
    QStringList parts{localizedCount("batch.summary.files", int(items.size()))};
    if (done > 0)
        parts.append(localizedCount("batch.summary.done", done));
    if (notWritten > 0)
        parts.append(localizedCount("batch.summary.skipped", notWritten));
    return parts.join(QStringLiteral(" \u00B7 "));
}

TidleSettings BatchModel::runSettings(Sensitivity sensitivity)
{
    TidleSettings settings;
    if (!SensitivityPresets::applyNumbers(sensitivity, settings))
        SensitivityPresets::applyNumbers(Sensitivity::standard, settings);
    // A batch is never previewed, so it always writes exact cuts.
    settings.frameAccurate = true;
    return settings;
}

void BatchModel::setItemList(QList<BatchItem> items)
{
    m_items = std::move(items);
    emit itemsChanged();
}

void BatchModel::setRunning(bool running)
{
    m_running = running;
    emit isRunningChanged();
}
