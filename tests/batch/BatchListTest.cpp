#include "BatchModel.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

// A folder with media, other files, a hidden file, a sub-folder and a folder named like a
// movie, all empty: listing reads names only.
class BatchList : public testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_root.isValid());
        for (const char* folder : {"talks", "talks/sub", "talks/bundle.mov", "other"})
            ASSERT_TRUE(QDir(m_root.path()).mkpath(folder));
        for (const char* file :
             {"talks/one.mp4", "talks/two.MOV", "talks/notes.txt", "talks/.hidden.m4a",
              "talks/noext", "talks/sub/inner.mp4", "other/direct.wav", "other/clip.mkv"}) {
            QFile f(path(file));
            ASSERT_TRUE(f.open(QIODevice::WriteOnly)) << file;
        }
    }

    QString path(const QString& relative) const { return QDir(m_root.path()).filePath(relative); }
    QUrl url(const QString& relative) const { return QUrl::fromLocalFile(path(relative)); }

    QStringList listed(const QList<QString>& given)
    {
        QList<QUrl> locations;
        for (const QString& relative : given)
            locations.append(url(relative));
        m_model.setItems(locations);
        QStringList names;
        for (const BatchItem& item : m_model.items())
            names.append(QDir(m_root.path()).relativeFilePath(item.url.toLocalFile()));
        return names;
    }

    QTemporaryDir m_root;
    BatchModel m_model;
};

} // namespace

TEST_F(BatchList, foldersExpandOneLevelToSupportedEntries)
{
    struct Row {
        const char* what;
        QList<QString> given;
        QStringList expected;
        bool ordered;
    };
    const QStringList talks = {"talks/one.mp4", "talks/two.MOV", "talks/.hidden.m4a",
                               "talks/bundle.mov"};
    const Row rows[] = {
        {"folder: hidden file and movie-named folder in, text, no extension and sub-folder out",
         {"talks"},
         talks,
         false},
        {"a folder given directly is listed", {"talks/sub"}, {"talks/sub/inner.mp4"}, true},
        {"files as given, unsupported and missing dropped",
         {"other/clip.mkv", "other/direct.wav", "missing.mp4", "talks/notes.txt"},
         {"other/direct.wav"},
         true},
        {"the same file twice is listed once",
         {"other/direct.wav", "other/direct.wav"},
         {"other/direct.wav"},
         true},
        {"nothing given empties the list", {}, {}, true},
        {"only missing paths", {"gone", "gone.mp4"}, {}, true},
    };
    // Every list starts its items waiting, each with an identity of its own.
    QSet<QUuid> ids;
    qsizetype itemCount = 0;
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        QStringList names = listed(row.given);
        QStringList expected = row.expected;
        if (!row.ordered) {
            names.sort();
            expected.sort();
        }
        EXPECT_EQ(names, expected);
        for (const BatchItem& item : m_model.items()) {
            EXPECT_TRUE(std::holds_alternative<BatchItem::Waiting>(item.status));
            ids.insert(item.id);
        }
        itemCount += m_model.items().size();
    }
    EXPECT_EQ(ids.size(), itemCount);
}

TEST_F(BatchList, aFileGivenDirectlyAndThroughItsFolderIsListedOnceAtItsFirstPlace)
{
    const QStringList direct = listed({"talks/two.MOV", "talks", "other/direct.wav"});
    ASSERT_EQ(direct.size(), 5);
    EXPECT_EQ(direct.first(), "talks/two.MOV");
    EXPECT_EQ(direct.count("talks/two.MOV"), 1);
    EXPECT_EQ(direct.last(), "other/direct.wav");

    const QStringList viaFolder = listed({"talks", "talks/one.mp4"});
    EXPECT_EQ(viaFolder.size(), 4);
    EXPECT_EQ(viaFolder.count("talks/one.mp4"), 1);
    EXPECT_NE(viaFolder.last(), "talks/one.mp4");
}

TEST(BatchSettings, presetsGiveTheirNumbersCustomRunsAsStandardAndAllReencode)
{
    struct Row {
        Sensitivity sensitivity;
        TidleSettings expected;
    };
    for (const Row& row : {Row{Sensitivity::delicate, {-45.0, 1.0, 0.25, true}},
                           Row{Sensitivity::standard, {-35.0, 0.6, 0.15, true}},
                           Row{Sensitivity::aggressive, {-30.0, 0.4, 0.1, true}},
                           Row{Sensitivity::custom, {-35.0, 0.6, 0.15, true}}})
        EXPECT_EQ(BatchModel::runSettings(row.sensitivity), row.expected)
            << SensitivityPresets::rawValue(row.sensitivity).toStdString();
}

TEST(BatchSummary, countsFilesDoneAndNotWrittenJoinedByMiddleDots)
{
    const auto item = [](BatchItem::Status status) {
        return BatchItem{QUuid::createUuid(), QUrl::fromLocalFile("/x/a.mp4"), status};
    };
    const BatchItem done = item(BatchItem::Done{0.25, QUrl::fromLocalFile("/x/b.m4a")});
    const BatchItem skipped = item(BatchItem::Skipped{"No pauses to remove"});
    const BatchItem failed = item(BatchItem::Failed{"Stopped"});
    const BatchItem waiting = item(BatchItem::Waiting{});
    const BatchItem encoding = item(BatchItem::Encoding{0.5});
    const BatchItem analyzing = item(BatchItem::Analyzing{});

    struct Row {
        QList<BatchItem> items;
        QString expected;
    };
    const Row rows[] = {
        {{done, skipped, failed, waiting, done}, "5 files · 2 done · 2 skipped"},
        {{}, "0 files"},
        {{waiting}, "1 file"},
        {{waiting, analyzing, encoding}, "3 files"},
        {{done}, "1 file · 1 done"},
        {{failed, waiting}, "2 files · 1 skipped"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(BatchModel::summarize(row.items), row.expected);
}
