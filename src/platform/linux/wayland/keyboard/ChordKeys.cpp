#include <platform/linux/wayland/keyboard/ChordKeys.h>
#include <ports/VirtualKeys.h>

#include <algorithm>
#include <array>

namespace tulvane {

namespace {

constexpr quint32 leftControl = 29;
constexpr quint32 leftShift = 42;
constexpr quint32 leftAlt = 56;
constexpr quint32 leftSuper = 125;

} // namespace

QList<quint32> chordKeys(const PasteChord& chord)
{
    const auto key = std::ranges::find_if(virtualKeys::all, [&](const VirtualKey& one) {
        const bool isNamed =
            one.kind == KeyKind::printing || one.kind == KeyKind::function || one.kind == KeyKind::named;
        return isNamed && chord.key.compare(QString::fromUtf8(one.name), Qt::CaseInsensitive) == 0;
    });
    if (key == virtualKeys::all.end())
        return {};
    QList<quint32> keys;
    for (const auto& [modifier, code] :
         std::array{std::pair(PasteChord::control, leftControl), std::pair(PasteChord::shift, leftShift),
                    std::pair(PasteChord::alt, leftAlt), std::pair(PasteChord::super, leftSuper)}) {
        if (chord.modifiers & modifier)
            keys.append(code);
    }
    keys.append(key->evdev);
    return keys;
}

} // namespace tulvane
