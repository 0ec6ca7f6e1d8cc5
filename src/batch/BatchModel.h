#pragma once

#include "BatchItem.h"
#include "Sensitivity.h"
#include "TidleSettings.h"

#include <QList>
#include <QObject>
#include <QUrl>

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

    const QList<BatchItem>& items() const { return m_items; }
    bool isRunning() const { return m_running; }
    Sensitivity sensitivity() const { return m_sensitivity; }
    void setSensitivity(Sensitivity sensitivity);
    QString summary() const { return summarize(m_items); }

    // Replaces the list: files as given, folders by their supported entries (one level, hidden
    // ones too), the first of two equal paths kept, missing paths dropped. Ignored while
    // running.
    Q_INVOKABLE void setItems(const QList<QUrl>& locations);
    // Empties the list unless a run is in progress.
    Q_INVOKABLE void clear();

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

    QList<BatchItem> m_items;
    bool m_running = false;
    Sensitivity m_sensitivity = Sensitivity::standard;
};
