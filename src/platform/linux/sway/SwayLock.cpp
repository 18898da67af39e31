#include <platform/linux/sway/SwayLock.h>

#include <QJsonArray>

#include <algorithm>

namespace tulvane {

namespace {

constexpr std::chrono::milliseconds lookPause{50};

QStringList lockers()
{
    return {QStringLiteral("swaylock"), QStringLiteral("gtklock"), QStringLiteral("waylock"),
            QStringLiteral("hyprlock")};
}

} // namespace

SwayLock::SwayLock(std::shared_ptr<SwayConnection> sway, const QStringList& folders)
    : m_sway(std::move(sway)),
      m_lockers(lockers(), folders)
{
    m_looks.setInterval(lookPause);
    connect(&m_looks, &QTimer::timeout, this, &SwayLock::look);
    connect(&m_lockers, &ProgramWatch::changed, this, [this] {
        m_sinceStart.start();
        look();
    });
    if (m_lockers.isRunning()) {
        m_sinceStart.start();
        look();
    }
}

SwayLock::~SwayLock() = default;

bool SwayLock::hasFocus() const
{
    const auto seats = m_sway->ask(SwayConnection::Question::seats);
    if (!seats)
        return true;
    const QJsonArray all = seats->array();
    return std::ranges::any_of(all, [](const QJsonValue& seat) {
        return seat.toObject().value(QLatin1StringView("focus")).toInteger() != 0;
    });
}

void SwayLock::look()
{
    const bool isRunning = m_lockers.isRunning();
    const bool isLongThere = isRunning && m_sinceStart.hasExpired(lockTime.count());
    const bool isLocked = isLongThere || ((isRunning || m_isLocked) && !hasFocus());
    // A locker takes a moment to lock, and one that was killed may leave the screen locked.
    const bool isCertain = isRunning ? isLocked : !isLocked;
    isCertain ? m_looks.stop() : m_looks.start();
    if (std::exchange(m_isLocked, isLocked) == isLocked || !m_handler)
        return;
    const auto handler = m_handler; // it may set another
    handler(isLocked);
}

} // namespace tulvane
