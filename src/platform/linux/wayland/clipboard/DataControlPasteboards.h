#pragma once

#include <platform/linux/front/BothSelections.h>
#include <platform/linux/wayland/clipboard/DataControlPasteboard.h>

namespace tulvane {

/// The clipboard and the text selected last of a Wayland desktop, and which of them the program in front
/// pastes. Main thread.
class DataControlPasteboards final : public Pasteboards {
public:
    /// Null where nothing answers at the socket, or lets no program without a window at its selections.
    [[nodiscard]] static std::unique_ptr<DataControlPasteboards>
    open(const QByteArray& socket, std::shared_ptr<FrontPrograms> front, PasteRules rules);

    DataControlPasteboards(const DataControlPasteboards&) = delete;
    DataControlPasteboards& operator=(const DataControlPasteboards&) = delete;
    ~DataControlPasteboards() override;

    [[nodiscard]] PasteTarget pasteTarget() override;
    [[nodiscard]] Pasteboard& of(PasteSelection selection) override;
    void readAhead() override;

    /// The keys that make the target paste go out now: call it just before they do.
    void expectReader(const PasteTarget& target);
    /// Whether keys that are posted now reach the target's window.
    [[nodiscard]] bool isInFront(const PasteTarget& target);

private:
    struct Parts;
    DataControlPasteboards(std::shared_ptr<FrontPrograms> front, PasteRules rules);

    [[nodiscard]] FrontProgram programOf(const PasteTarget& target) const;

    std::shared_ptr<FrontPrograms> m_front;
    PasteRules m_rules;
    FrontProgram m_program; ///< of the last answer
    std::unique_ptr<Parts> m_parts;
};

} // namespace tulvane
