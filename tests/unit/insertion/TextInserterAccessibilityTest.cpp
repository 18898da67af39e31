#include "TextInserterFixture.h"

#include <gmock/gmock.h>

using namespace std::chrono_literals;
using testing::ElementsAre;

namespace tulvane {

namespace {

class TextInserterAccessibilityTest : public test::TextInserterFixture {
protected:
    QCoro::Task<InsertionResult> insert(const QString& text)
    {
        return start(text, InsertionMethod::accessibilityThenPaste);
    }
    /// The text went the other way, whole, and nothing was logged but what is named.
    void expectPasted(const QCoro::Task<InsertionResult>& task, const QStringList& warnings = {})
    {
        EXPECT_EQ(pastes(), 1);
        advance(500ms);
        EXPECT_EQ(result(task), InsertionResult::pasted);
        EXPECT_EQ(m_log.texts("insertion", QtWarningMsg), warnings);
        EXPECT_EQ(m_log.lines().size(), warnings.size());
    }
    FakeElementScript& element() { return *m_elements.script; }
};

} // namespace

TEST_F(TextInserterAccessibilityTest, WritesTheWholeTextAndTouchesNeitherClipboardNorKeys)
{
    element().value = u"before "_qs;
    const auto task = insert(u"two words "_qs);
    EXPECT_EQ(result(task), InsertionResult::inserted);
    EXPECT_THAT(element().written, ElementsAre(u"two words "_qs));
    EXPECT_EQ(element().value, u"before two words "_qs);
    EXPECT_EQ(m_board.ownChanges(), 0);
    EXPECT_TRUE(m_keys.posted().isEmpty());
    EXPECT_TRUE(m_log.lines().isEmpty());
}

TEST_F(TextInserterAccessibilityTest, WhileHeldBackNothingIsWrittenAndTheTextWaitsOnTheClipboard)
{
    m_inserter->setHeldBack(true);
    const auto task = insert(u"two words "_qs);
    EXPECT_EQ(result(task), InsertionResult::copiedToClipboard);
    EXPECT_TRUE(element().written.isEmpty());
    EXPECT_EQ(m_board.text(), u"two words "_qs);
    EXPECT_TRUE(m_keys.posted().isEmpty());
    EXPECT_THAT(m_log.texts("insertion", QtWarningMsg),
                ElementsAre(u"The screen is locked; left text on clipboard"_qs));
    m_inserter->setHeldBack(false);
    EXPECT_EQ(result(insert(u"more "_qs)), InsertionResult::inserted);
}

TEST_F(TextInserterAccessibilityTest, MethodPasteNeverAsksForTheElement)
{
    const auto task = start(u"word"_qs);
    advance(500ms);
    EXPECT_EQ(m_elements.asked, 0);
}

TEST_F(TextInserterAccessibilityTest, WithoutAFocusedElementItPastes)
{
    element().present = false;
    expectPasted(insert(u"word"_qs));
}

TEST_F(TextInserterAccessibilityTest, AnElementThatCannotBeSetIsPastedInto)
{
    element().isSettable = false;
    expectPasted(insert(u"word"_qs));
    EXPECT_TRUE(element().written.isEmpty());
}

TEST_F(TextInserterAccessibilityTest, APasswordFieldIsRefusedAndPastedInto)
{
    element().role = u"AXSecureTextField"_qs;
    expectPasted(insert(u"word"_qs));
    EXPECT_TRUE(element().written.isEmpty());
}

TEST_F(TextInserterAccessibilityTest, ARoleThatCannotBeReadStandsInNobodysWay)
{
    element().role = std::nullopt;
    const auto task = insert(u"word"_qs);
    EXPECT_EQ(result(task), InsertionResult::inserted);
}

TEST_F(TextInserterAccessibilityTest, AFailedWriteIsPasted)
{
    element().writeSucceeds = false;
    expectPasted(insert(u"word"_qs));
}

TEST_F(TextInserterAccessibilityTest, SilenceIsNoRefusalSoTheTextIsNotPastedAsWell)
{
    element().writeIsSilent = true;
    const auto task = insert(u"two words "_qs);
    EXPECT_EQ(result(task), InsertionResult::copiedToClipboard);
    EXPECT_EQ(pastes(), 0);
    EXPECT_EQ(m_board.text(), u"two words "_qs);
    EXPECT_THAT(m_log.texts("insertion", QtWarningMsg),
                ElementsAre(u"The element did not answer; left text on clipboard"_qs));
}

TEST_F(TextInserterAccessibilityTest, AnElementThatAcceptsAndIgnoresIsFoundOutAndPastedInto)
{
    element().writeApplies = false;
    expectPasted(insert(u"word"_qs), {u"AX insert not reflected in value; falling back to paste"_qs});
}

TEST_F(TextInserterAccessibilityTest, AValueThatCannotBeReadCountsAsWritten)
{
    element().value = std::nullopt;
    const auto task = insert(u"word"_qs);
    EXPECT_EQ(result(task), InsertionResult::inserted);
}

TEST_F(TextInserterAccessibilityTest, WhiteSpaceAloneCountsAsWritten)
{
    element().writeApplies = false;
    const auto task = insert(u" \n\t "_qs);
    EXPECT_EQ(result(task), InsertionResult::inserted);
}

TEST_F(TextInserterAccessibilityTest, TheValueIsSearchedForTheTextWithoutTheWhiteSpaceAroundIt)
{
    element().writeApplies = false;
    element().value = u"it says: two words."_qs;
    const auto task = insert(u"\n two words \n"_qs);
    EXPECT_EQ(result(task), InsertionResult::inserted);
}

TEST_F(TextInserterAccessibilityTest, WithoutPermissionTheElementIsNotAskedFor)
{
    m_permissions.accessibilityGranted = false;
    const auto task = insert(u"word"_qs);
    EXPECT_EQ(result(task), InsertionResult::copiedToClipboard);
    EXPECT_EQ(m_elements.asked, 0);
}

} // namespace tulvane
