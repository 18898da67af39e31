#include <platform/linux/atspi/AccessibilityBus.h>

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QDBusVariant>

namespace tulvane {

QCoro::Task<std::shared_ptr<AccessibilityBus>>
AccessibilityBus::open(std::shared_ptr<BusLink> link, QString sessionAddress, FrontProcess front)
{
    const auto session = co_await link->open(sessionAddress);
    if (!session || !(*session)->isOpen())
        co_return std::shared_ptr<AccessibilityBus>();
    const QDBusMessage question =
        QDBusMessage::createMethodCall(QStringLiteral("org.a11y.Bus"), QStringLiteral("/org/a11y/bus"),
                                       QStringLiteral("org.a11y.Bus"), QStringLiteral("GetAddress"));
    const auto answer = co_await link->call(**session, question);
    const auto address = busAnswer::toString(answer);
    if (!address || address->isEmpty())
        co_return std::shared_ptr<AccessibilityBus>();
    const auto connection = co_await link->open(*address);
    if (!connection || !(*connection)->isOpen())
        co_return std::shared_ptr<AccessibilityBus>();
    co_return std::make_shared<AccessibilityBus>(link, *connection, front);
}

Awaited<QDBusMessage> AccessibilityBus::call(const Accessible& target, const QString& interface,
                                             const QString& method, const QVariantList& arguments,
                                             Limit limit) const
{
    QDBusMessage message = QDBusMessage::createMethodCall(target.service, target.path, interface, method);
    message.setArguments(arguments);
    return m_link->call(*m_connection, message, limit);
}

Awaited<QDBusMessage> AccessibilityBus::property(const Accessible& target, const QString& interface,
                                                 const QString& name, Limit limit) const
{
    return call(target, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"),
                {interface, name}, limit);
}

Awaited<QDBusMessage> AccessibilityBus::processOf(const Accessible& object, Limit limit) const
{
    const Accessible bus{QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus")};
    return call(bus, QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetConnectionUnixProcessID"),
                {object.service}, limit);
}

namespace busAnswer {

namespace {

/// The one value of an answer of this signature.
std::optional<QVariant> only(const Message& answer, const char* signature)
{
    if (!answer || answer->type() != QDBusMessage::ReplyMessage ||
        answer->signature() != QLatin1String(signature) || answer->arguments().isEmpty())
        return std::nullopt;
    return answer->arguments().constFirst();
}

template <class T>
std::optional<T> plain(const Message& answer, const char* signature)
{
    const auto value = only(answer, signature);
    return value ? std::optional<T>(value->value<T>()) : std::nullopt;
}

template <class T>
std::optional<T> property(const Message& answer)
{
    const auto value = only(answer, "v");
    if (!value)
        return std::nullopt;
    const QVariant inner = value->value<QDBusVariant>().variant();
    return inner.metaType() == QMetaType::fromType<T>() ? std::optional<T>(inner.value<T>()) : std::nullopt;
}

} // namespace

std::optional<bool> toBool(const Message& answer)
{
    return plain<bool>(answer, "b");
}

std::optional<int> toInt(const Message& answer)
{
    return plain<int>(answer, "i");
}

std::optional<quint32> toUnsigned(const Message& answer)
{
    return plain<quint32>(answer, "u");
}

std::optional<QString> toString(const Message& answer)
{
    return plain<QString>(answer, "s");
}

std::optional<QStringList> toStrings(const Message& answer)
{
    return plain<QStringList>(answer, "as");
}

std::optional<std::pair<int, int>> toRange(const Message& answer)
{
    if (!answer || answer->type() != QDBusMessage::ReplyMessage || answer->signature() != u"ii")
        return std::nullopt;
    return std::pair(answer->arguments().at(0).toInt(), answer->arguments().at(1).toInt());
}

std::optional<AccessibleStates> toStates(const Message& answer)
{
    const auto value = only(answer, "au");
    if (!value)
        return std::nullopt;
    const auto words = qdbus_cast<QList<quint32>>(*value);
    AccessibleStates states;
    for (int word = 0; word < 2 && word < words.size(); ++word)
        states.bits |= static_cast<quint64>(words.at(word)) << 32 * word;
    return states;
}

std::optional<QList<Accessible>> toAccessibles(const Message& answer)
{
    const auto value = only(answer, "a(so)");
    if (!value)
        return std::nullopt;
    const auto array = value->value<QDBusArgument>();
    QList<Accessible> all;
    array.beginArray();
    while (!array.atEnd()) {
        Accessible one;
        QDBusObjectPath path;
        array.beginStructure();
        array >> one.service >> path;
        array.endStructure();
        one.path = path.path();
        all.append(one);
    }
    array.endArray();
    return all;
}

std::optional<int> toIntProperty(const Message& answer)
{
    return property<int>(answer);
}

std::optional<QString> toStringProperty(const Message& answer)
{
    return property<QString>(answer);
}

} // namespace busAnswer

} // namespace tulvane
