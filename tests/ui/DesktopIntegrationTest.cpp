#include "Appearance.h"
#include "DesktopFiles.h"
#include "DesktopPalette.h"
#include "DocumentTestSupport.h"
#include "PrivateBus.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusVariant>
#include <QThread>
#include <gtest/gtest.h>

namespace {

// Stands in for the file manager on a private bus.
class FakeFileManager : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.FileManager1")
public:
    QStringList shown;

public slots:
    void ShowItems(const QStringList& uris, const QString& /*startupId*/) { shown << uris; }
};

// Stands in for the desktop's settings portal, answering the colour scheme only.
class FakeSettingsPortal : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")
public:
    uint scheme = 0;

public slots:
    QDBusVariant Read(const QString& space, const QString& key)
    {
        if (space != "org.freedesktop.appearance" || key != "color-scheme")
            return QDBusVariant(QVariant(QString()));
        // The portal wraps the value in a second variant.
        return QDBusVariant(QVariant::fromValue(QDBusVariant(QVariant(scheme))));
    }
};

// A private session bus with one fake service on it, for the whole test.
class DesktopBusTest : public testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_FALSE(m_bus.address().isEmpty()) << "dbus-daemon did not start";
        m_previous = qgetenv("DBUS_SESSION_BUS_ADDRESS");
        qputenv("DBUS_SESSION_BUS_ADDRESS", m_bus.address().toUtf8());
        m_service = QDBusConnection::connectToBus(m_bus.address(), "fake-desktop");
        ASSERT_TRUE(m_service.isConnected());
        DesktopFiles::setUrlOpener([this](const QUrl& url) { m_opened << url; });
    }
    void TearDown() override
    {
        DesktopFiles::setUrlOpener({});
        QDBusConnection::disconnectFromBus("fake-desktop");
        qputenv("DBUS_SESSION_BUS_ADDRESS", m_previous);
    }

    PrivateBus m_bus;
    QByteArray m_previous;
    QDBusConnection m_service{QString()};
    QList<QUrl> m_opened;
};

TEST_F(DesktopBusTest, RevealAsksTheFileManagerToSelectTheFile)
{
    FakeFileManager manager;
    ASSERT_TRUE(m_service.registerObject("/org/freedesktop/FileManager1", &manager,
                                         QDBusConnection::ExportAllSlots));
    ASSERT_TRUE(m_service.registerService("org.freedesktop.FileManager1"));
    const QUrl file = QUrl::fromLocalFile("/home/ann/talks/a talk (no pauses).m4a");
    DesktopFiles::reveal(file);
    ASSERT_TRUE(waitUntil([&] { return !manager.shown.isEmpty(); }, 10000));
    EXPECT_EQ(manager.shown, QStringList{file.toString(QUrl::FullyEncoded)});
    runEventLoop(100);
    EXPECT_TRUE(m_opened.isEmpty());
}

TEST_F(DesktopBusTest, WithoutAFileManagerRevealOpensTheFolder)
{
    DesktopFiles::reveal(QUrl::fromLocalFile("/home/ann/talks/a.m4a"));
    ASSERT_TRUE(waitUntil([&] { return !m_opened.isEmpty(); }, 10000));
    EXPECT_EQ(m_opened, QList<QUrl>{QUrl::fromLocalFile("/home/ann/talks")});
}

// The palette is read with a blocking call at start-up, so the portal answers from a thread
// of its own, as it would from a process of its own.
bool paletteIsDarkWhenThePortalSays(const QString& address, uint scheme)
{
    const QPalette original = QApplication::palette();
    QThread thread;
    FakeSettingsPortal portal;
    portal.scheme = scheme;
    portal.moveToThread(&thread);
    thread.start();
    QDBusConnection connection = QDBusConnection::connectToBus(address, "fake-portal");
    EXPECT_TRUE(connection.registerObject("/org/freedesktop/portal/desktop", &portal,
                                          QDBusConnection::ExportAllSlots));
    EXPECT_TRUE(connection.registerService("org.freedesktop.portal.Desktop"));
    DesktopPalette::apply();
    const bool dark = Appearance::isDark(QApplication::palette());
    if (dark) // text stays readable on the dark ground
        EXPECT_GT(Appearance::primaryText(QApplication::palette()).lightnessF(), 0.8);
    QDBusConnection::disconnectFromBus("fake-portal");
    thread.quit();
    thread.wait();
    QApplication::setPalette(original);
    return dark;
}

TEST_F(DesktopBusTest, ADesktopThatPrefersDarkGetsADarkPalette)
{
    ASSERT_FALSE(Appearance::isDark(QApplication::palette()));
    EXPECT_TRUE(paletteIsDarkWhenThePortalSays(m_bus.address(), 1));
    EXPECT_FALSE(paletteIsDarkWhenThePortalSays(m_bus.address(), 2)); // prefers light
    EXPECT_FALSE(paletteIsDarkWhenThePortalSays(m_bus.address(), 0)); // no preference
}

} // namespace

#include "DesktopIntegrationTest.moc"
