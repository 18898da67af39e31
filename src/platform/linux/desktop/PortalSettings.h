#pragma once

#include <ports/Presentation.h>

#include <QDBusConnection>
#include <QDBusVariant>
#include <QObject>
#include <QString>

#include <optional>

namespace tulvane {

/// What the desktop's settings portal says about looks, as far as it has said anything. Asks in the
/// background, and anew when the portal appears; follows changes. Main thread.
class PortalSettings final : public QObject {
    Q_OBJECT

public:
    explicit PortalSettings(const QDBusConnection& bus);
    ~PortalSettings() override;

    /// Null where the portal has not answered or the user has no preference.
    [[nodiscard]] std::optional<Appearance> appearance() const { return m_appearance; }
    [[nodiscard]] std::optional<bool> reducedMotion() const { return m_reducedMotion; }

Q_SIGNALS:
    void changed();

private Q_SLOTS:
    void note(const QString& space, const QString& key, const QDBusVariant& value);

private:
    void askForAll();
    void ask(const QString& space, const QString& key);

    QDBusConnection m_bus;
    std::optional<Appearance> m_appearance;
    std::optional<bool> m_reducedMotion;
};

} // namespace tulvane
