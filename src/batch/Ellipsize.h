#pragma once

#include <QString>

// `text` when it has at most `maxCharacters` user-perceived characters (grapheme clusters:
// an emoji with its modifiers or a letter with combining marks counts once); otherwise its
// first `maxCharacters` of them followed by "…".
QString ellipsize(const QString& text, int maxCharacters);
