#include <platform/linux/kde/KGlobalAccelGrab.h>

#include <QObject>
#include <QWindow>

namespace tulvane {

namespace {

class BlockedShortcuts final : public QObject, public KeyboardGrab::Hold {
public:
    BlockedShortcuts(KGlobalAccel service, QWindow& window) : m_service(std::move(service))
    {
        m_service.setBlocked(true);
        connect(&window, &QWindow::visibleChanged, this, [this](bool isVisible) {
            if (!isVisible)
                end();
        });
        // The user who goes elsewhere wants the desktop's keys there.
        connect(&window, &QWindow::activeChanged, this, [this, &window] {
            if (!window.isActive())
                end();
        });
        connect(&window, &QObject::destroyed, this, [this] { end(); });
    }
    BlockedShortcuts(const BlockedShortcuts&) = delete;
    BlockedShortcuts& operator=(const BlockedShortcuts&) = delete;
    ~BlockedShortcuts() override { end(); }

private:
    void end()
    {
        if (std::exchange(m_isBlocking, false))
            m_service.setBlocked(false);
    }

    KGlobalAccel m_service;
    bool m_isBlocking = true;
};

} // namespace

KGlobalAccelGrab::KGlobalAccelGrab(QDBusConnection bus) : m_service(std::move(bus))
{
    if (m_service.isThere())
        m_service.setBlocked(false);
}

std::unique_ptr<KeyboardGrab::Hold> KGlobalAccelGrab::hold(QWindow& window)
{
    if (!m_service.isThere())
        return nullptr;
    return std::make_unique<BlockedShortcuts>(m_service, window);
}

} // namespace tulvane
