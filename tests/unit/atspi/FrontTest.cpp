// Which window is in front by the word of the programs.
#include "ScriptedDesktop.h"

#include <platform/linux/atspi/AtspiFront.h>
#include <support/Await.h>

#include <gtest/gtest.h>
#include <unistd.h>

namespace tulvane {

namespace {

using test::runEventLoopFor;
using test::ScriptedDesktop;
using test::ScriptedProgram;
using test::waitUntil;

class AtspiFrontTest : public testing::Test {
protected:
    AtspiFront& front()
    {
        if (!m_front)
            m_front = std::make_unique<AtspiFront>(m_desktop.sessionBus());
        return *m_front;
    }
    [[nodiscard]] bool comes(const ScriptedProgram& program)
    {
        return waitUntil([&] { return front().current().place == program.at(ScriptedDesktop::window); });
    }
    [[nodiscard]] bool goes()
    {
        return waitUntil([&] { return !front().current().isKnown(); });
    }
    /// With a window that is not in front.
    ScriptedProgram& addHidden(const QString& name)
    {
        ScriptedProgram& program = m_desktop.addField(u"|"_qs, name);
        program.object(ScriptedDesktop::window).set(AccessibleStates::State::active, false);
        return program;
    }
    /// Once it listens: it does not receive what programs have sent before.
    void beginWith(const ScriptedProgram& program)
    {
        ASSERT_TRUE(comes(program));
        ASSERT_TRUE(waitUntil([&] { return !front().current().program.isEmpty(); }));
    }

    ScriptedDesktop m_desktop;
    ScriptedProgram& m_other = addHidden(u"other"_qs);
    ScriptedProgram& m_editor = m_desktop.addField(u"|"_qs, u"editor"_qs);

private:
    std::unique_ptr<AtspiFront> m_front;
};

} // namespace

TEST_F(AtspiFrontTest, TheOneThatWasActiveBeforeWeListenedIsFound)
{
    beginWith(m_editor);
    EXPECT_EQ(front().current().process, static_cast<quint32>(getpid()));
    EXPECT_EQ(front().current().program, u"editor"_qs);
}

TEST_F(AtspiFrontTest, WhoeverBecomesActiveIsInFrontHoweverThatIsWritten)
{
    beginWith(m_editor);
    m_other.tell(u"Activate"_qs, ScriptedDesktop::window);
    EXPECT_TRUE(comes(m_other));
    EXPECT_TRUE(waitUntil([&] { return front().current().program == u"other"_qs; }));
    m_editor.tell(u"activate"_qs, ScriptedDesktop::window);
    EXPECT_TRUE(comes(m_editor));
    m_editor.tell(u"deactivate"_qs, ScriptedDesktop::window);
    EXPECT_TRUE(goes());
}

TEST_F(AtspiFrontTest, ALateFarewellDoesNotTakeTheNextWindowAway)
{
    beginWith(m_editor);
    m_other.tell(u"Activate"_qs, ScriptedDesktop::window);
    ASSERT_TRUE(comes(m_other));
    m_editor.tell(u"Deactivate"_qs, ScriptedDesktop::window);
    // It receives events of one program in the order in which that program sent them.
    m_editor.tell(u"Activate"_qs, u"/second"_qs);
    ASSERT_TRUE(waitUntil([&] { return front().current().place == m_editor.at(u"/second"_qs); }));
    m_other.tell(u"Deactivate"_qs, ScriptedDesktop::window);
    m_other.tell(u"Activate"_qs, ScriptedDesktop::window);
    ASSERT_TRUE(comes(m_other));
    m_other.tell(u"Deactivate"_qs, ScriptedDesktop::window);
    EXPECT_TRUE(goes());
}

TEST_F(AtspiFrontTest, AProgramThatCrashesIsNotInFront)
{
    beginWith(m_editor);
    m_editor.vanish();
    EXPECT_TRUE(goes());
}

TEST_F(AtspiFrontTest, WhatIsToldDuringTheSearchIsNewerThanWhatItFinds)
{
    bool hasTold = false;
    m_editor.onCall = [&](const QString& method) {
        if (method == u"GetState" && !std::exchange(hasTold, true))
            m_other.tell(u"Activate"_qs, ScriptedDesktop::window);
    };
    // The signal and the answer are of two programs: one may overtake the other, and then it is heard later.
    EXPECT_TRUE(comes(m_other));
    EXPECT_TRUE(hasTold);
    EXPECT_FALSE(waitUntil([&] { return front().current().place == m_editor.at(ScriptedDesktop::window); },
                           std::chrono::milliseconds(200)));
}

TEST_F(AtspiFrontTest, AProgramThatHangsIsInFrontByItsEventAndKeepsNothingWaiting)
{
    beginWith(m_editor);
    m_other.frozen = true;
    m_other.tell(u"Activate"_qs, ScriptedDesktop::window);
    ASSERT_TRUE(comes(m_other));
    // The bus itself knows the process; the name is the program's to say.
    EXPECT_TRUE(waitUntil([&] { return front().current().process != 0; }));
    EXPECT_EQ(front().current().program, QString());
}

TEST_F(AtspiFrontTest, AHangingProgramIsPassedOverInTheSearch)
{
    m_other.frozen = true;
    EXPECT_TRUE(comes(m_editor));
}

TEST_F(AtspiFrontTest, AProgramThatIsTooBusyToAnswerTheSearchIsAskedAgain)
{
    m_editor.frozen = true;
    ASSERT_FALSE(front().current().isKnown());
    ASSERT_TRUE(waitUntil([&] { return m_editor.called.contains(u"GetChildren"_qs); }));
    // Later than anybody waits for one answer.
    ASSERT_FALSE(waitUntil([&] { return front().current().isKnown(); }, BusLink::callLimit * 2));
    m_editor.frozen = false;
    EXPECT_TRUE(comes(m_editor));
    EXPECT_TRUE(waitUntil([&] { return front().current().process != 0; }));
}

TEST_F(AtspiFrontTest, WithoutABusNothingIsInFront)
{
    AtspiFront none{QString()};
    AtspiFront nowhere(u"unix:path=/nowhere/bus"_qs);
    beginWith(m_editor);
    EXPECT_FALSE(none.current().isKnown());
    EXPECT_FALSE(nowhere.current().isKnown());
    m_desktop.killBus();
    EXPECT_TRUE(goes());
}

TEST_F(AtspiFrontTest, ItGoesAtAnyTime)
{
    m_editor.frozen = true;
    for (const int milliseconds : {0, 1, 5, 20, 50}) {
        AtspiFront shortLived(m_desktop.sessionBus());
        runEventLoopFor(std::chrono::milliseconds(milliseconds));
        m_other.tell(u"Activate"_qs, ScriptedDesktop::window);
    }
    EXPECT_TRUE(waitUntil([&] { return m_other.called.count(u"GetChildren"_qs) > 0; }));
}

} // namespace tulvane
