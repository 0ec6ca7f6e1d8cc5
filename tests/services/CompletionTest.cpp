#include "Completion.h"
#include "PrivateBus.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QElapsedTimer>
#include <QSignalSpy>
#include <QVariantMap>
#include <gtest/gtest.h>

namespace {

// Stands in for the desktop's notification daemon on a private bus.
class FakeNotificationService : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")
public:
    struct Call {
        QString appName;
        uint replacesId;
        QString summary;
        QString body;
        QVariantMap hints;
    };
    QList<Call> calls;
    int serverInformationRequests = 0;

public slots:
    uint Notify(const QString& appName, uint replacesId, const QString& /*icon*/,
                const QString& summary, const QString& body, const QStringList& /*actions*/,
                const QVariantMap& hints, int /*timeout*/)
    {
        calls.append({appName, replacesId, summary, body, hints});
        emit received();
        return uint(calls.size());
    }
    QString GetServerInformation(QString& vendor, QString& version, QString& specVersion)
    {
        ++serverInformationRequests;
        vendor = "test";
        version = "1";
        specVersion = "1.2";
        emit received();
        return QStringLiteral("fake");
    }

signals:
    void received();
};

} // namespace

TEST(Completion, withoutASessionBusNotifyReturnsAndDoesNothingElse)
{
    qunsetenv("DBUS_SESSION_BUS_ADDRESS");
    QElapsedTimer clock;
    clock.start();
    Completion::requestPermission();
    Completion::notify("Batch finished", "3 files written");
    Completion::notify("Batch finished", "1 file written");
    // A guard against a hang only, far above what the calls take.
    EXPECT_LT(clock.elapsed(), 2000);
}

TEST(Completion, eachNotificationIsANewSilentBannerFromHushpane)
{
    PrivateBus bus;
    ASSERT_FALSE(bus.address().isEmpty()) << "dbus-daemon did not start";
    FakeNotificationService service;
    QDBusConnection serviceSide =
        QDBusConnection::connectToBus(bus.address(), "notification-daemon");
    ASSERT_TRUE(serviceSide.isConnected());
    ASSERT_TRUE(serviceSide.registerObject("/org/freedesktop/Notifications", &service,
                                           QDBusConnection::ExportAllSlots));
    ASSERT_TRUE(serviceSide.registerService("org.freedesktop.Notifications"));
    qputenv("DBUS_SESSION_BUS_ADDRESS", bus.address().toUtf8());

    QSignalSpy received(&service, &FakeNotificationService::received);
    Completion::requestPermission();
    Completion::notify("Batch finished", "3 files written without their pauses.");
    Completion::notify("Pauses removed", "talk.m4a is ready, 0:42 shorter.");
    // The server information and the two notifications.
    while (received.count() < 3)
        ASSERT_TRUE(received.wait(10000));

    EXPECT_EQ(service.serverInformationRequests, 1);
    ASSERT_EQ(service.calls.size(), 2);
    EXPECT_EQ(service.calls[0].summary, "Batch finished");
    EXPECT_EQ(service.calls[0].body, "3 files written without their pauses.");
    EXPECT_EQ(service.calls[1].summary, "Pauses removed");
    EXPECT_EQ(service.calls[1].body, "talk.m4a is ready, 0:42 shorter.");
    for (const auto& call : service.calls) {
        EXPECT_EQ(call.appName, "Hushpane");
        EXPECT_EQ(call.replacesId, 0u);
        EXPECT_TRUE(call.hints.value("suppress-sound").toBool());
    }
    serviceSide.unregisterService("org.freedesktop.Notifications");
    QDBusConnection::disconnectFromBus("notification-daemon");
    qunsetenv("DBUS_SESSION_BUS_ADDRESS");
}

#include "CompletionTest.moc"
