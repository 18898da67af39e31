#pragma once

#include <platform/linux/front/FrontProgram.h>
#include <platform/linux/remote/RemoteDesktop.h>
#include <platform/linux/wayland/clipboard/DataControlPasteboards.h>
#include <platform/linux/wayland/keyboard/KeyDevice.h>
#include <ports/KeyPosting.h>

#include <functional>
#include <memory>

namespace tulvane {

/// The keys of a paste from these pasteboards, over a keyboard of ours at the compositor; null without one.
[[nodiscard]] std::unique_ptr<KeyPosting> keysByDevice(std::unique_ptr<KeyDevice> device,
                                                       DataControlPasteboards& boards);
/// The same by the desktop's remote control.
[[nodiscard]] std::unique_ptr<KeyPosting> keysByRemoteDesktop(std::shared_ptr<RemoteDesktop> desktop,
                                                              DataControlPasteboards& boards);

/// Everything on a Wayland desktop that brings text into other programs. Main thread.
class WaylandText final {
public:
    /// Called once, with the pasteboards, which outlive what it makes; may make nothing.
    using MakeKeys = std::function<std::unique_ptr<KeyPosting>(DataControlPasteboards& boards)>;

    /// Null where the compositor lets no program without a window at the clipboard.
    [[nodiscard]] static std::shared_ptr<WaylandText> open(const QByteArray& socket, const MakeKeys& makeKeys,
                                                           std::shared_ptr<FrontPrograms> front,
                                                           PasteRules rules);
    WaylandText(std::unique_ptr<DataControlPasteboards> boards, const MakeKeys& makeKeys);

    [[nodiscard]] Pasteboards& pasteboards() { return *m_boards; }
    /// Null where no keys can be posted.
    [[nodiscard]] KeyPosting* keys() { return m_keys.get(); }

private:
    std::unique_ptr<DataControlPasteboards> m_boards;
    std::unique_ptr<KeyPosting> m_keys;
};

} // namespace tulvane
