#include <platform/linux/kde/KGlobalAccelGrab.h>

#include <QObject>
#include <QWindow>

namespace tulvane {

namespace {

class BlockedShortcuts final : public QObject, public KeyboardGrab::Hold {
public:
    BlockedShortcuts(KGlobalAccel service, std::unique_ptr<EndWatch> watch, QWindow& window)
        : m_service(std::move(service)),
          m_watch(std::move(watch))
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
        if (!std::exchange(m_isBlocking, false))
            return;
        m_service.setBlocked(false);
        m_watch.reset();
    }

    KGlobalAccel m_service;
    std::unique_ptr<EndWatch> m_watch;
    bool m_isBlocking = true;
};

} // namespace

KGlobalAccelGrab::KGlobalAccelGrab(std::shared_ptr<LastingBus> bus, QProcessEnvironment environment)
    : m_service(std::move(bus)),
      m_environment(std::move(environment))
{
    if (m_service.isThere())
        m_service.setBlocked(false);
}

std::unique_ptr<EndWatch> KGlobalAccelGrab::watch(const QProcessEnvironment& environment,
                                                  const QString& owner)
{
    return std::make_unique<EndWatch>(
        environment, QStringList{QStringLiteral("dbus-send"), QStringLiteral("--session"),
                                 QStringLiteral("--type=method_call"), QStringLiteral("--dest=") + owner,
                                 QStringLiteral("/kglobalaccel"),
                                 QStringLiteral("org.kde.KGlobalAccel.blockGlobalShortcuts"),
                                 QStringLiteral("boolean:false")});
}

std::unique_ptr<KeyboardGrab::Hold> KGlobalAccelGrab::hold(QWindow& window)
{
    const QString owner = m_service.owner();
    if (owner.isEmpty())
        return nullptr;
    return std::make_unique<BlockedShortcuts>(m_service, watch(m_environment, owner), window);
}

} // namespace tulvane
