#include "PrivateBus.h"

PrivateBus::PrivateBus()
{
    m_daemon.start("dbus-daemon", {"--session", "--nofork", "--print-address=1"});
    if (m_daemon.waitForStarted(10000) && m_daemon.waitForReadyRead(10000))
        m_address = QString::fromUtf8(m_daemon.readLine()).trimmed();
}

PrivateBus::~PrivateBus()
{
    m_daemon.kill();
    m_daemon.waitForFinished(5000);
}
