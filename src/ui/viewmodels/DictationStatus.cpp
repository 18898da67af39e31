#include <base/Translate.h>
#include <dictation/DictationController.h>
#include <dictation/DictationSession.h>
#include <dictation/PhaseText.h>
#include <ui/viewmodels/DictationStatus.h>

namespace tulvane {

DictationStatus::DictationStatus(const DictationController& controller, const DictationSession& session,
                                 QObject* parent)
    : QObject(parent),
      m_controller(controller),
      m_session(session)
{
    connect(&controller, &DictationController::phaseChanged, this, &DictationStatus::changed);
    connect(&controller, &DictationController::readinessChanged, this, &DictationStatus::changed);
    connect(&session, &DictationSession::modelLoadingChanged, this, &DictationStatus::changed);
}

const Phase& DictationStatus::phase() const
{
    return m_controller.phase();
}

DictationStatus::Kind DictationStatus::kind() const
{
    switch (phase().kind) {
    case Phase::Kind::recording:
        return Kind::Recording;
    case Phase::Kind::transcribing:
    case Phase::Kind::inserting:
        return Kind::Working;
    case Phase::Kind::notice:
        return Kind::Notice;
    case Phase::Kind::error:
        return Kind::Error;
    case Phase::Kind::idle:
        break;
    }
    if (!m_controller.isReady())
        return Kind::Setup;
    return m_session.isModelLoading() ? Kind::Loading : Kind::Ready;
}

QString DictationStatus::text() const
{
    switch (kind()) {
    case Kind::Ready:
        return translate("Ready");
    case Kind::Loading:
        return translate("Loading model…");
    case Kind::Setup:
        return translate("Setup required");
    case Kind::Recording:
    case Kind::Working:
    case Kind::Notice:
    case Kind::Error:
        return textOf(phase());
    }
    Q_UNREACHABLE();
}

} // namespace tulvane
