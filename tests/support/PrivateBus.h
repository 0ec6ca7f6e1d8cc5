#pragma once

#include <QProcess>
#include <QString>

// A session bus of our own, so that a test neither needs nor disturbs the user's.
class PrivateBus {
public:
    PrivateBus();
    ~PrivateBus();

    // Empty when dbus-daemon did not start.
    const QString& address() const { return m_address; }

private:
    QProcess m_daemon;
    QString m_address;
};
