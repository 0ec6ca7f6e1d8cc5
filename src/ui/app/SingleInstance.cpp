#include "SingleInstance.h"

#include <QDataStream>
#include <QDir>
#include <QLocalServer>
#include <QLocalSocket>
#include <QStandardPaths>
#include <optional>

namespace {

constexpr int connectTimeoutMs = 500;
constexpr int transferTimeoutMs = 2000;
constexpr quint32 messageVersion = 1;

QByteArray encode(const LaunchRequest& request)
{
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    out << messageVersion << request.openPaths << request.batchPath;
    return bytes;
}

std::optional<LaunchRequest> decode(const QByteArray& bytes)
{
    QDataStream in(bytes);
    quint32 version = 0;
    LaunchRequest request;
    in >> version >> request.openPaths >> request.batchPath;
    if (in.status() != QDataStream::Ok || version != messageVersion)
        return std::nullopt;
    return request;
}

} // namespace

QString SingleInstance::defaultServerName()
{
    QString folder = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    if (folder.isEmpty())
        folder = QDir::tempPath();
    return QDir(folder).filePath(QStringLiteral("hushpane.socket"));
}

SingleInstance::SingleInstance(QString serverName, QObject* parent)
    : QObject(parent)
    , m_serverName(std::move(serverName))
{
}

SingleInstance::~SingleInstance() = default;

bool SingleInstance::handOver(const LaunchRequest& request) const
{
    QLocalSocket socket;
    socket.connectToServer(m_serverName);
    if (!socket.waitForConnected(connectTimeoutMs))
        return false;
    // A length prefix tells the receiver when the whole request has arrived.
    const QByteArray message = encode(request);
    QDataStream out(&socket);
    out << static_cast<quint32>(message.size());
    socket.write(message);
    if (!socket.waitForBytesWritten(transferTimeoutMs))
        return false;
    // The receiver closes once it has the request; until then it may still be starting up.
    socket.waitForDisconnected(transferTimeoutMs);
    return true;
}

bool SingleInstance::listen()
{
    m_server = new QLocalServer(this);
    m_server->setSocketOptions(QLocalServer::UserAccessOption);
    if (!m_server->listen(m_serverName)) {
        // Nobody answered handOver(), so the socket file is a leftover.
        QLocalServer::removeServer(m_serverName);
        if (!m_server->listen(m_serverName))
            return false;
    }
    connect(m_server, &QLocalServer::newConnection, this, &SingleInstance::acceptConnections);
    return true;
}

void SingleInstance::acceptConnections()
{
    while (QLocalSocket* socket = m_server->nextPendingConnection()) {
        connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
        connect(socket, &QLocalSocket::readyRead, this, [this, socket] {
            if (socket->bytesAvailable() < static_cast<qint64>(sizeof(quint32)))
                return;
            QDataStream in(socket->peek(sizeof(quint32)));
            quint32 length = 0;
            in >> length;
            if (socket->bytesAvailable() < static_cast<qint64>(sizeof(quint32) + length))
                return;
            socket->skip(sizeof(quint32));
            const std::optional<LaunchRequest> request = decode(socket->read(length));
            socket->disconnectFromServer();
            if (request)
                emit requestReceived(*request);
        });
    }
}
