#pragma once

#include <support/ScratchFolder.h>
#include <support/wayland/selections/SelectionServer.h>

#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <set>
#include <thread>
#include <vector>

namespace tulvane::test {

/// A compositor of a test's own that has a seat and its selections and nothing else: no screen, no window. It
/// lives in a thread of this process. Programs of other processes are shown the older interface, which those
/// that are installed know; this process is shown what the test says. Each call waits until it is done.
class SelectionCompositor final {
public:
    using Protocol = SelectionServer::Protocol;
    struct Options {
        std::set<Protocol> ours{Protocol::ext};
        std::uint32_t wlrVersion = 2;
    };

    SelectionCompositor() : SelectionCompositor(Options{}) {}
    explicit SelectionCompositor(const Options& options);
    SelectionCompositor(const SelectionCompositor&) = delete;
    SelectionCompositor& operator=(const SelectionCompositor&) = delete;
    ~SelectionCompositor();

    [[nodiscard]] const QProcessEnvironment& environment() const { return m_environment; }
    /// A folder that its programs may write into.
    [[nodiscard]] QString home() const { return m_folder.path(); }
    /// As `WaylandDesktop` does.
    QProcess& start(const QString& program, const QStringList& arguments = {});
    QByteArray run(const QString& program, const QStringList& arguments = {});
    /// It ends as in a crash, and its programs with it.
    void stop();

    void addSeat();
    void removeSeat();
    void announceBothAtOnce();
    [[nodiscard]] int bindings(Protocol protocol);
    [[nodiscard]] int offers();

private:
    [[nodiscard]] bool isShown(const wl_client* client, const wl_global* global) const;
    void inThread(const std::function<void(SelectionServer&)>& work);

    Options m_options;
    ScratchFolder m_folder;
    QProcessEnvironment m_environment;
    std::vector<std::unique_ptr<QProcess>> m_programs;
    wl_display* m_display;
    std::unique_ptr<SelectionServer> m_server;
    int m_wake; ///< an eventfd: there is work for the thread
    wl_event_source* m_waking = nullptr;
    std::function<void()> m_work;
    std::thread m_thread;
};

} // namespace tulvane::test
