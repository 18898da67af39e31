#include <base/Log.h>
#include <platform/linux/atspi/AtspiFocusedElements.h>
#include <platform/linux/gnome/MutterRemoteDesktop.h>

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusError>
#include <QDBusObjectPath>

namespace tulvane {

namespace {

using std::chrono::milliseconds;

const QString mutter = QStringLiteral("org.gnome.Mutter.RemoteDesktop");
const QString mutterPath = QStringLiteral("/org/gnome/Mutter/RemoteDesktop");
const QString sessionInterface = mutter + QStringLiteral(".Session");
constexpr milliseconds callLimit{2500};
constexpr milliseconds offerLimit{500};

QDBusMessage callOf(const QString& object, const QString& interface, const QString& method,
                    const QVariantList& arguments = {})
{
    QDBusMessage message = QDBusMessage::createMethodCall(mutter, object, interface, method);
    message.setArguments(arguments);
    return message;
}

} // namespace

MutterRemoteDesktop::MutterRemoteDesktop(QString sessionBusAddress) : m_address(std::move(sessionBusAddress))
{
}

MutterRemoteDesktop::~MutterRemoteDesktop()
{
    // Its session ends with its connection.
    m_lifetime.end();
    m_link.close();
}

bool MutterRemoteDesktop::isOffered(const QString& sessionBusAddress)
{
    const BusConnection connection(sessionBusAddress.isEmpty() ? AtspiFocusedElements::usersSessionBus()
                                                               : sessionBusAddress);
    const QDBusConnection bus(connection.name());
    if (!connection.isOpen() || !bus.interface()->isServiceRegistered(mutter).value())
        return false;
    // Ends with the connection; no sign is shown for one that was not started.
    const QDBusMessage answer = bus.call(callOf(mutterPath, mutter, QStringLiteral("CreateSession")),
                                         QDBus::Block, static_cast<int>(offerLimit.count()));
    const QDBusError error(answer);
    // While the screen is locked the service gives no program one.
    const bool isForNow = error.message().contains(u"inhibited");
    return !error.isValid() || error.type() == QDBusError::NoReply || isForNow;
}

QCoro::Task<std::optional<QDBusMessage>> MutterRemoteDesktop::ask(QString path, QString interface,
                                                                  QString method, QVariantList arguments)
{
    auto answer = co_await m_link.call(*m_connection, callOf(path, interface, method, arguments), callLimit);
    if (answer && answer->type() == QDBusMessage::ReplyMessage)
        co_return answer;
    if (answer)
        qCWarning(lcInsertion, "Remote control: %ls", qUtf16Printable(answer->errorMessage()));
    co_return std::nullopt;
}

QCoro::Task<> MutterRemoteDesktop::close(QString session)
{
    const QVariantList none;
    if (!session.isEmpty())
        co_await ask(session, sessionInterface, QStringLiteral("Stop"), none);
}

QCoro::Task<bool> MutterRemoteDesktop::key(QString session, quint32 evdev, bool isDown)
{
    const QVariantList words{evdev, isDown};
    const auto answer =
        co_await ask(session, sessionInterface, QStringLiteral("NotifyKeyboardKeycode"), words);
    co_return answer.has_value();
}

QCoro::Task<> MutterRemoteDesktop::catchUp(QString session)
{
    const QVariantList none;
    co_await ask(session, QStringLiteral("org.freedesktop.DBus.Peer"), QStringLiteral("Ping"), none);
}

QCoro::Task<QString> MutterRemoteDesktop::open()
{
    const Lifetime::Guard alive = m_lifetime.guard();
    if (!m_connection || !m_connection->isOpen()) {
        const auto opened = co_await m_link.open(m_address);
        if (!alive || !opened || !*opened || !(*opened)->isOpen())
            co_return QString();
        m_connection = *opened;
    }
    const QVariantList none;
    const auto created = co_await ask(mutterPath, mutter, QStringLiteral("CreateSession"), none);
    if (!alive || !created || created->arguments().isEmpty())
        co_return QString();
    const QString session = created->arguments().constFirst().value<QDBusObjectPath>().path();
    const auto started = co_await ask(session, sessionInterface, QStringLiteral("Start"), none);
    if (!alive || !started)
        co_return QString();
    const bool isTapped = co_await tap(session, emptyKey);
    if (!alive || !isTapped)
        co_return QString();
    co_await handOn(session, settlingTime, m_link, alive);
    co_return alive ? session : QString();
}

} // namespace tulvane
