#pragma once

#include <QDBusContext>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QString>

#include <functional>
#include <memory>

namespace tulvane {

class LastingBus;

/// A window as KWin describes it.
struct KWinWindow {
    QString id;            ///< KWin's own; empty where no window is in front
    QString resourceClass; ///< the application id, or the class of an X11 window
    quint32 process = 0;
    bool isX11 = false;
    bool isFullScreen = false;

    [[nodiscard]] friend bool operator==(const KWinWindow&, const KWinWindow&) = default;
};

/// Which window is in front, on KDE: a script of a few lines in KWin calls us at every change, so that asking
/// waits for nothing. A KWin that starts anew, and a bus that comes back, get the script again. Works in KWin
/// 5 and 6. Main thread.
class KWinFront final : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.dunio.Tulvane.Front")

public:
    explicit KWinFront(std::shared_ptr<LastingBus> bus);
    Q_DISABLE_COPY_MOVE(KWinFront)
    ~KWinFront() override;

    /// The last that KWin has told; without id until it first has.
    [[nodiscard]] const KWinWindow& current() const { return m_current; }
    /// Replaces the one handler of changes.
    void setChangeHandler(std::function<void()> handler) { m_changed = std::move(handler); }

public Q_SLOTS:
    // KWin's script calls it.
    Q_SCRIPTABLE void front(const QString& id, const QString& resourceClass, int process, bool isX11,
                            bool isFullScreen);

private:
    void listen();
    void kwinChanged(const QString& after);
    void load();
    void loaded(const QDBusPendingReply<int>& number);
    void loadAgain();
    void start(int script);
    void forget();

    std::shared_ptr<LastingBus> m_bus;
    QDBusServiceWatcher m_watcher;
    QString m_name;  ///< of the script, and of our object on the bus
    QString m_kwin;  ///< the connection of the KWin that has the script
    int m_loads = 0; ///< of this KWin
    int m_round = 0; ///< of loading; an answer to an earlier one is none
    KWinWindow m_current;
    std::function<void()> m_changed;
};

} // namespace tulvane
