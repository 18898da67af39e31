#include <insertion/PasteboardSnapshot.h>
#include <platform/fake/FakePasteboard.h>
#include <support/Await.h>

#include <gtest/gtest.h>

namespace tulvane {

namespace {

PasteboardSnapshot captured(FakePasteboard& board)
{
    std::optional<PasteboardSnapshot> snapshot;
    const auto take = [&]() -> QCoro::Task<> { snapshot = co_await PasteboardSnapshot::capture(board); };
    take();
    EXPECT_TRUE(test::waitUntil([&] { return snapshot.has_value(); }));
    return *snapshot;
}

const QList<PasteboardItem> rich{
    {{{u"text/html"_qs, "<b>å</b>"}, {u"image/png"_qs, QByteArray("\x89PNG\0\xff", 6)}, {u"empty"_qs, ""}}},
    {{{u"org.nspasteboard.ConcealedType"_qs, "secret"}}},
};

} // namespace

TEST(PasteboardSnapshot, KeepsEveryTypeOfEveryItemAndTheCount)
{
    FakePasteboard board;
    board.otherProgramWrites(rich);
    const PasteboardSnapshot snapshot = captured(board);
    EXPECT_EQ(snapshot.items, rich);
    EXPECT_EQ(snapshot.changeCount, board.changeCount());
    EXPECT_TRUE(snapshot.complete);
}

TEST(PasteboardSnapshot, TakesTheCountAfterItHasReadTheItems)
{
    FakePasteboard board;
    board.holdContents();
    std::optional<PasteboardSnapshot> snapshot;
    const auto take = [&]() -> QCoro::Task<> { snapshot = co_await PasteboardSnapshot::capture(board); };
    take();
    board.otherProgramWrites(rich);
    board.answerContents();
    ASSERT_TRUE(test::waitUntil([&] { return snapshot.has_value(); }));
    EXPECT_EQ(snapshot->changeCount, board.changeCount());
}

TEST(PasteboardSnapshot, PutsEverythingBackInOneWrite)
{
    FakePasteboard board;
    board.otherProgramWrites(rich);
    const PasteboardSnapshot snapshot = captured(board);
    board.otherProgramWrites(u"other"_qs);
    EXPECT_TRUE(snapshot.restore(board, board.changeCount()));
    EXPECT_EQ(board.items(), rich);
    EXPECT_EQ(board.ownChanges(), 1);
}

TEST(PasteboardSnapshot, LeavesOutItemsWithoutData)
{
    FakePasteboard board;
    const PasteboardSnapshot snapshot{{PasteboardItem(), PasteboardItem::text(u"a"_qs)}, 0};
    EXPECT_TRUE(snapshot.restore(board, board.changeCount()));
    EXPECT_EQ(board.items(), QList{PasteboardItem::text(u"a"_qs)});
}

TEST(PasteboardSnapshot, WithNothingToPutBackItClearsAndSaysFalse)
{
    FakePasteboard board;
    for (const QList<PasteboardItem>& items : {QList<PasteboardItem>(), QList{PasteboardItem()}}) {
        board.otherProgramWrites(u"other"_qs);
        EXPECT_FALSE((PasteboardSnapshot{items, 0}.restore(board, board.changeCount())));
        EXPECT_TRUE(board.items().isEmpty());
    }
}

TEST(PasteboardSnapshot, WhatSomebodyHasWrittenSinceStays)
{
    FakePasteboard board;
    const qint64 count = board.changeCount();
    board.otherProgramWrites(u"newer"_qs);
    EXPECT_FALSE((PasteboardSnapshot{rich, 0}.restore(board, count)));
    EXPECT_FALSE((PasteboardSnapshot{{}, 0}.restore(board, count)));
    EXPECT_EQ(board.text(), u"newer"_qs);
    EXPECT_EQ(board.ownChanges(), 0);
}

TEST(PasteboardSnapshot, AWriteThatIsRefusedIsFalseAndLeavesThePasteboardCleared)
{
    FakePasteboard board;
    board.otherProgramWrites(u"other"_qs);
    board.refuseWrites();
    EXPECT_FALSE((PasteboardSnapshot{rich, 0}.restore(board, board.changeCount())));
    EXPECT_TRUE(board.items().isEmpty());
}

TEST(PasteboardSnapshot, SaysWhenTheOwnerStoppedAnswering)
{
    FakePasteboard board;
    board.otherProgramWrites(rich);
    board.hangOwner();
    EXPECT_FALSE(captured(board).complete);
}

TEST(PasteboardSnapshot, KnowsATextWhateverItsLineBreaks)
{
    const PasteboardSnapshot snapshot{{PasteboardItem::text(u"first\r\nsecond"_qs)}, 1, true};
    EXPECT_TRUE(snapshot.isText(u"first\nsecond"_qs));
    EXPECT_TRUE(snapshot.isText(u"first\r\nsecond"_qs));
    EXPECT_FALSE(snapshot.isText(u"first second"_qs));
    EXPECT_FALSE((PasteboardSnapshot{{}, 1, true}.isText({})));
}

} // namespace tulvane
