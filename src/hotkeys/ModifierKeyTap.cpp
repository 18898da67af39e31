#include <base/Log.h>
#include <hotkeys/MainThread.h>
#include <hotkeys/ModifierKeyTap.h>
#include <ports/KeyModifiers.h>
#include <ports/VirtualKeys.h>

#include <utility>

namespace tulvane {

namespace {

/// The flag that tells whether the key is down; 0 for a key that has none.
quint64 flagOf(qint64 keyCode)
{
    switch (keyCode) {
    case virtualKeys::rightCommand:
        return eventFlags::command;
    case virtualKeys::rightShift:
        return eventFlags::shift;
    case virtualKeys::rightOption:
        return eventFlags::option;
    case virtualKeys::rightControl:
        return eventFlags::control;
    case virtualKeys::fn:
        return eventFlags::fn;
    default:
        return 0;
    }
}

} // namespace

ModifierKeyTap::ModifierKeyTap(ModifierEvents& events, qint64 keyCode, Handler handler, LostHandler lost)
    : m_events(events),
      m_keyCode(keyCode),
      m_handler(std::move(handler)),
      m_lost(std::move(lost))
{
}

bool ModifierKeyTap::start()
{
    if (m_tap)
        return true;
    auto tap = m_events.createTap(m_keyCode, [this](const ModifierEvent& event) { receive(event); });
    if (!tap) {
        m_failure = tap.error();
        return false;
    }
    m_failure.reset();
    m_tap = std::move(*tap);
    m_tap->enable();
    qCInfo(lcHotkey, "Modifier key tap started for key code %lld", m_keyCode);
    return true;
}

void ModifierKeyTap::stop()
{
    if (m_tap)
        m_tap->disable();
    m_tap.reset();
    m_isDown = false;
}

void ModifierKeyTap::receive(const ModifierEvent& event)
{
    requireMainThread("ModifierKeyTap::receive");
    switch (event.type) {
    case ModifierEvent::Type::disabledByTimeout:
    case ModifierEvent::Type::disabledByUserInput:
        if (m_tap)
            m_tap->enable();
        return;
    case ModifierEvent::Type::lost: {
        stop();
        m_failure = ModifierEventsError::unreachable();
        const LostHandler lost = m_lost;
        if (lost)
            lost();
        return;
    }
    case ModifierEvent::Type::flagsChanged:
        if (event.keyCode == m_keyCode)
            receiveFlags(event);
        return;
    }
}

void ModifierKeyTap::receiveFlags(const ModifierEvent& event)
{
    const quint64 flag = flagOf(m_keyCode);
    const bool isDown = flag == 0 ? !m_isDown : (event.flags & flag) != 0;
    if (isDown == m_isDown)
        return;
    m_isDown = isDown;
    m_eventAge = event.age;
    // Called last and from a copy: it may destroy this object.
    const Handler handler = m_handler;
    handler(isDown);
}

} // namespace tulvane
