#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace tulvane {

class AppSettings;
class DictationController;
class DictationSession;
class HotkeyStatus;
class SetupFacts;

/// The end of the setup guide: a first dictation into a field of the guide itself. Main thread.
class TryOutViewModel final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")
    /// Whether all is there that a dictation needs
    Q_PROPERTY(bool ready READ isReady NOTIFY changed)
    /// Whether a text has come since the program was started
    Q_PROPERTY(bool done READ isDone NOTIFY changed)
    /// What to do, with the hotkey's name
    Q_PROPERTY(QString hint READ hint NOTIFY changed)
    /// How the dictation stands; empty while none is under way
    Q_PROPERTY(QString status READ status NOTIFY statusChanged)
    Q_PROPERTY(bool listening READ isListening NOTIFY statusChanged)

public:
    /// All collaborators outlive this object.
    TryOutViewModel(const SetupFacts& facts, const AppSettings& settings, const HotkeyStatus& hotkey,
                    const DictationController& controller, const DictationSession& session, QObject* parent);

    [[nodiscard]] bool isReady() const;
    [[nodiscard]] bool isDone() const;
    [[nodiscard]] QString hint() const;
    [[nodiscard]] QString status() const;
    [[nodiscard]] bool isListening() const;

Q_SIGNALS:
    void changed();
    void statusChanged();
    /// A text was left on the clipboard, and no key could be pressed for the user: the field takes it itself.
    void textLeft(const QString& text);

private:
    void noteDelivery();

    const SetupFacts& m_facts;
    const AppSettings& m_settings;
    const HotkeyStatus& m_hotkey;
    const DictationController& m_controller;
    const DictationSession& m_session;
};

} // namespace tulvane
