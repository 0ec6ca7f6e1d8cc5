#pragma once

#include "BatchItem.h"
#include "Sensitivity.h"
#include "SerialQueue.h"
#include "TidleEngine.h"
#include "TidleSettings.h"

#include <QList>
#include <QObject>
#include <QUrl>
#include <atomic>
#include <functional>

// Many recordings processed one after another with one preset: folders expand one level,
// each file is analysed and, when there is something to remove, written beside itself.
// Lives on the main thread; the files of a run are processed on the "batch" queue.
class BatchModel : public QObject {
    Q_OBJECT
    Q_PROPERTY(QList<BatchItem> items READ items NOTIFY itemsChanged)
    Q_PROPERTY(bool isRunning READ isRunning NOTIFY isRunningChanged)
    Q_PROPERTY(
        Sensitivity sensitivity READ sensitivity WRITE setSensitivity NOTIFY sensitivityChanged)
    Q_PROPERTY(QString summary READ summary NOTIFY itemsChanged)

public:
    explicit BatchModel(QObject* parent = nullptr);
    // Stops the running file and waits for the queue; nothing of the run reaches the model
    // afterwards.
    ~BatchModel() override;

    const QList<BatchItem>& items() const { return m_items; }
    bool isRunning() const { return m_running; }
    Sensitivity sensitivity() const { return m_sensitivity; }
    void setSensitivity(Sensitivity sensitivity);
    QString summary() const { return summarize(m_items); }

    // Replaces the list: files as given, folders by their supported entries (one level, hidden
    // ones too), the first of two equal paths kept, missing paths dropped. Ignored while
    // running.
    Q_INVOKABLE void setItems(const QList<QUrl>& locations);
    // Processes the whole list with the current preset; returns at once.
    Q_INVOKABLE void run();
    // The running file fails as stopped and no further file is started.
    Q_INVOKABLE void stop();
    // Empties the list unless a run is in progress.
    Q_INVOKABLE void clear();

    // How each file of a run is analysed, on the worker: the engine's own analysis unless
    // replaced. Ignored while running.
    using Analyzer =
        std::function<Analysis(TidleEngine& engine, const QString& path, const TidleSettings&)>;
    void setAnalyzer(Analyzer analyzer);

    // "n files · n done · n skipped", the last two only when not zero.
    static QString summarize(const QList<BatchItem>& items);
    // The settings a run uses for a preset; custom has no numbers and runs as standard.
    static TidleSettings runSettings(Sensitivity sensitivity);

signals:
    void itemsChanged();
    // Also announced through itemsChanged(); lets a list view repaint one row.
    void itemStatusChanged(int index);
    void isRunningChanged();
    void sensitivityChanged();

private:
    void setItemList(QList<BatchItem> items);
    void setRunning(bool running);
    // On the worker.
    void processAll(const QList<QUrl>& locations, const TidleSettings& settings);
    void process(int index, const QUrl& location, const TidleSettings& settings);
    // Callable from any thread: the change reaches the main thread after every earlier one.
    void update(int index, const BatchItem::Status& status);
    void applyStatus(int index, const BatchItem::Status& status);
    void finishRun();

    QList<BatchItem> m_items;
    bool m_running = false;
    Sensitivity m_sensitivity = Sensitivity::standard;

    // Written on the main thread, read by the worker.
    Analyzer m_analyzer;
    std::atomic<bool> m_cancelRequested{false};
    std::atomic<bool> m_closing{false};
    // Set by the worker while a run's job executes, so the destructor knows what to wait for.
    std::atomic<bool> m_jobActive{false};

    // The worker uses the engine and posts to this object; both outlive it because the queue,
    // declared last, is destroyed (and its thread joined) first.
    TidleEngine m_engine;
    SerialQueue m_queue{QStringLiteral("batch")};
};
