#pragma once

#include <support/ScratchFolder.h>

#include <QJsonObject>
#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

/// Skips the test, and says why, where the desktop's packages are not installed.
#define TULVANE_NEEDS(kind)                                                                                  \
    if (const QStringList absent = ::tulvane::test::WaylandDesktop::missing(kind); !absent.isEmpty())        \
    GTEST_SKIP() << "not installed: " << qPrintable(absent.join(u' '))

namespace tulvane::test {

/// A Wayland desktop of a test's own, without a screen, with a session bus and a keyboard that is not ours.
/// All of it ends with the object, and with the test process, however that ends. Each call waits until it is
/// done.
class WaylandDesktop final {
public:
    /// closedKwin: programs press no keys there but by the portal.
    enum class Kind { sway, kwin, closedKwin, gnome };
    struct Options {
        bool x11 = false;   ///< with a server for X11 programs
        bool sound = false; ///< with a sound server
        QString layout = QStringLiteral("no");
    };

    /// The packages that the desktop needs and this machine lacks.
    [[nodiscard]] static QStringList missing(Kind kind);

    /// Returns when it is up. Throws std::runtime_error when it does not start.
    explicit WaylandDesktop(Kind kind);
    WaylandDesktop(Kind kind, const Options& options);
    WaylandDesktop(const WaylandDesktop&) = delete;
    WaylandDesktop& operator=(const WaylandDesktop&) = delete;
    ~WaylandDesktop();

    /// For its programs.
    [[nodiscard]] QProcessEnvironment environment() const { return m_environment; }
    [[nodiscard]] QString variable(const QString& name) const { return m_environment.value(name); }
    /// Of its session bus, for QDBusConnection::connectToBus.
    [[nodiscard]] QString bus() const { return variable(QStringLiteral("DBUS_SESSION_BUS_ADDRESS")); }
    /// The home of its programs, which they may write into.
    [[nodiscard]] QString home() const { return m_home; }

    /// Starts a program of the desktop's user; it ends with the desktop.
    QProcess& start(const QString& program, const QStringList& arguments = {},
                    const QProcessEnvironment& more = {});
    /// Runs one to its end and returns its standard output. Throws when it fails.
    QByteArray run(const QString& program, const QStringList& arguments = {});

    /// Keys by the kernel's numbers. `press`: down in this order, up in the other.
    void press(const QList<int>& keys) { keyRequest(QStringLiteral("press"), keys); }
    void down(const QList<int>& keys) { keyRequest(QStringLiteral("down"), keys); }
    void up(const QList<int>& keys) { keyRequest(QStringLiteral("up"), keys); }
    /// The whole screen as a PNG file.
    void picture(const QString& file);
    /// What this kind alone can do, by the name of the script's method.
    QString perform(const QString& what, const QStringList& with = {});
    /// Ends everything now.
    void stop();
    /// The script's process: when it dies, everything dies.
    [[nodiscard]] qint64 processId() const { return m_script.processId(); }

private:
    void keyRequest(const QString& what, const QList<int>& keys);
    QJsonObject ask(QJsonObject request);
    [[nodiscard]] QJsonObject message();

    ScratchFolder m_folder;
    QString m_home;
    QProcess m_script;
    QProcessEnvironment m_environment;
    QStringList m_prefix; ///< what makes a program the desktop's user's
    int m_lastId = 0;
    std::vector<std::unique_ptr<QProcess>> m_programs;
};

} // namespace tulvane::test
