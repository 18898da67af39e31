#include <platform/linux/x11/keyboard/ServerTime.h>

namespace tulvane {

namespace {

// Later than this no event is handled; a greater difference is one of clocks.
constexpr quint32 longestDelay = 10'000;

} // namespace

std::chrono::milliseconds ServerTime::age(quint32 time, std::chrono::steady_clock::time_point now)
{
    const auto here = std::chrono::duration_cast<std::chrono::milliseconds>(now.time_since_epoch()).count();
    const quint32 difference = static_cast<quint32>(here) - time;
    if (!m_difference)
        m_difference = difference < longestDelay ? 0 : difference;
    // By the sign of the difference, since both count in a circle.
    const auto age = static_cast<qint32>(difference - *m_difference);
    if (age >= 0 && age < static_cast<qint32>(longestDelay))
        return std::chrono::milliseconds(age);
    m_difference = difference;
    return std::chrono::milliseconds(0);
}

} // namespace tulvane
