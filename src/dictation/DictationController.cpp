#include <audio/AudioRecorder.h>
#include <base/Log.h>
#include <base/Translate.h>
#include <dictation/DictationController.h>
#include <dictation/Indicator.h>
#include <dictation/ModelSource.h>
#include <hotkeys/HotkeyController.h>
#include <insertion/TextInserter.h>
#include <permissions/PermissionsService.h>
#include <ports/Sounds.h>
#include <settings/AppSettings.h>

#include <QPointer>

#include <utility>

namespace tulvane {

DictationController::DictationController(Dependencies dependencies, QObject* parent)
    : QObject(parent),
      m_dependencies(std::move(dependencies)),
      m_readiness(m_dependencies.settings, m_dependencies.permissions, m_dependencies.models,
                  m_dependencies.hasCombination)
{
    followHotkeys();
    followSession();
    followSettings();
    followPermissions();
    connect(&m_readiness, &Readiness::canDictateChanged, this, &DictationController::readinessChanged);
    updateIndicator();
}

DictationController::~DictationController()
{
    m_dependencies.hotkeys.onStart = nullptr;
    m_dependencies.hotkeys.onStop = nullptr;
    m_dependencies.hotkeys.onCancel = nullptr;
    m_dependencies.session.onMaxDurationReached = nullptr;
    m_dependencies.session.onRecordingInterrupted = nullptr;
    m_dependencies.session.onInputStalled = nullptr;
}

void DictationController::followHotkeys()
{
    m_dependencies.hotkeys.onStart = [this] { startByHotkey(); };
    m_dependencies.hotkeys.onStop = [this] { stop(); };
    m_dependencies.hotkeys.onCancel = [this] { cancelByHotkey(); };
}

void DictationController::followSession()
{
    m_dependencies.session.onMaxDurationReached = [this] { stop(); };
    // Nothing more will come, and what has come is worth its text.
    m_dependencies.session.onInputStalled = [this] { stop(); };
    m_dependencies.session.onRecordingInterrupted = [this] {
        m_dependencies.hotkeys.machine.markRecordingEnded();
        showNotice(translate("Microphone changed – recording cancelled"));
    };
    connect(&m_dependencies.session, &DictationSession::stateChanged, this,
            &DictationController::noteSessionState);
    connect(&m_dependencies.session, &DictationSession::stateChanged, this,
            &DictationController::sessionChanged);
    connect(&m_dependencies.session, &DictationSession::lastTranscriptChanged, this,
            &DictationController::sessionChanged);
    connect(&m_dependencies.session, &DictationSession::historyChanged, this,
            &DictationController::sessionChanged);
    connect(&m_dependencies.session, &DictationSession::modelLoadingChanged, this,
            &DictationController::sessionChanged);
    connect(&m_dependencies.session, &DictationSession::canRetryChanged, this,
            &DictationController::sessionChanged);
    connect(&m_dependencies.recorder, &AudioRecorder::levelChanged, this,
            [this](float level) { m_dependencies.indicator.setLevel(level); });
}

void DictationController::followSettings()
{
    connect(&m_dependencies.settings.showHUD, &AnySetting::changed, this,
            &DictationController::updateIndicator);
    m_shownInDock = m_dependencies.settings.showInDock();
    connect(&m_dependencies.settings.showInDock, &AnySetting::changed, this, [this] {
        const bool shown = m_dependencies.settings.showInDock();
        if (std::exchange(m_shownInDock, shown) != shown)
            m_dependencies.applyActivationPolicy();
    });
}

void DictationController::followPermissions()
{
    m_couldMonitorInput = m_dependencies.permissions.inputMonitoring();
    connect(&m_dependencies.permissions, &PermissionsService::inputMonitoringChanged, this,
            [this](bool granted) {
                // The tap failed while the permission was missing; the same key is tried again.
                if (std::exchange(m_couldMonitorInput, granted) != granted && granted)
                    m_dependencies.hotkeys.applyModifierHotkey(m_dependencies.settings.modifierHotkey());
            });
}

void DictationController::launch()
{
    m_dependencies.permissions.refresh();
    m_dependencies.refreshModels();
    qCInfo(lcApp).noquote().nospace() << "Tulvane " << m_dependencies.version
                                      << " launched; hotkey: " << m_dependencies.hotkeys.hotkeyDescription();
    if (!isSetUp())
        m_dependencies.windows.showOnboarding();
    m_dependencies.session.preloadModel();
}

bool DictationController::isSetUp() const
{
    return m_dependencies.settings.hasCompletedOnboarding() && m_readiness.isComplete();
}

bool DictationController::isReadyToStart() const
{
    if (m_isLocked) {
        qCWarning(lcApp, "The screen is locked: nothing is recorded");
        return false;
    }
    return m_phase.kind == Phase::Kind::idle || m_phase.kind == Phase::Kind::notice ||
           m_phase.kind == Phase::Kind::error;
}

void DictationController::startByHotkey()
{
    if (isReadyToStart()) {
        begin();
        m_isBegunByHotkey = true;
    } else if (m_phase.kind != Phase::Kind::recording) {
        m_dependencies.hotkeys.machine.markRecordingEnded(); // it believes in a recording that there is not
    }
}

void DictationController::cancelByHotkey()
{
    // A short tap takes back the press that it is the end of. A recording that was there before that press is
    // worth its text, and the tap ends it.
    m_isBegunByHotkey ? cancel() : stop();
}

void DictationController::start()
{
    if (!isReadyToStart())
        return;
    begin();
    m_isBegunByHotkey = false;
    if (m_phase.kind == Phase::Kind::recording)
        m_dependencies.hotkeys.machine.markRecordingStarted();
}

void DictationController::begin()
{
    if (const auto started = m_dependencies.session.start(); !started) {
        m_dependencies.hotkeys.machine.markRecordingEnded();
        const DictationError& error = started.error();
        showError(error.description());
        if (error.is(SessionError::microphonePermission) || error.is(SessionError::modelNotDownloaded))
            m_dependencies.windows.showOnboarding();
        return;
    }
    m_noticeTask.reset();
    setLastDelivery(std::nullopt);
    if (m_phase.kind != Phase::Kind::recording)
        setPhase({Phase::Kind::recording, {}});
    play(Sounds::pop);
}

void DictationController::stop()
{
    m_dependencies.hotkeys.machine.markRecordingEnded();
    if (m_phase.kind != Phase::Kind::recording)
        return;
    StopResult stopped = m_dependencies.session.stop();
    play(Sounds::tink);
    // As they stand now: what the user changes from here on belongs to the next dictation.
    const InsertionMethod method = m_dependencies.settings.insertionMethod();
    const bool restoreClipboard = m_dependencies.settings.restoreClipboard();
    // The user's clipboard is saved while the engine works, not after it.
    m_dependencies.inserter.prepare(method, restoreClipboard);
    finish(m_dependencies.session.finish(std::move(stopped)), method, restoreClipboard);
}

void DictationController::toggle()
{
    m_phase.kind == Phase::Kind::recording ? stop() : start();
}

void DictationController::cancel(const std::optional<QString>& notice)
{
    m_dependencies.hotkeys.machine.markRecordingEnded();
    if (m_phase.kind != Phase::Kind::recording)
        return;
    m_dependencies.session.cancel();
    if (notice)
        showNotice(*notice);
    else
        setPhase({});
}

void DictationController::setLocked(bool locked)
{
    m_isLocked = locked;
    m_dependencies.inserter.setHeldBack(locked);
    if (locked)
        stop();
}

void DictationController::retry(std::optional<InsertionMethod> method)
{
    if (!isReadyToStart() || !m_dependencies.session.canRetry())
        return;
    // The failure's message is still to be taken away; that must not end the new attempt's phases.
    m_noticeTask.reset();
    setLastDelivery(std::nullopt);
    finish(m_dependencies.session.retry(), method.value_or(m_dependencies.settings.insertionMethod()),
           m_dependencies.settings.restoreClipboard());
}

void DictationController::insertAgain(const QString& text)
{
    if (!isReadyToStart())
        return;
    m_noticeTask.reset();
    setLastDelivery(std::nullopt);
    deliver(text, m_dependencies.settings.insertionMethod(), m_dependencies.settings.restoreClipboard());
}

QCoro::Task<> DictationController::finish(QCoro::Task<Result<Outcome, DictationError>> finished,
                                          InsertionMethod method, bool restoreClipboard)
{
    const QPointer<DictationController> self(this);
    const auto outcome = co_await std::move(finished);
    if (!self)
        co_return;
    if (!outcome) {
        showError(outcome.error().description());
        co_return;
    }
    switch (outcome->kind) {
    case Outcome::Kind::tooShort:
        showNotice(translate("Too short"));
        break;
    case Outcome::Kind::nothingHeard:
        showNotice(translate("Nothing heard"));
        break;
    case Outcome::Kind::nothingRecognised:
        showNotice(translate("Nothing recognised"));
        break;
    case Outcome::Kind::transcript:
        co_await deliver(outcome->text, method, restoreClipboard);
        break;
    }
}

QCoro::Task<> DictationController::deliver(QString text, InsertionMethod method, bool restoreClipboard)
{
    const QPointer<DictationController> self(this);
    if (m_isLocked) {
        // What is in front now is the locker. The history has the text.
        setPhase({});
        co_return;
    }
    setPhase({Phase::Kind::inserting, {}});
    const InsertionResult result =
        co_await m_dependencies.inserter.insert(std::move(text), method, restoreClipboard);
    if (!self)
        co_return;
    play(Sounds::morse);
    setLastDelivery(result);
    if (result == InsertionResult::copiedToClipboard)
        showNotice(translate("Copied to clipboard"));
    else
        setPhase({});
}

void DictationController::noteSessionState(DictationSession::State state)
{
    if (state == DictationSession::State::recording && m_phase.kind != Phase::Kind::recording)
        setPhase({Phase::Kind::recording, {}});
    else if (state == DictationSession::State::transcribing)
        setPhase({Phase::Kind::transcribing, {}});
}

void DictationController::showNotice(const QString& text, std::chrono::milliseconds time)
{
    setPhase(Phase::notice(text));
    returnToIdleAfter(time);
}

void DictationController::showError(const QString& text)
{
    qCCritical(lcApp).noquote() << text;
    play(Sounds::basso);
    setPhase(Phase::error(text));
    returnToIdleAfter(errorTime);
}

void DictationController::returnToIdleAfter(std::chrono::milliseconds time)
{
    m_noticeTask = m_dependencies.scheduler.after(time, [this] { setPhase({}); });
}

void DictationController::setPhase(const Phase& phase)
{
    m_phase = phase;
    Q_EMIT phaseChanged(m_phase);
    updateIndicator();
}

bool DictationController::hasLostClipboard() const
{
    return m_lastDelivery == InsertionResult::pasted && m_dependencies.inserter.hasLostClipboard();
}

void DictationController::setLastDelivery(std::optional<InsertionResult> delivery)
{
    if (std::exchange(m_lastDelivery, delivery) != delivery)
        Q_EMIT lastDeliveryChanged();
}

void DictationController::updateIndicator()
{
    m_dependencies.indicator.setPhase(m_phase);
    const bool isIdle = m_phase.kind == Phase::Kind::idle;
    if (m_dependencies.settings.showHUD() && !isIdle)
        m_dependencies.indicator.show();
    else
        m_dependencies.indicator.hide(m_dependencies.settings.showHUD());
}

void DictationController::play(QLatin1StringView sound)
{
    if (m_dependencies.settings.playSounds())
        m_dependencies.sounds.play(sound);
}

} // namespace tulvane
