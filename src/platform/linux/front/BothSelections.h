#pragma once

#include <ports/Pasteboard.h>

#include <optional>
#include <utility>

namespace tulvane {

/// Both selections as one pasteboard, for a program of which it is not known which it pastes from. It counts
/// and reads as the clipboard; what the user had selected is put back with what they had copied. Main thread.
class BothSelections final : public Pasteboard {
public:
    /// Both outlive it.
    BothSelections(Pasteboard& clipboard, Pasteboard& primary) : m_clipboard(clipboard), m_primary(primary) {}

    [[nodiscard]] QFuture<PasteboardContents> contents() override;
    [[nodiscard]] qint64 changeCount() override { return m_clipboard.changeCount(); }
    bool replaceFor(const QList<PasteboardItem>& items, const PasteTarget& target) override;
    void clear() override;
    [[nodiscard]] qint64 ownChangeCount() const override { return m_clipboard.ownChangeCount(); }
    bool replaceUnlessChanged(const QList<PasteboardItem>& items, qint64 count) override;
    /// Read as soon as either is.
    [[nodiscard]] Reading reading() const override;
    void setActivityHandler(std::function<void()> handler) override;

private:
    Pasteboard& m_clipboard;
    Pasteboard& m_primary;
    std::optional<QFuture<PasteboardContents>>
        m_selected;             ///< what the user had selected when they were last read
    qint64 m_selectedCount = 0; ///< of our write over it
};

} // namespace tulvane
