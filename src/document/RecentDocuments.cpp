#include "RecentDocuments.h"

#include <QDateTime>
#include <QDir>
#include <QDomDocument>
#include <QFile>
#include <QFileInfo>
#include <QMimeDatabase>
#include <QSaveFile>
#include <QStandardPaths>
#include <QUrl>
#include <optional>

namespace {

const QString bookmarkNamespace =
    QStringLiteral("http://www.freedesktop.org/standards/desktop-bookmarks");
const QString mimeNamespace =
    QStringLiteral("http://www.freedesktop.org/standards/shared-mime-info");
const QString metadataOwner = QStringLiteral("http://freedesktop.org");
const QString applicationName = QStringLiteral("Hushpane");
const QString applicationExec = QStringLiteral("hushpane %u");

QDomDocument emptyList()
{
    QDomDocument document;
    document.appendChild(
        document.createProcessingInstruction("xml", R"(version="1.0" encoding="UTF-8")"));
    QDomElement root = document.createElement("xbel");
    root.setAttribute("version", "1.0");
    document.appendChild(root);
    return document;
}

// Reads the list as it is on disk: a missing or empty file is an empty list; anything that
// is not an XBEL document gives no value.
std::optional<QDomDocument> readList(const QString& path)
{
    QFile file(path);
    if (!file.exists() || file.size() == 0)
        return emptyList();
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    QDomDocument document;
    // Without namespace processing the prefixes and declarations of other writers come back
    // out exactly as they went in.
    if (!document.setContent(file.readAll(), false))
        return std::nullopt;
    if (document.documentElement().tagName() != "xbel")
        return std::nullopt;
    return document;
}

QDomElement firstChild(const QDomElement& parent, const QString& tag, const QString& attribute = {},
                       const QString& value = {})
{
    for (QDomElement child = parent.firstChildElement(tag); !child.isNull();
         child = child.nextSiblingElement(tag)) {
        if (attribute.isEmpty() || child.attribute(attribute) == value)
            return child;
    }
    return {};
}

QDomElement childOrNew(QDomElement parent, const QString& tag, const QString& attribute = {},
                       const QString& value = {})
{
    QDomElement child = firstChild(parent, tag, attribute, value);
    if (child.isNull()) {
        child = parent.ownerDocument().createElement(tag);
        if (!attribute.isEmpty())
            child.setAttribute(attribute, value);
        parent.appendChild(child);
    }
    return child;
}

QDomElement findBookmark(const QDomElement& root, const QUrl& url)
{
    for (QDomElement bookmark = root.firstChildElement("bookmark"); !bookmark.isNull();
         bookmark = bookmark.nextSiblingElement("bookmark")) {
        // Writers differ in which characters they escape; compare the decoded locations.
        if (QUrl::fromEncoded(bookmark.attribute("href").toUtf8()) == url)
            return bookmark;
    }
    return {};
}

void noteUse(QDomElement root, const QString& filePath, const QString& now)
{
    const QUrl url = QUrl::fromLocalFile(QFileInfo(filePath).absoluteFilePath());
    QDomElement bookmark = findBookmark(root, url);
    if (bookmark.isNull()) {
        bookmark = root.ownerDocument().createElement("bookmark");
        bookmark.setAttribute("href", QString::fromUtf8(url.toEncoded()));
        bookmark.setAttribute("added", now);
        root.appendChild(bookmark);
    }
    bookmark.setAttribute("modified", now);
    bookmark.setAttribute("visited", now);

    QDomElement metadata =
        childOrNew(childOrNew(bookmark, "info"), "metadata", "owner", metadataOwner);
    if (firstChild(metadata, "mime:mime-type").isNull()) {
        QDomElement mime = childOrNew(metadata, "mime:mime-type");
        mime.setAttribute("type", QMimeDatabase().mimeTypeForFile(filePath).name());
    }
    QDomElement applications = childOrNew(metadata, "bookmark:applications");
    QDomElement application =
        firstChild(applications, "bookmark:application", "name", applicationName);
    int count = 0;
    if (application.isNull()) {
        application = childOrNew(applications, "bookmark:application", "name", applicationName);
    } else {
        count = application.attribute("count").toInt();
    }
    application.setAttribute("exec", applicationExec);
    application.setAttribute("modified", now);
    application.setAttribute("count", count + 1);
}

} // namespace

namespace RecentDocuments {

QString listPath()
{
    return QDir(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation))
        .filePath("recently-used.xbel");
}

bool add(const QString& filePath)
{
    const QString path = listPath();
    std::optional<QDomDocument> document = readList(path);
    if (!document)
        return false;

    QDomElement root = document->documentElement();
    // Our elements use these prefixes; a list written by someone else may not declare them.
    if (!root.hasAttribute("xmlns:bookmark"))
        root.setAttribute("xmlns:bookmark", bookmarkNamespace);
    if (!root.hasAttribute("xmlns:mime"))
        root.setAttribute("xmlns:mime", mimeNamespace);
    noteUse(root, filePath, QDateTime::currentDateTimeUtc().toString(Qt::ISODateWithMs));

    if (!QDir().mkpath(QFileInfo(path).absolutePath()))
        return false;
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    file.write(document->toByteArray(2));
    return file.commit();
}

} // namespace RecentDocuments
