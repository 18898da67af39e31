#include <platform/linux/evdev/EvdevKeyboard.h>
#include <platform/linux/evdev/EvdevModifierEvents.h>
#include <platform/linux/evdev/KeyboardAccess.h>
#include <ports/KeyModifiers.h>
#include <ports/VirtualKeys.h>

#include <QDir>
#include <QFileSystemWatcher>
#include <QPointer>
#include <QTimer>

#include <algorithm>
#include <array>
#include <map>

namespace tulvane {

namespace {

struct ModifierKey {
    quint16 evdev;
    quint64 flag;
};
constexpr std::array modifierKeys{
    ModifierKey{42, eventFlags::shift},    ModifierKey{54, eventFlags::shift},
    ModifierKey{29, eventFlags::control},  ModifierKey{97, eventFlags::control},
    ModifierKey{56, eventFlags::option},   ModifierKey{100, eventFlags::option},
    ModifierKey{125, eventFlags::command}, ModifierKey{126, eventFlags::command},
    ModifierKey{464, eventFlags::fn}};

class EvdevTap final : public QObject, public ModifierEvents::Tap {
public:
    EvdevTap(QString folder, ModifierEvents::Handler handler)
        : m_folder(std::move(folder)),
          m_handler(std::move(handler))
    {
        m_watcher.addPath(m_folder);
        connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, [this] {
            scan();
            // A device is there before the system has given its group the right to read it.
            QTimer::singleShot(std::chrono::milliseconds(700), this, [this] { scan(); });
        });
        scan();
    }
    EvdevTap(const EvdevTap&) = delete;
    EvdevTap& operator=(const EvdevTap&) = delete;
    ~EvdevTap() override = default;

    void enable() override { m_isEnabled = true; }
    void disable() override { m_isEnabled = false; }
    [[nodiscard]] bool hasKeyboards() const { return !m_keyboards.empty(); }
    [[nodiscard]] bool wasDenied() const { return m_wasDenied; }
    [[nodiscard]] bool canPress(quint16 key) const
    {
        return std::ranges::any_of(m_keyboards, [&](const auto& each) { return each.second->canPress(key); });
    }

private:
    void scan()
    {
        m_wasDenied = false;
        for (const QString& name :
             QDir(m_folder).entryList({QStringLiteral("event*")}, QDir::System | QDir::Files)) {
            if (!m_keyboards.contains(name))
                open(name);
        }
    }

    void open(const QString& name)
    {
        std::unique_ptr<EvdevKeyboard> keyboard;
        const auto opened = EvdevKeyboard::open(
            m_folder + u'/' + name,
            [this](quint16 key, bool, std::chrono::milliseconds age) { tell(key, age); },
            [this, name] { QTimer::singleShot(0, this, [this, name] { m_keyboards.erase(name); }); },
            keyboard);
        m_wasDenied = m_wasDenied || opened == EvdevKeyboard::Opened::denied;
        if (keyboard)
            m_keyboards.emplace(name, std::move(keyboard));
    }

    void tell(quint16 key, std::chrono::milliseconds age)
    {
        const VirtualKey* const known = virtualKeys::byEvdev(key);
        if (!m_isEnabled || known == nullptr || known->kind != KeyKind::modifier)
            return;
        ModifierEvent event;
        event.keyCode = known->code;
        event.age = age;
        for (const auto& [name, keyboard] : m_keyboards) {
            for (const ModifierKey& modifier : modifierKeys)
                event.flags |= keyboard->isHeld(modifier.evdev) ? modifier.flag : 0;
            event.flags |= keyboard->isCapsLockOn() ? eventFlags::capsLock : 0;
        }
        const auto handler = m_handler; // it may drop this
        handler(event);
    }

    QString m_folder;
    ModifierEvents::Handler m_handler;
    QFileSystemWatcher m_watcher;
    std::map<QString, std::unique_ptr<EvdevKeyboard>> m_keyboards;
    bool m_isEnabled = false;
    bool m_wasDenied = false;
};

} // namespace

Result<std::unique_ptr<ModifierEvents::Tap>, ModifierEventsError>
EvdevModifierEvents::createTap(qint64 keyCode, const Handler& handler)
{
    auto tap = std::make_unique<EvdevTap>(m_folder, handler);
    const VirtualKey* const key = keyCode < 0 ? nullptr : virtualKeys::byCode(static_cast<quint64>(keyCode));
    if (!tap->hasKeyboards()) {
        const auto access = tap->wasDenied() ? KeyboardAccess::denied : KeyboardAccess::none;
        return failure(ModifierEventsError::unsupported(obstacleOf(access).text()));
    }
    if (key == nullptr || !tap->canPress(key->evdev))
        return failure(ModifierEventsError::keyNotSeen(key != nullptr ? QString::fromUtf8(key->name)
                                                                      : QString::number(keyCode)));
    return tap;
}

} // namespace tulvane
