#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

class QLocalServer;

// What a launch asks of the window: files to open, and a file or folder for the batch.
struct LaunchRequest {
    QStringList openPaths;
    QString batchPath;

    bool isEmpty() const { return openPaths.isEmpty() && batchPath.isEmpty(); }
    bool operator==(const LaunchRequest&) const = default;
};

// One window per user session: the first launch listens on a local socket, later launches
// hand their request to it and end.
class SingleInstance : public QObject {
    Q_OBJECT
public:
    // The socket in the user's runtime folder, so sessions and users never meet.
    static QString defaultServerName();

    explicit SingleInstance(QString serverName, QObject* parent = nullptr);
    ~SingleInstance() override;

    // Gives `request` to the instance already running; false when there is none.
    bool handOver(const LaunchRequest& request) const;
    // Becomes the running instance; a socket left behind by a crashed one is replaced.
    bool listen();

signals:
    void requestReceived(const LaunchRequest& request);

private:
    void acceptConnections();

    QString m_serverName;
    QLocalServer* m_server = nullptr;
};
