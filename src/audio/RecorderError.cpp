#include <audio/RecorderError.h>
#include <base/Translate.h>

#include <utility>

namespace tulvane {

RecorderError::RecorderError(Kind kind, QString underlying)
    : m_kind(kind),
      m_underlying(std::move(underlying))
{
}

RecorderError RecorderError::engineStartFailed(const QString& underlying)
{
    return RecorderError(Kind::engineStartFailed, underlying);
}

RecorderError RecorderError::noInputDevice()
{
    return RecorderError(Kind::noInputDevice);
}

RecorderError RecorderError::unsupportedFormat()
{
    return RecorderError(Kind::unsupportedFormat);
}

QString RecorderError::description() const
{
    switch (m_kind) {
    case Kind::engineStartFailed:
        return translate("Could not start audio capture: %1").arg(m_underlying);
    case Kind::noInputDevice:
        return translate("No microphone is available.");
    case Kind::unsupportedFormat:
        return translate("The microphone's audio format is not supported.");
    }
    return {};
}

} // namespace tulvane
