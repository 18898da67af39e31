#pragma once

#include <base/Scheduler.h>
#include <hotkeys/ShortcutRecorder.h>
#include <hotkeys/ShortcutRules.h>
#include <ports/KeyboardGrab.h>

#include <QObject>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

#include <functional>
#include <memory>
#include <optional>

namespace tulvane {

class KeyboardShortcuts;

struct NativeKey;

/// The field in which the user sets the key combination: what it shows, and what becomes of each key. Main
/// thread.
class ShortcutFieldViewModel final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")
    /// The combination as it stands on the keys; empty where none is set.
    Q_PROPERTY(QStringList caps READ caps NOTIFY changed)
    Q_PROPERTY(QString text READ text NOTIFY changed)
    Q_PROPERTY(bool recording READ isRecording NOTIFY changed)
    Q_PROPERTY(QString placeholder READ placeholder NOTIFY changed)
    /// Why the last combination was refused; empty otherwise.
    Q_PROPERTY(QString message READ message NOTIFY changed)
    /// The last key was none that may be set: what may be is worth reading now.
    Q_PROPERTY(bool ruleBroken READ isRuleBroken NOTIFY changed)
    /// Why pressing the set combination does nothing; empty where it works.
    Q_PROPERTY(QString problem READ problem NOTIFY changed)
    /// "Use Ctrl+Alt+Space instead", which is free here, where that solves the problem or the refusal; empty
    /// otherwise.
    Q_PROPERTY(QString alternative READ alternative NOTIFY changed)
    /// How the field is used, in three sentences or so each.
    Q_PROPERTY(QString howToRecord READ howToRecord CONSTANT)
    Q_PROPERTY(QString whatIsAccepted READ whatIsAccepted CONSTANT)
    Q_PROPERTY(QString howToClear READ howToClear CONSTANT)

public:
    /// What became of a key.
    enum class Answer {
        taken,    ///< the field has used it up
        passedOn, ///< the window does with it what it always does
    };

    /// `signal` is the desktop's short signal that a key meant nothing; `menuItemOf` names the menu item of
    /// ours that a combination works. All collaborators outlive this object.
    ShortcutFieldViewModel(KeyboardShortcuts& shortcuts, KeyboardGrab& keyboard, Scheduler& scheduler,
                           std::function<void()> signal, ShortcutRules::MenuItemOf menuItemOf,
                           QObject* parent);

    [[nodiscard]] QStringList caps() const;
    [[nodiscard]] QString text() const { return m_recorder.text(); }
    [[nodiscard]] bool isRecording() const { return m_recorder.isActive(); }
    /// Records, or waits for the recorded combination's key to go up.
    [[nodiscard]] bool isBusy() const { return m_recorder.isBusy(); }
    [[nodiscard]] QString placeholder() const { return m_recorder.placeholder(); }
    [[nodiscard]] QString message() const { return m_recorder.message(); }
    [[nodiscard]] bool isRuleBroken() const { return m_isRuleBroken; }
    [[nodiscard]] QString problem() const;
    [[nodiscard]] QString alternative() const;
    [[nodiscard]] static QString howToRecord();
    [[nodiscard]] static QString whatIsAccepted();
    [[nodiscard]] static QString howToClear();

    /// Recording ends by itself when no key comes for half a minute: while it lasts there are no hotkeys, and
    /// no screen lock could get hold of the keyboard.
    Q_INVOKABLE void start();
    Q_INVOKABLE void stop();
    /// Until the user sets another combination there is none, not even the one that a new user has.
    Q_INVOKABLE void clear();
    Q_INVOKABLE void useAlternative();
    /// The other program may have given the combination back.
    Q_INVOKABLE void tryAgain();

    /// The keyboard for the window that the field is in; see KeyboardGrab.
    [[nodiscard]] std::unique_ptr<KeyboardGrab::Hold> holdKeyboard(QWindow& window) const;
    /// While it is busy; the keyboard's own repetitions are left out.
    Answer keyPressed(const NativeKey& key);
    void keyReleased(const NativeKey& key);

Q_SIGNALS:
    void changed();

private:
    void beep();
    void note();
    void noteRecorder();
    void lookForAlternative();
    void waitForKey();

    KeyboardShortcuts& m_shortcuts;
    KeyboardGrab& m_keyboard;
    Scheduler& m_scheduler;
    std::function<void()> m_signal;
    ShortcutRules::MenuItemOf m_menuItemOf;
    ShortcutRecorder m_recorder;
    std::optional<KeyCombination> m_alternative;
    std::unique_ptr<Scheduler::Token> m_patience; ///< until the next key
    std::unique_ptr<Scheduler::Token> m_release;  ///< until the recorded key is up for good
    bool m_isRuleBroken = false;
};

} // namespace tulvane
