#pragma once

#include <base/async/Lifetime.h>
#include <platform/linux/atspi/BusLink.h>
#include <platform/linux/layout/XkbKeymap.h>
#include <platform/linux/remote/RemoteDesktop.h>
#include <ports/KeyPosting.h>

#include <QCoroTask>
#include <QFuture>
#include <QString>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

namespace tulvane {

/// Synthesized keystrokes by a desktop's service for remote control. While a session of it is open a sign may
/// stand in the desktop's bar; so each paste opens one, or takes the one that was opened when it was
/// announced, and closes it. All keyboards share their modifiers there: keys that go out while the user holds
/// one are spoiled by it, where they cannot be let go of. Main thread, which it never blocks.
class RemoteKeyPosting final : public KeyPosting {
public:
    struct Hooks {
        /// Whether keys that are posted now reach the target.
        std::function<bool(const PasteTarget&)> isInFront = [](const PasteTarget&) { return true; };
        /// Whether the programs of the desktop can read what was put on the pasteboard for the target.
        std::function<bool(const PasteTarget&)> isOffered = [](const PasteTarget&) { return true; };
        /// The key that makes the target paste goes out now.
        std::function<void(const PasteTarget&)> pasting = [](const PasteTarget&) {};
        /// Whether the target has read it since.
        std::function<bool(const PasteTarget&)> isRead = [](const PasteTarget&) { return true; };
        /// A session that was opened ahead and is not used is closed after this.
        std::chrono::milliseconds unusedLimit{10'000};
        /// The user's keyboard layout.
        std::function<std::optional<XkbKeymap>()> layout = [] { return std::optional<XkbKeymap>(); };
    };

    RemoteKeyPosting(std::shared_ptr<RemoteDesktop> desktop, Hooks hooks);
    RemoteKeyPosting(const RemoteKeyPosting&) = delete;
    RemoteKeyPosting& operator=(const RemoteKeyPosting&) = delete;
    ~RemoteKeyPosting() override;

    void prepare() override;
    [[nodiscard]] QFuture<bool> paste(const PasteTarget& target) override;
    [[nodiscard]] QFuture<bool> typeSpaces(int count) override;

private:
    /// `none` where not even the first key went down.
    enum class Pressed { all, none, notAll };

    QCoro::Task<bool> post(std::optional<PasteTarget> target, QList<quint32> keys, int count);
    /// Everything between the opening of a session and its end, in the one that was opened ahead or in a new
    /// one. Returns what is to be closed.
    QCoro::Task<QString> postIn(std::shared_ptr<bool> isPosted, std::optional<PasteTarget> target,
                                QList<quint32> keys, int count);
    QCoro::Task<> closeUnused(int preparation);
    QCoro::Task<> letGo(QString session);
    /// The last one with all the others held.
    QCoro::Task<Pressed> pressAll(QString session, std::optional<PasteTarget> target, QList<quint32> keys);
    QCoro::Task<bool> pressLast(QString session, std::optional<PasteTarget> target, quint32 last);
    /// Looks so often, every other millisecond.
    QCoro::Task<> until(std::function<bool()> isSo, int looks);

    std::shared_ptr<RemoteDesktop> m_desktop;
    Hooks m_hooks;
    BusLink m_waits;
    std::optional<QFuture<QString>> m_prepared; ///< the session that was opened ahead
    int m_preparations = 0;
    bool m_isBusy = false;
    Lifetime m_lifetime;
};

} // namespace tulvane
