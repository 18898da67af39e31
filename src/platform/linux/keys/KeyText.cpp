#include <base/Translate.h>
#include <platform/linux/keys/KeyText.h>
#include <ports/KeyModifiers.h>

#include <array>

namespace tulvane {

namespace {

struct ModifierWord {
    quint32 modifier;
    const char* word;
};

constexpr std::array modifierWords{
    ModifierWord{carbon::command, QT_TRANSLATE_NOOP("tulvane", "Super")},
    ModifierWord{carbon::control, QT_TRANSLATE_NOOP("tulvane", "Ctrl")},
    ModifierWord{carbon::option, QT_TRANSLATE_NOOP("tulvane", "Alt")},
    ModifierWord{carbon::shift, QT_TRANSLATE_NOOP("tulvane", "Shift")},
};

QString keyText(const VirtualKey& key, const KeyLabel& labelOf)
{
    switch (key.kind) {
    case KeyKind::printing:
        if (const QString label = labelOf ? labelOf(key) : QString(); !label.isEmpty())
            return label;
        return QString::fromUtf8(key.name);
    case KeyKind::keypad:
        return translate("Keypad %1").arg(QString::fromUtf8(key.name));
    case KeyKind::function:
        return QString::fromUtf8(key.name);
    case KeyKind::named:
    case KeyKind::modifier:
        // A page is called Home, too, and has another name in Norwegian. The key has not.
        return key.code == virtualKeys::home ? QString::fromUtf8(key.name) : translate(key.name);
    }
    Q_UNREACHABLE();
}

} // namespace

KeyDisplay linuxKeyDisplay(const KeyCombination& combination, const KeyLabel& labelOf)
{
    KeyDisplay display{{}, QStringLiteral("+")};
    for (const auto& [modifier, word] : modifierWords) {
        if ((combination.modifiers & modifier) != 0)
            display.caps.append(translate(word));
    }
    const VirtualKey* const key = virtualKeys::byCode(combination.keyCode);
    display.caps.append(key != nullptr ? keyText(*key, labelOf)
                                       : translate("Key %1").arg(combination.keyCode));
    return display;
}

} // namespace tulvane
