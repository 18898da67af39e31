#include <platform/linux/keys/Accelerator.h>
#include <ports/KeyModifiers.h>

#include <array>

namespace tulvane {

namespace {

struct Word {
    const char* text;
    quint32 modifier;
};

constexpr std::array qtWords{Word{"Meta", carbon::command}, Word{"Ctrl", carbon::control},
                             Word{"Alt", carbon::option}, Word{"Shift", carbon::shift}};
constexpr std::array gtkWords{Word{"Super", carbon::command},   Word{"Mod4", carbon::command},
                              Word{"Primary", carbon::control}, Word{"Control", carbon::control},
                              Word{"Ctrl", carbon::control},    Word{"Ctl", carbon::control},
                              Word{"Alt", carbon::option},      Word{"Mod1", carbon::option},
                              Word{"Shift", carbon::shift},     Word{"Shft", carbon::shift}};
constexpr std::array openboxWords{Word{"W", carbon::command},   Word{"Mod4", carbon::command},
                                  Word{"C", carbon::control},   Word{"A", carbon::option},
                                  Word{"Mod1", carbon::option}, Word{"S", carbon::shift}};

template <std::size_t N>
std::optional<quint32> modifierOf(QStringView text, const std::array<Word, N>& words)
{
    for (const Word& word : words) {
        if (text.compare(QLatin1String(word.text), Qt::CaseInsensitive) == 0)
            return word.modifier;
    }
    return std::nullopt;
}

/// Keysyms by the names that Qt gives the keys.
QString keysymOfQtKey(QStringView name)
{
    struct Pair {
        const char* qt;
        const char* keysym;
    };
    constexpr std::array pairs{Pair{"PgUp", "Page_Up"},
                               Pair{"PgDown", "Page_Down"},
                               Pair{"Esc", "Escape"},
                               Pair{"Del", "Delete"},
                               Pair{"Ins", "Insert"},
                               Pair{"Space", "space"},
                               Pair{"Backspace", "BackSpace"},
                               Pair{"Enter", "KP_Enter"},
                               Pair{"Backtab", "Tab"},
                               Pair{"Volume Up", "XF86AudioRaiseVolume"},
                               Pair{"Volume Down", "XF86AudioLowerVolume"},
                               Pair{"Volume Mute", "XF86AudioMute"}};
    for (const Pair& pair : pairs) {
        if (name.compare(QLatin1String(pair.qt), Qt::CaseInsensitive) == 0)
            return QString::fromUtf8(pair.keysym);
    }
    return name.toString();
}

std::optional<KeyCombination> withKey(const QString& keysym, quint32 modifiers, const KeyLookup& keyOf)
{
    const auto keyCode = keysym.isEmpty() ? std::nullopt : keyOf(keysym);
    return keyCode ? std::optional(KeyCombination{*keyCode, modifiers}) : std::nullopt;
}

/// Modifiers, each followed by the separator, and then the key, which may be the separator itself.
template <std::size_t N>
std::optional<quint32> takeModifiers(QStringView& text, QChar separator, const std::array<Word, N>& words)
{
    quint32 modifiers = 0;
    for (;;) {
        const qsizetype end = text.indexOf(separator, 1);
        if (end < 0 || end == text.size() - 1)
            return modifiers;
        const auto modifier = modifierOf(text.first(end), words);
        if (!modifier)
            return std::nullopt;
        modifiers |= *modifier;
        text = text.sliced(end + 1);
    }
}

} // namespace

std::optional<KeyCombination> fromQtAccelerator(QStringView text, const KeyLookup& keyOf)
{
    text = text.trimmed();
    const auto modifiers = takeModifiers(text, u'+', qtWords);
    return modifiers ? withKey(keysymOfQtKey(text), *modifiers, keyOf) : std::nullopt;
}

std::optional<KeyCombination> fromOpenboxAccelerator(QStringView text, const KeyLookup& keyOf)
{
    text = text.trimmed();
    const auto modifiers = takeModifiers(text, u'-', openboxWords);
    return modifiers ? withKey(text.toString(), *modifiers, keyOf) : std::nullopt;
}

std::optional<KeyCombination> fromGtkAccelerator(QStringView text, const KeyLookup& keyOf)
{
    text = text.trimmed();
    quint32 modifiers = 0;
    while (text.startsWith(u'<')) {
        const qsizetype end = text.indexOf(u'>');
        const auto modifier = end < 0 ? std::nullopt : modifierOf(text.first(end).sliced(1), gtkWords);
        if (!modifier)
            return std::nullopt;
        modifiers |= *modifier;
        text = text.sliced(end + 1);
    }
    return withKey(text.toString(), modifiers, keyOf);
}

} // namespace tulvane
