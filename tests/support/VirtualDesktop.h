#pragma once

#include <support/ScratchFolder.h>

#include <QByteArray>
#include <QProcess>
#include <QProcessEnvironment>
#include <QString>

#include <memory>
#include <vector>

namespace tulvane::test {

/// A desktop of a test's own: an X server on a free display and, where asked for, a window manager and a
/// session bus. Everything ends with the object, and with the test process, however that ends.
class VirtualDesktop final {
public:
    enum class WindowManager { none, openbox };
    enum class SessionBus { none, own };
    struct Options {
        WindowManager windowManager = WindowManager::none;
        SessionBus sessionBus = SessionBus::none;
        /// The inside of openbox's <keyboard>: none of its own key bindings unless named here.
        QByteArray openboxKeys;
        /// Of a session bus that the test has started itself.
        QString busAddress = {};
    };

    /// Returns when everything is ready to be used. Throws std::runtime_error when something does not start.
    VirtualDesktop();
    explicit VirtualDesktop(const Options& options);
    VirtualDesktop(const VirtualDesktop&) = delete;
    VirtualDesktop& operator=(const VirtualDesktop&) = delete;
    ~VirtualDesktop();

    /// ":7", for callers that open the display by name.
    [[nodiscard]] QString display() const { return m_display; }
    /// For programs of this desktop: display, session bus, and home and XDG folders of their own.
    [[nodiscard]] QProcessEnvironment environment() const { return m_environment; }
    /// The home folder that `environment` names.
    [[nodiscard]] QString home() const { return m_folder.path(); }

    /// Starts a program in `environment`; it is ended with the desktop. Throws when it does not start.
    QProcess& start(const QString& program, const QStringList& arguments = {});
    /// Runs a program to its end and returns what it wrote to its standard output. Throws when it fails.
    QByteArray run(const QString& program, const QStringList& arguments = {}) const;
    /// setxkbmap: "no", or "us,ru".
    void setKeyboardLayout(const QString& layout) const;
    /// The X server dies at once, as in a crash.
    void killServer();

private:
    void startServer();
    void startSessionBus();
    void startOpenbox(const QByteArray& keys);
    void stop(QProcess& process) const;

    ScratchFolder m_folder;
    QString m_display;
    QProcessEnvironment m_environment;
    std::vector<std::unique_ptr<QProcess>> m_processes; ///< in the order in which they were started
};

} // namespace tulvane::test
