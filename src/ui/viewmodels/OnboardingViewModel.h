#pragma once

#include <ui/viewmodels/SetupFacts.h>
#include <ui/viewmodels/SetupItem.h>

#include <QList>
#include <QObject>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>

namespace tulvane {

class AppSettings;
class HotkeyStatus;
class ModelManager;
class PermissionsService;
class StatusItem;
class Windows;

/// The four steps of the setup guide, and what finishing it means. Live: nothing is stored but that it has
/// been finished. Main thread.
class OnboardingViewModel final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")
    /// Objects with `number`, `title`, `symbol`, `done` and `label`.
    Q_PROPERTY(QVariantList steps READ stepObjects NOTIFY changed)
    Q_PROPERTY(QString progress READ progress NOTIFY changed)
    /// The number of the first step that is left, or of the hotkey's where that has no effect; 0 when none
    /// is.
    Q_PROPERTY(int next READ next NOTIFY changed)
    Q_PROPERTY(bool allDone READ isAllDone NOTIFY changed)
    /// What stands beside the finish button; the hotkey's name in bold (`<b>`), everything else escaped.
    Q_PROPERTY(QString footer READ footer NOTIFY footerChanged)
    /// The same as plain text, for reading aloud.
    Q_PROPERTY(QString spokenFooter READ spokenFooter NOTIFY footerChanged)
    /// The hotkey's name, or that it has no effect
    Q_PROPERTY(QString hotkey READ hotkey NOTIFY footerChanged)
    Q_PROPERTY(QString finishLabel READ finishLabel NOTIFY changed)
    Q_PROPERTY(Microphone microphone READ microphone NOTIFY microphoneChanged)

public:
    /// The steps by their numbers.
    enum class Step { MicrophoneStep = 1, AccessibilityStep, ModelStep, HotkeyStep };
    Q_ENUM(Step)
    enum class Microphone { Ask, Denied, Granted };
    Q_ENUM(Microphone)

    /// All collaborators outlive this object.
    OnboardingViewModel(const SetupFacts& facts, AppSettings& settings, PermissionsService& permissions,
                        ModelManager& models, const HotkeyStatus& hotkey, const StatusItem& statusItem,
                        Windows& windows, QObject* parent);

    [[nodiscard]] QList<SetupStep> steps() const;
    [[nodiscard]] QVariantList stepObjects() const;
    [[nodiscard]] QString progress() const;
    [[nodiscard]] int next() const;
    [[nodiscard]] bool isAllDone() const;
    [[nodiscard]] QString footer() const;
    [[nodiscard]] QString spokenFooter() const;
    [[nodiscard]] QString hotkey() const;
    [[nodiscard]] QString finishLabel() const;
    [[nodiscard]] Microphone microphone() const;

    /// Does what leads towards the end of the step, by its number; an unknown one is ignored.
    Q_INVOKABLE void act(int number) const;
    /// The finish button: remembers that the setup is complete, where dictation can work, and asks for the
    /// window to be closed either way.
    Q_INVOKABLE void finish();

Q_SIGNALS:
    void changed();
    void footerChanged();
    void microphoneChanged();
    void closeWanted();

private:
    [[nodiscard]] int doneCount() const;

    const SetupFacts& m_facts;
    AppSettings& m_settings;
    PermissionsService& m_permissions;
    ModelManager& m_models;
    const HotkeyStatus& m_hotkey;
    const StatusItem& m_statusItem;
    Windows& m_windows;
};

} // namespace tulvane
