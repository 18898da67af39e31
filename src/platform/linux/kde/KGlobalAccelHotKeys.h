#pragma once

#include <platform/linux/kde/KGlobalAccel.h>
#include <platform/linux/kde/KdeKeyboard.h>
#include <ports/GlobalHotkeys.h>

#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QObject>

#include <list>
#include <memory>
#include <set>

class QDBusError;

namespace tulvane {

/// Hot keys by KDE's own service. What the user chooses for us in the system settings counts from then on,
/// and at the next start: `display` then writes that in place of the combination that was asked for. A
/// combination that we ask for anew, as one that the user has recorded in our own settings, takes its place
/// again. While the service or the bus is gone there are none, and what is held is let go; both is a change,
/// and so is the return.
class KGlobalAccelHotKeys final : public QObject, public GlobalHotkeys {
    Q_OBJECT

public:
    struct Options {
        std::shared_ptr<LastingBus> bus;
        QString configHome; ///< as in $XDG_CONFIG_HOME
        QString component = QStringLiteral("com.dunio.Tulvane");
    };

    explicit KGlobalAccelHotKeys(const Options& options);
    Q_DISABLE_COPY_MOVE(KGlobalAccelHotKeys)
    ~KGlobalAccelHotKeys() override;

    [[nodiscard]] Result<void, HotkeyError> support() const override;
    [[nodiscard]] Result<std::unique_ptr<Registration>, HotkeyError>
    registerHotkey(HotkeyId id, const KeyCombination& combination) override;
    [[nodiscard]] Result<void, HotkeyError> isFree(const KeyCombination& combination) override;
    void setEventHandler(const EventHandler& handler) override { m_eventHandler = handler; }
    void setChangeHandler(const ChangeHandler& handler) override { m_changeHandler = handler; }
    /// Of the given combination alone, with whose it is.
    [[nodiscard]] QList<SymbolicHotkey> symbolicHotkeys(const KeyCombination& about) override;
    [[nodiscard]] KeyDisplay display(const KeyCombination& combination) const override;
    [[nodiscard]] std::optional<KeyCombination> combination(const NativeKey& key) const override
    {
        return combinationOfXkbKey(key);
    }

private Q_SLOTS:
    void pressed(const QString& component, const QString& action, qlonglong time);
    void released(const QString& component, const QString& action, qlonglong time);
    void rebound(const QDBusMessage& message);

private:
    struct Entry {
        HotkeyId id;
        KeyCombination combination; ///< as asked for
        KeyCombination actual;      ///< as the desktop has it
        KGlobalAccel::Action action;
        bool isDropped = false; ///< held while it was dropped: goes with the release
        bool isHeld = false;
    };
    class Token;
    using Entries = std::list<Entry>;

    void listen();
    void lose();
    void ownerChanged(const QString& after);
    /// Until the service does its work; `patience` in seconds before it is asked.
    void awaitService(int patience);
    void serviceAnswered(const QDBusError& error);
    /// The toolkit's keys of a combination that none of ours has.
    [[nodiscard]] Result<QList<int>, HotkeyError> keysFor(const KeyCombination& combination) const;
    [[nodiscard]] KGlobalAccel::Action actionOf(HotkeyId id) const;
    [[nodiscard]] QString holderOf(const QList<int>& keys) const;
    [[nodiscard]] Result<QList<int>, HotkeyError> take(const KGlobalAccel::Action& action,
                                                       const QList<int>& keys);
    /// The combinations that the action has then; none where the service does not answer.
    [[nodiscard]] std::optional<QList<int>> set(const KGlobalAccel::Action& action, const QList<int>& keys,
                                                bool isNewWish);
    /// What another action of ours has left behind.
    void takeFromOurOwn(const KGlobalAccel::Action& action, const QList<int>& keys) const;
    void listenTo(const QString& componentPath);
    [[nodiscard]] Entry* find(const QString& action);
    void drop(const Entry* dropped);
    void tell(HotkeyEventKind kind, const Entry& entry, qlonglong time);
    void tellChange();

    std::shared_ptr<LastingBus> m_bus;
    KGlobalAccel m_service;
    QDBusServiceWatcher m_watcher;
    KdeKeyboard m_keyboard;
    QString m_component;
    QString m_listening; ///< the component's path on the bus
    Entries m_entries;
    bool m_isReady = true;    ///< the service does its work, as far as is known
    int m_round = 0;          ///< of waiting for the service; an answer of an earlier one is none
    int m_waits = 0;          ///< in a row, without a hot key in between
    bool m_isSetting = false; ///< a change that the service reports now is ours
    EventHandler m_eventHandler;
    ChangeHandler m_changeHandler;
};

} // namespace tulvane
