#include <platform/linux/layout/ChordKeys.h>
#include <platform/linux/wayland/keyboard/DeviceKeyPosting.h>
#include <ports/VirtualKeys.h>

#include <algorithm>

namespace tulvane {

QFuture<bool> DeviceKeyPosting::paste(const PasteTarget& target)
{
    const QList<quint32> keys = chordKeysIn(std::nullopt, target.chord);
    if (keys.isEmpty() || !m_device->isThere() || !m_hooks.isInFront(target))
        return QtFuture::makeReadyFuture(false);
    m_hooks.pasting(target);
    m_device->letGo();
    for (const quint32 key : keys)
        m_device->press(key);
    std::for_each(keys.crbegin(), keys.crend(), [this](quint32 key) { m_device->release(key); });
    return QtFuture::makeReadyFuture(m_device->finish());
}

QFuture<bool> DeviceKeyPosting::typeSpaces(int count)
{
    const quint32 space = virtualKeys::byCode(virtualKeys::space)->evdev;
    if (!m_device->isThere())
        return QtFuture::makeReadyFuture(false);
    if (count > 0)
        m_device->letGo();
    for (int typed = 0; typed < count; ++typed) {
        m_device->press(space);
        m_device->release(space);
    }
    return QtFuture::makeReadyFuture(m_device->finish());
}

} // namespace tulvane
