#pragma once

#include <platform/linux/desktop/LastingBus.h>
#include <platform/linux/desktop/LoginSession.h>
#include <platform/linux/desktop/ScreenSavers.h>
#include <ports/ScreenLock.h>

namespace tulvane {

/// What the login manager and the screen savers say, whichever the desktop has. Main thread.
class DBusScreenLock final : public ScreenLock {
public:
    struct Options {
        std::shared_ptr<LastingBus> sessionBus = LastingBus::session();
        std::shared_ptr<LastingBus> systemBus = LastingBus::system();
        QString session = {}; ///< as in XDG_SESSION_ID; may be empty
        std::chrono::milliseconds requestTime = LoginSession::requestTime;
    };

    explicit DBusScreenLock(const Options& options);
    ~DBusScreenLock() override;
    DBusScreenLock(const DBusScreenLock&) = delete;
    DBusScreenLock& operator=(const DBusScreenLock&) = delete;

    [[nodiscard]] bool isLocked() const override { return m_locked; }
    void setChangeHandler(std::function<void(bool locked)> handler) override;

private:
    void update();

    ScreenSavers m_savers;
    LoginSession m_session;
    bool m_locked = false;
    std::function<void(bool locked)> m_handler;
};

} // namespace tulvane
