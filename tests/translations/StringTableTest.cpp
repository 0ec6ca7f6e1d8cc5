#include <QDirIterator>
#include <QFile>
#include <QMap>
#include <QRegularExpression>
#include <QSet>
#include <QXmlStreamReader>
#include <gtest/gtest.h>

// Every key the code looks up is in both string tables, and every key in a table is one the
// code looks up. Keys are found by reading the sources: the first argument of each
// qtTrId/localized/localizedCount call, a literal or both sides of a ?: choice, or, for a
// plain variable, the literals assigned to that variable in its file.

namespace {

const QString sourceRoot = QStringLiteral(HUSHPANE_SOURCE_DIR);

// Keys put together at run time, by the only files allowed to do so.
const QMap<QString, QStringList> runTimeKeys = {
    {"src/engine/core/Sensitivity.cpp",
     {"sensitivity.delicate", "sensitivity.delicate.hint", "sensitivity.standard",
      "sensitivity.standard.hint", "sensitivity.aggressive", "sensitivity.aggressive.hint",
      "sensitivity.custom", "sensitivity.custom.hint"}},
};

// Where the lookup functions are defined rather than called.
const QStringList definitions = {"src/engine/text/Localization.h",
                                 "src/engine/text/Localization.cpp"};

// The code with comments blanked out; string and character literals are kept, so a "//" in
// a string stays.
QString withoutComments(const QString& code)
{
    static const QRegularExpression piece(
        QStringLiteral(R"(("(?:[^"\\\n]|\\.)*"|'(?:[^'\\\n]|\\.)*')|//[^\n]*|/\*[\s\S]*?\*/)"));
    QString out;
    qsizetype done = 0;
    for (auto pieces = piece.globalMatch(code); pieces.hasNext();) {
        const QRegularExpressionMatch match = pieces.next();
        out += code.mid(done, match.capturedStart() - done);
        out += match.capturedLength(1) > 0 ? match.captured(1) : QStringLiteral(" ");
        done = match.capturedEnd();
    }
    return out + code.mid(done);
}

struct Scan {
    QSet<QString> keys;
    QSet<QString> countKeys; // looked up with a count, so plural forms
    QSet<QString> filesWithRunTimeKeys;
};

Scan scanSources()
{
    static const QRegularExpression call(
        QStringLiteral("\\b(qtTrId|localized|localizedCount)\\s*\\("));
    // The first argument: a key, a choice between two keys, or a variable holding a key.
    static const QRegularExpression argument(QStringLiteral(
        R"re(\s*(?:"([^"]+)"|[^()"]*\?\s*"([^"]+)"\s*:\s*"([^"]+)"|(\w+))\s*[,)])re"));
    Scan scan;
    QDirIterator files(sourceRoot + "/src", {"*.cpp", "*.h"}, QDir::Files,
                       QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString path = files.next();
        const QString relative = path.mid(sourceRoot.size() + 1);
        if (definitions.contains(relative))
            continue;
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
        const QString code = withoutComments(QString::fromUtf8(file.readAll()));
        for (auto calls = call.globalMatch(code); calls.hasNext();) {
            const QRegularExpressionMatch match = calls.next();
            const QRegularExpressionMatch first =
                argument.match(code, match.capturedEnd(), QRegularExpression::NormalMatch,
                               QRegularExpression::AnchorAtOffsetMatchOption);
            QStringList found = {first.captured(1), first.captured(2), first.captured(3)};
            found.removeAll(QString());
            if (const QString variable = first.captured(4); !variable.isEmpty()) {
                const QRegularExpression assigned("\\b" + variable + "\\s*=\\s*\"([^\"]+)\"");
                for (auto values = assigned.globalMatch(code); values.hasNext();)
                    found << values.next().captured(1);
            }
            // Anything else is put together at run time.
            if (found.isEmpty()) {
                scan.filesWithRunTimeKeys.insert(relative);
                continue;
            }
            for (const QString& key : found) {
                scan.keys.insert(key);
                if (match.captured(1) == QLatin1String("localizedCount"))
                    scan.countKeys.insert(key);
            }
        }
    }
    for (const QStringList& keys : runTimeKeys)
        for (const QString& key : keys)
            scan.keys.insert(key);
    return scan;
}

struct Message {
    bool numerus = false;
    QString source;
    QStringList translations; // one, or the plural forms
    bool unfinished = false;
};

struct Table {
    QString language;
    QMap<QString, Message> messages;
};

Table readTable(const QString& name)
{
    QFile file(sourceRoot + "/translations/" + name);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
    QXmlStreamReader xml(&file);
    Table table;
    QString id;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (xml.name() == QLatin1String("TS")) {
            table.language = xml.attributes().value("language").toString();
        } else if (xml.name() == QLatin1String("message")) {
            id = xml.attributes().value("id").toString();
            EXPECT_FALSE(table.messages.contains(id))
                << "twice in " << name.toStdString() << ": " << id.toStdString();
            table.messages[id].numerus = xml.attributes().value("numerus") == QLatin1String("yes");
        } else if (xml.name() == QLatin1String("source")) {
            table.messages[id].source = xml.readElementText();
        } else if (xml.name() == QLatin1String("translation")) {
            Message& message = table.messages[id];
            message.unfinished = xml.attributes().hasAttribute("type");
            if (!message.numerus)
                message.translations << xml.readElementText();
        } else if (xml.name() == QLatin1String("numerusform")) {
            table.messages[id].translations << xml.readElementText();
        }
    }
    EXPECT_FALSE(xml.hasError()) << name.toStdString() << ": " << xml.errorString().toStdString();
    return table;
}

QSet<QString> placeholders(const QString& text)
{
    static const QRegularExpression marker(QStringLiteral("%(\\d|n)"));
    QSet<QString> found;
    for (auto matches = marker.globalMatch(text); matches.hasNext();)
        found.insert(matches.next().captured(0));
    return found;
}

QString listed(QStringList keys)
{
    keys.sort();
    return keys.join(", ");
}

class StringTableTest : public testing::Test {
protected:
    static void SetUpTestSuite()
    {
        s_scan = new Scan(scanSources());
        s_english = new Table(readTable("hushpane_en.ts"));
        s_german = new Table(readTable("hushpane_de.ts"));
    }
    static void TearDownTestSuite()
    {
        delete s_scan;
        delete s_english;
        delete s_german;
    }

    static Scan* s_scan;
    static Table* s_english;
    static Table* s_german;
};

Scan* StringTableTest::s_scan = nullptr;
Table* StringTableTest::s_english = nullptr;
Table* StringTableTest::s_german = nullptr;

} // namespace

TEST_F(StringTableTest, bothTablesHoldExactlyTheKeysTheCodeUses)
{
    EXPECT_EQ(listed(s_scan->filesWithRunTimeKeys.values()), listed(runTimeKeys.keys()))
        << "a key built at run time must be listed in this test with the keys it can make";
    for (const Table* table : {s_english, s_german}) {
        QStringList missing;
        for (const QString& key : s_scan->keys) {
            if (!table->messages.contains(key))
                missing << key;
        }
        QStringList unused;
        for (const QString& key : table->messages.keys()) {
            if (!s_scan->keys.contains(key))
                unused << key;
        }
        EXPECT_TRUE(missing.isEmpty())
            << table->language.toStdString() << " lacks " << listed(missing).toStdString();
        EXPECT_TRUE(unused.isEmpty())
            << table->language.toStdString() << " holds unused " << listed(unused).toStdString();
    }
}

TEST_F(StringTableTest, everyTextIsFinishedWithItsPluralFormsAndPlaceholders)
{
    EXPECT_EQ(s_german->language, QStringLiteral("de_DE"));
    for (const Table* table : {s_english, s_german}) {
        for (auto it = table->messages.cbegin(); it != table->messages.cend(); ++it) {
            const std::string where = table->language.toStdString() + " " + it.key().toStdString();
            const Message& english = s_english->messages.value(it.key());
            const bool counted = s_scan->countKeys.contains(it.key());
            EXPECT_EQ(it->numerus, counted) << where;
            // English and German both have a singular and one plural form.
            EXPECT_EQ(it->translations.size(), counted ? 2 : 1) << where;
            EXPECT_EQ(it->source, english.source) << where;
            EXPECT_FALSE(it->unfinished) << where;
            for (const QString& form : it->translations) {
                EXPECT_FALSE(form.trimmed().isEmpty()) << where;
                EXPECT_TRUE(!counted || form.contains("%n")) << where;
                EXPECT_EQ(placeholders(form), placeholders(english.source))
                    << where << ": " << form.toStdString();
            }
        }
    }
}

TEST_F(StringTableTest, fileMenuItemsHaveDistinctAccessKeysInEachLanguage)
{
    const char* items[] = {"menu.open", "menu.openFolder", "menu.save", "menu.saveCutList",
                           "menu.quit"};
    for (const Table* table : {s_english, s_german}) {
        QSet<QChar> keys;
        for (const char* item : items) {
            const QString text = table->messages.value(item).translations.value(0);
            const qsizetype amp = text.indexOf('&');
            ASSERT_GE(amp, 0) << item;
            ASSERT_LT(amp + 1, text.size()) << item;
            const QChar key = text[amp + 1].toLower();
            EXPECT_FALSE(keys.contains(key))
                << table->language.toStdString() << ": " << item << " repeats &" << key.toLatin1();
            keys.insert(key);
        }
    }
}
