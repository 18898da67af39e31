#pragma once

#include <platform/linux/gnome/CustomBindings.h>
#include <platform/linux/gnome/GSettings.h>
#include <platform/linux/layout/XkbKeymap.h>
#include <ports/GlobalHotkeys.h>

#include <QElapsedTimer>
#include <QObject>

#include <functional>
#include <memory>

namespace tulvane {

class LastingBus;

/// The hotkey on a GNOME that lets no program have one: a key binding of the user's own settings, written
/// when the user has chosen the combination, which runs a command. The desktop tells presses only, by running
/// it, and repeats it while the key is held; so no event comes from here. One combination at a time. The
/// binding goes with its registration.
class GnomeHotkeys final : public GlobalHotkeys {
public:
    /// What the user has chosen themselves: nothing else is written into their settings.
    struct Choices {
        std::function<bool(const KeyCombination&)> isMade = [](const KeyCombination&) { return true; };
        std::function<void(const KeyCombination&)> make = [](const KeyCombination&) {};
    };

    /// `command` is run at each press.
    GnomeHotkeys(const QProcessEnvironment& environment, QString command, Choices choices);
    /// The same where the user chooses all that is registered.
    GnomeHotkeys(const QProcessEnvironment& environment, QString command);
    GnomeHotkeys(const GnomeHotkeys&) = delete;
    GnomeHotkeys& operator=(const GnomeHotkeys&) = delete;
    ~GnomeHotkeys() override;

    /// The command that runs a program with one word, as the desktop's settings write it; found by the user's
    /// PATH where no `program` is given.
    [[nodiscard]] static QString commandOf(const QString& program, const QString& word);

    /// The settings are written over this bus, the session's: what failed while it was gone is tried again
    /// once it is back.
    void follow(std::shared_ptr<LastingBus> bus);
    /// Whether a binding of ours is in force: the command that comes is the hotkey's then.
    [[nodiscard]] bool isBound() const { return *m_isBound; }
    /// Where the desktop's settings keep ours.
    [[nodiscard]] static const QString& path();

    [[nodiscard]] Result<void, HotkeyError> support() const override;
    void choose(const KeyCombination& combination) override { m_choices.make(combination); }
    [[nodiscard]] Result<std::unique_ptr<Registration>, HotkeyError>
    registerHotkey(HotkeyId id, const KeyCombination& combination) override;
    void setEventHandler(const EventHandler&) override {}
    void setChangeHandler(const ChangeHandler& handler) override { m_changeHandler = handler; }
    /// What the desktop's settings use it for, in the desktop's own words.
    [[nodiscard]] QList<SymbolicHotkey> symbolicHotkeys(const KeyCombination& about) override;
    [[nodiscard]] KeyDisplay display(const KeyCombination& combination) const override;
    [[nodiscard]] std::optional<KeyCombination> combination(const NativeKey& key) const override
    {
        return combinationOfXkbKey(key);
    }

private:
    class Token;
    [[nodiscard]] QString acceleratorOf(const KeyCombination& combination) const;
    [[nodiscard]] bool bind(const QString& accelerator) const;
    /// What the tool says of a write is no answer: without a bus it says that all is well.
    [[nodiscard]] bool isWritten(const QString& accelerator) const;
    /// A combination of the desktop's settings, and which of them it is; of the user's own ones the title.
    struct Use {
        KeyCombination combination;
        GSettings::Setting setting;
        QString title = {};
    };
    [[nodiscard]] std::vector<Use> readUses() const;
    void add(const GSettings::Setting& setting, const QString& title, std::vector<Use>& uses) const;
    [[nodiscard]] QString titleOf(const GSettings::Setting& setting) const;

    GSettings m_settings;
    QString m_command;
    Choices m_choices;
    mutable bool m_isSupported = false; ///< has been found to be
    std::vector<Use> m_known;           ///< what has just been read
    QElapsedTimer m_knownSince;
    std::optional<XkbKeymap> m_layout;
    std::shared_ptr<bool> m_isBound = std::make_shared<bool>(false);
    ChangeHandler m_changeHandler;
    std::shared_ptr<LastingBus> m_bus; ///< null where none is followed
    QObject m_context;                 ///< what is called later is called while this lives
};

} // namespace tulvane
