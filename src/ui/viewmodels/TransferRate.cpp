#include <base/Translate.h>
#include <ui/viewmodels/TransferRate.h>

#include <QString>

namespace tulvane {

void TransferRate::note(qint64 received, std::chrono::nanoseconds at)
{
    // A download that begins anew has another rate.
    if (!m_seen.isEmpty() && received < m_seen.last().received)
        m_seen.clear();
    if (!m_seen.isEmpty() && m_seen.last().at == at)
        m_seen.removeLast();
    m_seen.append({received, at});
    while (m_seen.size() > 2 && at - m_seen.at(1).at >= span)
        m_seen.removeFirst();
}

std::optional<double> TransferRate::bytesPerSecond() const
{
    if (m_seen.size() < 2 || m_seen.last().at - m_seen.first().at < shortest)
        return std::nullopt;
    const std::chrono::duration<double> time = m_seen.last().at - m_seen.first().at;
    return static_cast<double>(m_seen.last().received - m_seen.first().received) / time.count();
}

QString durationText(std::chrono::seconds time)
{
    const auto seconds = static_cast<qint64>(time.count());
    if (seconds < 60)
        return translate("%1 s").arg(seconds);
    if (seconds < 3600)
        return seconds % 60 == 0 ? translate("%1 min").arg(seconds / 60)
                                 : translate("%1 min %2 s").arg(seconds / 60).arg(seconds % 60);
    return translate("%1 h %2 min").arg(seconds / 3600).arg(seconds / 60 % 60);
}

} // namespace tulvane
