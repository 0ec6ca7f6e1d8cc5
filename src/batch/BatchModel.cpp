#include "BatchModel.h"

#include "Completion.h"
#include "Ellipsize.h"
#include "Localization.h"
#include "OutputName.h"
#include "Stats.h"
#include "TidleError.h"
#include "UserMessage.h"

#include <QDir>
#include <QFileInfo>
#include <QSet>
#include <chrono>
#include <thread>

namespace {

constexpr int maxReasonCharacters = 80;
// Removing this little or less is not worth a new file.
constexpr double minRemovedSeconds = 0.01;

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

QString failureText(const std::exception& error)
{
    return ellipsize(userMessage(error), maxReasonCharacters);
}

} // namespace

BatchModel::BatchModel(QObject* parent)
    : QObject(parent)
{
}

BatchModel::~BatchModel()
{
    m_closing = true;
    // The engine forgets a cancel that comes just before it starts a file, so keep asking
    // until the job has seen m_closing and let go; each file stops at its next packet.
    while (m_jobActive) {
        m_engine.cancel();
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
}

void BatchModel::setSensitivity(Sensitivity sensitivity)
{
    m_sensitivity = sensitivity;
    emit sensitivityChanged();
}

void BatchModel::setAnalyzer(Analyzer analyzer)
{
    if (!m_running)
        m_analyzer = std::move(analyzer);
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

void BatchModel::run()
{
    if (m_running || m_items.isEmpty())
        return;
    m_cancelRequested = false;
    setRunning(true);
    const TidleSettings settings = runSettings(m_sensitivity);
    QList<QUrl> locations;
    for (const BatchItem& item : m_items)
        locations.append(item.url);
    m_queue.submit([this, locations, settings] {
        m_jobActive = true;
        if (!m_closing)
            processAll(locations, settings);
        m_jobActive = false;
    });
}

void BatchModel::stop()
{
    m_cancelRequested = true;
    m_engine.cancel();
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

void BatchModel::processAll(const QList<QUrl>& locations, const TidleSettings& settings)
{
    for (int i = 0; i < locations.size(); ++i) {
        if (m_cancelRequested || m_closing)
            break;
        process(i, locations[i], settings);
    }
    if (!m_closing)
        QMetaObject::invokeMethod(
            this, [this] { finishRun(); }, Qt::QueuedConnection);
}

void BatchModel::process(int index, const QUrl& location, const TidleSettings& settings)
{
    update(index, BatchItem::Analyzing{});
    const QString input = location.toLocalFile();
    Analysis analysis;
    try {
        analysis =
            m_analyzer ? m_analyzer(m_engine, input, settings) : m_engine.analyze(input, settings);
    } catch (const TidleError& error) {
        switch (error.kind()) {
        case TidleError::Kind::cancelled:
            update(index, BatchItem::Failed{localized("batch.fail.cancelled")});
            break;
        case TidleError::Kind::allSilent:
            update(index, BatchItem::Skipped{localized("batch.skip.allSilent")});
            break;
        case TidleError::Kind::noAudioTrack:
            update(index, BatchItem::Skipped{localized("batch.skip.noAudio")});
            break;
        default:
            update(index, BatchItem::Failed{failureText(error)});
            break;
        }
        return;
    } catch (const std::exception& error) {
        update(index, BatchItem::Failed{failureText(error)});
        return;
    }

    const double removed = analysis.duration - analysis.keptSeconds();
    if (removed <= minRemovedSeconds) {
        update(index, BatchItem::Skipped{localized("batch.skip.noPauses")});
        return;
    }

    const QString output =
        QFileInfo(input).dir().filePath(defaultOutputName(location, analysis.outputExtension));
    try {
        m_engine.encode(input, output, analysis, settings, [this, index](double fraction) {
            if (!m_closing)
                update(index, BatchItem::Encoding{fraction});
        });
    } catch (const TidleError& error) {
        if (error.kind() == TidleError::Kind::cancelled)
            update(index, BatchItem::Failed{localized("batch.fail.cancelled")});
        else
            update(index, BatchItem::Failed{failureText(error)});
        return;
    } catch (const std::exception& error) {
        update(index, BatchItem::Failed{failureText(error)});
        return;
    }
    update(index, BatchItem::Encoding{1.0});

    const double saved = analysis.removedSeconds();
    // The running total is read and written on the main thread only.
    QMetaObject::invokeMethod(
        this, [saved] { Stats::add(saved); }, Qt::QueuedConnection);
    update(index, BatchItem::Done{saved / analysis.duration, QUrl::fromLocalFile(output)});
}

void BatchModel::update(int index, const BatchItem::Status& status)
{
    if (m_closing)
        return;
    QMetaObject::invokeMethod(
        this, [this, index, status] { applyStatus(index, status); }, Qt::QueuedConnection);
}

void BatchModel::applyStatus(int index, const BatchItem::Status& status)
{
    if (index < 0 || index >= m_items.size())
        return;
    m_items[index].status = status;
    emit itemStatusChanged(index);
    emit itemsChanged();
}

void BatchModel::finishRun()
{
    setRunning(false);
    int done = 0;
    for (const BatchItem& item : m_items) {
        if (std::holds_alternative<BatchItem::Done>(item.status))
            ++done;
    }
    if (done == 0 || m_cancelRequested)
        return;
    Completion::notify(localized("notify.batch.title"), localizedCount("notify.batch.body", done));
}
