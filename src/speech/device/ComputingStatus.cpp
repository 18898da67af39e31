#include <speech/device/ComputingStatus.h>

#include <utility>

namespace tulvane {

void ComputingStatus::publish(const ComputingPlace& place)
{
    ComputingPlace earlier;
    {
        const std::lock_guard lock(m_mutex);
        earlier = std::exchange(m_place, place);
    }
    const bool isNews = place.isGivenUp && !earlier.isGivenUp;
    QMetaObject::invokeMethod(
        this,
        [this, isNews, reason = place.reason] {
            Q_EMIT changed();
            if (isNews)
                Q_EMIT gaveUp(reason);
        },
        Qt::QueuedConnection);
}

} // namespace tulvane
