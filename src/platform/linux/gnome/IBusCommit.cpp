#include <base/Log.h>
#include <platform/linux/gnome/IBusAddress.h>
#include <platform/linux/gnome/IBusCommit.h>
#include <platform/linux/gnome/IBusTypes.h>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>

namespace tulvane {

namespace {

using std::chrono::milliseconds;

const QString service = QStringLiteral("org.freedesktop.IBus");
const QString path = QStringLiteral("/org/freedesktop/IBus");
/// The first that the service makes is its own, for when no program's field listens to it.
const QString ownContext = QStringLiteral("/org/freedesktop/IBus/InputContext_1");
/// The service says what the field is for a moment after the field itself.
constexpr milliseconds purposeTime{30};
constexpr milliseconds step{10};
constexpr int stepsForFocus = 60;
constexpr int stepsForArrival = 50;

} // namespace

IBusCommit::~IBusCommit()
{
    m_lifetime.end();
    m_link.close();
    if (!m_before.isEmpty() && m_connection)
        QDBusConnection(m_connection->name()).call(setEngine(m_before), QDBus::Block, 500);
}

QDBusMessage IBusCommit::setEngine(const QString& name) const
{
    QDBusMessage message =
        QDBusMessage::createMethodCall(service, path, service, QStringLiteral("SetGlobalEngine"));
    message.setArguments({name});
    return message;
}

QCoro::Task<std::optional<QDBusMessage>> IBusCommit::ask(QString interface, QString method,
                                                         QVariantList arguments)
{
    const bool isForTheBus = interface == QLatin1StringView("org.freedesktop.DBus");
    QDBusMessage message =
        isForTheBus ? QDBusMessage::createMethodCall(interface, QStringLiteral("/org/freedesktop/DBus"),
                                                     interface, method)
                    : QDBusMessage::createMethodCall(service, path, interface, method);
    message.setArguments(arguments);
    constexpr milliseconds limit{1000};
    auto answer = co_await m_link.call(*m_connection, message, limit);
    if (answer && answer->type() == QDBusMessage::ReplyMessage)
        co_return answer;
    co_return std::nullopt;
}

QCoro::Task<bool> IBusCommit::connect()
{
    const Lifetime::Guard alive = m_lifetime.guard();
    const QString address = ibusAddress(m_environment);
    if (m_connection && m_connection->isOpen() && address == m_address)
        co_return true;
    m_engine.reset();
    m_connection.reset();
    if (address.isEmpty())
        co_return false;
    const auto opened = co_await m_link.open(address);
    if (!alive || !opened || !*opened || !(*opened)->isOpen())
        co_return false;
    m_connection = *opened;
    m_address = address;
    m_engine = std::make_unique<IBusEngine>(QDBusConnection(m_connection->name()));
    const IBusComponentFacts component{IBusEngine::busName, {IBusEngine::name, QStringLiteral("Tulvane")}};
    const QVariantList facts(1, QVariant::fromValue(QDBusVariant(QVariant::fromValue(component))));
    const auto registered = co_await ask(service, QStringLiteral("RegisterComponent"), facts);
    if (!alive || !registered)
        co_return false;
    const QVariantList name{IBusEngine::busName, quint32{0}};
    const auto named =
        co_await ask(QStringLiteral("org.freedesktop.DBus"), QStringLiteral("RequestName"), name);
    co_return alive&& named.has_value();
}

QCoro::Task<QVariant> IBusCommit::property(QString name)
{
    const QVariantList which{service, name};
    const auto answer =
        co_await ask(QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"), which);
    co_return answer ? answer->arguments().value(0) : QVariant();
}

QCoro::Task<std::optional<bool>> IBusCommit::hasField()
{
    const QVariant context = co_await property(QStringLiteral("CurrentInputContext"));
    const QString path = withoutVariants(context).value<QDBusObjectPath>().path();
    co_return path.isEmpty() ? std::nullopt : std::optional(path != ownContext);
}

QCoro::Task<QString> IBusCommit::engineInForce()
{
    const Lifetime::Guard alive = m_lifetime.guard();
    const QVariant answer = co_await property(QStringLiteral("GlobalEngine"));
    const auto name = engineNameIn(answer);
    // Ours was left behind by a program that was killed together with its watch.
    if (!alive || (name && *name != IBusEngine::name))
        co_return name.value_or(QString());
    co_return m_usualEngine();
}

QCoro::Task<bool> IBusCommit::become()
{
    const Lifetime::Guard alive = m_lifetime.guard();
    m_engine->reset();
    const QVariantList ours(1, IBusEngine::name);
    const auto set = co_await ask(service, QStringLiteral("SetGlobalEngine"), ours);
    if (!alive || !set)
        co_return false;
    for (int i = 0; alive && i < stepsForFocus && !m_engine->hasFocus(); ++i)
        co_await m_link.pause(step);
    if (alive && m_engine->hasFocus())
        co_await m_link.pause(purposeTime);
    co_return alive && m_engine->hasFocus();
}

QCoro::Task<IBusCommit::Outcome> IBusCommit::commit(QString text, std::function<QCoro::Task<bool>()> arrived)
{
    const Lifetime::Guard alive = m_lifetime.guard();
    if (m_isBusy)
        co_return Outcome::unavailable;
    m_isBusy = true;
    const bool isConnected = co_await connect();
    std::optional<bool> isListenedTo;
    if (alive && isConnected)
        isListenedTo = co_await hasField();
    if (!alive)
        co_return Outcome::unavailable;
    if (!isListenedTo.value_or(false)) {
        if (!isListenedTo)
            m_connection.reset(); // what was half done, or has gone, is begun anew
        m_isBusy = false;
        co_return isListenedTo ? Outcome::noField : Outcome::unavailable;
    }
    const QString before = co_await engineInForce();
    if (!alive)
        co_return Outcome::unavailable;
    m_before = before;
    m_watch = std::make_unique<EngineWatch>(m_environment, before);
    const Outcome outcome = co_await commitIntoField(std::move(text), std::move(arrived));
    if (!alive)
        co_return outcome;
    co_await giveBack();
    if (alive)
        m_isBusy = false;
    co_return outcome;
}

QCoro::Task<IBusCommit::Outcome> IBusCommit::commitIntoField(QString text,
                                                             std::function<QCoro::Task<bool>()> arrived)
{
    const Lifetime::Guard alive = m_lifetime.guard();
    const bool isOurs = co_await become();
    if (!alive || !isOurs || m_engine->isForPasswords())
        co_return Outcome::noField;
    m_engine->commit(text);
    for (int i = 0; i < stepsForArrival; ++i) {
        co_await m_link.pause(step);
        if (!alive || !m_connection->isOpen())
            co_return Outcome::interrupted;
        const bool isThere = co_await arrived();
        if (isThere || !alive)
            break;
    }
    co_return Outcome::committed;
}

QCoro::Task<> IBusCommit::giveBack()
{
    const Lifetime::Guard alive = m_lifetime.guard();
    const QVariantList theirs(1, m_before);
    const auto back = co_await ask(service, QStringLiteral("SetGlobalEngine"), theirs);
    if (!alive)
        co_return;
    if (!back)
        qCWarning(lcInsertion, "The input method did not take the user's engine back");
    m_before.clear();
    m_watch.reset();
}

} // namespace tulvane
