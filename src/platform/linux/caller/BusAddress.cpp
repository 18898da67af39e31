#include <platform/linux/caller/BusAddress.h>

namespace tulvane {

QByteArrayList busSockets(const QByteArray& address)
{
    constexpr QByteArrayView transport("unix:");
    QByteArrayList sockets;
    for (const QByteArray& one : address.split(';')) {
        if (!one.startsWith(transport))
            continue;
        for (const QByteArray& pair : one.mid(transport.size()).split(',')) {
            const qsizetype separator = pair.indexOf('=');
            const QByteArray key = pair.left(separator);
            const QByteArray value = QByteArray::fromPercentEncoding(pair.mid(separator + 1));
            if (separator < 0 || value.isEmpty())
                continue;
            if (key == "path")
                sockets.append(value);
            else if (key == "abstract")
                sockets.append('\0' + value);
        }
    }
    return sockets;
}

QByteArrayList sessionBusSockets()
{
    const QByteArray address = qgetenv("DBUS_SESSION_BUS_ADDRESS");
    const QByteArray folder = qgetenv("XDG_RUNTIME_DIR");
    if (address.isEmpty() && !folder.isEmpty())
        return {folder + "/bus"};
    return busSockets(address);
}

} // namespace tulvane
