#include "TextInserterFixture.h"

#include <gmock/gmock.h>

using namespace std::chrono_literals;
using testing::ElementsAre;

namespace tulvane {

namespace {

/// Over a pasteboard that can tell who has read.
class TextInserterReaderTest : public test::TextInserterFixture {
protected:
    TextInserterReaderTest()
    {
        m_board.tellReads();
        m_boards.selectionBoard.tellReads();
    }
    void readNow()
    {
        m_board.frontProgramReads();
        settleEvents();
    }
};

} // namespace

TEST_F(TextInserterReaderTest, WithAReaderThatReadsAtOnceTheWaitsAreTheUsualOnes)
{
    const auto task = start(u"word "_qs);
    readNow();
    advance(49ms);
    EXPECT_EQ(spaces(), 0);
    advance(1ms);
    EXPECT_EQ(spaces(), 1);
    advance(349ms);
    EXPECT_EQ(m_board.text(), u"word"_qs);
    advance(1ms);
    EXPECT_EQ(m_board.text(), m_before);
    EXPECT_EQ(result(task), InsertionResult::pasted);
}

TEST_F(TextInserterReaderTest, ASlowReaderIsWaitedForBeforeSpacesAndBeforeTheClipboardComesBack)
{
    const auto task = start(u"word "_qs);
    advance(1900ms);
    EXPECT_EQ(spaces(), 0);
    EXPECT_EQ(m_board.text(), u"word"_qs);
    readNow();
    EXPECT_EQ(spaces(), 0);
    advance(50ms);
    EXPECT_EQ(spaces(), 1);
    advance(349ms);
    EXPECT_EQ(m_board.text(), u"word"_qs);
    advance(1ms);
    EXPECT_EQ(m_board.text(), m_before);
    EXPECT_EQ(result(task), InsertionResult::pasted);
}

TEST_F(TextInserterReaderTest, WhatNobodyReadsWithinTwoSecondsStaysOnTheClipboardWhole)
{
    const auto task = start(u"two words "_qs);
    advance(1999ms);
    EXPECT_FALSE(task.isReady());
    advance(1ms);
    EXPECT_EQ(result(task), InsertionResult::copiedToClipboard);
    EXPECT_EQ(m_board.text(), u"two words "_qs);
    EXPECT_THAT(m_log.texts("insertion", QtWarningMsg),
                ElementsAre(u"Nobody read the pasted text; left it on the clipboard"_qs));
    readNow();
    advance(5s);
    EXPECT_EQ(m_board.text(), u"two words "_qs);
    EXPECT_EQ(spaces(), 0);
}

TEST_F(TextInserterReaderTest, WithRestoreOffTheResultStillWaitsForTheReader)
{
    const auto task = start(u"word"_qs, InsertionMethod::paste, false);
    advance(1s);
    EXPECT_FALSE(task.isReady());
    readNow();
    EXPECT_EQ(result(task), InsertionResult::pasted);
    EXPECT_EQ(m_board.text(), u"word"_qs);
}

TEST_F(TextInserterReaderTest, AnotherProgramsCopyBeforeTheReadIsPutBackAfterThePaste)
{
    const auto task = start(u"word "_qs);
    advance(500ms);
    m_board.otherProgramWrites(u"newer"_qs);
    settleEvents();
    EXPECT_EQ(m_board.text(), u"word"_qs);
    advance(400ms);
    readNow();
    advance(400ms);
    EXPECT_EQ(result(task), InsertionResult::pasted);
    EXPECT_EQ(spaces(), 1);
    EXPECT_EQ(m_board.text(), u"newer"_qs);
}

TEST_F(TextInserterReaderTest, ACopyThatFollowsOursAtOnceIsNotTakenForOurs)
{
    m_board.afterWrite = [this] {
        m_board.afterWrite = nullptr;
        m_board.otherProgramWrites(u"newer"_qs);
    };
    const auto task = start(u"word"_qs);
    EXPECT_EQ(m_board.text(), u"word"_qs);
    readNow();
    advance(350ms);
    EXPECT_EQ(result(task), InsertionResult::pasted);
    EXPECT_EQ(m_board.text(), u"newer"_qs);
}

TEST_F(TextInserterReaderTest, TheNewerCopyComesBackEvenWithRestoreOff)
{
    const auto task = start(u"word"_qs, InsertionMethod::paste, false);
    m_board.otherProgramWrites(u"newer"_qs);
    settleEvents();
    readNow();
    advance(350ms);
    EXPECT_EQ(result(task), InsertionResult::pasted);
    EXPECT_EQ(m_board.text(), u"newer"_qs);
}

TEST_F(TextInserterReaderTest, AnotherProgramsCopyAfterTheReadIsKept)
{
    const auto task = start(u"word"_qs);
    readNow();
    advance(100ms);
    m_board.otherProgramWrites(u"newer"_qs);
    advance(250ms);
    EXPECT_EQ(result(task), InsertionResult::pasted);
    EXPECT_EQ(m_board.text(), u"newer"_qs);
}

TEST_F(TextInserterReaderTest, AnEditorThatKeepsWhatItHasReadDoesNotCostTheUsersClipboard)
{
    const auto task = start(u"word "_qs);
    readNow();
    m_board.otherProgramWrites(u"word"_qs);
    settleEvents();
    advance(50ms);
    EXPECT_EQ(spaces(), 1);
    EXPECT_EQ(m_board.text(), u"word"_qs);
    advance(350ms);
    EXPECT_EQ(result(task), InsertionResult::pasted);
    EXPECT_EQ(m_board.text(), m_before);
}

TEST_F(TextInserterReaderTest, ACopyMadeWhileTheKeptTextIsLookedAtStays)
{
    const auto task = start(u"word"_qs);
    readNow();
    m_board.otherProgramWrites(u"word"_qs);
    m_board.holdContents();
    advance(350ms);
    m_board.otherProgramWrites(u"newer"_qs);
    m_board.answerContents();
    settleEvents();
    EXPECT_EQ(result(task), InsertionResult::pasted);
    EXPECT_EQ(m_board.text(), u"newer"_qs);
}

TEST_F(TextInserterReaderTest, ASecondCopyEndsTheWaitAndTheTextIsOnTheClipboardAsTheResultSays)
{
    const auto task = start(u"word "_qs);
    m_board.otherProgramWrites(u"newer"_qs);
    settleEvents();
    m_board.otherProgramWrites(u"newest"_qs);
    settleEvents();
    EXPECT_EQ(result(task), InsertionResult::copiedToClipboard);
    EXPECT_EQ(m_board.text(), u"word "_qs);
}

TEST_F(TextInserterReaderTest, ACopyWhoseOwnerHangsEndsTheWaitToo)
{
    const auto task = start(u"word"_qs);
    m_board.hangOwner();
    m_board.otherProgramWrites(u"newer"_qs);
    settleEvents();
    EXPECT_EQ(result(task), InsertionResult::copiedToClipboard);
    EXPECT_EQ(m_board.text(), u"word"_qs);
}

TEST_F(TextInserterReaderTest, AClipboardManagerThatHoldsTheSameTextIsLeftAlone)
{
    const auto task = start(u"word "_qs);
    m_board.otherProgramWrites(u"word"_qs);
    settleEvents();
    const int changes = m_board.ownChanges();
    advance(50ms);
    EXPECT_EQ(spaces(), 1);
    advance(350ms);
    EXPECT_EQ(result(task), InsertionResult::pasted);
    EXPECT_EQ(m_board.ownChanges(), changes);
    EXPECT_EQ(m_board.text(), u"word"_qs);
}

TEST_F(TextInserterReaderTest, WaitsCutShortCountAsNobodyReading)
{
    const auto task = start(u"word"_qs);
    m_inserter->cutWaitsShort();
    settleEvents();
    EXPECT_EQ(result(task), InsertionResult::copiedToClipboard);
    EXPECT_EQ(m_board.text(), u"word"_qs);
}

TEST_F(TextInserterReaderTest, ATerminalThatPastesTheSelectionLeavesTheClipboardAlone)
{
    m_boards.front = FakePasteboards::xterm;
    m_boards.selectionBoard.otherProgramWrites(u"selected"_qs);
    const auto task = start(u"ls "_qs);
    EXPECT_EQ(m_boards.selectionBoard.text(), u"ls"_qs);
    EXPECT_EQ(m_boards.selectionBoard.reader(), FakePasteboards::xterm);
    EXPECT_EQ(m_keys.targets(), QList{FakePasteboards::xterm});
    m_boards.selectionBoard.frontProgramReads();
    settleEvents();
    advance(400ms);
    EXPECT_EQ(result(task), InsertionResult::pasted);
    EXPECT_EQ(m_boards.selectionBoard.text(), u"selected"_qs);
    EXPECT_EQ(m_board.text(), m_before);
    EXPECT_EQ(m_board.ownChanges(), 0);
}

TEST_F(TextInserterReaderTest, WhatATerminalDoesNotReadEndsUpOnTheGeneralPasteboard)
{
    m_boards.front = FakePasteboards::xterm;
    const auto task = start(u"ls "_qs);
    advance(2s);
    EXPECT_EQ(result(task), InsertionResult::copiedToClipboard);
    EXPECT_EQ(m_board.text(), u"ls "_qs);
    m_keys.failPastes();
    const auto failing = start(u"cd "_qs);
    EXPECT_EQ(result(failing), InsertionResult::copiedToClipboard);
    EXPECT_EQ(m_board.text(), u"cd "_qs);
}

TEST_F(TextInserterReaderTest, StopsWaitingForAReaderWhenTheInserterGoes)
{
    const auto task = start(u"word "_qs);
    advance(100ms);
    m_inserter.reset();
    EXPECT_TRUE(task.isReady());
    readNow();
    EXPECT_EQ(spaces(), 0);
    EXPECT_EQ(m_board.text(), u"word"_qs);
}

} // namespace tulvane
