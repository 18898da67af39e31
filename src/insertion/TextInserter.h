#pragma once

#include <base/Scheduler.h>
#include <base/async/Lifetime.h>
#include <base/async/PendingDelays.h>
#include <insertion/InsertionResult.h>
#include <insertion/PasteboardSnapshot.h>
#include <ports/FocusedElement.h>
#include <ports/KeyPosting.h>
#include <ports/Pasteboard.h>
#include <ports/PrivacyPermissions.h>
#include <settings/InsertionMethod.h>

#include <QCoroTask>

#include <chrono>
#include <memory>
#include <optional>
#include <utility>

namespace tulvane {

/// What the inserter works with; all of it must outlive the inserter.
struct InsertionPorts {
    Pasteboards& pasteboards;
    KeyPosting& keys;
    FocusedElements& elements;
    const PrivacyPermissions& permissions;
    Scheduler& scheduler;
};

/// Delivers a finished text to whatever has the keyboard focus in the program in front. Main thread.
///
/// Calls are independent of each other; one that starts while another still waits is not held back. When the
/// inserter goes away, a pending call stops where it is.
class TextInserter final {
public:
    /// After the paste keystrokes, before the saved pasteboard is put back.
    static constexpr std::chrono::milliseconds pasteSettleDelay{350};
    /// Between the paste command and the first Space keystroke.
    static constexpr std::chrono::milliseconds trailingSpaceDelay{50};
    /// From the paste command on, how long a slow program may take to read the text, where the pasteboard can
    /// tell. What no program has read by then counts as not arrived.
    static constexpr std::chrono::milliseconds readLimit{2000};

    explicit TextInserter(const InsertionPorts& ports);
    TextInserter(const TextInserter&) = delete;
    TextInserter& operator=(const TextInserter&) = delete;
    ~TextInserter();

    /// A text may come soon, to be inserted in this way: what the user has copied is read meanwhile, and the
    /// keys are made ready. Changes nothing about what `insert` does, but how long it takes.
    void prepare(InsertionMethod method, bool restoreClipboard);

    /// Never fails: the result says what happened. `restoreClipboard`: put the user's pasteboard back after a
    /// paste.
    QCoro::Task<InsertionResult> insert(QString text, InsertionMethod method, bool restoreClipboard);

    /// While held back, no key is pressed and no field written into, and what is inserted then waits on the
    /// clipboard. What a program has been asked to paste already goes its way.
    void setHeldBack(bool heldBack) { m_isHeldBack = heldBack; }

    /// Whether something of what the user had copied did not come in time before the last paste, so that it
    /// could not be put back after it.
    [[nodiscard]] bool hasLostClipboard() const { return m_hasLostClipboard; }

    /// Ends every pending wait: what comes after it is done at once. For the end of the program, so that the
    /// user's clipboard is back before it goes.
    void cutWaitsShort() { m_waits.cutShort(); }

    /// The text without the spaces (U+0020 only) at its end, and their number.
    [[nodiscard]] static std::pair<QString, int> splitTrailingSpaces(const QString& text);

    /// The text with each line break a space: what ends a line in a terminal runs it there.
    [[nodiscard]] static QString inOneLine(QString text);

private:
    struct Paste;
    enum class Arrival { arrived, missing };
    /// `unanswered`: it may still come.
    enum class Write { done, refused, unanswered };
    enum class Takeover { writtenAgain, sameText, lost };

    /// Whether keys may be posted and fields written into.
    [[nodiscard]] bool reachesPrograms() const;

    QCoro::Task<InsertionResult> paste(QString text, bool restoreClipboard);
    QCoro::Task<InsertionResult> pasteTrusted(std::shared_ptr<Paste> paste, bool restoreClipboard);
    /// Saves what is on the pasteboard that will be written to, where asked, and only then, as the last thing
    /// before the write, decides where the paste goes.
    QCoro::Task<> saveAndAim(std::shared_ptr<Paste> paste, bool restoreClipboard);
    QCoro::Task<Write> insertViaAccessibility(QString text);
    QCoro::Task<bool> isReflected(std::shared_ptr<FocusedElement> element, QString text);
    QCoro::Task<> typeSpaces(int count);
    QCoro::Task<> settle(std::shared_ptr<Paste> paste);
    QCoro::Task<> sleep(std::chrono::milliseconds duration);

    /// Waits until the program in front has read the text.
    QCoro::Task<Arrival> awaitReader(std::shared_ptr<Paste> paste,
                                     std::shared_ptr<PendingDelays::Limit> limit);
    /// Another program has written before ours was read. Puts the text there once more, and keeps the newer
    /// content to put back: no program is to paste the wrong one, and the newer one is not to be lost.
    QCoro::Task<Takeover> takeBack(std::shared_ptr<Paste> paste);

    /// The paste has not reached its target: the whole text waits on the clipboard.
    void giveUp(Paste& paste);
    /// The same where no program can be reached, with the reason in the log.
    void leaveUnreached(const QString& text);
    void leaveOnClipboard(const QString& text);

    InsertionPorts m_ports;
    PendingDelays m_waits;
    bool m_isHeldBack = false;
    bool m_hasLostClipboard = false;
    /// Each coroutine takes a guard of it before its first wait and looks at the guard after each.
    Lifetime m_lifetime;
};

} // namespace tulvane
