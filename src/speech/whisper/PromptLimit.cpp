#include <speech/whisper/PromptLimit.h>

#include <cmath>

namespace tulvane {

namespace {

constexpr int tokensUsed = 224;
constexpr qsizetype longestRun = 1024;

/// The classes by which the library splits words, byte by byte and in the C locale: a byte of a multi-byte
/// sequence is neither letter nor digit nor space.
enum class Class { space, letter, digit, other };

Class classOf(char byte)
{
    if (byte == ' ' || (byte >= '\t' && byte <= '\r'))
        return Class::space;
    if ((byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z'))
        return Class::letter;
    if (byte >= '0' && byte <= '9')
        return Class::digit;
    return Class::other;
}

/// Where the run of one class that ends before `end` begins; a single space before a word belongs to it.
qsizetype wordStart(const QByteArray& text, qsizetype end)
{
    const Class kind = classOf(text[end - 1]);
    qsizetype start = end - 1;
    while (start > 0 && end - start <= longestRun && classOf(text[start - 1]) == kind)
        --start;
    // "'t" and its like are words of their own, but only where nothing else stands before the apostrophe.
    if (kind == Class::letter && start > 0 && text[start - 1] == '\'')
        return wordStart(text, start);
    if (kind != Class::space && start > 0 && text[start - 1] == ' ')
        --start;
    return start;
}

/// The first position from `start` on that does not lie inside a UTF-8 sequence.
qsizetype sequenceStart(const QByteArray& text, qsizetype start)
{
    while (start < text.size() && (static_cast<unsigned char>(text[start]) & 0xC0U) == 0x80U)
        ++start;
    return start;
}

} // namespace

QByteArray limitedPrompt(const QByteArray& prompt)
{
    qsizetype start = prompt.size();
    qsizetype workLeft = longestRun * longestRun;
    for (int words = 0; words < tokensUsed && start > 0; ++words) {
        const qsizetype length = start - wordStart(prompt, start);
        if (length * length > workLeft) {
            const auto affordable = static_cast<qsizetype>(std::sqrt(static_cast<double>(workLeft)));
            return prompt.sliced(sequenceStart(prompt, start - affordable));
        }
        workLeft -= length * length;
        start -= length;
    }
    return prompt.sliced(start);
}

} // namespace tulvane
