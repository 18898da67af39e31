#include <base/Log.h>
#include <base/async/TaskFuture.h>
#include <platform/linux/gnome/MutterPosting.h>
#include <platform/linux/layout/ChordKeys.h>

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusObjectPath>

#include <algorithm>

namespace tulvane {

namespace {

using std::chrono::milliseconds;

const QString service = QStringLiteral("org.gnome.Mutter.RemoteDesktop");
const QString sessionInterface = service + QStringLiteral(".Session");
constexpr quint32 leftShift = 42;
/// The first key of a new keyboard is lost.
constexpr milliseconds settlingTime{50};
/// From a key to the next, so that the compositor has handed the one on: it handles keys in a thread of its
/// own, and tells programs which modifiers are down by what has come in there meanwhile.
constexpr milliseconds keyTime{10};
constexpr milliseconds callLimit{2500};

} // namespace

MutterPosting::MutterPosting(QString sessionBusAddress, Hooks hooks)
    : m_address(std::move(sessionBusAddress)),
      m_hooks(std::move(hooks))
{
}

MutterPosting::~MutterPosting()
{
    // Its session ends with its connection.
    m_lifetime.end();
    m_link.close();
}

bool MutterPosting::isOffered(const QString& sessionBusAddress)
{
    const BusConnection connection(sessionBusAddress);
    return connection.isOpen() &&
           QDBusConnection(connection.name()).interface()->isServiceRegistered(service).value();
}

QFuture<bool> MutterPosting::paste(const PasteTarget& target)
{
    return futureOf(post(target, chordKeysIn(m_hooks.layout(), target.chord), 1));
}

QFuture<bool> MutterPosting::typeSpaces(int count)
{
    return futureOf(post(std::nullopt, {virtualKeys::byCode(virtualKeys::space)->evdev}, count));
}

QCoro::Task<std::optional<QDBusMessage>> MutterPosting::ask(QString path, QString interface, QString method,
                                                            QVariantList arguments)
{
    QDBusMessage message = QDBusMessage::createMethodCall(service, path, interface, method);
    message.setArguments(arguments);
    auto answer = co_await m_link.call(*m_connection, message, callLimit);
    if (answer && answer->type() == QDBusMessage::ReplyMessage)
        co_return answer;
    if (answer)
        qCWarning(lcInsertion, "Remote control: %ls", qUtf16Printable(answer->errorMessage()));
    co_return std::nullopt;
}

QCoro::Task<bool> MutterPosting::key(quint32 evdev, bool isDown)
{
    const QVariantList words{evdev, isDown};
    const auto answer =
        co_await ask(m_session, sessionInterface, QStringLiteral("NotifyKeyboardKeycode"), words);
    co_return answer.has_value();
}

QCoro::Task<> MutterPosting::handOn(milliseconds time)
{
    const Lifetime::Guard alive = m_lifetime.guard();
    // A busy compositor answers when it has come to it.
    const QVariantList none;
    for (const milliseconds wait : {time, milliseconds(1)}) {
        co_await m_link.pause(wait);
        if (!alive)
            co_return;
        co_await ask(m_session, QStringLiteral("org.freedesktop.DBus.Peer"), QStringLiteral("Ping"), none);
        if (!alive)
            co_return;
    }
}

QCoro::Task<bool> MutterPosting::begin()
{
    const Lifetime::Guard alive = m_lifetime.guard();
    if (!m_connection || !m_connection->isOpen()) {
        const auto opened = co_await m_link.open(m_address);
        if (!alive || !opened || !*opened || !(*opened)->isOpen())
            co_return false;
        m_connection = *opened;
    }
    const QVariantList none;
    const auto created = co_await ask(QStringLiteral("/org/gnome/Mutter/RemoteDesktop"), service,
                                      QStringLiteral("CreateSession"), none);
    if (!alive || !created || created->arguments().isEmpty())
        co_return false;
    m_session = created->arguments().constFirst().value<QDBusObjectPath>().path();
    const auto started = co_await ask(m_session, sessionInterface, QStringLiteral("Start"), none);
    if (!alive || !started)
        co_return false;
    const bool pressed = co_await key(leftShift, true);
    const bool released = alive && co_await key(leftShift, false);
    if (!alive || !pressed || !released)
        co_return false;
    co_await handOn(settlingTime);
    co_return bool(alive);
}

QCoro::Task<bool> MutterPosting::pressAll(QList<quint32> keys)
{
    const Lifetime::Guard alive = m_lifetime.guard();
    const quint32 last = keys.constLast();
    QList<quint32> modifiers = keys.first(keys.size() - 1);
    bool isPosted = true;
    for (const quint32 code : modifiers) {
        const bool isDown = co_await key(code, true);
        isPosted = isPosted && isDown;
        if (alive)
            co_await handOn(keyTime);
        if (!alive)
            co_return false;
    }
    // Both at once: a key that is held too long repeats, and pastes again.
    auto pressed = key(last, true);
    auto released = key(last, false);
    const bool isDown = co_await pressed;
    const bool isUp = co_await released;
    if (alive && !modifiers.isEmpty())
        co_await handOn(keyTime);
    isPosted = isPosted && isDown && isUp;
    std::ranges::reverse(modifiers);
    // What went down goes up, whatever failed meanwhile.
    for (const quint32 code : modifiers) {
        if (!alive)
            co_return false;
        const bool isLetGo = co_await key(code, false);
        isPosted = isPosted && isLetGo;
    }
    co_return isPosted;
}

QCoro::Task<bool> MutterPosting::post(std::optional<PasteTarget> target, QList<quint32> keys, int count)
{
    const Lifetime::Guard alive = m_lifetime.guard();
    if (keys.isEmpty() || m_isBusy || (target && !m_hooks.isInFront(*target)))
        co_return false;
    m_isBusy = true;
    bool isPosted = co_await begin();
    // The user may have gone elsewhere meanwhile: the keys are not for another program.
    if (alive && isPosted && target)
        isPosted = m_hooks.isInFront(*target);
    if (alive && isPosted && target)
        m_hooks.pasting(*target);
    for (int i = 0; alive && isPosted && i < count; ++i)
        isPosted = co_await pressAll(keys);
    if (!alive)
        co_return false;
    if (!m_session.isEmpty()) {
        const QVariantList none;
        co_await ask(m_session, sessionInterface, QStringLiteral("Stop"), none);
    }
    if (!alive)
        co_return isPosted;
    m_session.clear();
    m_isBusy = false;
    co_return isPosted;
}

} // namespace tulvane
