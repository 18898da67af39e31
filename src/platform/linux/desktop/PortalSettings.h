#pragma once

#include <ports/Presentation.h>

#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <QObject>
#include <QString>

#include <memory>
#include <optional>

namespace tulvane {

class LastingBus;

/// What the desktop's settings portal says about looks, as far as it has said anything. Asks in the
/// background, and anew when the portal appears; follows changes. Main thread.
class PortalSettings final : public QObject {
    Q_OBJECT

public:
    explicit PortalSettings(std::shared_ptr<LastingBus> bus);
    ~PortalSettings() override;

    /// Null where the portal has not answered or the user has no preference.
    [[nodiscard]] std::optional<Appearance> appearance() const { return m_appearance; }
    [[nodiscard]] std::optional<bool> reducedMotion() const { return m_reducedMotion; }

Q_SIGNALS:
    void changed();

private Q_SLOTS:
    void note(const QString& space, const QString& key, const QDBusVariant& value);

private:
    void listen();
    void askForAll();
    void ask(const QString& space, const QString& key);

    std::shared_ptr<LastingBus> m_bus;
    QDBusServiceWatcher m_watcher;
    std::optional<Appearance> m_appearance;
    std::optional<bool> m_reducedMotion;
};

} // namespace tulvane
