#pragma once

#include <QDBusConnection>
#include <QDBusPendingCall>
#include <QList>
#include <QString>
#include <QStringList>

#include <memory>
#include <optional>

namespace tulvane {

class LastingBus;

/// KDE's service for global key combinations, as its own programs use it: no permission and no dialog. Keys
/// are the toolkit's numbers. Every call waits for the service, at most two seconds; what it does not answer
/// is empty. It is never started by a call: it is a part of the compositor, and what the bus would start in
/// its place takes its name away from the next one. Main thread.
class KGlobalAccel final {
public:
    static inline const QString service = QStringLiteral("org.kde.kglobalaccel");
    static inline const QString interface = QStringLiteral("org.kde.KGlobalAccel");
    static inline const QString path = QStringLiteral("/kglobalaccel");
    static inline const QString componentInterface = QStringLiteral("org.kde.kglobalaccel.Component");

    /// What a component can do: its names, for the service and for the user's eyes.
    struct Action {
        QString component;
        QString name;
        QString componentTitle;
        QString title;

        [[nodiscard]] QStringList words() const { return {component, name, componentTitle, title}; }
    };
    enum class Keys {
        asStored, ///< what the user has chosen in the system settings counts, these only where there is
                  ///< nothing
        asGiven,
        byDefault, ///< shown in the system settings as what it would be without the user's choice
    };

    /// Over the connection that the bus has at each call.
    explicit KGlobalAccel(std::shared_ptr<LastingBus> bus) : m_bus(std::move(bus)) {}

    [[nodiscard]] bool isThere() const { return !owner().isEmpty(); }
    /// The name of the service's connection, which is no other service's ever; empty where it is not there.
    [[nodiscard]] QString owner() const;
    /// Something that the service answers once it does its work; it has its name on the bus before that.
    /// Waits for nothing.
    [[nodiscard]] QDBusPendingCall askForAnything() const;
    /// Every action that has the combination.
    [[nodiscard]] QList<Action> holders(int key) const;
    /// Makes the action known and says where the service reports its presses; empty where it does not answer.
    [[nodiscard]] QString add(const Action& action) const;
    /// None where the service does not answer.
    [[nodiscard]] std::optional<QList<int>> defaultKeys(const Action& action) const;
    /// The combinations that the action has then: fewer than asked for where others have them. None where the
    /// service does not answer.
    std::optional<QList<int>> setKeys(const Action& action, const QList<int>& keys, Keys how) const;
    /// As the system settings do it for the user: the service notifies the action's own program.
    void setForeignKeys(const Action& action, const QList<int>& keys) const;
    /// The key goes to programs again; the service keeps what the user has chosen for the action.
    void setInactive(const Action& action) const;
    /// While blocked, no global combination does anything: all go to the window in front.
    void setBlocked(bool isBlocked) const;

private:
    std::shared_ptr<LastingBus> m_bus;
};

} // namespace tulvane
