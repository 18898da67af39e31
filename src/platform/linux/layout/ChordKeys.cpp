#include <platform/linux/layout/ChordKeys.h>

#include <algorithm>
#include <array>
#include <utility>

namespace tulvane {

namespace {

constexpr quint32 leftControl = 29;
constexpr quint32 leftShift = 42;
constexpr quint32 leftAlt = 56;
constexpr quint32 leftSuper = 125;

const VirtualKey* keyNamed(const QString& name)
{
    const auto* const found = std::ranges::find_if(virtualKeys::all, [&](const VirtualKey& key) {
        const bool isNamed =
            key.kind == KeyKind::printing || key.kind == KeyKind::function || key.kind == KeyKind::named;
        return isNamed && name.compare(QString::fromUtf8(key.name), Qt::CaseInsensitive) == 0;
    });
    return found == virtualKeys::all.end() ? nullptr : found;
}

} // namespace

QList<quint32> chordKeysIn(const std::optional<XkbKeymap>& layout, const PasteChord& chord)
{
    const auto typed =
        layout && chord.key.size() == 1 ? layout->keyForKeysym(chord.key.toLower()) : std::nullopt;
    const VirtualKey* const key = typed ? virtualKeys::byCode(*typed) : keyNamed(chord.key);
    if (key == nullptr)
        return {};
    QList<quint32> keys;
    for (const auto& [modifier, code] :
         std::array{std::pair(PasteChord::control, leftControl), std::pair(PasteChord::shift, leftShift),
                    std::pair(PasteChord::alt, leftAlt), std::pair(PasteChord::super, leftSuper)}) {
        if ((chord.modifiers & modifier) != 0)
            keys.append(code);
    }
    keys.append(key->evdev);
    return keys;
}

} // namespace tulvane
