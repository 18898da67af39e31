#pragma once

#include <platform/linux/atspi/Accessible.h>
#include <platform/linux/atspi/BusLink.h>
#include <platform/linux/atspi/FrontProcess.h>

#include <QCoroTask>
#include <QList>
#include <QStringList>
#include <QVariant>

#include <chrono>
#include <memory>
#include <optional>
#include <utility>

namespace tulvane {

/// The bus on which programs show their user interface, and what can be asked there. Main thread. Every
/// answer ends within its limit: nothing where the program was silent, or answered with something else than
/// it should.
class AccessibilityBus final {
public:
    using Limit = std::chrono::milliseconds;

    /// Asks the session bus at this address for it. Null where there is none. `link` carries every wait.
    [[nodiscard]] static QCoro::Task<std::shared_ptr<AccessibilityBus>>
    open(std::shared_ptr<BusLink> link, QString sessionAddress, FrontProcess front);

    AccessibilityBus(std::shared_ptr<BusLink> link, std::shared_ptr<BusConnection> connection,
                     FrontProcess front)
        : m_link(std::move(link)),
          m_connection(std::move(connection)),
          m_front(std::move(front))
    {
    }

    /// False once the bus has gone.
    [[nodiscard]] bool isOpen() const { return m_connection->isOpen(); }
    [[nodiscard]] BusLink& link() const { return *m_link; }
    /// By the toolkit's name for it, for signals.
    [[nodiscard]] QString connectionName() const { return m_connection->name(); }
    /// Empty on a desktop that never tells.
    [[nodiscard]] const FrontProcess& front() const { return m_front; }

    /// A method's answer.
    [[nodiscard]] Awaited<QDBusMessage> call(const Accessible& target, const QString& interface,
                                             const QString& method, const QVariantList& arguments = {},
                                             Limit limit = BusLink::callLimit) const;
    /// A property's value, to be read with `asProperty...`.
    [[nodiscard]] Awaited<QDBusMessage> property(const Accessible& target, const QString& interface,
                                                 const QString& name, Limit limit = BusLink::callLimit) const;
    /// The process that this object is in, as the bus itself knows it.
    [[nodiscard]] Awaited<QDBusMessage> processOf(const Accessible& object,
                                                  Limit limit = BusLink::callLimit) const;

private:
    std::shared_ptr<BusLink> m_link;
    std::shared_ptr<BusConnection> m_connection;
    FrontProcess m_front;
};

/// What an answer holds; nothing where it is missing, an error, or of another type.
namespace busAnswer {

using Message = std::optional<QDBusMessage>;

[[nodiscard]] std::optional<bool> toBool(const Message& answer);
[[nodiscard]] std::optional<int> toInt(const Message& answer);
[[nodiscard]] std::optional<quint32> toUnsigned(const Message& answer);
[[nodiscard]] std::optional<QString> toString(const Message& answer);
[[nodiscard]] std::optional<QStringList> toStrings(const Message& answer);
[[nodiscard]] std::optional<std::pair<int, int>> toRange(const Message& answer);
[[nodiscard]] std::optional<AccessibleStates> toStates(const Message& answer);
[[nodiscard]] std::optional<QList<Accessible>> toAccessibles(const Message& answer);
[[nodiscard]] std::optional<int> toIntProperty(const Message& answer);
[[nodiscard]] std::optional<QString> toStringProperty(const Message& answer);

} // namespace busAnswer

} // namespace tulvane
