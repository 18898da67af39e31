#include "ScriptedDesktop.h"

#include <platform/linux/atspi/AtspiFocusedElements.h>
#include <support/Await.h>

#include <QElapsedTimer>

#include <gtest/gtest.h>

namespace tulvane {

namespace {

using State = AccessibleStates::State;
using test::OnInsert;
using test::ScriptedDesktop;
using test::ScriptedProgram;

class WritingTest : public testing::Test {
protected:
    /// A field in front, found.
    void show(const QString& marked, const QString& toolkit = u"gtk"_qs)
    {
        m_program = &m_desktop.addField(marked, toolkit);
        m_element = test::await(m_elements.focused());
        ASSERT_NE(m_element, nullptr);
        m_program->called.clear();
    }
    bool write(const QString& text) { return test::await(m_element->setSelectedText(text)); }
    bool settable() { return test::await(m_element->settable()); }
    test::ScriptedObject& field() { return m_program->object(ScriptedDesktop::field); }
    QString shown() { return test::marked(field()); }

    ScriptedDesktop m_desktop;
    ScriptedProgram* m_program = nullptr;
    AtspiFocusedElements m_elements{m_desktop.sessionBus()};
    std::shared_ptr<FocusedElement> m_element;
};

} // namespace

TEST_F(WritingTest, LengthsAreBytesButForQt)
{
    show(u"ab|"_qs);
    EXPECT_TRUE(write(u"ø😀"_qs));
    EXPECT_EQ(m_program->insertedLength, 6);
    EXPECT_EQ(shown(), u"abø😀|"_qs);
    m_program->vanish();
    show(u"ab|"_qs, u"Qt"_qs);
    EXPECT_TRUE(write(u"ø😀"_qs));
    EXPECT_EQ(m_program->insertedLength, 3);
    EXPECT_EQ(shown(), u"abø😀|"_qs);
}

TEST_F(WritingTest, WithoutTheToolkitsNameNothingIsWritten)
{
    show(u"a[b]"_qs);
    m_program->object(accessibleRootPath).refusing = {u"ToolkitName"_qs};
    EXPECT_FALSE(write(u"x"_qs));
    EXPECT_EQ(shown(), u"a[b]"_qs);
}

TEST_F(WritingTest, OffsetsAreTheProgramsOwn)
{
    for (const QString& toolkit : {u"gtk"_qs, u"Qt"_qs}) {
        show(u"😀[😀å]😀"_qs, toolkit);
        EXPECT_TRUE(write(u"😀–"_qs));
        EXPECT_EQ(shown(), u"😀😀–|😀"_qs) << qPrintable(toolkit);
        m_program->vanish();
    }
}

TEST_F(WritingTest, ASelectionMadeBackwardsIsTheSame)
{
    show(u"a[b]c"_qs);
    field().selection = {2, 1};
    EXPECT_TRUE(write(u"x"_qs));
    EXPECT_EQ(shown(), u"ax|c"_qs);
}

TEST_F(WritingTest, AnEmptyTextIsNotWritten)
{
    show(u"a[b]c"_qs);
    EXPECT_FALSE(write(QString()));
    EXPECT_EQ(shown(), u"a[b]c"_qs);
}

TEST_F(WritingTest, WhatIsRefusedLeavesTheSelectionAlone)
{
    show(u"a[b]c"_qs);
    field().onInsert = OnInsert::refuse;
    EXPECT_FALSE(write(u"xy"_qs));
    EXPECT_EQ(shown(), u"a[b]c"_qs);
    EXPECT_FALSE(m_program->called.contains(u"DeleteText"_qs));
}

TEST_F(WritingTest, WhatIsAcceptedAndIgnoredLeavesTheSelectionAlone)
{
    show(u"a[b]c"_qs);
    field().onInsert = OnInsert::ignore;
    EXPECT_FALSE(write(u"xy"_qs));
    EXPECT_EQ(shown(), u"a[b]c"_qs);
    EXPECT_FALSE(m_program->called.contains(u"DeleteText"_qs));
}

TEST_F(WritingTest, AProgramMayTakeItsTimeToWrite)
{
    show(u"a[b]c"_qs);
    field().onInsert = OnInsert::later;
    EXPECT_TRUE(write(u"xy"_qs));
    EXPECT_EQ(shown(), u"axy|c"_qs);
}

TEST_F(WritingTest, APartIsTakenOutAgain)
{
    show(u"a[b]c"_qs);
    field().onInsert = OnInsert::insertPart;
    EXPECT_FALSE(write(u"x😀yz"_qs));
    EXPECT_EQ(shown(), u"a[b]c"_qs);
}

TEST_F(WritingTest, AChangedTextIsTakenOutAgain)
{
    show(u"a|c"_qs);
    field().onInsert = OnInsert::upperCase;
    EXPECT_FALSE(write(u"xy"_qs));
    EXPECT_EQ(shown(), u"a|c"_qs);
}

TEST_F(WritingTest, WhatWasCutOffIsPutBack)
{
    show(u"a[bc]def"_qs);
    field().onInsert = OnInsert::cutEnd;
    EXPECT_FALSE(write(u"xy"_qs));
    EXPECT_EQ(shown(), u"a[bc]def"_qs);
    m_program->vanish();
    show(u"abc|def"_qs);
    field().onInsert = OnInsert::cutEnd;
    EXPECT_FALSE(write(u"xy"_qs));
    EXPECT_EQ(shown(), u"abc|def"_qs);
}

TEST_F(WritingTest, ASelectionThatGoesByItselfIsNotRemovedTwice)
{
    show(u"a[bcd]efg"_qs);
    field().onInsert = OnInsert::overwrite;
    EXPECT_TRUE(write(u"xy"_qs));
    EXPECT_EQ(shown(), u"axy|efg"_qs);
}

TEST_F(WritingTest, WhereNothingCanBeRemovedTheTextIsThereOnce)
{
    show(u"a[b]c"_qs);
    field().removes = false;
    EXPECT_TRUE(write(u"xy"_qs));
    EXPECT_EQ(field().text, u"abxyc"_qs);
}

TEST_F(WritingTest, AnInterruptedReplacementLosesNothing)
{
    // The program freezes at each of its calls in turn: what was selected is there, or the new text is.
    for (int last = 0; last < 15; ++last) {
        show(u"a[b]c"_qs);
        int calls = 0;
        m_program->onCall = [&](const QString&) { m_program->frozen = ++calls > last; };
        (void)write(u"xy"_qs);
        EXPECT_TRUE(field().text.contains(u'b') || field().text.contains(u"xy"_qs)) << last;
        EXPECT_LE(field().text.count(u"xy"_qs), 1) << last;
        m_program->onCall = nullptr;
        m_program->vanish();
    }
}

TEST_F(WritingTest, ASilentProgramIsGivenUpInBoundedTime)
{
    show(u"a|"_qs);
    m_program->frozen = true;
    QElapsedTimer clock;
    clock.start();
    EXPECT_FALSE(settable());
    EXPECT_FALSE(write(u"x"_qs));
    EXPECT_EQ(test::await(m_element->role()), std::nullopt);
    EXPECT_EQ(test::await(m_element->value()), std::nullopt);
    EXPECT_LT(clock.elapsed(), 6000);
    EXPECT_EQ(field().text, u"a"_qs);
}

TEST_F(WritingTest, SilenceAfterTheRequestIsNoRefusal)
{
    show(u"a|"_qs);
    field().silent = {u"InsertText"_qs};
    EXPECT_FALSE(write(u"x"_qs));
    EXPECT_TRUE(m_element->mayStillArrive());
    // Silent for good from then on.
    m_program->onCall = [&](const QString& method) { m_program->frozen |= method == u"InsertText"; };
    EXPECT_FALSE(write(u"x"_qs));
    EXPECT_TRUE(m_element->mayStillArrive());
    m_program->frozen = false;
    m_program->onCall = nullptr;
    field().silent = {};
    field().onInsert = OnInsert::refuse;
    EXPECT_FALSE(write(u"x"_qs));
    EXPECT_FALSE(m_element->mayStillArrive());
}

TEST_F(WritingTest, WhatIsSeenToHaveComeNeedsNoAnswer)
{
    show(u"a|"_qs);
    field().silent = {u"InsertText"_qs};
    m_program->onCall = [&](const QString& method) {
        if (method == u"InsertText")
            field().text = u"ax"_qs;
    };
    EXPECT_TRUE(write(u"x"_qs));
    EXPECT_FALSE(m_element->mayStillArrive());
}

TEST_F(WritingTest, NothingIsWrittenOnceTheUserHasGoneElsewhere)
{
    show(u"a|"_qs);
    field().set(State::focused, false);
    EXPECT_FALSE(write(u"x"_qs));
    field().set(State::focused);
    m_program->object(ScriptedDesktop::window).set(State::active, false);
    EXPECT_FALSE(write(u"x"_qs));
    EXPECT_FALSE(m_program->called.contains(u"InsertText"_qs));
    m_program->object(ScriptedDesktop::window).set(State::active);
    EXPECT_TRUE(write(u"x"_qs));
}

TEST_F(WritingTest, WhatTheDesktopSaysAboutTheFrontCounts)
{
    auto front = std::optional(static_cast<quint32>(QCoreApplication::applicationPid()));
    AtspiFocusedElements elements(m_desktop.sessionBus(), [&] { return front; });
    m_program = &m_desktop.addField(u"a|"_qs);
    m_element = test::await(elements.focused());
    ASSERT_NE(m_element, nullptr);
    front = 1;
    EXPECT_FALSE(write(u"x"_qs));
    front = std::nullopt;
    EXPECT_FALSE(write(u"x"_qs));
    EXPECT_EQ(shown(), u"a|"_qs);
    front = static_cast<quint32>(QCoreApplication::applicationPid());
    EXPECT_TRUE(write(u"x"_qs));
    EXPECT_EQ(shown(), u"ax|"_qs);
}

TEST_F(WritingTest, NothingIsWrittenWhenAnotherProgramComesToTheFrontMeanwhile)
{
    const auto own = static_cast<quint32>(QCoreApplication::applicationPid());
    auto front = std::optional(own);
    AtspiFocusedElements elements(m_desktop.sessionBus(), [&] { return front; });
    m_program = &m_desktop.addField(u"a[b]"_qs);
    m_element = test::await(elements.focused());
    ASSERT_NE(m_element, nullptr);
    for (const auto& method : {u"GetText"_qs, u"CaretOffset"_qs, u"CharacterCount"_qs, u"GetNSelections"_qs,
                               u"GetSelection"_qs, u"ToolkitName"_qs, u"GetState"_qs}) {
        front = own;
        m_program->called.clear();
        m_program->onCall = [&](const QString& called) {
            if (called == method)
                front = 1;
        };
        EXPECT_FALSE(write(u"x"_qs)) << qPrintable(method);
        EXPECT_EQ(front, 1) << qPrintable(method);
        EXPECT_FALSE(m_program->called.contains(u"InsertText"_qs)) << qPrintable(method);
    }
    EXPECT_EQ(shown(), u"a[b]"_qs);
}

TEST_F(WritingTest, TheLookAtTheFrontIsTheLastThingBeforeTheWriting)
{
    QStringList calledAtLook;
    AtspiFocusedElements elements(m_desktop.sessionBus(), [&] {
        calledAtLook = m_program->called;
        return std::optional(static_cast<quint32>(QCoreApplication::applicationPid()));
    });
    m_program = &m_desktop.addField(u"a|"_qs);
    m_element = test::await(elements.focused());
    ASSERT_NE(m_element, nullptr);
    m_program->called.clear();
    EXPECT_TRUE(write(u"x"_qs));
    EXPECT_EQ(m_program->called.value(calledAtLook.size()), u"InsertText"_qs);
}

TEST_F(WritingTest, SettableNeedsBothInterfacesAndAFieldThatCanBeEdited)
{
    show(u"a|"_qs);
    EXPECT_TRUE(settable());
    field().set(State::readOnly);
    EXPECT_FALSE(settable());
    field().set(State::readOnly, false);
    field().set(State::editable, false);
    EXPECT_FALSE(settable());
    field().set(State::editable);
    field().interfaces.removeAll(accessibleInterfaces::editableText);
    EXPECT_FALSE(settable());
    field().interfaces = {accessibleInterfaces::accessible, accessibleInterfaces::editableText};
    EXPECT_FALSE(settable());
    field().interfaces.append(accessibleInterfaces::text);
    EXPECT_TRUE(settable());
    field().refusing = {u"GetInterfaces"_qs};
    EXPECT_FALSE(settable());
}

TEST_F(WritingTest, OffsetsThatCannotBeAreRefused)
{
    show(u"ab|"_qs);
    field().caret = 3;
    EXPECT_FALSE(write(u"x"_qs));
    field().caret = -1;
    EXPECT_FALSE(write(u"x"_qs));
    field().caret = 0;
    field().selection = {0, 7};
    EXPECT_FALSE(write(u"x"_qs));
    EXPECT_EQ(field().text, u"ab"_qs);
}

TEST_F(WritingTest, AProgramThatGoesInTheMiddleIsAFailure)
{
    show(u"a|"_qs);
    m_program->onCall = [&](const QString& method) {
        if (method == u"GetText")
            QMetaObject::invokeMethod(m_program, [this] { m_program->vanish(); }, Qt::QueuedConnection);
    };
    field().silent = {u"GetText"_qs};
    QElapsedTimer clock;
    clock.start();
    EXPECT_FALSE(write(u"x"_qs));
    EXPECT_LT(clock.elapsed(), 400);
}

} // namespace tulvane
