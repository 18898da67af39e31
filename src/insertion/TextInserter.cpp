#include <base/Log.h>
#include <insertion/TextInserter.h>

#include <QCoroFuture>
#include <QRegularExpression>

namespace tulvane {

/// What one paste carries from step to step.
struct TextInserter::Paste {
    Pasteboards& boards;
    QString text;     ///< as received
    QString body;     ///< what goes through the pasteboard; its line breaks as the target takes them
    int spaces = 0;   ///< what is typed after it
    qint64 count = 0; ///< the pasteboard's change count right after our write
    std::optional<PasteboardSnapshot> saved;
    bool takenBack = false;
    PasteTarget target;

    /// The one that the target pastes from.
    [[nodiscard]] Pasteboard& board() const { return boards.of(target.selection); }
    void write()
    {
        board().replaceFor({PasteboardItem::text(body)}, target);
        count = board().ownChangeCount();
    }
};

TextInserter::TextInserter(const InsertionPorts& ports) : m_ports(ports), m_waits(ports.scheduler) {}

TextInserter::~TextInserter()
{
    m_lifetime.end();
    m_waits.notifyAll();
}

void TextInserter::prepare(InsertionMethod method, bool restoreClipboard)
{
    if (method == InsertionMethod::clipboardOnly || !reachesPrograms())
        return;
    if (restoreClipboard)
        m_ports.pasteboards.readAhead();
    // With the other method a paste is the exception.
    if (method == InsertionMethod::paste)
        m_ports.keys.prepare();
}

bool TextInserter::reachesPrograms() const
{
    return !m_isHeldBack && m_ports.permissions.accessibility();
}

QCoro::Task<InsertionResult> TextInserter::insert(QString text, InsertionMethod method, bool restoreClipboard)
{
    if (text.isEmpty())
        co_return InsertionResult::copiedToClipboard;
    if (method == InsertionMethod::clipboardOnly) {
        leaveOnClipboard(text);
        co_return InsertionResult::copiedToClipboard;
    }
    const Lifetime::Guard alive = m_lifetime.guard();
    if (method == InsertionMethod::accessibilityThenPaste && reachesPrograms()) {
        const Write write = co_await insertViaAccessibility(text);
        if (write == Write::done)
            co_return InsertionResult::inserted;
        if (!alive)
            co_return InsertionResult::copiedToClipboard;
        // Pasted as well, it might come twice.
        if (write == Write::unanswered) {
            qCWarning(lcInsertion, "The element did not answer; left text on clipboard");
            leaveOnClipboard(text);
            co_return InsertionResult::copiedToClipboard;
        }
    }
    co_return co_await paste(text, restoreClipboard);
}

QCoro::Task<InsertionResult> TextInserter::paste(QString text, bool restoreClipboard)
{
    if (!reachesPrograms()) {
        leaveUnreached(text);
        co_return InsertionResult::copiedToClipboard;
    }
    auto [body, spaces] = splitTrailingSpaces(text);
    if (body.isEmpty()) {
        body = text;
        spaces = 0;
    }
    const auto paste =
        std::make_shared<Paste>(Paste{m_ports.pasteboards, text, body, spaces, 0, {}, false, {}});
    co_return co_await pasteTrusted(paste, restoreClipboard);
}

QCoro::Task<InsertionResult> TextInserter::pasteTrusted(std::shared_ptr<Paste> paste, bool restoreClipboard)
{
    const Lifetime::Guard alive = m_lifetime.guard();
    co_await saveAndAim(paste, restoreClipboard);
    if (!alive)
        co_return InsertionResult::copiedToClipboard;
    if (m_isHeldBack) {
        leaveUnreached(paste->text);
        co_return InsertionResult::copiedToClipboard;
    }
    if (paste->target.lineBreaks == PasteLineBreaks::asSpaces)
        paste->body = inOneLine(paste->body);
    // The pasteboard outlives the inserter.
    paste->board().setActivityHandler([this, alive] {
        if (alive)
            m_waits.notifyAll();
    });
    paste->write();
    const bool posted = co_await m_ports.keys.paste(paste->target);
    if (!posted) {
        if (alive) {
            qCCritical(lcInsertion, "Failed to post ⌘V; text left on clipboard");
            giveUp(*paste);
        }
        co_return InsertionResult::copiedToClipboard;
    }
    const Arrival arrival = co_await awaitReader(paste, m_waits.limit(readLimit));
    if (!alive)
        co_return InsertionResult::copiedToClipboard;
    if (arrival == Arrival::missing) {
        qCWarning(lcInsertion, "Nobody read the pasted text; left it on the clipboard");
        giveUp(*paste);
        co_return InsertionResult::copiedToClipboard;
    }
    co_await settle(paste);
    co_return InsertionResult::pasted;
}

QCoro::Task<> TextInserter::saveAndAim(std::shared_ptr<Paste> paste, bool restoreClipboard)
{
    const Lifetime::Guard alive = m_lifetime.guard();
    paste->target = m_ports.pasteboards.pasteTarget();
    m_hasLostClipboard = false;
    bool isSaved = !restoreClipboard;
    while (!isSaved) {
        const PasteSelection saving = paste->target.selection;
        paste->saved = co_await PasteboardSnapshot::capture(paste->board());
        if (!alive)
            co_return;
        m_hasLostClipboard = !paste->saved->complete;
        if (m_hasLostClipboard)
            qCWarning(lcInsertion, "A part of the clipboard did not come in time; it is lost");
        // Reading what the user had copied takes its time, in which they may have gone to another window.
        paste->target = m_ports.pasteboards.pasteTarget();
        isSaved = paste->target.selection == saving;
    }
}

QCoro::Task<TextInserter::Arrival> TextInserter::awaitReader(std::shared_ptr<Paste> paste,
                                                             std::shared_ptr<PendingDelays::Limit> limit)
{
    const Lifetime::Guard alive = m_lifetime.guard();
    while (alive && paste->board().reading() == Pasteboard::Reading::unread) {
        if (paste->board().changeCount() != paste->count) {
            const Takeover takeover = co_await takeBack(paste);
            if (takeover == Takeover::lost)
                co_return Arrival::missing;
            if (takeover == Takeover::sameText)
                break;
            continue;
        }
        if (limit->isOver())
            co_return Arrival::missing;
        co_await m_waits.next();
    }
    // Counted from the read where that is known: a program that has only just read the text has yet to put it
    // in place before the spaces come.
    if (alive && paste->spaces > 0)
        co_await sleep(trailingSpaceDelay);
    co_return Arrival::arrived;
}

QCoro::Task<TextInserter::Takeover> TextInserter::takeBack(std::shared_ptr<Paste> paste)
{
    const Lifetime::Guard alive = m_lifetime.guard();
    PasteboardSnapshot newer = co_await PasteboardSnapshot::capture(paste->board());
    if (!alive || !newer.complete || newer.items.isEmpty())
        co_return Takeover::lost;
    // A clipboard manager may hold in its own name what it has read. The program in front reads it from
    // there, unseen; writing again would only make the manager take it again.
    if (newer.isText(paste->body))
        co_return Takeover::sameText;
    if (std::exchange(paste->takenBack, true))
        co_return Takeover::lost;
    paste->saved = std::move(newer);
    paste->write();
    co_return Takeover::writtenAgain;
}

QCoro::Task<> TextInserter::settle(std::shared_ptr<Paste> paste)
{
    const Lifetime::Guard alive = m_lifetime.guard();
    co_await typeSpaces(paste->spaces);
    if (!alive || !paste->saved)
        co_return;
    co_await sleep(pasteSettleDelay);
    // Another program may have written meanwhile: that is newer than what was saved, and is kept.
    if (!alive || !paste->saved->isWorthRestoring() || paste->saved->restore(paste->board(), paste->count))
        co_return;
    // Unless it is no more than our own text, which some editors and clipboard managers hold in their own
    // name as soon as they have read it. The program in front has read it.
    if (paste->board().reading() != Pasteboard::Reading::read || paste->board().changeCount() == paste->count)
        co_return;
    const PasteboardSnapshot newer = co_await PasteboardSnapshot::capture(paste->board());
    if (alive && newer.complete && newer.isText(paste->body))
        paste->saved->restore(paste->board(), newer.changeCount);
}

QCoro::Task<> TextInserter::typeSpaces(int count)
{
    if (count == 0 || m_isHeldBack)
        co_return;
    const Lifetime::Guard alive = m_lifetime.guard();
    const bool typed = co_await m_ports.keys.typeSpaces(count);
    if (alive && !typed)
        qCCritical(lcInsertion, "Failed to post trailing Space keystroke");
}

QCoro::Task<TextInserter::Write> TextInserter::insertViaAccessibility(QString text)
{
    const Lifetime::Guard alive = m_lifetime.guard();
    const std::shared_ptr<FocusedElement> element = co_await m_ports.elements.focused();
    if (!alive || !element)
        co_return Write::refused;
    const bool settable = co_await element->settable();
    if (!settable)
        co_return Write::refused;
    const std::optional<QString> role = co_await element->role();
    // Passwords are never written this way; a role that cannot be read is no reason to refuse.
    if (role == FocusedElement::secureTextFieldRole)
        co_return Write::refused;
    if (!alive || m_isHeldBack)
        co_return Write::refused;
    const bool written = co_await element->setSelectedText(text);
    if (!written)
        co_return element->mayStillArrive() ? Write::unanswered : Write::refused;
    const bool reflected = co_await isReflected(element, text);
    co_return reflected ? Write::done : Write::refused;
}

QCoro::Task<bool> TextInserter::isReflected(std::shared_ptr<FocusedElement> element, QString text)
{
    const std::optional<QString> value = co_await element->value();
    const QString trimmed = text.trimmed();
    if (!value || trimmed.isEmpty() || value->contains(trimmed))
        co_return true;
    qCWarning(lcInsertion, "AX insert not reflected in value; falling back to paste");
    co_return false;
}

QCoro::Task<> TextInserter::sleep(std::chrono::milliseconds duration)
{
    const Lifetime::Guard alive = m_lifetime.guard();
    const auto limit = m_waits.limit(duration);
    while (alive && !limit->isOver())
        co_await m_waits.next();
}

void TextInserter::giveUp(Paste& paste)
{
    // The text waits on the general pasteboard. What the user had selected, where the target reads that, is
    // of no use to it.
    if (paste.target.selection != PasteSelection::clipboard && paste.saved && paste.saved->isWorthRestoring())
        paste.saved->restore(paste.board(), paste.count);
    leaveOnClipboard(paste.text);
}

void TextInserter::leaveUnreached(const QString& text)
{
    qCWarning(lcInsertion, m_isHeldBack ? "The screen is locked; left text on clipboard"
                                        : "Accessibility not granted; left text on clipboard");
    leaveOnClipboard(text);
}

void TextInserter::leaveOnClipboard(const QString& text)
{
    m_ports.pasteboards.general().replace({PasteboardItem::text(text)});
}

std::pair<QString, int> TextInserter::splitTrailingSpaces(const QString& text)
{
    qsizetype end = text.size();
    while (end > 0 && text.at(end - 1) == u' ')
        --end;
    return {text.left(end), static_cast<int>(text.size() - end)};
}

QString TextInserter::inOneLine(QString text)
{
    static const QRegularExpression lineBreak(QStringLiteral("\\r\\n|[\\r\\n]"));
    return text.replace(lineBreak, QStringLiteral(" "));
}

} // namespace tulvane
