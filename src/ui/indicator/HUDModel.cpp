#include <dictation/PhaseText.h>
#include <ui/indicator/HUDModel.h>

#include <algorithm>

namespace tulvane {

void HUDModel::setPhase(const Phase& phase)
{
    if (m_phase == phase)
        return;
    m_phase = phase;
    Q_EMIT phaseChanged();
}

void HUDModel::setLevel(float level)
{
    const float within = std::clamp(level, 0.0F, 1.0F);
    if (m_level == within)
        return;
    m_level = within;
    Q_EMIT levelChanged();
}

void HUDModel::setTime(const QString& time, bool isEnding)
{
    if (m_time == time && m_isEnding == isEnding)
        return;
    m_time = time;
    m_isEnding = isEnding;
    Q_EMIT timeChanged();
}

void HUDModel::setShown(bool shown)
{
    if (m_isShown == shown)
        return;
    m_isShown = shown;
    Q_EMIT shownChanged();
}

void HUDModel::setBlended(bool blended)
{
    if (m_isBlended == blended)
        return;
    m_isBlended = blended;
    Q_EMIT blendedChanged();
}

// The status item has symbols of its own: it shows an error as a struck-out microphone, and no notices.
QString HUDModel::symbol() const
{
    switch (m_phase.kind) {
    case Phase::Kind::idle:
        return QStringLiteral("mic");
    case Phase::Kind::recording:
        return QStringLiteral("mic.fill");
    case Phase::Kind::transcribing:
        return QStringLiteral("waveform");
    case Phase::Kind::inserting:
        return QStringLiteral("text.cursor");
    case Phase::Kind::notice:
        return QStringLiteral("info.circle");
    case Phase::Kind::error:
        return QStringLiteral("exclamationmark.triangle.fill");
    }
    Q_UNREACHABLE();
}

QString HUDModel::label() const
{
    return lineOf(m_phase);
}

} // namespace tulvane
