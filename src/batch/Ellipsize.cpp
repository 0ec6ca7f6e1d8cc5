#include "Ellipsize.h"

#include <QTextBoundaryFinder>

QString ellipsize(const QString& text, int maxCharacters)
{
    QTextBoundaryFinder clusters(QTextBoundaryFinder::Grapheme, text);
    int counted = 0;
    qsizetype cut = 0;
    while (counted < maxCharacters) {
        const qsizetype next = clusters.toNextBoundary();
        if (next < 0)
            return text;
        cut = next;
        ++counted;
    }
    if (cut >= text.size())
        return text;
    return text.left(cut) + QChar(0x2026);
}
