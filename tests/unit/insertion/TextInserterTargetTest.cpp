#include "TextInserterFixture.h"

#include <gmock/gmock.h>

using namespace std::chrono_literals;
using testing::IsEmpty;

namespace tulvane {

namespace {

/// Windows that change while a text is on its way.
class TextInserterTargetTest : public test::TextInserterFixture {
protected:
    TextInserterTargetTest()
    {
        m_board.tellReads();
        m_selection.tellReads();
        m_selection.otherProgramWrites(m_selected);
    }

    const QString m_selected = QStringLiteral("selected");
    FakePasteboard& m_selection = m_boards.selectionBoard;
};

} // namespace

TEST_F(TextInserterTargetTest, TheTargetIsDecidedAfterTheClipboardWasSaved)
{
    m_board.holdContents();
    const auto task = start(u"ls "_qs);
    m_boards.front = FakePasteboards::xterm;
    m_board.answerContents();
    settleEvents();
    EXPECT_EQ(m_keys.targets(), QList{FakePasteboards::xterm});
    EXPECT_EQ(m_selection.text(), u"ls"_qs);
    EXPECT_EQ(m_selection.reader(), FakePasteboards::xterm);
    m_selection.frontProgramReads();
    settleEvents();
    advance(400ms);
    EXPECT_EQ(result(task), InsertionResult::pasted);
    EXPECT_EQ(m_selection.text(), m_selected);
    EXPECT_EQ(m_board.text(), m_before);
    EXPECT_EQ(m_board.ownChanges(), 0);
}

TEST_F(TextInserterTargetTest, WithoutRestorationTheWindowInFrontDecidesAllTheSame)
{
    m_boards.front = FakePasteboards::xterm;
    const auto task = start(u"ls "_qs, InsertionMethod::paste, false);
    EXPECT_EQ(m_keys.targets(), QList{FakePasteboards::xterm});
    EXPECT_EQ(m_selection.text(), u"ls"_qs);
    EXPECT_EQ(m_board.ownChanges(), 0);
}

TEST_F(TextInserterTargetTest, WhenAnotherWindowComesToTheFrontTheTextWaitsOnTheClipboard)
{
    m_board.afterWrite = [this] { m_keys.windowInFront = FakePasteboards::xterm.window; };
    const auto task = start(u"two words "_qs);
    EXPECT_EQ(result(task), InsertionResult::copiedToClipboard);
    EXPECT_EQ(m_board.text(), u"two words "_qs);
    EXPECT_THAT(m_keys.posted(), IsEmpty());
    advance(5s);
    EXPECT_EQ(m_board.text(), u"two words "_qs);
    EXPECT_EQ(m_selection.text(), m_selected);
}

TEST_F(TextInserterTargetTest, InATerminalEachLineBreakIsASpace)
{
    for (const auto& [said, pasted] : {std::pair(u"one\ntwo\r\nthree\rfour "_qs, u"one two three four"_qs),
                                       std::pair(u"one\n"_qs, u"one "_qs), std::pair(u"\n"_qs, u" "_qs)}) {
        m_boards.front = FakePasteboards::xterm;
        const auto inTerminal = start(said);
        EXPECT_EQ(m_selection.text(), pasted);
        m_selection.frontProgramReads();
        settleEvents();
        advance(400ms);
        EXPECT_EQ(result(inTerminal), InsertionResult::pasted);
        EXPECT_EQ(m_selection.text(), m_selected);
        m_boards.front = FakePasteboards::editor;
        const auto inEditor = start(said);
        EXPECT_EQ(m_board.text(), TextInserter::splitTrailingSpaces(said).first);
        m_board.frontProgramReads();
        settleEvents();
        advance(400ms);
    }
}

TEST_F(TextInserterTargetTest, WhatDoesNotReachATerminalWaitsAsItWasSaid)
{
    m_boards.front = FakePasteboards::xterm;
    const auto task = start(u"one\ntwo "_qs);
    advance(2s);
    EXPECT_EQ(result(task), InsertionResult::copiedToClipboard);
    EXPECT_EQ(m_board.text(), u"one\ntwo "_qs);
}

TEST_F(TextInserterTargetTest, AfterAFailedPasteTheSelectionIsTheUsersAgain)
{
    m_boards.front = FakePasteboards::xterm;
    const auto unread = start(u"ls "_qs);
    EXPECT_EQ(m_selection.text(), u"ls"_qs);
    advance(2s);
    EXPECT_EQ(result(unread), InsertionResult::copiedToClipboard);
    EXPECT_EQ(m_selection.text(), m_selected);
    m_keys.failPastes();
    const auto unposted = start(u"cd "_qs);
    EXPECT_EQ(result(unposted), InsertionResult::copiedToClipboard);
    EXPECT_EQ(m_selection.text(), m_selected);
    EXPECT_EQ(m_board.text(), u"cd "_qs);
}

TEST_F(TextInserterTargetTest, AfterAFailedPasteANewerSelectionStays)
{
    m_boards.front = FakePasteboards::xterm;
    m_selection.afterWrite = [this] {
        m_keys.windowInFront = FakePasteboards::editor.window;
        m_selection.otherProgramWrites(u"newer"_qs);
    };
    const auto task = start(u"ls "_qs);
    EXPECT_EQ(result(task), InsertionResult::copiedToClipboard);
    EXPECT_EQ(m_selection.text(), u"newer"_qs);
}

} // namespace tulvane
