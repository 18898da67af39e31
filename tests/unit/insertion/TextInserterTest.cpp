#include "TextInserterFixture.h"

#include <gmock/gmock.h>

using namespace std::chrono_literals;
using testing::ElementsAre;

namespace tulvane {

namespace {

class TextInserterTest : public test::TextInserterFixture {};

constexpr auto pasteStroke = FakeKeyPosting::Stroke::paste;
constexpr auto spaceStroke = FakeKeyPosting::Stroke::space;

} // namespace

TEST_F(TextInserterTest, EmptyTextIsCopiedAndTouchesNothing)
{
    for (const auto method : allCases<InsertionMethod>()) {
        const auto task = start(QString(), method);
        EXPECT_EQ(result(task), InsertionResult::copiedToClipboard);
    }
    EXPECT_EQ(m_board.ownChanges(), 0);
    EXPECT_EQ(m_board.text(), m_before);
    EXPECT_TRUE(m_keys.posted().isEmpty());
    EXPECT_EQ(m_elements.asked, 0);
}

TEST_F(TextInserterTest, ClipboardOnlyLeavesTheWholeTextPostsNothingAndNeedsNoPermission)
{
    m_permissions.accessibilityGranted = false;
    const auto task = start(u"two words  "_qs, InsertionMethod::clipboardOnly);
    EXPECT_EQ(result(task), InsertionResult::copiedToClipboard);
    EXPECT_EQ(m_board.text(), u"two words  "_qs);
    EXPECT_TRUE(m_keys.posted().isEmpty());
    EXPECT_TRUE(m_permissions.calls.isEmpty());
    EXPECT_TRUE(m_log.lines().isEmpty());
}

TEST_F(TextInserterTest, WithoutAccessibilityThePastedTextIsLeftOnTheClipboard)
{
    m_permissions.accessibilityGranted = false;
    for (const auto method : {InsertionMethod::paste, InsertionMethod::accessibilityThenPaste}) {
        m_log.clear();
        const auto task = start(u"two words "_qs, method);
        EXPECT_EQ(result(task), InsertionResult::copiedToClipboard);
        EXPECT_EQ(m_board.text(), u"two words "_qs);
        EXPECT_THAT(m_log.texts("insertion", QtWarningMsg),
                    ElementsAre(u"Accessibility not granted; left text on clipboard"_qs));
    }
    EXPECT_TRUE(m_keys.posted().isEmpty());
    EXPECT_EQ(m_elements.asked, 0);
    EXPECT_TRUE(m_scheduler.pending().empty());
}

TEST_F(TextInserterTest, PastesTheWordsThenTypesTheSpaceThenPutsTheClipboardBack)
{
    const auto task = start(u"two words "_qs);
    EXPECT_EQ(m_board.text(), u"two words"_qs);
    EXPECT_THAT(m_keys.posted(), ElementsAre(pasteStroke));
    advance(49ms);
    EXPECT_EQ(spaces(), 0);
    advance(1ms);
    EXPECT_THAT(m_keys.posted(), ElementsAre(pasteStroke, spaceStroke));
    advance(349ms);
    EXPECT_EQ(m_board.text(), u"two words"_qs);
    EXPECT_FALSE(task.isReady());
    advance(1ms);
    EXPECT_EQ(result(task), InsertionResult::pasted);
    EXPECT_EQ(m_board.text(), m_before);
    EXPECT_TRUE(m_log.lines().isEmpty());
}

TEST_F(TextInserterTest, ReadsTheClipboardBeforeItWritesAndWritesBeforeItPosts)
{
    QStringList order;
    m_board.journal = [&](const QString& operation) { order.append(operation); };
    m_keys.onPost = [&](FakeKeyPosting::Stroke stroke) {
        order.append(stroke == pasteStroke ? u"paste"_qs : u"space"_qs);
    };
    const auto task = start(u"a "_qs);
    advance(500ms);
    EXPECT_THAT(order, ElementsAre(u"contents"_qs, u"write a"_qs, u"paste"_qs, u"space"_qs,
                                   u"write the user's own"_qs));
}

TEST_F(TextInserterTest, WithoutTrailingSpacesOnlyTheSettleDelayIsWaitedFor)
{
    const auto task = start(u"word"_qs);
    EXPECT_THAT(m_scheduler.pending(), testing::Contains(350ms));
    advance(349ms);
    EXPECT_FALSE(task.isReady());
    advance(1ms);
    EXPECT_EQ(result(task), InsertionResult::pasted);
    EXPECT_EQ(spaces(), 0);
}

TEST_F(TextInserterTest, SeveralSpacesAreTypedWithNoPauseBetweenThem)
{
    const auto task = start(u"word    "_qs);
    advance(50ms);
    EXPECT_EQ(spaces(), 4);
    EXPECT_EQ(m_board.text(), u"word"_qs);
}

TEST_F(TextInserterTest, OnlySpacesArePastedWholeAndNoneIsTyped)
{
    const auto task = start(u"   "_qs);
    EXPECT_EQ(m_board.text(), u"   "_qs);
    advance(350ms);
    EXPECT_EQ(result(task), InsertionResult::pasted);
    EXPECT_EQ(spaces(), 0);
    EXPECT_EQ(pastes(), 1);
}

TEST_F(TextInserterTest, TabsLineBreaksAndOtherWhiteSpaceAtTheEndArePastedNotTyped)
{
    for (const QString& text :
         {u"word\t"_qs, u"word\n"_qs, u"word \n"_qs, u"word\u00a0"_qs, u"word\u2003"_qs}) {
        const auto task = start(text);
        EXPECT_EQ(m_board.text(), text);
        advance(400ms);
        EXPECT_EQ(result(task), InsertionResult::pasted);
    }
    EXPECT_EQ(spaces(), 0);
}

TEST_F(TextInserterTest, SplitsOffExactlyTheSpacesAtTheEnd)
{
    using Split = std::pair<QString, int>;
    EXPECT_EQ(TextInserter::splitTrailingSpaces(u" a b  "_qs), Split(u" a b"_qs, 2));
    EXPECT_EQ(TextInserter::splitTrailingSpaces(u"a"_qs), Split(u"a"_qs, 0));
    EXPECT_EQ(TextInserter::splitTrailingSpaces(u"a\n "_qs), Split(u"a\n"_qs, 1));
    EXPECT_EQ(TextInserter::splitTrailingSpaces(u"  "_qs), Split(QString(), 2));
    EXPECT_EQ(TextInserter::splitTrailingSpaces(QString()), Split(QString(), 0));
}

TEST_F(TextInserterTest, WithRestoreOffThePastedTextStaysAndNothingWaits)
{
    const auto task = start(u"word"_qs, InsertionMethod::paste, false);
    EXPECT_EQ(result(task), InsertionResult::pasted);
    const auto spaced = start(u"two words "_qs, InsertionMethod::paste, false);
    advance(50ms);
    EXPECT_EQ(result(spaced), InsertionResult::pasted);
    advance(5s);
    EXPECT_EQ(m_board.text(), u"two words"_qs);
}

TEST_F(TextInserterTest, WhatAnotherProgramCopiesDuringTheSettleTimeIsKept)
{
    const auto task = start(u"word"_qs);
    advance(349ms);
    m_board.otherProgramWrites(u"newer"_qs);
    advance(1ms);
    EXPECT_EQ(result(task), InsertionResult::pasted);
    EXPECT_EQ(m_board.text(), u"newer"_qs);
}

TEST_F(TextInserterTest, EvenTheSameTextCopiedByAnotherProgramIsNewer)
{
    const auto task = start(u"word"_qs);
    m_board.otherProgramWrites(u"word"_qs);
    advance(350ms);
    EXPECT_EQ(m_board.text(), u"word"_qs);
}

TEST_F(TextInserterTest, APasteThatCannotBePostedLeavesTheWholeTextAndRestoresNothing)
{
    m_keys.failPastes();
    const auto task = start(u"two words  "_qs);
    EXPECT_EQ(result(task), InsertionResult::copiedToClipboard);
    EXPECT_EQ(m_board.text(), u"two words  "_qs);
    EXPECT_THAT(m_log.texts("insertion", QtCriticalMsg),
                ElementsAre(u"Failed to post ⌘V; text left on clipboard"_qs));
    advance(5s);
    EXPECT_EQ(m_board.text(), u"two words  "_qs);
    EXPECT_EQ(spaces(), 0);
}

TEST_F(TextInserterTest, ASpaceThatCannotBePostedEndsTheTypingAndNothingElse)
{
    m_keys.failSpacesAfter(2);
    const auto task = start(u"word     "_qs);
    advance(50ms);
    EXPECT_EQ(spaces(), 2);
    EXPECT_THAT(m_log.texts("insertion", QtCriticalMsg),
                ElementsAre(u"Failed to post trailing Space keystroke"_qs));
    advance(350ms);
    EXPECT_EQ(result(task), InsertionResult::pasted);
    EXPECT_EQ(m_board.text(), m_before);
}

TEST_F(TextInserterTest, AnEmptyClipboardIsEmptyAgainAfterwards)
{
    m_board.otherProgramWrites(QList<PasteboardItem>());
    const auto task = start(u"word"_qs);
    advance(350ms);
    EXPECT_EQ(result(task), InsertionResult::pasted);
    EXPECT_TRUE(m_board.items().isEmpty());
}

TEST_F(TextInserterTest, WhatCameOfTheClipboardIsPutBackAndTheLossIsLogged)
{
    m_board.hangOwner();
    const auto task = start(u"word"_qs);
    advance(350ms);
    EXPECT_EQ(result(task), InsertionResult::pasted);
    EXPECT_EQ(m_board.text(), m_before);
    EXPECT_THAT(m_log.texts("insertion", QtWarningMsg),
                ElementsAre(u"A part of the clipboard did not come in time; it is lost"_qs));
    EXPECT_TRUE(m_inserter->hasLostClipboard());
    m_board.freeOwner();
    const auto next = start(u"word"_qs);
    advance(350ms);
    EXPECT_EQ(result(next), InsertionResult::pasted);
    EXPECT_FALSE(m_inserter->hasLostClipboard());
}

TEST_F(TextInserterTest, AnInsertionThatRestoresNothingLosesNothing)
{
    m_board.hangOwner();
    const auto task = start(u"word"_qs);
    advance(350ms);
    ASSERT_TRUE(m_inserter->hasLostClipboard());
    const auto next = start(u"word"_qs, InsertionMethod::paste, false);
    advance(350ms);
    EXPECT_FALSE(m_inserter->hasLostClipboard());
}

TEST_F(TextInserterTest, WhereNothingCameOfTheClipboardThePastedTextStays)
{
    m_board.silenceOwner();
    const auto task = start(u"word"_qs);
    advance(350ms);
    EXPECT_EQ(result(task), InsertionResult::pasted);
    EXPECT_EQ(m_board.text(), u"word"_qs);
}

TEST_F(TextInserterTest, TheClipboardIsReadAheadWhereItIsToBePutBack)
{
    m_inserter->prepare(InsertionMethod::clipboardOnly, true);
    m_inserter->prepare(InsertionMethod::paste, false);
    EXPECT_EQ(m_boards.readsAhead, 0);
    m_inserter->prepare(InsertionMethod::paste, true);
    m_inserter->prepare(InsertionMethod::accessibilityThenPaste, true);
    EXPECT_EQ(m_boards.readsAhead, 2);
    EXPECT_EQ(m_keys.preparations, 2) << "those that will paste";
    m_permissions.accessibilityGranted = false;
    m_inserter->prepare(InsertionMethod::paste, true);
    EXPECT_EQ(m_boards.readsAhead, 2);
    EXPECT_EQ(m_keys.preparations, 2);
    EXPECT_EQ(m_board.ownChanges(), 0);
}

TEST_F(TextInserterTest, NothingIsWrittenWhileTheOldClipboardIsStillBeingRead)
{
    m_board.holdContents();
    const auto task = start(u"word"_qs);
    advance(10s);
    EXPECT_EQ(m_board.text(), m_before);
    EXPECT_TRUE(m_keys.posted().isEmpty());
    m_board.answerContents();
    settleEvents();
    EXPECT_EQ(pastes(), 1);
}

TEST_F(TextInserterTest, WaitsCutShortLetTheStepsAfterThemRunAtOnce)
{
    const auto task = start(u"word "_qs);
    m_inserter->cutWaitsShort();
    settleEvents();
    EXPECT_EQ(spaces(), 1);
    m_inserter->cutWaitsShort();
    settleEvents();
    EXPECT_EQ(result(task), InsertionResult::pasted);
    EXPECT_EQ(m_board.text(), m_before);
}

TEST_F(TextInserterTest, TwoInsertionsAreIndependent)
{
    const auto first = start(u"one "_qs, InsertionMethod::paste, false);
    advance(20ms);
    const auto second = start(u"two "_qs, InsertionMethod::paste, false);
    advance(30ms);
    EXPECT_EQ(result(first), InsertionResult::pasted);
    EXPECT_FALSE(second.isReady());
    advance(20ms);
    EXPECT_EQ(result(second), InsertionResult::pasted);
    EXPECT_EQ(pastes(), 2);
    EXPECT_EQ(spaces(), 2);
}

TEST_F(TextInserterTest, StopsWhereItIsWhenTheInserterGoes)
{
    const auto task = start(u"word "_qs);
    m_inserter.reset();
    advance(5s);
    EXPECT_TRUE(task.isReady());
    EXPECT_EQ(spaces(), 0);
    EXPECT_EQ(m_board.text(), u"word"_qs);
    m_board.otherProgramWrites(u"newer"_qs);
}

TEST_F(TextInserterTest, StopsBeforeItWritesWhenTheInserterGoesWhileTheClipboardIsRead)
{
    m_board.holdContents();
    const auto task = start(u"word"_qs);
    m_inserter.reset();
    m_board.answerContents();
    settleEvents();
    EXPECT_TRUE(task.isReady());
    EXPECT_EQ(m_board.text(), m_before);
}

TEST_F(TextInserterTest, NoLogLineHoldsTheText)
{
    m_keys.failPastes();
    const auto failing = start(u"hemmelig"_qs);
    m_permissions.accessibilityGranted = false;
    const auto denied = start(u"hemmelig"_qs);
    EXPECT_FALSE(m_log.lines().isEmpty());
    EXPECT_FALSE(m_log.contains(u"hemmelig"_qs));
}

} // namespace tulvane
