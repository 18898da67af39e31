#pragma once

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QObject>

#include <functional>

namespace tulvane {

/// Notices when a bar that shows status icons over the session bus comes. Asks in the background and
/// never waits. Main thread.
class TrayHosts final : public QObject {
    Q_OBJECT

public:
    explicit TrayHosts(const QDBusConnection& bus);
    ~TrayHosts() override;

    /// There is one; said again when another comes.
    std::function<void()> onArrival;

public Q_SLOTS:
    /// Whether there is one; `onArrival` is the answer where there is.
    void ask();

private:
    QDBusConnection m_bus;
    QDBusServiceWatcher m_watcher;
};

} // namespace tulvane
