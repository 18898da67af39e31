#include <platform/linux/gnome/IBusEngine.h>
#include <platform/linux/gnome/IBusTypes.h>

#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusVariant>

namespace tulvane {

namespace {

const QString root = QStringLiteral("/org/freedesktop/IBus");
const QString engineInterface = QStringLiteral("org.freedesktop.IBus.Engine");
const QString properties = QStringLiteral("org.freedesktop.DBus.Properties");

/// As a property of one yes or no is written.
struct IBusFlag {
    bool value = false;
};

QDBusArgument& operator<<(QDBusArgument& argument, const IBusFlag& flag)
{
    argument.beginStructure();
    argument << flag.value;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, IBusFlag&)
{
    return argument;
}

} // namespace

IBusEngine::IBusEngine(QDBusConnection connection) : m_connection(std::move(connection))
{
    registerIBusTypes();
    qDBusRegisterMetaType<IBusFlag>();
    m_connection.registerVirtualObject(root, this, QDBusConnection::SubPath);
}

IBusEngine::~IBusEngine()
{
    m_connection.unregisterObject(root);
}

void IBusEngine::reset()
{
    m_hasFocus = false;
    m_purpose.reset();
    m_surroundings.clear();
}

bool IBusEngine::isForPasswords() const
{
    return m_purpose == static_cast<quint32>(Purpose::password) ||
           m_purpose == static_cast<quint32>(Purpose::pin);
}

void IBusEngine::commit(const QString& text)
{
    send(QStringLiteral("CommitText"),
         {QVariant::fromValue(QDBusVariant(QVariant::fromValue(IBusText{text})))});
}

void IBusEngine::send(const QString& signal, const QVariantList& arguments)
{
    QDBusMessage message = QDBusMessage::createSignal(m_path, engineInterface, signal);
    message.setArguments(arguments);
    m_connection.send(message);
}

QString IBusEngine::introspect(const QString&) const
{
    return {};
}

bool IBusEngine::handleMessage(const QDBusMessage& message, const QDBusConnection& connection)
{
    if (message.type() != QDBusMessage::MethodCallMessage)
        return false;
    const QVariantList words = answer(message);
    connection.send(message.createReply(words));
    return true;
}

QVariantList IBusEngine::answer(const QDBusMessage& message)
{
    const QString call = message.member();
    if (message.interface() == properties)
        return property(message);
    if (call == QLatin1StringView("CreateEngine")) {
        m_path = QStringLiteral("%1/Engine/%2").arg(root).arg(++m_count);
        return {QVariant::fromValue(QDBusObjectPath(m_path))};
    }
    // The field that has the focus is entered with one of these, as the service's version has it.
    if (call == QLatin1StringView("FocusIn") || call == QLatin1StringView("FocusInId"))
        m_hasFocus = true;
    else if (call == QLatin1StringView("FocusOut") || call == QLatin1StringView("FocusOutId"))
        m_hasFocus = false;
    else if (call == QLatin1StringView("Enable"))
        send(QStringLiteral("RequireSurroundingText"));
    else if (call == QLatin1StringView("SetSurroundingText") && !message.arguments().isEmpty())
        m_surroundings = qdbus_cast<IBusText>(withoutVariants(message.arguments().constFirst())).text;
    // No key is ours: each goes on to the program.
    return call == QLatin1StringView("ProcessKeyEvent") ? QVariantList{false} : QVariantList{};
}

QVariantList IBusEngine::property(const QDBusMessage& message)
{
    const QVariantList words = message.arguments();
    const QString about = words.value(1).toString();
    if (message.member() == QLatin1StringView("Set") && about == QLatin1StringView("ContentType")) {
        m_purpose = qdbus_cast<IBusContentType>(withoutVariants(words.value(2))).purpose;
        return {};
    }
    if (message.member() == QLatin1StringView("Get")) {
        const IBusFlag flag{about == QLatin1StringView("ActiveSurroundingText")};
        return {QVariant::fromValue(QDBusVariant(QVariant::fromValue(flag)))};
    }
    if (message.member() == QLatin1StringView("GetAll"))
        return {QVariantMap()};
    return {};
}

} // namespace tulvane
