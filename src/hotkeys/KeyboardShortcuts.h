#pragma once

#include <hotkeys/RegistrationState.h>
#include <hotkeys/Shortcut.h>
#include <hotkeys/ShortcutName.h>
#include <ports/DefaultsError.h>
#include <ports/GlobalHotkeys.h>

#include <QLatin1StringView>
#include <QObject>
#include <QVariantMap>

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <vector>

namespace tulvane {

class UserDefaults;

/// The named global key combinations: stored in the user's preferences, registered with the system, their two
/// edges handed to the handlers. One per process; main thread, and so are all handlers.
class KeyboardShortcuts final : public QObject {
    Q_OBJECT

public:
    using Handler = std::function<void()>;

    /// Before the raw name in the key of the preferences.
    static constexpr QLatin1StringView storagePrefix{"KeyboardShortcuts_"};
    /// Posted after a shortcut has changed, with its name under "name".
    static constexpr QLatin1StringView shortcutByNameDidChange{"KeyboardShortcuts_shortcutByNameDidChange"};
    /// Posted when a recorder starts or stops recording, with "isActive".
    static constexpr QLatin1StringView recorderActiveStatusDidChange{
        "KeyboardShortcuts_recorderActiveStatusDidChange"};
    /// "TLVK": the signature of our hot keys.
    static constexpr quint32 signature = 0x544C564B;

    /// Both collaborators outlive this object.
    KeyboardShortcuts(UserDefaults& defaults, GlobalHotkeys& hotkeys, QObject* parent = nullptr);
    Q_DISABLE_COPY_MOVE(KeyboardShortcuts)
    ~KeyboardShortcuts() override;

    /// Makes a name known: its default is stored where nothing is stored for it, not even that the user has
    /// cleared it. Once per name and process; again does nothing.
    void declare(const ShortcutName& name);

    /// The stored shortcut; none where there is none, or where the stored value makes no sense.
    [[nodiscard]] std::optional<Shortcut> getShortcut(const ShortcutName& name) const;
    /// Stores the shortcut; without one the name is cleared for good, its default included. `writeFailed`
    /// tells when it could not be stored; it holds until the program ends all the same.
    void setShortcut(const std::optional<Shortcut>& shortcut, const ShortcutName& name);

    /// Called at each press, once however long the key repeats. Stays attached.
    void onKeyDown(const ShortcutName& name, const Handler& handler);
    /// Called at each release.
    void onKeyUp(const ShortcutName& name, const Handler& handler);

    /// For a handler: how long ago the press or release happened that it is called for.
    [[nodiscard]] std::chrono::milliseconds eventAge() const { return m_eventAge; }

    [[nodiscard]] RegistrationState registration(const ShortcutName& name) const;
    /// How the desktop writes the name's shortcut, "Key 5000000000" for one that no desktop has; without caps
    /// where none is set.
    [[nodiscard]] KeyDisplay display(const ShortcutName& name) const;

    /// Tries again what failed, as when another program may have given a combination back.
    void registerAgain();

    /// A recorder listens to the keyboard: until it has finished, no combination is registered, so that the
    /// user can press the very one that is set.
    void setRecorderActive(bool isActive);
    [[nodiscard]] bool isRecorderActive() const { return m_recorderActive; }

    [[nodiscard]] GlobalHotkeys& hotkeys() const { return m_hotkeys; }

Q_SIGNALS:
    /// A notification, for everybody who wants to know; see the names above.
    void posted(const QString& notification, const QVariantMap& userInfo);
    /// Registrations may stand otherwise now, or be written otherwise.
    void registrationsChanged();
    void writeFailed(const QString& rawName, const tulvane::DefaultsError& error);

private:
    struct Entry {
        QString rawName;
        std::optional<KeyCombination> combination; ///< what is, or would be, registered
        std::unique_ptr<GlobalHotkeys::Registration> registration;
        std::optional<HotkeyError> error;
        std::vector<Handler> keyDown;
        std::vector<Handler> keyUp;
    };

    Entry& entryOf(const ShortcutName& name);
    [[nodiscard]] const Entry* find(const ShortcutName& name) const;
    void attach(const ShortcutName& name, std::vector<Handler> Entry::* list, const Handler& handler);
    void write(const QString& rawName, const QVariant& value);
    void registerAll();
    void registerEntry(quint32 id, Entry& entry);
    [[nodiscard]] Result<std::unique_ptr<GlobalHotkeys::Registration>, HotkeyError>
    take(quint32 id, const std::optional<KeyCombination>& combination);
    [[nodiscard]] HotkeyDelivery deliver(const HotkeyEvent& event);
    [[nodiscard]] const Entry* target(const HotkeyEvent& event) const;

    UserDefaults& m_defaults;
    GlobalHotkeys& m_hotkeys;
    std::vector<QString> m_declared;
    std::map<quint32, Entry> m_table; ///< by the id of the hot key, counted from 1
    bool m_recorderActive = false;
    std::chrono::milliseconds m_eventAge{0};
};

} // namespace tulvane
