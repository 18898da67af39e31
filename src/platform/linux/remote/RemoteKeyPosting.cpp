#include <base/async/TaskFuture.h>
#include <platform/linux/layout/ChordKeys.h>
#include <platform/linux/remote/RemoteKeyPosting.h>

#include <QCoroFuture>

namespace tulvane {

namespace {

using std::chrono::milliseconds;

/// From a key to the next, so that the compositor has handed the one on: it may handle keys in a thread of
/// its own, and tells programs which modifiers are down by what has come in there meanwhile.
constexpr milliseconds keyTime{10};
constexpr milliseconds lookPause{2};
/// Whether programs can read the text yet.
constexpr int offerLooks = 250;
/// Whether the target has read it. Where none does, the modifiers are held no longer than this.
constexpr int readLooks = 150;

} // namespace

RemoteKeyPosting::RemoteKeyPosting(std::shared_ptr<RemoteDesktop> desktop, Hooks hooks)
    : m_desktop(std::move(desktop)),
      m_hooks(std::move(hooks))
{
}

RemoteKeyPosting::~RemoteKeyPosting()
{
    m_lifetime.end();
    m_waits.close();
}

QFuture<bool> RemoteKeyPosting::paste(const PasteTarget& target)
{
    return futureOf(post(target, chordKeysIn(m_hooks.layout(), target.chord), 1));
}

QFuture<bool> RemoteKeyPosting::typeSpaces(int count)
{
    return futureOf(post(std::nullopt, {virtualKeys::byCode(virtualKeys::space)->evdev}, count));
}

void RemoteKeyPosting::prepare()
{
    if (m_isBusy)
        return;
    if (!m_prepared)
        m_prepared = futureOf(m_desktop->open());
    closeUnused(++m_preparations);
}

QCoro::Task<> RemoteKeyPosting::closeUnused(int preparation)
{
    const Lifetime::Guard alive = m_lifetime.guard();
    co_await m_waits.pause(m_hooks.unusedLimit);
    if (!alive || preparation != m_preparations || !m_prepared)
        co_return;
    const QFuture<QString> unused = *std::exchange(m_prepared, std::nullopt);
    const QString session = co_await unused;
    if (alive)
        co_await m_desktop->close(session);
}

QCoro::Task<> RemoteKeyPosting::until(std::function<bool()> isSo, int looks)
{
    const Lifetime::Guard alive = m_lifetime.guard();
    for (int look = 0; alive && look < looks && !isSo(); ++look)
        co_await m_waits.pause(lookPause);
}

QCoro::Task<> RemoteKeyPosting::letGo(QString session)
{
    const Lifetime::Guard alive = m_lifetime.guard();
    const QList<quint32> keys = m_desktop->keysToLetGo();
    for (const quint32 key : keys) {
        const bool isTaken = co_await m_desktop->key(session, key, false);
        if (!alive || !isTaken)
            co_return;
    }
}

QCoro::Task<bool> RemoteKeyPosting::pressLast(QString session, std::optional<PasteTarget> target,
                                              quint32 last)
{
    const Lifetime::Guard alive = m_lifetime.guard();
    if (target) {
        co_await until([this, target] { return m_hooks.isOffered(*target); }, offerLooks);
        // The user may have gone elsewhere meanwhile: the keys are not for another program.
        if (!alive || !m_hooks.isInFront(*target))
            co_return false;
        m_hooks.pasting(*target);
    }
    // A key that is held too long repeats, and pastes again.
    co_return co_await m_desktop->tap(session, last);
}

QCoro::Task<RemoteKeyPosting::Pressed>
RemoteKeyPosting::pressAll(QString session, std::optional<PasteTarget> target, QList<quint32> keys)
{
    const Lifetime::Guard alive = m_lifetime.guard();
    co_await letGo(session);
    QList<quint32> held;
    bool isPosted = bool(alive);
    for (qsizetype i = 0; isPosted && i + 1 < keys.size(); ++i) {
        isPosted = co_await m_desktop->key(session, keys[i], true);
        if (!isPosted && held.isEmpty())
            co_return Pressed::none;
        if (isPosted)
            held.prepend(keys[i]);
        // Counted from the answer: until then a busy compositor has not come to the key.
        if (isPosted && alive)
            co_await m_desktop->handOn(session, keyTime, m_waits, alive);
        if (!alive)
            co_return Pressed::notAll;
    }
    if (isPosted && alive)
        isPosted = co_await pressLast(session, target, keys.constLast());
    if (alive && !held.isEmpty())
        co_await m_desktop->handOn(session, keyTime, m_waits, alive);
    // Under load bare letters have arrived: the compositor's input method, by all appearances, takes its time
    // with a key, and a modifier that goes up meanwhile overtakes it.
    if (alive && isPosted && target && !held.isEmpty())
        co_await until([this, target] { return m_hooks.isRead(*target); }, readLooks);
    // What went down goes up, whatever failed meanwhile.
    for (const quint32 code : held) {
        if (!alive)
            co_return Pressed::notAll;
        const bool isLetGo = co_await m_desktop->key(session, code, false);
        isPosted = isPosted && isLetGo;
    }
    co_return isPosted ? Pressed::all : Pressed::notAll;
}

QCoro::Task<QString> RemoteKeyPosting::postIn(std::shared_ptr<bool> isPosted,
                                              std::optional<PasteTarget> target, QList<quint32> keys,
                                              int count)
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
            session = co_await m_desktop->open();
            if (alive && !session.isEmpty())
                pressed = co_await pressAll(session, target, keys);
        }
        if (pressed != Pressed::all)
            co_return session;
    }
    *isPosted = bool(alive);
    co_return session;
}

QCoro::Task<bool> RemoteKeyPosting::post(std::optional<PasteTarget> target, QList<quint32> keys, int count)
{
    const Lifetime::Guard alive = m_lifetime.guard();
    if (keys.isEmpty() || m_isBusy || (target && !m_hooks.isInFront(*target)))
        co_return false;
    m_isBusy = true;
    const auto isPosted = std::make_shared<bool>(false);
    const QString session = co_await postIn(isPosted, target, keys, count);
    if (alive)
        co_await m_desktop->close(session);
    if (alive)
        m_isBusy = false;
    co_return *isPosted;
}

} // namespace tulvane
