#include <platform/linux/session/desktop/WaylandText.h>

namespace tulvane {

std::shared_ptr<WaylandText> WaylandText::open(const QByteArray& socket, std::unique_ptr<KeyDevice> device,
                                               std::shared_ptr<FrontPrograms> front, PasteRules rules)
{
    auto boards = DataControlPasteboards::open(socket, std::move(front), std::move(rules));
    return boards ? std::make_shared<WaylandText>(std::move(boards), std::move(device)) : nullptr;
}

WaylandText::WaylandText(std::unique_ptr<DataControlPasteboards> boards, std::unique_ptr<KeyDevice> device)
    : m_boards(std::move(boards))
{
    if (!device)
        return;
    m_keys = std::make_unique<DeviceKeyPosting>(
        std::move(device),
        DeviceKeyPosting::Hooks{
            .isInFront = [this](const PasteTarget& target) { return m_boards->isInFront(target); },
            .pasting = [this](const PasteTarget& target) { m_boards->expectReader(target); }});
}

} // namespace tulvane
