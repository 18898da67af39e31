#include <platform/linux/wayland/fields/FieldState.h>

#include <string_view>

namespace tulvane {

namespace {

constexpr auto spaces = " \n\t";

/// How long the last word is, with the white space after it.
std::size_t lastWord(std::string_view text)
{
    const std::size_t end = text.find_last_not_of(spaces);
    const std::size_t before = end == text.npos ? text.npos : text.find_last_of(spaces, end);
    return before == text.npos ? text.size() : text.size() - before - 1;
}

std::string_view viewOf(const QByteArray& bytes)
{
    return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
}

} // namespace

bool TextAround::canTell(const QByteArray& text)
{
    const std::string_view all = viewOf(text);
    const std::size_t lineBreak = all.find_last_of('\n');
    return lineBreak == all.npos || all.find_first_not_of(spaces, lineBreak) != all.npos;
}

bool TextAround::hasTaken(const QByteArray& taken, const TextAround& before) const
{
    if (*this == before || taken.isEmpty())
        return false;
    const QByteArray shown = beforeCursor();
    if (shown.endsWith(taken))
        return true;
    // The user may have gone on typing meanwhile.
    if (text.count(taken) > before.text.count(taken))
        return true;
    return taken.endsWith(shown) && viewOf(shown).size() >= lastWord(viewOf(taken));
}

bool FieldState::isForPasswords() const
{
    return purpose == static_cast<std::uint32_t>(Purpose::password) ||
           purpose == static_cast<std::uint32_t>(Purpose::pin) || has(Hint::hidden) || has(Hint::sensitive);
}

} // namespace tulvane
