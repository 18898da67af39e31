#pragma once

#include <platform/linux/desktop/LastingBus.h>

#include <QDBusServiceWatcher>
#include <QObject>

#include <functional>
#include <memory>

namespace tulvane {

/// Notices when a bar that shows status icons over the session bus comes or goes. Asks in the background and
/// never waits. Main thread.
class TrayHosts final : public QObject {
    Q_OBJECT

public:
    explicit TrayHosts(std::shared_ptr<LastingBus> bus);
    ~TrayHosts() override;

    /// There is one; said again when another comes.
    std::function<void()> onArrival;
    /// The last one has gone.
    std::function<void()> onDeparture;
    /// The bus has ended and come back: no bar knows any icon of before.
    std::function<void()> onNewBus;

    [[nodiscard]] bool isThere() const { return m_isThere; }

public Q_SLOTS:
    /// Whether there is one; `onArrival` is the answer where there is.
    void ask();

private:
    void listen();
    void setThere(bool isThere);

    std::shared_ptr<LastingBus> m_bus;
    QDBusServiceWatcher m_watcher;
    bool m_isThere = false;
};

} // namespace tulvane
