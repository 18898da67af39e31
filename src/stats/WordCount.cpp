#include <stats/WordCount.h>

#include <QList>
#include <QTextBoundaryFinder>

namespace tulvane {

qint64 countWords(const QString& text)
{
    qint64 words = 0;
    bool counted = false; // whether the piece at hand is a word already
    for (const char32_t character : text.toUcs4()) {
        // Qt's white space is Unicode's White_Space property, line breaks included.
        if (QChar::isSpace(character)) {
            counted = false;
        } else if (!counted && QChar::isLetterOrNumber(character)) {
            counted = true;
            ++words;
        }
    }
    return words;
}

qint64 countCharacters(const QString& text)
{
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text.trimmed());
    qint64 characters = 0;
    while (finder.toNextBoundary() != -1)
        ++characters;
    return characters;
}

} // namespace tulvane
