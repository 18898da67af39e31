#pragma once

#include <base/Scheduler.h>
#include <platform/linux/gnome/GnomeLayout.h>
#include <platform/linux/remote/RemoteKeyPosting.h>
#include <platform/linux/session/desktop/GnomeFront.h>
#include <platform/linux/x11/clipboard/BridgedPasteboards.h>

#include <memory>

namespace tulvane {

/// Everything on GNOME that brings text into other programs: the clipboard by way of the X server, which the
/// compositor shares with its own programs, and the keys by remote control. Main thread.
class GnomeText final {
public:
    struct Options {
        QProcessEnvironment environment;
        QString sessionBusAddress;
        PasteRules rules;
        std::shared_ptr<RemoteDesktop> remoteDesktop; ///< presses the keys
    };

    /// Null when there is no such X server. `scheduler` outlives it.
    [[nodiscard]] static std::shared_ptr<GnomeText> open(const Options& options, Scheduler& scheduler);
    GnomeText(std::unique_ptr<X11Connection> link, std::unique_ptr<SelectionOwner> keeper,
              const Options& options, Scheduler& scheduler);

    /// For what else a session does over the same connection.
    [[nodiscard]] X11Connection& connection() { return *m_link; }
    [[nodiscard]] FrontPrograms& front() { return *m_front; }
    [[nodiscard]] GnomeLayout& layout() { return m_layout; }
    [[nodiscard]] Pasteboards& pasteboards() { return m_boards; }
    [[nodiscard]] KeyPosting& keys() { return m_keys; }

private:
    std::unique_ptr<X11Connection> m_link;
    std::unique_ptr<SelectionOwner> m_keeper;
    std::shared_ptr<GnomeFront> m_front;
    GnomeLayout m_layout;
    BridgedPasteboards m_boards;
    RemoteKeyPosting m_keys;
};

} // namespace tulvane
