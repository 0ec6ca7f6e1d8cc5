#include <QDirIterator>
#include <QFile>
#include <QMap>
#include <QRegularExpression>
#include <QSet>
#include <QXmlStreamReader>
#include <gtest/gtest.h>

// Every key the code looks up is in both string tables, and every key in a table is one the
// code looks up. Keys are found by reading the sources: the first argument of each
// qtTrId/localized/localizedCount call, with every key-shaped literal in it (both sides of a
// ?: choice), or, for a plain variable, the literals assigned to that variable in its file.

namespace {

const QString sourceRoot = QStringLiteral(HUSHPANE_SOURCE_DIR);

// Keys put together at run time, by the only files allowed to do so.
const QMap<QString, QStringList> runTimeKeys = {
    {"src/engine/Sensitivity.cpp",
     {"sensitivity.delicate", "sensitivity.delicate.hint", "sensitivity.standard",
      "sensitivity.standard.hint", "sensitivity.aggressive", "sensitivity.aggressive.hint",
      "sensitivity.custom", "sensitivity.custom.hint"}},
};

// Where the lookup functions are defined rather than called.
const QStringList definitions = {"src/engine/Localization.h", "src/engine/Localization.cpp"};

const QRegularExpression keyShape(QStringLiteral("^[A-Za-z][A-Za-z0-9]*(\\.[A-Za-z0-9]+)*$"));
const QRegularExpression literal(QStringLiteral("\"((?:[^\"\\\\]|\\\\.)*)\""));

// The code with comments blanked out; string, character and raw string literals are kept.
QString withoutComments(const QString& code)
{
    QString out;
    out.reserve(code.size());
    for (qsizetype i = 0; i < code.size();) {
        const QChar c = code[i];
        const QChar next = i + 1 < code.size() ? code[i + 1] : QChar();
        if (c == '/' && next == '/') {
            while (i < code.size() && code[i] != '\n')
                ++i;
        } else if (c == '/' && next == '*') {
            const qsizetype end = code.indexOf(QLatin1String("*/"), i + 2);
            i = end < 0 ? code.size() : end + 2;
            out += ' ';
        } else if (c == 'R' && next == '"' && (i == 0 || !code[i - 1].isLetterOrNumber())) {
            const qsizetype open = code.indexOf('(', i);
            const QString close = ')' + code.mid(i + 2, open - i - 2) + '"';
            const qsizetype end = code.indexOf(close, open);
            const qsizetype stop = end < 0 ? code.size() : end + close.size();
            out += code.mid(i, stop - i);
            i = stop;
        } else if (c == '"' || c == '\'') {
            qsizetype j = i + 1;
            while (j < code.size() && code[j] != c) {
                if (code[j] == '\\')
                    ++j;
                ++j;
            }
            out += code.mid(i, j + 1 - i);
            i = j + 1;
        } else {
            out += c;
            ++i;
        }
    }
    return out;
}

// The first argument of the call whose "(" is at `open`.
QString firstArgument(const QString& code, qsizetype open)
{
    int depth = 0;
    for (qsizetype i = open; i < code.size(); ++i) {
        const QChar c = code[i];
        if (c == '"' || c == '\'') {
            for (++i; i < code.size() && code[i] != c; ++i) {
                if (code[i] == '\\')
                    ++i;
            }
        } else if (c == '(') {
            ++depth;
        } else if (c == ')' || (c == ',' && depth == 1)) {
            if (c == ')' && --depth > 0)
                continue;
            return code.mid(open + 1, i - open - 1).trimmed();
        }
    }
    return {};
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
        auto calls = call.globalMatch(code);
        while (calls.hasNext()) {
            const QRegularExpressionMatch match = calls.next();
            const QString argument = firstArgument(code, match.capturedEnd() - 1);
            QStringList found;
            for (auto literals = literal.globalMatch(argument); literals.hasNext();) {
                const QString text = literals.next().captured(1);
                if (keyShape.match(text).hasMatch())
                    found << text;
            }
            if (found.isEmpty() && QRegularExpression("^\\w+$").match(argument).hasMatch()) {
                const QRegularExpression assigned("\\b" + argument + "\\s*=\\s*\"([^\"]+)\"");
                for (auto values = assigned.globalMatch(code); values.hasNext();)
                    found << values.next().captured(1);
            }
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

TEST_F(StringTableTest, onlyTheListedFilesPutKeysTogetherAtRunTime)
{
    QStringList expected = runTimeKeys.keys();
    QStringList found = s_scan->filesWithRunTimeKeys.values();
    EXPECT_EQ(listed(found), listed(expected))
        << "a key built at run time must be listed in this test with the keys it can make";
}

TEST_F(StringTableTest, everyKeyTheCodeUsesIsInBothTables)
{
    for (const Table* table : {s_english, s_german}) {
        QStringList missing;
        for (const QString& key : s_scan->keys) {
            if (!table->messages.contains(key))
                missing << key;
        }
        EXPECT_TRUE(missing.isEmpty())
            << table->language.toStdString() << " lacks " << listed(missing).toStdString();
    }
}

TEST_F(StringTableTest, everyKeyInATableIsUsedByTheCode)
{
    for (const Table* table : {s_english, s_german}) {
        QStringList unused;
        for (const QString& key : table->messages.keys()) {
            if (!s_scan->keys.contains(key))
                unused << key;
        }
        EXPECT_TRUE(unused.isEmpty())
            << table->language.toStdString() << " holds unused " << listed(unused).toStdString();
    }
}

TEST_F(StringTableTest, countedTextsHavePluralFormsAndOthersDoNot)
{
    for (const Table* table : {s_english, s_german}) {
        for (auto it = table->messages.cbegin(); it != table->messages.cend(); ++it) {
            const bool counted = s_scan->countKeys.contains(it.key());
            EXPECT_EQ(it->numerus, counted)
                << table->language.toStdString() << " " << it.key().toStdString();
            // English and German both have a singular and one plural form.
            EXPECT_EQ(it->translations.size(), counted ? 2 : 1) << it.key().toStdString();
            for (const QString& form : it->translations)
                EXPECT_TRUE(!counted || form.contains("%n")) << it.key().toStdString();
        }
    }
}

TEST_F(StringTableTest, germanTranslatesEverythingAndKeepsEveryPlaceholder)
{
    EXPECT_EQ(s_german->language, QStringLiteral("de_DE"));
    for (auto it = s_german->messages.cbegin(); it != s_german->messages.cend(); ++it) {
        const Message& english = s_english->messages.value(it.key());
        EXPECT_EQ(it->source, english.source) << it.key().toStdString();
        EXPECT_FALSE(it->unfinished) << it.key().toStdString();
        for (const QString& form : it->translations) {
            EXPECT_FALSE(form.trimmed().isEmpty()) << it.key().toStdString();
            EXPECT_EQ(placeholders(form), placeholders(english.source))
                << it.key().toStdString() << ": " << form.toStdString();
        }
    }
    for (auto it = s_english->messages.cbegin(); it != s_english->messages.cend(); ++it) {
        for (const QString& form : it->translations)
            EXPECT_EQ(placeholders(form), placeholders(it->source)) << it.key().toStdString();
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
