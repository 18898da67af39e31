#include <base/Translate.h>
#include <speech/whisper/EngineError.h>

#include <QFileInfo>

namespace tulvane {

EngineError EngineError::modelLoadFailed(const QString& modelFile)
{
    EngineError error(Kind::modelLoadFailed);
    error.m_modelFile = modelFile;
    return error;
}

EngineError EngineError::transcriptionFailed(qint32 code)
{
    EngineError error(Kind::transcriptionFailed);
    error.m_code = code;
    return error;
}

EngineError EngineError::noModelLoaded()
{
    return EngineError(Kind::noModelLoaded);
}

QString EngineError::description() const
{
    switch (m_kind) {
    case Kind::modelLoadFailed:
        return translate("Could not load the speech model at %1.").arg(QFileInfo(m_modelFile).fileName());
    case Kind::transcriptionFailed:
        return translate("Transcription failed (whisper error %1).").arg(m_code);
    case Kind::noModelLoaded:
        return translate("No speech model is loaded.");
    }
    Q_UNREACHABLE();
}

} // namespace tulvane
