#include "BatchItem.h"
#include "Fixtures.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMap>
#include <QMimeDatabase>
#include <QTemporaryDir>
#include <QXmlStreamReader>
#include <gtest/gtest.h>

// What `cmake --install` puts under a prefix, checked the way a desktop will read it.

namespace {

const QString appId = QStringLiteral(HUSHPANE_APP_ID);

QMap<QString, QString> desktopEntry(const QString& path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly | QIODevice::Text)) << path.toStdString();
    QMap<QString, QString> keys;
    bool inEntry = false;
    for (const QString& line : QString::fromUtf8(file.readAll()).split('\n')) {
        if (line.startsWith('['))
            inEntry = line == QLatin1String("[Desktop Entry]");
        else if (inEntry && line.contains('='))
            keys.insert(line.section('=', 0, 0), line.section('=', 1));
    }
    return keys;
}

class InstalledFilesTest : public testing::Test {
protected:
    static void SetUpTestSuite()
    {
        s_prefix = new QTemporaryDir;
        const auto install =
            Fixtures::run("cmake", {"--install", HUSHPANE_BUILD_DIR, "--prefix", s_prefix->path()});
        ASSERT_EQ(install.exitCode, 0) << install.standardError.toStdString();
    }
    static void TearDownTestSuite() { delete s_prefix; }

    static QString installed(const QString& relative) { return s_prefix->filePath(relative); }
    static QString desktopFile() { return installed("share/applications/" + appId + ".desktop"); }
    static QString metainfoFile() { return installed("share/metainfo/" + appId + ".metainfo.xml"); }

    static QTemporaryDir* s_prefix;
};

QTemporaryDir* InstalledFilesTest::s_prefix = nullptr;

} // namespace

TEST_F(InstalledFilesTest, theDesktopFindsProgramEntryIconAndMetadata)
{
    EXPECT_TRUE(QFileInfo(installed("bin/hushpane")).isExecutable());
    QFile icon(installed("share/icons/hicolor/scalable/apps/" + appId + ".svg"));
    ASSERT_TRUE(icon.open(QIODevice::ReadOnly));
    QXmlStreamReader svg(&icon);
    svg.readNextStartElement();
    EXPECT_EQ(svg.name(), QLatin1String("svg"));

    const QMap<QString, QString> entry = desktopEntry(desktopFile());
    EXPECT_EQ(entry.value("Exec"), "hushpane %F");
    EXPECT_EQ(entry.value("Icon"), appId);
    EXPECT_EQ(entry.value("Terminal"), "false");
    EXPECT_EQ(entry.value("Categories"), "AudioVideo;Audio;Video;AudioVideoEditing;");

    QFile file(metainfoFile());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    QXmlStreamReader xml(&file);
    QMap<QString, QString> found;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (xml.name() == QLatin1String("release"))
            found.insert("release", xml.attributes().value("version").toString());
        else if (xml.name() == QLatin1String("id") || xml.name() == QLatin1String("launchable") ||
                 xml.name() == QLatin1String("binary"))
            found.insert(xml.name().toString(), xml.readElementText());
    }
    EXPECT_EQ(found.value("id"), appId);
    EXPECT_EQ(found.value("launchable"), appId + ".desktop");
    EXPECT_EQ(found.value("binary"), "hushpane");
    EXPECT_EQ(found.value("release"), HUSHPANE_VERSION);
}

TEST_F(InstalledFilesTest, theDesktopValidatorsAcceptTheFiles)
{
    const struct {
        const char* program;
        QStringList arguments;
    } validators[] = {
        {"desktop-file-validate", {desktopFile()}},
        {"appstreamcli", {"validate", "--no-net", "--pedantic", metainfoFile()}},
    };
    for (const auto& v : validators) {
        const auto result = Fixtures::run(v.program, v.arguments);
        EXPECT_EQ(result.exitCode, 0) << v.program << ": " << result.standardOutput.toStdString()
                                      << result.standardError.toStdString();
        // desktop-file-validate exits 0 on warnings, so its silence is the pass.
        const bool warnsOnly = QLatin1String(v.program) == QLatin1String("desktop-file-validate");
        EXPECT_TRUE(!warnsOnly || result.standardOutput.trimmed().isEmpty())
            << result.standardOutput.toStdString();
    }
}

TEST_F(InstalledFilesTest, theEntryOffersToOpenEverySupportedExtension)
{
    const QStringList offered =
        desktopEntry(desktopFile()).value("MimeType").split(';', Qt::SkipEmptyParts);
    // Core Audio files have no type in the desktop's MIME database yet; this is the name in use.
    const QMap<QString, QString> unknownToTheDatabase = {{"caf", "audio/x-caf"}};
    const QMimeDatabase database;
    for (const QString& extension : supportedExtensions()) {
        const QMimeType type =
            database.mimeTypeForFile("a." + extension, QMimeDatabase::MatchExtension);
        QStringList names = type.isDefault() ? QStringList{unknownToTheDatabase.value(extension)}
                                             : type.aliases() << type.name();
        names.removeAll(QString());
        bool listed = false;
        for (const QString& name : names)
            listed = listed || offered.contains(name);
        EXPECT_TRUE(listed) << extension.toStdString() << " (" << names.join(' ').toStdString()
                            << ")";
    }
}
