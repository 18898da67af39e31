#include <platform/linux/atspi/TextChange.h>

#include <algorithm>

namespace tulvane {

namespace {

qsizetype codePoints(const QString& text)
{
    const auto pairs = std::ranges::count_if(text, [](QChar unit) { return unit.isLowSurrogate(); });
    return text.size() - pairs;
}

} // namespace

std::optional<TextUnit> unitOf(const QString& text, int characters)
{
    if (characters == codePoints(text))
        return TextUnit::codePoint;
    return characters == text.size() ? std::optional(TextUnit::utf16) : std::nullopt;
}

int lengthIn(TextUnit unit, const QString& text)
{
    return static_cast<int>(unit == TextUnit::utf16 ? text.size() : codePoints(text));
}

std::optional<qsizetype> indexOf(TextUnit unit, const QString& text, int offset)
{
    if (offset < 0)
        return std::nullopt;
    if (unit == TextUnit::utf16)
        return offset <= text.size() ? std::optional<qsizetype>(offset) : std::nullopt;
    qsizetype index = 0;
    for (int passed = 0; passed < offset; ++passed) {
        if (index >= text.size())
            return std::nullopt;
        index += text.at(index).isHighSurrogate() ? 2 : 1;
    }
    return index;
}

TextChange TextChange::between(const QString& before, const QString& after, qsizetype start, qsizetype end,
                               const QString& inserted)
{
    if (after == before)
        return {Kind::nothing, 0};
    const QStringView head = QStringView(before).left(end);
    const QStringView tail = QStringView(before).mid(end);
    const qsizetype grown = after.size() - before.size();
    if (grown > 0 && after.startsWith(head) && after.endsWith(tail)) {
        const bool isWhole = QStringView(after).mid(end, grown).contains(inserted);
        return {isWhole ? Kind::inserted : Kind::altered, grown};
    }
    if (after == before.left(start) + inserted + tail)
        return {Kind::replaced, 0};
    // Grown by the whole text, nothing can have been cut off to make room for it.
    if (grown >= inserted.size() && after.count(inserted) > before.count(inserted))
        return {Kind::other, 0};
    return {Kind::damaged, 0};
}

} // namespace tulvane
