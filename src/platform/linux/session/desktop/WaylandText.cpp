#include <platform/linux/remote/RemoteKeyPosting.h>
#include <platform/linux/session/desktop/WaylandText.h>
#include <platform/linux/wayland/keyboard/DeviceKeyPosting.h>

namespace tulvane {

std::unique_ptr<KeyPosting> keysByDevice(std::unique_ptr<KeyDevice> device, DataControlPasteboards& boards)
{
    if (!device)
        return nullptr;
    return std::make_unique<DeviceKeyPosting>(
        std::move(device),
        DeviceKeyPosting::Hooks{
            .isInFront = [&boards](const PasteTarget& target) { return boards.isInFront(target); },
            .pasting = [&boards](const PasteTarget& target) { boards.expectReader(target); }});
}

std::unique_ptr<KeyPosting> keysByRemoteDesktop(std::shared_ptr<RemoteDesktop> desktop,
                                                DataControlPasteboards& boards)
{
    RemoteKeyPosting::Hooks hooks;
    hooks.isInFront = [&boards](const PasteTarget& target) { return boards.isInFront(target); };
    hooks.pasting = [&boards](const PasteTarget& target) { boards.expectReader(target); };
    return std::make_unique<RemoteKeyPosting>(std::move(desktop), std::move(hooks));
}

std::shared_ptr<WaylandText> WaylandText::open(const QByteArray& socket, const MakeKeys& makeKeys,
                                               std::shared_ptr<FrontPrograms> front, PasteRules rules)
{
    auto boards = DataControlPasteboards::open(socket, std::move(front), std::move(rules));
    return boards ? std::make_shared<WaylandText>(std::move(boards), makeKeys) : nullptr;
}

WaylandText::WaylandText(std::unique_ptr<DataControlPasteboards> boards, const MakeKeys& makeKeys)
    : m_boards(std::move(boards)),
      m_keys(makeKeys(*m_boards))
{
}

} // namespace tulvane
