#include "ScriptedDesktop.h"

#include <platform/linux/atspi/AtspiFocusedElements.h>
#include <platform/linux/atspi/FocusSearch.h>
#include <support/Await.h>
#include <support/LogCapture.h>

#include <QElapsedTimer>

#include <gtest/gtest.h>

using namespace std::chrono_literals;

namespace tulvane {

namespace {

using State = AccessibleStates::State;
using test::ScriptedDesktop;
using test::ScriptedProgram;

class FocusSearchTest : public testing::Test {
protected:
    /// The role of what was found: as good as a name.
    std::optional<QString> found()
    {
        const auto element = test::await(m_elements.focused());
        return element ? test::await(element->role()) : std::nullopt;
    }
    ScriptedProgram& program() { return m_program; }
    test::ScriptedObject& window() { return m_program.object(ScriptedDesktop::window); }
    test::ScriptedObject& panel() { return m_program.object(u"/panel"_qs); }
    test::ScriptedObject& field() { return m_program.object(ScriptedDesktop::field); }

    ScriptedDesktop m_desktop;
    ScriptedProgram& m_program = m_desktop.addField(u"|"_qs);
    AtspiFocusedElements m_elements{m_desktop.sessionBus()};
    test::LogCapture m_log;
    const QString m_line = u"AXTextField"_qs;
};

} // namespace

TEST_F(FocusSearchTest, FindsTheFieldInTheWindowInFront)
{
    EXPECT_EQ(found(), m_line);
}

TEST_F(FocusSearchTest, TakesNothingFromAWindowThatIsNotInFront)
{
    window().set(State::active, false);
    EXPECT_EQ(found(), std::nullopt);
    EXPECT_FALSE(program().called.contains(u"ChildCount"_qs));
}

TEST_F(FocusSearchTest, TakesNothingWithoutTheFocus)
{
    field().set(State::focused, false);
    EXPECT_EQ(found(), std::nullopt);
}

TEST_F(FocusSearchTest, TwoProgramsThatClaimTheFocusAreOneTooMany)
{
    m_desktop.addField(u"|"_qs);
    EXPECT_EQ(found(), std::nullopt);
    EXPECT_TRUE(m_log.contains(u"several elements"_qs));
}

TEST_F(FocusSearchTest, TwoFieldsOfOneWindowAreOneTooManyAsWell)
{
    program().object(u"/label"_qs).states = field().states;
    EXPECT_EQ(found(), std::nullopt);
}

TEST_F(FocusSearchTest, OfAWholeAndItsPartThePartCounts)
{
    panel().set(State::focused);
    EXPECT_EQ(found(), m_line);
    field().set(State::editable, false);
    field().children = {program().at(u"/inner"_qs)};
    program().object(u"/inner"_qs).states = {State::showing, State::focused, State::multiLine};
    EXPECT_EQ(found(), u"AXTextArea"_qs);
}

TEST_F(FocusSearchTest, OfAWholeThatCanBeEditedAndAPartThatCannotTheWholeCounts)
{
    field().children = {program().at(u"/viewport"_qs)};
    program().object(u"/viewport"_qs).states = {State::showing, State::focused};
    program().object(u"/viewport"_qs).role = 1;
    EXPECT_EQ(found(), m_line);
    program().object(u"/viewport"_qs).set(State::editable);
    EXPECT_EQ(found(), u"role 1"_qs);
}

TEST_F(FocusSearchTest, BesideAFieldThatCanBeEditedNothingElseCounts)
{
    for (const auto& paths : {QStringList{u"/a"_qs, u"/field"_qs}, QStringList{u"/field"_qs, u"/a"_qs}}) {
        panel().children.clear();
        for (const QString& path : paths)
            panel().children.append(program().at(path));
        program().object(u"/a"_qs).states = {State::showing, State::focused};
        EXPECT_EQ(found(), m_line);
    }
}

TEST_F(FocusSearchTest, WhereTheDesktopTellsOnlyTheProgramInFrontIsAsked)
{
    auto front = std::optional(static_cast<quint32>(QCoreApplication::applicationPid()));
    AtspiFocusedElements elements(m_desktop.sessionBus(), [&] { return front; });
    EXPECT_NE(test::await(elements.focused()), nullptr);
    program().called.clear();
    front = 1;
    EXPECT_EQ(test::await(elements.focused()), nullptr);
    front = std::nullopt;
    EXPECT_EQ(test::await(elements.focused()), nullptr);
    EXPECT_TRUE(program().called.isEmpty());
}

TEST_F(FocusSearchTest, WhatHasTheFocusIsNotLookedForBesideIt)
{
    panel().children.append(program().at(u"/beside"_qs));
    program().object(u"/beside"_qs).states = {State::showing};
    program().object(u"/beside"_qs).children = {program().at(u"/below"_qs)};
    program().object(u"/below"_qs).states = {State::showing, State::focused};
    EXPECT_EQ(found(), m_line);
}

TEST_F(FocusSearchTest, NothingHiddenIsLookedThrough)
{
    panel().set(State::showing, false);
    EXPECT_EQ(found(), std::nullopt);
}

TEST_F(FocusSearchTest, TablesAreNotLookedThrough)
{
    panel().set(State::managesDescendants);
    EXPECT_EQ(found(), std::nullopt);
    panel().set(State::managesDescendants, false);
    panel().childCount = 1'000'000;
    EXPECT_EQ(found(), std::nullopt);
    EXPECT_EQ(program().called.count(u"GetChildren"_qs), 2 * 2);
    panel().childCount = FocusSearch::mostChildren;
    EXPECT_EQ(found(), m_line);
}

TEST_F(FocusSearchTest, AWindowWithoutEndIsGivenUp)
{
    panel().children.append(program().at(u"/panel"_qs));
    field().set(State::focused, false);
    EXPECT_EQ(found(), std::nullopt);
    EXPECT_TRUE(m_log.contains(u"did not say"_qs));
}

TEST_F(FocusSearchTest, AWindowWithTooMuchInItIsGivenUp)
{
    panel().children.clear();
    for (int row = 0; row < 20; ++row) {
        const QString path = u"/row/%1"_qs.arg(row);
        panel().children.append(program().at(path));
        program().object(path).states = {State::showing};
        for (int cell = 0; cell < 200; ++cell)
            program().object(path).children.append(program().at(u"/label"_qs));
    }
    EXPECT_EQ(found(), std::nullopt);
    EXPECT_LT(program().called.size(), 100);
}

TEST_F(FocusSearchTest, AnObjectThatHasGoneIsPassedOver)
{
    program().object(u"/label"_qs).refusing = {u"GetState"_qs, u"ChildCount"_qs};
    auto& other = m_desktop.addProgram();
    other.object(accessibleRootPath).refusing = {u"GetChildren"_qs};
    EXPECT_EQ(found(), m_line);
}

TEST_F(FocusSearchTest, AProgramThatHasGoneIsPassedOver)
{
    m_desktop.addField(u"|"_qs).vanish();
    EXPECT_EQ(found(), m_line);
}

TEST_F(FocusSearchTest, ASilentProgramMayHaveTheFocusSoNobodyIsWrittenInto)
{
    m_desktop.addProgram().frozen = true;
    QElapsedTimer clock;
    clock.start();
    EXPECT_EQ(found(), std::nullopt);
    EXPECT_LT(clock.elapsed(), 2000);
    EXPECT_TRUE(m_log.contains(u"did not say"_qs));
}

TEST_F(FocusSearchTest, SilenceAtAnyQuestionEndsInBoundedTime)
{
    for (const QString& path :
         {ScriptedDesktop::window, u"/panel"_qs, u"/label"_qs, ScriptedDesktop::field}) {
        for (const QString& question : {u"GetState"_qs, u"GetChildren"_qs, u"ChildCount"_qs}) {
            const bool isAsked = path == ScriptedDesktop::window ? question != u"ChildCount"_qs
                                 : path == u"/panel"_qs          ? true
                                                                 : question != u"GetChildren"_qs;
            program().object(path).silent = {question};
            EXPECT_EQ(found(), isAsked ? std::nullopt : std::optional(m_line))
                << qPrintable(path) << ' ' << qPrintable(question);
            program().object(path).silent.clear();
        }
    }
    EXPECT_EQ(found(), m_line);
}

TEST_F(FocusSearchTest, ARegistryThatRefusesKnowsNobody)
{
    m_desktop.registry().object(accessibleRootPath).refusing = {u"GetChildren"_qs};
    EXPECT_EQ(found(), std::nullopt);
}

TEST_F(FocusSearchTest, RolesGoByTheirNameWhereNoneOfOursFits)
{
    field().role = 60;
    EXPECT_EQ(found(), u"role 60"_qs);
    field().role = static_cast<quint32>(AccessibleRole::entry);
    EXPECT_EQ(found(), m_line);
    field().role = static_cast<quint32>(AccessibleRole::passwordText);
    EXPECT_EQ(found(), FocusedElement::secureTextFieldRole);
    field().refusing = {u"GetRole"_qs, u"GetRoleName"_qs};
    EXPECT_EQ(found(), std::nullopt);
}

} // namespace tulvane
