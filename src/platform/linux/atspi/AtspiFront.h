#pragma once

#include <base/async/Lifetime.h>
#include <platform/linux/atspi/AccessibilityBus.h>

#include <QCoroTask>
#include <QDBusMessage>
#include <QObject>
#include <QString>

#include <memory>

namespace tulvane {

/// The window that is in front by its own program's word: programs tell the accessibility bus when one of
/// their windows becomes active and when it ceases to be, so that asking waits for nothing. Those that show
/// nothing there are never in front. Main thread, which it never blocks.
class AtspiFront final : public QObject {
    Q_OBJECT

public:
    struct Window {
        Accessible place;
        quint32 process = 0; ///< 0 until the bus has named it
        QString program;     ///< what its program calls itself ("gnome-terminal-server"); empty until it has

        [[nodiscard]] bool isKnown() const { return !place.service.isEmpty(); }
    };

    /// `sessionBusAddress` as for AtspiFocusedElements.
    explicit AtspiFront(QString sessionBusAddress);
    Q_DISABLE_COPY_MOVE(AtspiFront)
    ~AtspiFront() override;

    /// The last that has been told; unknown where the window in front tells nothing. Where the bus has gone,
    /// looks for it again.
    [[nodiscard]] Window current();

private Q_SLOTS:
    void activated(const QDBusMessage& message);
    void deactivated(const QDBusMessage& message);
    void ownerChanged(const QString& name, const QString& before, const QString& after);

private:
    QCoro::Task<> begin();
    /// Of windows that were active before we listened.
    QCoro::Task<> findActive();
    /// Once. False where a program did not answer that may have it.
    QCoro::Task<bool> search();
    QCoro::Task<> describe();
    void listen();
    void setWindow(const Accessible& place);

    QString m_sessionAddress;
    std::shared_ptr<BusLink> m_link = std::make_shared<BusLink>();
    std::shared_ptr<AccessibilityBus> m_bus; ///< once reached
    Window m_window;
    bool m_hasHeard = false; ///< something has been told since the bus was reached
    bool m_isBeginning = false;
    Lifetime m_lifetime;
};

} // namespace tulvane
