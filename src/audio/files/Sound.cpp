#include <audio/files/Sound.h>

namespace tulvane {

QString SoundFileError::description() const
{
    const QString name = u"“" + path + u"”";
    switch (kind) {
    case Kind::missing:
        return QStringLiteral("%1 does not exist.").arg(name);
    case Kind::folder:
        return QStringLiteral("%1 is a folder, not a sound file.").arg(name);
    case Kind::unreadable:
        return QStringLiteral("%1 cannot be read: %2").arg(name, detail);
    case Kind::empty:
        return QStringLiteral("%1 is empty.").arg(name);
    case Kind::foreign:
        return QStringLiteral("%1 is not a sound file that can be read: %2").arg(name, detail);
    case Kind::silent:
        return QStringLiteral("%1 holds no sound: it is 0 seconds long.").arg(name);
    case Kind::tooLarge:
        return QStringLiteral("%1 is too long: its samples do not fit into memory.").arg(name);
    }
    return name;
}

} // namespace tulvane
