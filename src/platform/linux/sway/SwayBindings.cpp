#include <platform/linux/sway/SwayBindings.h>
#include <ports/KeyModifiers.h>
#include <ports/VirtualKeys.h>

#include <QCoreApplication>
#include <QStringList>

#include <array>

namespace tulvane::swayBindings {

namespace {

constexpr quint32 evdevToXkb = 8;

/// "Mod1+65"
QString keysOf(const KeyCombination& combination)
{
    QStringList keys;
    for (const auto& [modifier, name] :
         std::array{std::pair(carbon::control, "Ctrl"), std::pair(carbon::shift, "Shift"),
                    std::pair(carbon::option, "Mod1"), std::pair(carbon::command, "Mod4")}) {
        if ((combination.modifiers & modifier) != 0)
            keys.append(QString::fromLatin1(name));
    }
    keys.append(QString::number(virtualKeys::byCode(combination.keyCode)->evdev + evdevToXkb));
    return keys.join(u'+');
}

/// The process's own: another one's bindings are none of ours.
QString mark()
{
    return QStringLiteral("nop tulvane %1").arg(QCoreApplication::applicationPid());
}

} // namespace

bool canBind(const KeyCombination& combination)
{
    constexpr quint32 lastXkbCode = 255;
    const VirtualKey* const key = virtualKeys::byCode(combination.keyCode);
    return key && (combination.modifiers & ~carbon::all) == 0 && key->evdev + evdevToXkb <= lastXkbCode;
}

QString bind(const KeyCombination& combination, const QString& name)
{
    const QString keys = keysOf(combination);
    return QStringLiteral("bindcode --no-repeat --no-warn %1 %2 %3 pressed; "
                          "bindcode --no-warn --release %1 %2 %3 released")
        .arg(keys, mark(), name);
}

QString unbindPress(const KeyCombination& combination)
{
    return QStringLiteral("unbindcode --no-repeat %1").arg(keysOf(combination));
}

QString unbind(const KeyCombination& combination)
{
    return QStringLiteral("%1; unbindcode --release %2").arg(unbindPress(combination), keysOf(combination));
}

std::optional<Edge> read(const QString& command)
{
    const QStringList words = command.split(u' ');
    if (words.size() != 5 || words.first(3).join(u' ') != mark())
        return std::nullopt;
    return Edge{words[3], words[4] == u"pressed"};
}

} // namespace tulvane::swayBindings
