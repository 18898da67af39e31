#include <base/Translate.h>
#include <dictation/DictationController.h>
#include <dictation/DictationSession.h>
#include <dictation/PhaseText.h>
#include <settings/AppSettings.h>
#include <ui/viewmodels/HotkeyStatus.h>
#include <ui/viewmodels/SetupFacts.h>
#include <ui/viewmodels/TryOutViewModel.h>

namespace tulvane {

TryOutViewModel::TryOutViewModel(const SetupFacts& facts, const AppSettings& settings,
                                 const HotkeyStatus& hotkey, const DictationController& controller,
                                 const DictationSession& session, QObject* parent)
    : QObject(parent),
      m_facts(facts),
      m_settings(settings),
      m_hotkey(hotkey),
      m_controller(controller),
      m_session(session)
{
    connect(&facts, &SetupFacts::changed, this, &TryOutViewModel::changed);
    connect(&hotkey, &HotkeyStatus::changed, this, &TryOutViewModel::changed);
    connect(&session, &DictationSession::historyChanged, this, &TryOutViewModel::changed);
    connect(&controller, &DictationController::phaseChanged, this, &TryOutViewModel::statusChanged);
    connect(&controller, &DictationController::lastDeliveryChanged, this, &TryOutViewModel::noteDelivery);
}

bool TryOutViewModel::isReady() const
{
    return m_facts.isReady();
}

bool TryOutViewModel::isDone() const
{
    return !m_session.history().isEmpty();
}

QString TryOutViewModel::hint() const
{
    if (m_hotkey.isOfNoUse())
        return translate("%1 does not work as the hotkey. The step “Hotkey” says why.")
            .arg(m_hotkey.broken());
    const QString text = m_settings.hotkeyMode() == HotkeyMode::toggle
                             ? translate("Press %1, say a sentence, and press it again.")
                             : translate("Hold down %1 while you say a sentence.");
    return text.arg(m_hotkey.description());
}

QString TryOutViewModel::status() const
{
    return textOf(m_controller.phase());
}

bool TryOutViewModel::isListening() const
{
    return m_controller.phase().kind == Phase::Kind::recording;
}

void TryOutViewModel::noteDelivery()
{
    if (m_controller.lastDelivery() == InsertionResult::copiedToClipboard)
        Q_EMIT textLeft(m_session.lastTranscript());
}

} // namespace tulvane
