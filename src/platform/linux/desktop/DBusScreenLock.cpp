#include <platform/linux/desktop/DBusScreenLock.h>

#include <utility>

namespace tulvane {

DBusScreenLock::DBusScreenLock(const Options& options)
    : m_savers(options.sessionBus),
      m_session(options.systemBus, options.session, options.requestTime)
{
    QObject::connect(&m_savers, &ScreenSavers::changed, &m_savers, [this] {
        if (!m_savers.isActive())
            m_session.endRequest();
        update();
    });
    QObject::connect(&m_session, &LoginSession::changed, &m_session, [this] { update(); });
}

DBusScreenLock::~DBusScreenLock() = default;

void DBusScreenLock::setChangeHandler(std::function<void(bool locked)> handler)
{
    m_handler = std::move(handler);
}

void DBusScreenLock::update()
{
    const bool locked = m_savers.isActive() || m_session.isLocked();
    if (std::exchange(m_locked, locked) == locked || !m_handler)
        return;
    const auto handler = m_handler; // it may set another
    handler(locked);
}

} // namespace tulvane
