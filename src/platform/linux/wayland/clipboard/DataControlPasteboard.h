#pragma once

#include <platform/linux/front/FrontProgram.h>
#include <platform/linux/wayland/clipboard/DataControlClipboard.h>
#include <ports/Pasteboard.h>

#include <QObject>

namespace tulvane {

/// One selection of a compositor as a pasteboard. It holds one item at most. What it puts on the pasteboard
/// is there as long as this object is, unless a clipboard manager keeps a copy.
///
/// It tells whether the target has read the text by who holds the other end of the pipe that it is written
/// into, and counts a read only from the moment at which the paste chord went out: before that, no reading is
/// a paste.
class DataControlPasteboard final : public Pasteboard {
public:
    /// The program of a paste target, as far as the desktop tells.
    using ProgramOf = std::function<FrontProgram(const PasteTarget&)>;

    /// `clipboard` outlives it.
    DataControlPasteboard(DataControlClipboard& clipboard, PasteSelection which, ProgramOf programOf)
        : m_clipboard(clipboard),
          m_which(which),
          m_programOf(std::move(programOf))
    {
    }

    [[nodiscard]] QFuture<PasteboardContents> contents() override;
    [[nodiscard]] qint64 changeCount() override;
    bool replaceFor(const QList<PasteboardItem>& items, const PasteTarget& target) override;
    void clear() override;
    [[nodiscard]] qint64 ownChangeCount() const override;
    bool replaceUnlessChanged(const QList<PasteboardItem>& items, qint64 count) override;
    [[nodiscard]] Reading reading() const override;
    void setActivityHandler(std::function<void()> handler) override { m_activity = std::move(handler); }

    void readAhead();
    /// The paste chord goes out now.
    void expectReader();
    /// From any thread: something has changed.
    void tellActivity();

private:
    bool put(const QList<PasteboardItem>& items, const PasteTarget& target,
             DataControlSelection::OnlyAt count);

    DataControlClipboard& m_clipboard;
    PasteSelection m_which;
    ProgramOf m_programOf;
    std::function<void()> m_activity;
    QObject m_context; ///< what is called later is called while this lives
};

} // namespace tulvane
