#pragma once

#include <QDBusConnection>
#include <QList>
#include <QString>
#include <QStringList>

namespace tulvane {

/// KDE's service for global key combinations, as its own programs use it: no permission and no dialog. Keys
/// are the toolkit's numbers. Every call waits for the service, at most two seconds; what it does not answer
/// is empty. Main thread.
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

    explicit KGlobalAccel(QDBusConnection bus) : m_bus(std::move(bus)) {}

    [[nodiscard]] bool isThere() const;
    /// Every action that has the combination.
    [[nodiscard]] QList<Action> holders(int key) const;
    /// Makes the action known and says where the service reports its presses; empty where it does not answer.
    [[nodiscard]] QString add(const Action& action) const;
    [[nodiscard]] QList<int> defaultKeys(const Action& action) const;
    /// The combinations that the action has then: fewer than asked for where others have them.
    QList<int> setKeys(const Action& action, const QList<int>& keys, Keys how) const;
    /// As the system settings do it for the user: the service notifies the action's own program.
    void setForeignKeys(const Action& action, const QList<int>& keys) const;
    /// The key goes to programs again; the service keeps what the user has chosen for the action.
    void setInactive(const Action& action) const;
    /// While blocked, no global combination does anything: all go to the window in front.
    void setBlocked(bool isBlocked) const;

private:
    QDBusConnection m_bus;
};

} // namespace tulvane
