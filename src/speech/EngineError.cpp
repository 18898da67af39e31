#include <base/Translate.h>
#include <speech/EngineError.h>

#include <QFileInfo>

namespace tulvane {

namespace {

QString megabytes(qint64 bytes)
{
    return QString::number(bytes / 1'000'000);
}

} // namespace

QString EngineObstacle::description() const
{
    switch (kind) {
    case Kind::unknown:
        return {};
    case Kind::unreadable:
        return translate("The file cannot be read: %1").arg(detail);
    case Kind::damaged:
        return translate("The file is damaged, or no speech model: %1").arg(detail);
    case Kind::noBackend:
        return translate("A part of Tulvane is missing: there is nothing to compute with.");
    case Kind::memory:
        return translate("This needs %1 MB of memory, and %2 MB are available.")
            .arg(megabytes(neededBytes), megabytes(availableBytes));
    case Kind::unknownLanguage:
        return translate("The speech model does not know the language “%1”.").arg(detail);
    case Kind::library:
        return translate("The speech library says: %1").arg(detail);
    }
    Q_UNREACHABLE();
}

EngineError EngineError::modelLoadFailed(const QString& modelFile, const EngineObstacle& obstacle)
{
    EngineError error(Kind::modelLoadFailed);
    error.m_modelFile = modelFile;
    error.m_obstacle = obstacle;
    return error;
}

EngineError EngineError::transcriptionFailed(qint32 code, const EngineObstacle& obstacle)
{
    EngineError error(Kind::transcriptionFailed);
    error.m_code = code;
    error.m_obstacle = obstacle;
    return error;
}

EngineError EngineError::noModelLoaded()
{
    return EngineError(Kind::noModelLoaded);
}

QString EngineError::whatFailed() const
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

QString EngineError::description() const
{
    const QString reason = m_obstacle.description();
    return reason.isEmpty() ? whatFailed() : whatFailed() + u'\n' + reason;
}

} // namespace tulvane
