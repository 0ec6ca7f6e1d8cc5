#include "RecentDocuments.h"

#include "Fixtures.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QUrl>
#include <gtest/gtest.h>

namespace {

const QString applicationPath =
    "//*[local-name()='application' and "
    "namespace-uri()='http://www.freedesktop.org/standards/desktop-bookmarks']";

// The list is checked with libxml2's xmllint, a reader independent of the one that wrote it.
QString xpath(const QString& file, const QString& expression)
{
    return Fixtures::run("xmllint", {"--xpath", expression, file}).standardOutput.trimmed();
}

bool wellFormed(const QString& file)
{
    return Fixtures::run("xmllint", {"--noout", file}).exitCode == 0;
}

QByteArray contents(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void write(const QString& path, const QByteArray& bytes)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

class RecentDocumentsTest : public testing::Test {
protected:
    void SetUp() override
    {
        m_previousDataHome = qgetenv("XDG_DATA_HOME");
        // A folder that does not exist yet: the list's folder is made on first use.
        qputenv("XDG_DATA_HOME", m_folder.filePath("share").toLocal8Bit());
        m_document = m_folder.filePath("my talk.txt");
        write(m_document, "a few words\n");
    }
    void TearDown() override { qputenv("XDG_DATA_HOME", m_previousDataHome); }

    QString bookmarkOf(const QString& file) const
    {
        return "/xbel/bookmark[@href='" + QString::fromUtf8(QUrl::fromLocalFile(file).toEncoded()) +
               "']";
    }

    QTemporaryDir m_folder;
    QByteArray m_previousDataHome;
    QString m_document;
};

TEST_F(RecentDocumentsTest, FirstUseWritesAFreedesktopListAndAnotherUseRefreshesIt)
{
    const QString list = m_folder.filePath("share/recently-used.xbel");
    EXPECT_EQ(RecentDocuments::listPath(), list);
    const QDateTime before = QDateTime::currentDateTimeUtc().addSecs(-1);

    // An empty list file is started afresh.
    write(list, "");
    ASSERT_TRUE(RecentDocuments::add(m_document));

    ASSERT_TRUE(wellFormed(list));
    EXPECT_EQ(xpath(list, "count(/xbel/bookmark)"), "1");
    EXPECT_EQ(xpath(list, "string(/xbel/bookmark/@href)"),
              "file://" + m_folder.path() + "/my%20talk.txt");
    const QString entry = bookmarkOf(m_document);
    for (const char* attribute : {"added", "modified", "visited"}) {
        const QDateTime stamp = QDateTime::fromString(
            xpath(list, "string(" + entry + "/@" + attribute + ")"), Qt::ISODateWithMs);
        ASSERT_TRUE(stamp.isValid()) << attribute;
        EXPECT_EQ(stamp.timeSpec(), Qt::UTC) << attribute;
        EXPECT_GE(stamp, before) << attribute;
    }
    EXPECT_EQ(xpath(list, "string(" + entry +
                              "/info/metadata[@owner='http://freedesktop.org']/*[local-name()="
                              "'mime-type' and namespace-uri()='http://www.freedesktop.org/"
                              "standards/shared-mime-info']/@type)"),
              "text/plain");
    EXPECT_EQ(xpath(list, "string(" + applicationPath + "/@name)"), "Hushpane");
    EXPECT_EQ(xpath(list, "string(" + applicationPath + "/@exec)"), "hushpane %u");
    EXPECT_EQ(xpath(list, "string(" + applicationPath + "/@count)"), "1");

    const QString added = xpath(list, "string(/xbel/bookmark/@added)");
    ASSERT_TRUE(RecentDocuments::add(m_document));
    ASSERT_TRUE(wellFormed(list));
    EXPECT_EQ(xpath(list, "count(/xbel/bookmark)"), "1");
    EXPECT_EQ(xpath(list, "count(" + applicationPath + ")"), "1");
    EXPECT_EQ(xpath(list, "string(" + applicationPath + "/@count)"), "2");
    EXPECT_EQ(xpath(list, "string(/xbel/bookmark/@added)"), added);
}

TEST_F(RecentDocumentsTest, EntriesOfOtherApplicationsStay)
{
    const QString list = RecentDocuments::listPath();
    write(list, R"(<?xml version="1.0" encoding="UTF-8"?>
<xbel version="1.0"
      xmlns:bookmark="http://www.freedesktop.org/standards/desktop-bookmarks"
      xmlns:mime="http://www.freedesktop.org/standards/shared-mime-info">
  <bookmark href="file:///srv/letters/letter.odt" added="2023-05-01T08:00:00.000000Z">
    <title>Letter</title>
    <info>
      <metadata owner="http://freedesktop.org">
        <mime:mime-type type="application/vnd.oasis.opendocument.text"/>
        <bookmark:groups><bookmark:group>Office</bookmark:group></bookmark:groups>
        <bookmark:applications>
          <bookmark:application name="LibreOffice" exec="&apos;soffice %u&apos;" count="3"/>
        </bookmark:applications>
      </metadata>
    </info>
  </bookmark>
  <bookmark href=")" +
                    QUrl::fromLocalFile(m_document).toEncoded() +
                    R"(" added="2023-06-01T09:00:00.000000Z" modified="2023-06-01T09:00:00.000000Z">
    <info>
      <metadata owner="http://freedesktop.org">
        <mime:mime-type type="text/plain"/>
        <bookmark:applications>
          <bookmark:application name="Text Editor" exec="&apos;gedit %u&apos;" count="1"/>
        </bookmark:applications>
      </metadata>
    </info>
  </bookmark>
</xbel>
)");
    ASSERT_TRUE(RecentDocuments::add(m_document));

    ASSERT_TRUE(wellFormed(list));
    EXPECT_EQ(xpath(list, "count(/xbel/bookmark)"), "2");
    const QString letter = "/xbel/bookmark[@href='file:///srv/letters/letter.odt']";
    const std::pair<QString, QString> letterKeeps[] = {
        {"/title", "Letter"},
        {"/@added", "2023-05-01T08:00:00.000000Z"},
        {"//*[local-name()='group']", "Office"},
        {"//*[local-name()='application']/@exec", "'soffice %u'"},
        {"//*[local-name()='application']/@count", "3"},
    };
    for (const auto& [path, value] : letterKeeps)
        EXPECT_EQ(xpath(list, "string(" + letter + path + ")"), value) << path.toStdString();
    const QString entry = bookmarkOf(m_document);
    EXPECT_EQ(xpath(list, "string(" + entry + "/@added)"), "2023-06-01T09:00:00.000000Z");
    EXPECT_NE(xpath(list, "string(" + entry + "/@modified)"), "2023-06-01T09:00:00.000000Z");
    EXPECT_EQ(xpath(list, "count(" + entry + "//*[local-name()='mime-type'])"), "1");
    for (const char* name : {"Text Editor", "Hushpane"}) {
        EXPECT_EQ(xpath(list, "string(" + entry + "//*[local-name()='application'][@name='" + name +
                                  "']/@count)"),
                  "1")
            << name;
    }
}

TEST_F(RecentDocumentsTest, AListThatIsNotXbelIsLeftAlone)
{
    const QString list = RecentDocuments::listPath();
    const QByteArray cases[] = {
        "<?xml version=\"1.0\"?>\n<xbel version=\"1.0\">\n  <bookmark href=\"file:///a\"",
        "<?xml version=\"1.0\"?>\n<html><body/></html>\n",
        "not xml at all",
    };
    for (const QByteArray& damaged : cases) {
        write(list, damaged);
        EXPECT_FALSE(RecentDocuments::add(m_document)) << damaged.constData();
        EXPECT_EQ(contents(list), damaged);
    }
}

} // namespace
