#include "Completion.h"

#include "SerialQueue.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QVariantMap>
#include <canberra.h>
#include <memory>

namespace {

const QString service = QStringLiteral("org.freedesktop.Notifications");
const QString path = QStringLiteral("/org/freedesktop/Notifications");
const QString interface = QStringLiteral("org.freedesktop.Notifications");
const QString applicationName = QStringLiteral("Hushpane");

Completion::Delivery& replacedDelivery()
{
    static Completion::Delivery delivery;
    return delivery;
}

struct SoundContextDeleter {
    void operator()(ca_context* context) const { ca_context_destroy(context); }
};

// Opening a sound driver can take a while or hang on a broken sound server, so the sound
// is played from a thread of its own. The context lives as long as the process: destroying
// it would cut the sound short.
class SoundPlayer {
public:
    static SoundPlayer& instance()
    {
        static SoundPlayer player;
        return player;
    }

    void playComplete()
    {
        m_queue.submit([this] {
            if (!m_context && !openContext())
                return;
            // An error here means no sound server or no such sound: nothing to tell anyone.
            ca_context_play(m_context.get(), 0, CA_PROP_EVENT_ID, "complete",
                            CA_PROP_EVENT_DESCRIPTION, "Work finished", nullptr);
        });
    }

private:
    bool openContext()
    {
        ca_context* context = nullptr;
        if (ca_context_create(&context) != CA_SUCCESS)
            return false;
        m_context.reset(context);
        ca_context_change_props(context, CA_PROP_APPLICATION_NAME, "Hushpane",
                                CA_PROP_APPLICATION_ID, "hushpane", nullptr);
        return true;
    }

    // Declared before the queue, so the worker is joined before the context goes.
    std::unique_ptr<ca_context, SoundContextDeleter> m_context;
    SerialQueue m_queue{QStringLiteral("completion")};
};

// Without an address libdbus would try to autolaunch a bus, which can start a daemon or
// block; with one, connecting to a local socket fails or succeeds at once.
bool sessionBusConfigured()
{
    return !qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS");
}

void callNotificationService(const QString& method, const QVariantList& arguments)
{
    if (!sessionBusConfigured())
        return;
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return;
    QDBusMessage message = QDBusMessage::createMethodCall(service, path, interface, method);
    message.setArguments(arguments);
    // Fire and forget: the reply, or the error of a missing service, is dropped unread.
    bus.asyncCall(message);
}

} // namespace

namespace Completion {

void requestPermission()
{
    callNotificationService(QStringLiteral("GetServerInformation"), {});
}

void notify(const QString& title, const QString& body)
{
    if (const Delivery& delivery = replacedDelivery()) {
        delivery(title, body);
        return;
    }
    SoundPlayer::instance().playComplete();
    // replaces_id 0 asks for a new banner every time; the sound above is the only sound.
    callNotificationService(QStringLiteral("Notify"),
                            {applicationName, 0u, QString(), title, body, QStringList(),
                             QVariantMap{{QStringLiteral("suppress-sound"), true}}, -1});
}

void setDelivery(Delivery delivery)
{
    replacedDelivery() = std::move(delivery);
}

} // namespace Completion
