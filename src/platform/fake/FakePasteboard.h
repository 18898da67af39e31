#pragma once

#include <ports/Pasteboard.h>

#include <QPromise>
#include <QStringList>

#include <deque>
#include <functional>

namespace tulvane {

/// A pasteboard in memory, with another program that writes and reads when the test says so.
class FakePasteboard final : public Pasteboard {
public:
    [[nodiscard]] QFuture<PasteboardContents> contents() override;
    [[nodiscard]] qint64 changeCount() override { return m_changeCount; }
    bool replaceFor(const QList<PasteboardItem>& items, const PasteTarget& target) override;
    void clear() override;
    [[nodiscard]] qint64 ownChangeCount() const override { return m_ownChangeCount; }
    bool replaceUnlessChanged(const QList<PasteboardItem>& items, qint64 count) override;
    [[nodiscard]] Reading reading() const override { return m_reading; }
    void setActivityHandler(std::function<void()> handler) override { m_handler = std::move(handler); }

    /// Another program copies something.
    void otherProgramWrites(const QList<PasteboardItem>& items);
    void otherProgramWrites(const QString& text) { otherProgramWrites({PasteboardItem::text(text)}); }
    /// From now on it can tell who has read; without this it cannot.
    void tellReads() { m_tellsReads = true; }
    /// The program in front reads what we wrote.
    void frontProgramReads();
    /// From now on another program's contents come as incomplete, as from an owner that hangs in the middle.
    void hangOwner() { m_complete = false; }
    void freeOwner() { m_complete = true; }
    /// The same from the beginning on: nothing comes.
    void silenceOwner()
    {
        m_complete = false;
        m_silent = true;
    }
    /// From now on `contents()` waits for `answerContents()`.
    void holdContents() { m_held = true; }
    void answerContents();
    void refuseWrites() { m_refuses = true; }
    /// Called for every operation ("write TEXT", "clear", "contents"), for tests of an order across fakes.
    std::function<void(const QString&)> journal;
    /// Called at the end of every write of ours, before anybody can have looked at it.
    std::function<void()> afterWrite;

    [[nodiscard]] QList<PasteboardItem> items() const { return m_items; }
    /// The only item as text; a null string where there is no such thing.
    [[nodiscard]] QString text() const;
    /// Whom the last write was for.
    [[nodiscard]] PasteTarget reader() const { return m_reader; }
    /// How often it was written to or cleared by us.
    [[nodiscard]] int ownChanges() const { return m_ownChanges; }

private:
    void note(const QString& operation) const;
    void changed(const QList<PasteboardItem>& items);

    QList<PasteboardItem> m_items;
    qint64 m_changeCount = 41;
    qint64 m_ownChangeCount = 0;
    int m_ownChanges = 0;
    bool m_tellsReads = false;
    bool m_complete = true;
    bool m_silent = false;
    bool m_held = false;
    bool m_refuses = false;
    PasteTarget m_reader;
    Reading m_reading = Reading::untold;
    std::function<void()> m_handler;
    std::deque<QPromise<PasteboardContents>> m_waiting;
};

/// Two of them, and a window in front that pastes from the one or the other.
class FakePasteboards final : public Pasteboards {
public:
    [[nodiscard]] PasteTarget pasteTarget() override { return front; }
    [[nodiscard]] Pasteboard& of(PasteSelection selection) override
    {
        return selection == PasteSelection::primary ? selectionBoard : generalBoard;
    }

    void readAhead() override { ++readsAhead; }

    int readsAhead = 0;
    FakePasteboard generalBoard;
    FakePasteboard selectionBoard;
    static inline const PasteTarget editor{1};
    static inline const PasteTarget xterm{2, PasteSelection::primary, PasteChord::shiftInsert,
                                          PasteLineBreaks::asSpaces};
    PasteTarget front = editor;
};

} // namespace tulvane
