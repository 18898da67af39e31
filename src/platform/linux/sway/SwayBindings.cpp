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

QString bindPress(const KeyCombination& combination, const QString& name)
{
    return QStringLiteral("bindcode --no-repeat --no-warn %1 %2 %3 pressed")
        .arg(keysOf(combination), mark(), name);
}

QString bind(const KeyCombination& combination, const QString& name)
{
    return QStringLiteral("%1; bindcode --no-warn --release %2 %3 %4 released")
        .arg(bindPress(combination, name), keysOf(combination), mark(), name);
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
