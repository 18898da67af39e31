#include <base/Translate.h>
#include <dictation/SessionError.h>

namespace tulvane {

QString description(SessionError error)
{
    switch (error) {
    case SessionError::microphonePermission:
        return translate("Microphone access is required.");
    case SessionError::modelNotDownloaded:
        return translate("The speech model has not been downloaded yet.");
    case SessionError::notRecording:
        return translate("No recording is in progress.");
    }
    Q_UNREACHABLE();
}

QString DictationError::description() const
{
    if (const auto* own = std::get_if<SessionError>(&m_error))
        return tulvane::description(*own);
    if (const auto* recorder = std::get_if<RecorderError>(&m_error))
        return recorder->description();
    return std::get<EngineError>(m_error).description();
}

} // namespace tulvane
