#pragma once

#include <platform/linux/front/FrontProgram.h>
#include <platform/linux/wayland/clipboard/DataControlPasteboards.h>
#include <platform/linux/wayland/keyboard/DeviceKeyPosting.h>

#include <memory>

namespace tulvane {

/// Everything on a Wayland desktop that brings text into other programs. Main thread.
class WaylandText final {
public:
    /// `device` posts the keys; null where the compositor has none for us. Null where it lets no program
    /// without a window at the clipboard.
    [[nodiscard]] static std::shared_ptr<WaylandText> open(const QByteArray& socket,
                                                           std::unique_ptr<KeyDevice> device,
                                                           std::shared_ptr<FrontPrograms> front,
                                                           PasteRules rules);
    WaylandText(std::unique_ptr<DataControlPasteboards> boards, std::unique_ptr<KeyDevice> device);

    [[nodiscard]] Pasteboards& pasteboards() { return *m_boards; }
    /// Null where there is no device.
    [[nodiscard]] KeyPosting* keys() { return m_keys.get(); }

private:
    std::unique_ptr<DataControlPasteboards> m_boards;
    std::unique_ptr<DeviceKeyPosting> m_keys;
};

} // namespace tulvane
