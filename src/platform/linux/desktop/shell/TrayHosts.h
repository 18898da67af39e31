#pragma once

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QObject>

#include <functional>

namespace tulvane {

/// Tells when a bar that shows status icons over the session bus comes or goes. Asks in the background and
/// never waits. Main thread.
class TrayHosts final : public QObject {
    Q_OBJECT

public:
    explicit TrayHosts(const QDBusConnection& bus);
    ~TrayHosts() override;

    /// There is one; said again when another comes.
    std::function<void()> onArrival;

private Q_SLOTS:
    void ask();

private:
    QDBusConnection m_bus;
    QDBusServiceWatcher m_watcher;
};

} // namespace tulvane
