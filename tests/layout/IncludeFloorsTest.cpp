#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QHash>
#include <QRegularExpression>
#include <gtest/gtest.h>

// The source folders are floors: a file includes the headers of its own folder and of the
// floors below it, never of a floor above or of a neighbour on its own floor. Headers are
// included by bare name, so the folder a name lives in decides.

namespace {

const QString sourceRoot = QStringLiteral(HUSHPANE_SOURCE_DIR);

// Lowest first. Folders sharing a floor (document and batch, say) know nothing of each other.
const QList<QPair<QString, int>> floors = {
    {"src/engine/text", 0},     {"src/engine/core", 1},   {"src/engine/media", 2},
    {"src/engine/analysis", 3}, {"src/engine/export", 3}, {"src/engine/interchange", 3},
    {"src/engine", 4},          {"src/services", 5},      {"src/document", 6},
    {"src/batch", 6},           {"src/ui/theme", 7},      {"src/ui/widgets", 8},
    {"src/ui/desktop", 8},      {"src/ui/timeline", 9},   {"src/ui/screens", 10},
    {"src/ui/app", 11},         {"src/app", 12},
};

QString folderOf(const QString& file)
{
    return QDir(sourceRoot).relativeFilePath(QFileInfo(file).absolutePath());
}

TEST(IncludeFloors, noFileIncludesFromAFloorAboveOrBeside)
{
    QHash<QString, int> floorOf;
    for (const auto& [folder, floor] : floors)
        floorOf.insert(folder, floor);

    QHash<QString, QString> headerFolder;
    QStringList files;
    for (QDirIterator it(sourceRoot + "/src", {"*.h", "*.cpp"}, QDir::Files,
                         QDirIterator::Subdirectories);
         it.hasNext();) {
        const QString file = it.next();
        files << file;
        ASSERT_TRUE(floorOf.contains(folderOf(file)))
            << qPrintable(folderOf(file)) << " has no floor in this test";
        if (file.endsWith(".h"))
            headerFolder.insert(QFileInfo(file).fileName(), folderOf(file));
    }
    ASSERT_GT(files.size(), 100);

    static const QRegularExpression include(QStringLiteral(R"re(^#include "([^"]+)")re"),
                                            QRegularExpression::MultilineOption);
    for (const QString& file : files) {
        QFile source(file);
        ASSERT_TRUE(source.open(QIODevice::ReadOnly));
        const QString code = QString::fromUtf8(source.readAll());
        const QString from = folderOf(file);
        for (auto matches = include.globalMatch(code); matches.hasNext();) {
            const QString header = matches.next().captured(1);
            const QString to = headerFolder.value(header);
            if (to.isEmpty() || to == from)
                continue;
            EXPECT_LT(floorOf[to], floorOf[from])
                << qPrintable(QDir(sourceRoot).relativeFilePath(file)) << " includes "
                << qPrintable(to + "/" + header);
        }
    }
}

} // namespace
