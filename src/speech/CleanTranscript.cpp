#include <speech/CleanTranscript.h>

#include <QRegularExpression>
#include <QTextBoundaryFinder>

#include <algorithm>
#include <array>
#include <vector>

namespace tulvane {

namespace {

/// A noise pattern, and the character that each of its matches ends with. Beyond the last such character
/// nothing can match, and looking for a match there from every opening one would take quadratic time.
struct NoisePattern {
    QRegularExpression expression;
    QChar closing;
};

std::vector<NoisePattern> compileNoisePatterns()
{
    const std::array<NoisePattern, 4> candidates = {{
        {QRegularExpression(QStringLiteral(R"(\[[^\]]*\])")), u']'},
        {QRegularExpression(QStringLiteral(R"(<\|[^|]*\|>)")), u'>'},
        {QRegularExpression(QStringLiteral("♪+")), u'♪'},
        {QRegularExpression(QStringLiteral(R"(\((?:musikk|music|latter|laughter|applaus|applause|)"
                                           R"(utydelig|inaudible|stillhet|silence)\))")),
         u')'},
    }};
    std::vector<NoisePattern> patterns;
    for (NoisePattern pattern : candidates) {
        pattern.expression.setPatternOptions(QRegularExpression::CaseInsensitiveOption |
                                             QRegularExpression::UseUnicodePropertiesOption);
        if (pattern.expression.isValid())
            patterns.push_back(pattern);
    }
    return patterns;
}

const std::vector<NoisePattern>& noisePatterns()
{
    static const std::vector<NoisePattern> patterns = compileNoisePatterns();
    return patterns;
}

/// The expression library refuses text that is not well-formed UTF-16.
void replaceLoneSurrogates(QString& text)
{
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (!text.at(i).isSurrogate())
            continue;
        const bool pair =
            text.at(i).isHighSurrogate() && i + 1 < text.size() && text.at(i + 1).isLowSurrogate();
        if (pair)
            ++i;
        else
            text[i] = QChar::ReplacementCharacter;
    }
}

void removeNoise(QString& text, const NoisePattern& pattern)
{
    const qsizetype end = text.lastIndexOf(pattern.closing) + 1;
    if (end == 0)
        return;
    QString head = text.first(end);
    head.remove(pattern.expression);
    if (head.size() != end)
        text = head + QStringView(text).sliced(end);
}

void normaliseSpacing(QString& text)
{
    // A lone space is its own replacement; leaving it out of "[ \t]+" spares a match for every word.
    static const QRegularExpression spaces(QStringLiteral("\t[ \t]*| [ \t]+"));
    static const QRegularExpression lineBreaks(QStringLiteral(" *\n+ *"));
    text.replace(spaces, QStringLiteral(" "));
    text.replace(lineBreaks, QStringLiteral("\n"));
}

char32_t firstScalar(const QString& text)
{
    if (text.size() > 1 && text.at(0).isHighSurrogate())
        return QChar::surrogateToUcs4(text.at(0), text.at(1));
    return text.at(0).unicode();
}

/// UTF-16 units in the first character as a reader sees it, combining marks included. Only as much of the
/// text is analysed as that takes.
qsizetype firstCharacterLength(const QString& text)
{
    for (qsizetype length = 32;; length *= 2) {
        const QString head = text.first(std::min(length, text.size()));
        const qsizetype end = QTextBoundaryFinder(QTextBoundaryFinder::Grapheme, head).toNextBoundary();
        // A boundary right at the cut, or one unit before it, may be the cut's doing.
        if (head.size() == text.size() || end < head.size() - 1)
            return end;
    }
}

void capitalise(QString& text)
{
    if (QChar::category(firstScalar(text)) != QChar::Letter_Lowercase)
        return;
    const qsizetype length = firstCharacterLength(text);
    text = text.first(length).toUpper() + QStringView(text).sliced(length);
}

/// A line break is a character of its own (a carriage return with its line feed is all line break), so the
/// last unit decides the whole last character.
bool endsWithLineBreak(const QString& text)
{
    const char16_t last = text.back().unicode();
    return (last >= u'\n' && last <= u'\r') || last == 0x85 || last == 0x2028 || last == 0x2029;
}

} // namespace

QString cleanTranscript(const QString& text, CleanupOptions options)
{
    QString cleaned = text;
    replaceLoneSurrogates(cleaned);
    for (const NoisePattern& pattern : noisePatterns())
        removeNoise(cleaned, pattern);
    normaliseSpacing(cleaned);
    cleaned = cleaned.trimmed(); // by the White_Space property, line breaks included
    if (cleaned.isEmpty())
        return {};
    if (options.autoCapitalize)
        capitalise(cleaned);
    if (options.appendTrailingSpace && !endsWithLineBreak(cleaned))
        cleaned += u' ';
    return cleaned;
}

} // namespace tulvane
