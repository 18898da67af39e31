#include <base/Log.h>
#include <base/async/TaskFuture.h>
#include <platform/linux/gnome/MutterPosting.h>
#include <platform/linux/layout/ChordKeys.h>

#include <QCoroFuture>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusObjectPath>

#include <algorithm>

namespace tulvane {

namespace {

using std::chrono::milliseconds;

const QString mutter = QStringLiteral("org.gnome.Mutter.RemoteDesktop");
const QString sessionInterface = mutter + QStringLiteral(".Session");
/// The first key of a new keyboard is lost. This one has nothing on it in any layout: a Shift, while the user
/// still holds Alt, would change the layout on some desktops.
constexpr quint32 emptyKey = 240;
constexpr milliseconds settlingTime{50};
/// From a key to the next, so that the compositor has handed the one on: it handles keys in a thread of its
/// own, and tells programs which modifiers are down by what has come in there meanwhile.
constexpr milliseconds keyTime{10};
constexpr milliseconds callLimit{2500};
constexpr milliseconds lookPause{2};
/// Whether programs can read the text yet.
constexpr int offerLooks = 250;
/// Whether the target has read it. Where none does, the modifiers are held no longer than this.
constexpr int readLooks = 150;

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
           QDBusConnection(connection.name()).interface()->isServiceRegistered(mutter).value();
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
    QDBusMessage message = QDBusMessage::createMethodCall(mutter, path, interface, method);
    message.setArguments(arguments);
    auto answer = co_await m_link.call(*m_connection, message, callLimit);
    if (answer && answer->type() == QDBusMessage::ReplyMessage)
        co_return answer;
    if (answer)
        qCWarning(lcInsertion, "Remote control: %ls", qUtf16Printable(answer->errorMessage()));
    co_return std::nullopt;
}

void MutterPosting::prepare()
{
    if (m_isBusy)
        return;
    if (!m_prepared)
        m_prepared = futureOf(open());
    closeUnused(++m_preparations);
}

QCoro::Task<> MutterPosting::closeUnused(int preparation)
{
    const Lifetime::Guard alive = m_lifetime.guard();
    co_await m_link.pause(m_hooks.unusedLimit);
    if (!alive || preparation != m_preparations || !m_prepared)
        co_return;
    const QFuture<QString> unused = *std::exchange(m_prepared, std::nullopt);
    const QString session = co_await unused;
    if (alive)
        co_await close(session);
}

QCoro::Task<> MutterPosting::close(QString session)
{
    const QVariantList none;
    if (!session.isEmpty())
        co_await ask(session, sessionInterface, QStringLiteral("Stop"), none);
}

QCoro::Task<bool> MutterPosting::key(QString session, quint32 evdev, bool isDown)
{
    const QVariantList words{evdev, isDown};
    const auto answer =
        co_await ask(session, sessionInterface, QStringLiteral("NotifyKeyboardKeycode"), words);
    co_return answer.has_value();
}

QCoro::Task<> MutterPosting::handOn(QString session, milliseconds time)
{
    const Lifetime::Guard alive = m_lifetime.guard();
    // A busy compositor answers when it has come to it.
    const QVariantList none;
    for (const milliseconds wait : {time, milliseconds(1)}) {
        co_await m_link.pause(wait);
        if (!alive)
            co_return;
        co_await ask(session, QStringLiteral("org.freedesktop.DBus.Peer"), QStringLiteral("Ping"), none);
        if (!alive)
            co_return;
    }
}

QCoro::Task<QString> MutterPosting::open()
{
    const Lifetime::Guard alive = m_lifetime.guard();
    if (!m_connection || !m_connection->isOpen()) {
        const auto opened = co_await m_link.open(m_address);
        if (!alive || !opened || !*opened || !(*opened)->isOpen())
            co_return QString();
        m_connection = *opened;
    }
    const QVariantList none;
    const auto created = co_await ask(QStringLiteral("/org/gnome/Mutter/RemoteDesktop"), mutter,
                                      QStringLiteral("CreateSession"), none);
    if (!alive || !created || created->arguments().isEmpty())
        co_return QString();
    const QString session = created->arguments().constFirst().value<QDBusObjectPath>().path();
    const auto started = co_await ask(session, sessionInterface, QStringLiteral("Start"), none);
    if (!alive || !started)
        co_return QString();
    auto pressed = key(session, emptyKey, true);
    auto released = key(session, emptyKey, false);
    const bool isDown = co_await pressed;
    const bool isUp = co_await released;
    if (!alive || !isDown || !isUp)
        co_return QString();
    co_await handOn(session, settlingTime);
    co_return session;
}

QCoro::Task<> MutterPosting::until(std::function<bool()> isSo, int looks)
{
    const Lifetime::Guard alive = m_lifetime.guard();
    for (int look = 0; alive && look < looks && !isSo(); ++look)
        co_await m_link.pause(lookPause);
}

QCoro::Task<bool> MutterPosting::pressLast(QString session, std::optional<PasteTarget> target, quint32 last)
{
    const Lifetime::Guard alive = m_lifetime.guard();
    if (target) {
        co_await until([this, target] { return m_hooks.isOffered(*target); }, offerLooks);
        // The user may have gone elsewhere meanwhile: the keys are not for another program.
        if (!alive || !m_hooks.isInFront(*target))
            co_return false;
        m_hooks.pasting(*target);
    }
    // Both at once: a key that is held too long repeats, and pastes again.
    auto pressed = key(session, last, true);
    auto released = key(session, last, false);
    const bool isDown = co_await pressed;
    const bool isUp = co_await released;
    co_return isDown&& isUp;
}

QCoro::Task<MutterPosting::Pressed>
MutterPosting::pressAll(QString session, std::optional<PasteTarget> target, QList<quint32> keys)
{
    const Lifetime::Guard alive = m_lifetime.guard();
    QList<quint32> held;
    bool isPosted = true;
    for (qsizetype i = 0; isPosted && i + 1 < keys.size(); ++i) {
        isPosted = co_await key(session, keys[i], true);
        if (!isPosted && held.isEmpty())
            co_return Pressed::none;
        if (isPosted)
            held.prepend(keys[i]);
        // Counted from the answer: until then a busy compositor has not come to the key.
        if (isPosted && alive)
            co_await handOn(session, keyTime);
        if (!alive)
            co_return Pressed::notAll;
    }
    if (isPosted)
        isPosted = co_await pressLast(session, target, keys.constLast());
    if (alive && !held.isEmpty())
        co_await handOn(session, keyTime);
    // Under load bare letters have arrived: the compositor's input method, by all appearances, takes its time
    // with a key, and a modifier that goes up meanwhile overtakes it.
    if (alive && isPosted && target && !held.isEmpty())
        co_await until([this, target] { return m_hooks.isRead(*target); }, readLooks);
    // What went down goes up, whatever failed meanwhile.
    for (const quint32 code : held) {
        if (!alive)
            co_return Pressed::notAll;
        const bool isLetGo = co_await key(session, code, false);
        isPosted = isPosted && isLetGo;
    }
    co_return isPosted ? Pressed::all : Pressed::notAll;
}

QCoro::Task<QString> MutterPosting::postIn(std::shared_ptr<bool> isPosted, std::optional<PasteTarget> target,
                                           QList<quint32> keys, int count)
{
    const Lifetime::Guard alive = m_lifetime.guard();
    QString session;
    const auto prepared = std::exchange(m_prepared, std::nullopt);
    if (prepared)
        session = co_await *prepared;
    for (int i = 0; alive && i < count; ++i) {
        Pressed pressed = Pressed::none;
        if (!session.isEmpty())
            pressed = co_await pressAll(session, target, keys);
        // One that was opened ahead may have been ended meanwhile, by the user too.
        if (alive && i == 0 && pressed == Pressed::none) {
            session = co_await open();
            if (alive && !session.isEmpty())
                pressed = co_await pressAll(session, target, keys);
        }
        if (pressed != Pressed::all)
            co_return session;
    }
    *isPosted = bool(alive);
    co_return session;
}

QCoro::Task<bool> MutterPosting::post(std::optional<PasteTarget> target, QList<quint32> keys, int count)
{
    const Lifetime::Guard alive = m_lifetime.guard();
    if (keys.isEmpty() || m_isBusy || (target && !m_hooks.isInFront(*target)))
        co_return false;
    m_isBusy = true;
    const auto isPosted = std::make_shared<bool>(false);
    const QString session = co_await postIn(isPosted, target, keys, count);
    if (alive)
        co_await close(session);
    if (alive)
        m_isBusy = false;
    co_return *isPosted;
}

} // namespace tulvane
