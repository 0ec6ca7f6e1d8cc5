#include "Ellipsize.h"

#include <gtest/gtest.h>

namespace {

QString repeated(const QString& unit, int times)
{
    QString text;
    for (int i = 0; i < times; ++i)
        text += unit;
    return text;
}

const QString ellipsis = QString(QChar(0x2026));

} // namespace

TEST(Ellipsize, cutsAfterEightyUserPerceivedCharacters)
{
    const QString family = QString::fromUtf8("\U0001F468\u200D\U0001F469\u200D\U0001F467");
    const QString accented = QString::fromUtf8("e\u0301");
    const QString thumb = QString::fromUtf8("\U0001F44D\U0001F3FD");
    struct Row {
        const char* what;
        QString text;
        QString expected;
    };
    const Row rows[] = {
        {"empty", "", ""},
        {"exactly 80 stays", repeated("a", 80), repeated("a", 80)},
        {"81 is cut", repeated("a", 81), repeated("a", 80) + ellipsis},
        {"80 emoji sequences stay", repeated(family, 80), repeated(family, 80)},
        {"81 emoji sequences are cut whole", repeated(family, 81), repeated(family, 80) + ellipsis},
        {"combining marks count with their letter", repeated(accented, 81),
         repeated(accented, 80) + ellipsis},
        {"a cluster at the edge is kept whole", repeated("a", 79) + thumb + "b",
         repeated("a", 79) + thumb + ellipsis},
    };
    for (const Row& row : rows)
        EXPECT_EQ(ellipsize(row.text, 80), row.expected) << row.what;
}
