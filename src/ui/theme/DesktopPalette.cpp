#include "DesktopPalette.h"

#include "Appearance.h"
#include "Brand.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QPalette>

namespace {

// Unwraps the portal's answer, which arrives as a variant inside a variant.
uint colorScheme(const QVariant& reply)
{
    QVariant value = reply;
    while (value.canConvert<QDBusVariant>() && value.userType() == qMetaTypeId<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    return value.toUInt();
}

bool desktopPrefersDark()
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return false;
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.portal.Desktop"),
        QStringLiteral("/org/freedesktop/portal/desktop"),
        QStringLiteral("org.freedesktop.portal.Settings"), QStringLiteral("Read"));
    call << QStringLiteral("org.freedesktop.appearance") << QStringLiteral("color-scheme");
    // Asked once at start-up; a missing portal must not hold the window back.
    const QDBusMessage reply = bus.call(call, QDBus::Block, 300);
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty())
        return false;
    constexpr uint preferDark = 1;
    return colorScheme(reply.arguments().constFirst()) == preferDark;
}

QPalette darkPalette()
{
    QPalette palette;
    const QColor window(36, 36, 40);
    const QColor base(28, 28, 31);
    const QColor text(236, 236, 240);
    palette.setColor(QPalette::Window, window);
    palette.setColor(QPalette::WindowText, text);
    palette.setColor(QPalette::Base, base);
    palette.setColor(QPalette::AlternateBase, window);
    palette.setColor(QPalette::ToolTipBase, QColor(50, 50, 55));
    palette.setColor(QPalette::ToolTipText, text);
    palette.setColor(QPalette::PlaceholderText, QColor(140, 140, 146));
    palette.setColor(QPalette::Text, text);
    palette.setColor(QPalette::Button, QColor(52, 52, 58));
    palette.setColor(QPalette::ButtonText, text);
    palette.setColor(QPalette::BrightText, Qt::white);
    palette.setColor(QPalette::Light, QColor(70, 70, 76));
    palette.setColor(QPalette::Midlight, QColor(60, 60, 66));
    palette.setColor(QPalette::Mid, QColor(44, 44, 48));
    palette.setColor(QPalette::Dark, QColor(20, 20, 22));
    palette.setColor(QPalette::Shadow, Qt::black);
    palette.setColor(QPalette::Highlight, Brand::tint());
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, Brand::tint().lighter(130));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, QColor(120, 120, 126));
    return palette;
}

} // namespace

namespace DesktopPalette {

void apply()
{
    QPalette palette = QApplication::palette();
    if (!Appearance::isDark(palette) && desktopPrefersDark())
        palette = darkPalette();
    // The accent of selections, sliders and focus is the brand's, light or dark.
    palette.setColor(QPalette::Highlight, Brand::tint());
    palette.setColor(QPalette::HighlightedText, Qt::white);
    QApplication::setPalette(palette);
}

} // namespace DesktopPalette
