#pragma once

#include <platform/linux/layout/XkbKeymap.h>
#include <platform/linux/portal/PortalQuestion.h>
#include <platform/linux/portal/PortalShortcut.h>
#include <ports/GlobalHotkeys.h>

#include <QDBusMessage>
#include <QObject>

#include <memory>
#include <optional>

namespace tulvane {

class LastingBus;

/// Hot keys by the desktop's portal, which may ask the user in a dialog and gives the key that it likes: what
/// we name is a wish, and `display` writes what the desktop says that it has. One combination at a time. A
/// registration stands at once and works when the portal has agreed; where the user declines, the change
/// handler is called and the next registration of that combination fails, once.
class PortalHotkeys final : public QObject, public GlobalHotkeys {
    Q_OBJECT

public:
    static inline const QString interface = QStringLiteral("org.freedesktop.portal.GlobalShortcuts");

    PortalHotkeys(std::shared_ptr<LastingBus> bus, XkbKeymap layout);
    Q_DISABLE_COPY_MOVE(PortalHotkeys)
    ~PortalHotkeys() override;

    [[nodiscard]] Result<void, HotkeyError> support() const override;
    [[nodiscard]] Result<std::unique_ptr<Registration>, HotkeyError>
    registerHotkey(HotkeyId id, const KeyCombination& combination) override;
    /// The portal does not list other programs' keys, so every combination that has a name counts as free.
    [[nodiscard]] Result<void, HotkeyError> isFree(const KeyCombination& combination) override;
    void setEventHandler(const EventHandler& handler) override { m_eventHandler = handler; }
    void setChangeHandler(const ChangeHandler& handler) override { m_changeHandler = handler; }
    [[nodiscard]] QList<SymbolicHotkey> symbolicHotkeys(const KeyCombination&) override { return {}; }
    [[nodiscard]] KeyDisplay display(const KeyCombination& combination) const override;
    [[nodiscard]] std::optional<KeyCombination> combination(const NativeKey& key) const override
    {
        return combinationOfXkbKey(key);
    }

private Q_SLOTS:
    // Whole messages: a path among a slot's own parameters is not known to the toolkit this early.
    void activated(const QDBusMessage& message);
    void deactivated(const QDBusMessage& message);
    void rebound(const QDBusMessage& message);
    void closed();
    void ownerChanged(const QString& name, const QString& before, const QString& after);

private:
    struct Entry {
        HotkeyId id;
        KeyCombination combination;
    };
    class Token;

    void listen();
    void lose();
    void startPortal();
    void openAgain();
    void open();
    void noteSession(PortalRequest::Outcome outcome, const QVariantMap& results);
    void noteList(PortalRequest::Outcome outcome, const QVariantMap& results);
    void noteBound(PortalRequest::Outcome outcome, const QVariantMap& results);
    void decline();
    void close();
    /// Takes note of the key that the desktop has for us, where ours is among the shortcuts.
    bool readTrigger(const PortalShortcuts& shortcuts);
    [[nodiscard]] PortalShortcuts wish() const;
    [[nodiscard]] bool isOurs(const QDBusMessage& message) const;
    void drop();
    void closeWhenUnused();
    void release();
    void tell(HotkeyEventKind kind, const Entry& entry);
    void tellChange();
    PortalRequest& request(void (PortalHotkeys::*answered)(PortalRequest::Outcome, const QVariantMap&));

    std::shared_ptr<LastingBus> m_bus;
    XkbKeymap m_layout;
    std::optional<Entry> m_entry;
    std::optional<Entry> m_held;            ///< a press that waits for its release
    std::optional<KeyCombination> m_opened; ///< what the session is for, also while it is being made
    std::optional<KeyCombination> m_declined;
    PortalQuestion m_question{this};
    QString m_session;     ///< the path of the portal's session; empty while there is none
    QString m_trigger;     ///< as the desktop writes the key
    bool m_isLost = false; ///< the portal has gone; another one may come
    EventHandler m_eventHandler;
    ChangeHandler m_changeHandler;
};

} // namespace tulvane
