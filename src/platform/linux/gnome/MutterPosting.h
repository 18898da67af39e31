#pragma once

#include <base/async/Lifetime.h>
#include <platform/linux/atspi/BusLink.h>
#include <platform/linux/layout/XkbKeymap.h>
#include <ports/KeyPosting.h>

#include <QCoroTask>
#include <QDBusMessage>
#include <QString>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

namespace tulvane {

/// Synthesized keystrokes by GNOME's own service for remote control, which asks the user nothing. While a
/// session of it is open a sign stands in the top bar; so each paste opens one and closes it. All keyboards
/// share their modifiers there: keys that go out while the user holds one are spoiled by it. Main thread,
/// which it never blocks.
class MutterPosting final : public KeyPosting {
public:
    struct Hooks {
        /// Whether keys that are posted now reach the target.
        std::function<bool(const PasteTarget&)> isInFront = [](const PasteTarget&) { return true; };
        /// The target's chord goes out now.
        std::function<void(const PasteTarget&)> pasting = [](const PasteTarget&) {};
        /// The user's keyboard layout.
        std::function<std::optional<XkbKeymap>()> layout = [] { return std::optional<XkbKeymap>(); };
    };

    MutterPosting(QString sessionBusAddress, Hooks hooks);
    MutterPosting(const MutterPosting&) = delete;
    MutterPosting& operator=(const MutterPosting&) = delete;
    ~MutterPosting() override;

    /// Whether the desktop has the service. Blocks for a moment.
    [[nodiscard]] static bool isOffered(const QString& sessionBusAddress);

    [[nodiscard]] QFuture<bool> paste(const PasteTarget& target) override;
    [[nodiscard]] QFuture<bool> typeSpaces(int count) override;

private:
    QCoro::Task<bool> post(std::optional<PasteTarget> target, QList<quint32> keys, int count);
    QCoro::Task<bool> begin();
    /// The last one with all the others held.
    QCoro::Task<bool> pressAll(QList<quint32> keys);
    /// Waits until the compositor has handed the last key on to the program in front: this long, and until it
    /// has come to what was asked of it.
    QCoro::Task<> handOn(std::chrono::milliseconds time);
    QCoro::Task<bool> key(quint32 evdev, bool isDown);
    QCoro::Task<std::optional<QDBusMessage>> ask(QString path, QString interface, QString method,
                                                 QVariantList arguments);

    QString m_address;
    Hooks m_hooks;
    BusLink m_link;
    std::shared_ptr<BusConnection> m_connection;
    QString m_session; ///< its path while one is open
    bool m_isBusy = false;
    Lifetime m_lifetime;
};

} // namespace tulvane
