#pragma once

#include <base/Scheduler.h>
#include <dictation/DictationSession.h>
#include <dictation/Phase.h>
#include <dictation/Readiness.h>
#include <insertion/InsertionResult.h>
#include <settings/InsertionMethod.h>

#include <QCoroTask>
#include <QLatin1StringView>
#include <QObject>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

namespace tulvane {

class AppSettings;
class AudioRecorder;
class HotkeyController;
class Indicator;
class ModelSource;
class PermissionsService;
class Sounds;
class TextInserter;
class Windows;

/// Coordinates one dictation from the hotkey to the inserted text, and shows the user how it goes: by its
/// phase, which the indicator and the menus show, by sounds and by short notices. Main thread; lives for the
/// process.
class DictationController final : public QObject {
    Q_OBJECT

public:
    static constexpr std::chrono::milliseconds noticeTime{1600};
    static constexpr std::chrono::milliseconds errorTime{3000};

    /// What the controller works with; all of it outlives the controller.
    struct Dependencies {
        AppSettings& settings;
        DictationSession& session;
        AudioRecorder& recorder;
        ModelSource& models; ///< whether the selected model is there
        PermissionsService& permissions;
        TextInserter& inserter;
        HotkeyController& hotkeys;
        Indicator& indicator;
        Windows& windows;
        Sounds& sounds;
        Scheduler& scheduler;
        QString version; ///< of the application, for the log
        /// Reads again which models are there.
        std::function<void()> refreshModels = [] {};
        /// Whether a key combination is set.
        std::function<bool()> hasCombination = [] { return false; };
        /// Follows `showInDock`.
        std::function<void()> applyActivationPolicy = [] {};
    };

    /// Installs itself behind the hotkeys, the session, the settings and the permissions.
    explicit DictationController(Dependencies dependencies, QObject* parent = nullptr);
    Q_DISABLE_COPY_MOVE(DictationController)
    ~DictationController() override;

    [[nodiscard]] const Phase& phase() const { return m_phase; }
    /// What dictating needs, and whether it is there.
    [[nodiscard]] const Readiness& readiness() const { return m_readiness; }
    /// Whether a dictation is possible at all.
    [[nodiscard]] bool isReady() const { return m_readiness.canDictate(); }
    /// What became of the last transcript; nothing before the first one, and from the next recording or retry
    /// on until that one's text has been delivered.
    [[nodiscard]] std::optional<InsertionResult> lastDelivery() const { return m_lastDelivery; }
    /// Whether that text was pasted, and a part of what the user had copied could not be put back after it.
    [[nodiscard]] bool hasLostClipboard() const;

    /// What is left to do once the application has finished launching: the permissions, the models, the log
    /// line, and either the preparation of the model or the window that leads through what is missing.
    void launch();
    /// Whether everything is there that dictating needs, and the user has been led through it.
    [[nodiscard]] bool isSetUp() const;

    /// The menu's and the command line's ways in. A start while a dictation is being finished is ignored, and
    /// so is a stop or a cancel while nothing is being recorded. Whatever they do, the next press of the
    /// hotkey does what it says: it ends a recording that they began, and begins one after they have ended
    /// it.
    void start();
    void stop();
    void toggle();
    /// With a notice, it is shown; without one, the phase is idle at once.
    void cancel(const std::optional<QString>& notice = std::nullopt);
    /// Follows the lock of the user's session. Where it is locked nothing starts; a recording under way ends
    /// with the locking, and its text, like that of a transcription under way, goes to the history and into
    /// no program.
    void setLocked(bool locked);
    [[nodiscard]] bool isLocked() const { return m_isLocked; }
    /// Transcribes the audio of the last failed transcription once more and delivers its text as after a
    /// stop, by the given method, or else the settings'. Nothing while there is no such audio, and while a
    /// dictation is under way. A window of ours that asks for it is in front itself, and names the clipboard.
    void retry(std::optional<InsertionMethod> method = std::nullopt);

    /// Delivers a text of the history once more, by the settings' method, into what is in front. Nothing
    /// while a dictation is under way.
    void insertAgain(const QString& text);

    void showNotice(const QString& text, std::chrono::milliseconds time = noticeTime);
    /// Also logged at error level, and heard.
    void showError(const QString& text);

Q_SIGNALS:
    void phaseChanged(const tulvane::Phase& phase);
    /// The session has changed in some way: one object to observe is enough for the menus.
    void sessionChanged();
    void readinessChanged();
    void lastDeliveryChanged();

private:
    void followHotkeys();
    void followSession();
    void followSettings();
    void followPermissions();

    void startByHotkey();
    void cancelByHotkey();
    [[nodiscard]] bool isReadyToStart() const;
    void begin();
    QCoro::Task<> finish(QCoro::Task<Result<Outcome, DictationError>> finished, InsertionMethod method,
                         bool restoreClipboard);
    QCoro::Task<> deliver(QString text, InsertionMethod method, bool restoreClipboard);
    void noteSessionState(DictationSession::State state);

    void setPhase(const Phase& phase);
    void setLastDelivery(std::optional<InsertionResult> delivery);
    void returnToIdleAfter(std::chrono::milliseconds time);
    void updateIndicator();
    void play(QLatin1StringView sound);

    Dependencies m_dependencies;
    Readiness m_readiness;
    Phase m_phase;
    bool m_isLocked = false;
    bool m_isBegunByHotkey = false;                 ///< the present or last recording
    std::unique_ptr<Scheduler::Token> m_noticeTask; ///< the pending return to idle
    std::optional<InsertionResult> m_lastDelivery;
    std::optional<bool> m_couldMonitorInput;
    std::optional<bool> m_shownInDock;
};

} // namespace tulvane
