#include "DesktopFiles.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDesktopServices>
#include <QFileInfo>

namespace {

DesktopFiles::UrlOpener& replacedOpener()
{
    static DesktopFiles::UrlOpener opener;
    return opener;
}

void openUrl(const QUrl& url)
{
    if (replacedOpener())
        replacedOpener()(url);
    else
        QDesktopServices::openUrl(url);
}

QUrl folderOf(const QUrl& file)
{
    return QUrl::fromLocalFile(QFileInfo(file.toLocalFile()).absolutePath());
}

} // namespace

namespace DesktopFiles {

void reveal(const QUrl& file)
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        openUrl(folderOf(file));
        return;
    }
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.FileManager1"),
        QStringLiteral("/org/freedesktop/FileManager1"),
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("ShowItems"));
    call << QStringList{file.toString(QUrl::FullyEncoded)} << QString();
    // The answer comes later; a bus without a file manager answers with an error, and then
    // the folder opens the ordinary way.
    auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(call, 5000));
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher,
                     [file](QDBusPendingCallWatcher* finished) {
                         if (finished->isError())
                             openUrl(folderOf(file));
                         finished->deleteLater();
                     });
}

void open(const QUrl& file)
{
    openUrl(file);
}

void setUrlOpener(UrlOpener opener)
{
    replacedOpener() = std::move(opener);
}

} // namespace DesktopFiles
