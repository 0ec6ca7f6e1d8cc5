#include "OutputName.h"

#include <gtest/gtest.h>

TEST(OutputName, theLastExtensionMakesWayForTheSuffixAndTheNewOne)
{
    struct Row {
        const char* input;
        const char* ext;
        const char* expected;
    };
    const Row rows[] = {
        {"/talks/talk.final.mov", "mp4", "talk.final (no pauses).mp4"},
        {"/x/rec.WAV", "m4a", "rec (no pauses).m4a"},
        {"/x/noext", "m4a", "noext (no pauses).m4a"},
        {"/x/.hidden", "m4a", ".hidden (no pauses).m4a"},
        {"/x/.hidden.m4a", "m4a", ".hidden (no pauses).m4a"},
        {"/x/Grüße an alle.mp3", "m4a", "Grüße an alle (no pauses).m4a"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(defaultOutputName(QUrl::fromLocalFile(QString::fromUtf8(row.input)), row.ext),
                  QString::fromUtf8(row.expected));
}
