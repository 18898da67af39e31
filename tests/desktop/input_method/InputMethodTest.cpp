// The input method of sway, alone: what reaches a field arrives exactly, what reaches none is not said to
// have.
#include <platform/fake/FakeFocusedElement.h>
#include <platform/linux/wayland/fields/InputMethodElement.h>
#include <platform/linux/wayland/fields/InputMethodElements.h>
#include <support/Await.h>
#include <support/Paths.h>
#include <support/fields/FieldProgram.h>
#include <support/targets/JsonProcess.h>
#include <support/wayland/WaylandDesktop.h>

#include <QStandardPaths>

#include <gtest/gtest.h>

#include <chrono>

namespace tulvane::test {

namespace {

using Kind = FieldProgram::Kind;

const QString said = QStringLiteral("Åpne «døra» 😀 nå. ");

/// Nothing is found over accessibility.
std::shared_ptr<FocusedElements> nothing()
{
    auto none = std::make_shared<FakeFocusedElements>();
    none->script->present = false;
    return none;
}

class InputMethodTest : public testing::Test {
protected:
    static void SetUpTestSuite()
    {
        if (WaylandDesktop::missing(WaylandDesktop::Kind::sway).isEmpty())
            desktop = std::make_unique<WaylandDesktop>(WaylandDesktop::Kind::sway);
    }
    static void TearDownTestSuite() { desktop = nullptr; }
    void SetUp() override
    {
        TULVANE_NEEDS(WaylandDesktop::Kind::sway);
        elements = std::make_unique<InputMethodElements>(nothing(), connect());
    }
    void TearDown() override
    {
        for (QProcess* program : m_programs) {
            program->terminate();
            program->waitForFinished();
        }
    }

    static std::shared_ptr<WaylandConnection> connect()
    {
        return WaylandConnection::open(WaylandConnection::socketOf(desktop->environment()));
    }
    QProcess& start(QStringList command)
    {
        QProcess& program = desktop->start(command.takeFirst(), command);
        m_programs.append(&program);
        return program;
    }
    FieldProgram fields()
    {
        const auto gtk = FieldProgram::Toolkit::gtk;
        return {start(FieldProgram::command(gtk, {})), gtk};
    }
    [[nodiscard]] std::shared_ptr<FocusedElement> field() const
    {
        std::shared_ptr<FocusedElement> found;
        // A field that has just been shown may give the focus up once more.
        EXPECT_TRUE(waitUntil([&] {
            found = await(elements->focused());
            if (!found)
                return false;
            runEventLoopFor(std::chrono::milliseconds(100));
            return await(found->settable());
        }));
        return found;
    }
    /// What becomes of a field when this is written into it.
    QString written(FieldProgram& program, Kind kind, const QString& marked, const QString& text)
    {
        program.show(kind, marked);
        EXPECT_TRUE(await(field()->setSelectedText(text)));
        return program.marked();
    }

    static inline std::unique_ptr<WaylandDesktop> desktop;
    std::unique_ptr<InputMethodElements> elements;

private:
    QList<QProcess*> m_programs;
};

TEST_F(InputMethodTest, ATextGoesWhereTheCaretOrTheSelectionIs)
{
    FieldProgram program = fields();
    for (const Kind kind : {Kind::line, Kind::area}) {
        EXPECT_EQ(written(program, kind, u"|"_qs, said), said + u"|");
        EXPECT_EQ(written(program, kind, u"Hei | du"_qs, u"på deg"_qs), u"Hei på deg| du"_qs);
        EXPECT_EQ(written(program, kind, u"et [gammelt] ord"_qs, u"nytt"_qs), u"et nytt| ord"_qs);
        EXPECT_EQ(written(program, kind, u"😀[å😀]–€"_qs, u"😀 ok"_qs), u"😀😀 ok|–€"_qs);
    }
    EXPECT_EQ(written(program, Kind::area, u"én\nt[o\ntr]e\nfire"_qs, u"\n–\nto"_qs),
              u"én\nt\n–\nto|e\nfire"_qs);
}

TEST_F(InputMethodTest, ManyInARowAndALongOne)
{
    FieldProgram program = fields();
    program.show(Kind::area, u"|"_qs);
    QString all;
    for (int i = 0; i < 5; ++i) {
        ASSERT_TRUE(await(field()->setSelectedText(said)));
        all += said;
        EXPECT_EQ(program.marked(), all + u"|");
    }
    const QString longest = said.repeated(InputMethodElement::longest / said.toUtf8().size());
    EXPECT_EQ(written(program, Kind::area, u"|"_qs, longest), longest + u"|");
    program.show(Kind::area, u"|"_qs);
    const auto found = field();
    EXPECT_FALSE(await(found->setSelectedText(longest + said)));
    EXPECT_FALSE(found->mayStillArrive());
    EXPECT_EQ(program.marked(), u"|"_qs);
}

TEST_F(InputMethodTest, IntoGtk4)
{
    JsonProcess program(start({QStringLiteral("/usr/bin/python3"),
                               sourceFolder() + QStringLiteral("/tests/support/targets/gtk4_target.py")}),
                        '\n');
    ASSERT_TRUE(waitUntil([&] { return program.count(QStringLiteral("ready")) > 0; }));
    ASSERT_TRUE(await(field()->setSelectedText(said)));
    EXPECT_EQ(program.ask({{QStringLiteral("do"), QStringLiteral("report")}})[QStringLiteral("text")], said);
}

TEST_F(InputMethodTest, ModifiersThatAreHeldDownDoNotMatter)
{
    FieldProgram program = fields();
    program.show(Kind::line, u"|"_qs);
    desktop->down({29, 42});
    EXPECT_TRUE(await(field()->setSelectedText(said)));
    desktop->up({29, 42});
    EXPECT_EQ(program.marked(), said + u"|");
}

TEST_F(InputMethodTest, TheKeyboardIsTheUsersAfterwards)
{
    FieldProgram program = fields();
    EXPECT_EQ(written(program, Kind::line, u"|"_qs, said), said + u"|");
    desktop->press({39});
    EXPECT_TRUE(waitUntil([&] { return program.marked() == said + u"ø|"; }));
}

TEST_F(InputMethodTest, APasswordIsNeverCommitted)
{
    FieldProgram program = fields();
    program.show(Kind::password, u"hemmelig|"_qs);
    const auto found = field();
    EXPECT_EQ(await(found->role()), FocusedElement::secureTextFieldRole);
    EXPECT_FALSE(await(found->setSelectedText(said)));
    EXPECT_FALSE(found->mayStillArrive());
    EXPECT_EQ(program.marked(), u"hemmelig|"_qs);
}

TEST_F(InputMethodTest, WhatAFieldDoesNotKeepIsNotSaidToBeWritten)
{
    FieldProgram program = fields();
    program.show(Kind::ignoring, u"som før|"_qs);
    const auto found = field();
    EXPECT_FALSE(await(found->setSelectedText(said)));
    EXPECT_TRUE(found->mayStillArrive());
    EXPECT_EQ(program.marked(), u"som før|"_qs);
}

TEST_F(InputMethodTest, WithoutAFieldThereIsNone)
{
    EXPECT_EQ(await(elements->focused()), nullptr);
    FieldProgram program = fields();
    program.show(Kind::readOnly, u"les|"_qs);
    EXPECT_EQ(await(elements->focused()), nullptr);
}

TEST_F(InputMethodTest, AFieldThatShowsNothingOfItsTextIsNone)
{
    if (QStandardPaths::findExecutable(QStringLiteral("foot")).isEmpty())
        GTEST_SKIP() << "not installed: foot";
    const QString kept = desktop->home() + QStringLiteral("/kept");
    start({QStringLiteral("foot"), QStringLiteral("/usr/bin/python3"),
           sourceFolder() + QStringLiteral("/tests/support/targets/terminal_reader.py"), kept});
    const auto turn = InputMethodTurn::take(connect());
    ASSERT_TRUE(waitUntil([&] { return turn->field().has_value(); }));
    EXPECT_FALSE(turn->field()->tellsText);
    turn->giveBack();
    EXPECT_EQ(await(elements->focused()), nullptr);
}

TEST_F(InputMethodTest, AnInputMethodThatIsThereAlreadyKeepsItsPlace)
{
    FieldProgram program = fields();
    program.show(Kind::line, u"|"_qs);
    const auto theirs = InputMethodTurn::take(connect());
    ASSERT_TRUE(waitUntil([&] { return theirs->field().has_value(); }));
    EXPECT_EQ(await(elements->focused()), nullptr);
    EXPECT_FALSE(theirs->isOver());
    theirs->commit(said.toUtf8());
    EXPECT_TRUE(waitUntil([&] { return program.marked() == said + u"|"; }));
}

TEST_F(InputMethodTest, ItIsGivenBackAfterAWriteAndWithTheElement)
{
    FieldProgram program = fields();
    program.show(Kind::line, u"|"_qs);
    const auto isFree = [] {
        const auto another = InputMethodTurn::take(connect());
        return waitUntil([&] { return another->isOver() || another->field().has_value(); }) &&
               !another->isOver();
    };
    auto found = field();
    EXPECT_FALSE(isFree());
    ASSERT_TRUE(await(found->setSelectedText(said)));
    EXPECT_TRUE(isFree());
    found = field();
    EXPECT_FALSE(isFree());
    found = nullptr;
    EXPECT_TRUE(isFree());
    found = field();
    elements = nullptr;
    EXPECT_TRUE(isFree());
}

TEST_F(InputMethodTest, AFieldThatClosesMeanwhileIsNoHangAndNoClaim)
{
    std::shared_ptr<FocusedElement> found;
    {
        FieldProgram program = fields();
        program.show(Kind::line, u"|"_qs);
        found = field();
        program.quit();
    }
    EXPECT_FALSE(await(found->setSelectedText(said)));
}

TEST_F(InputMethodTest, WhatAccessibilityFindsAndMayBeWrittenIntoComesFirst)
{
    FieldProgram program = fields();
    program.show(Kind::line, u"|"_qs);
    const auto fake = std::make_shared<FakeFocusedElements>();
    elements = std::make_unique<InputMethodElements>(fake, connect());
    EXPECT_TRUE(await(await(elements->focused())->setSelectedText(said)));
    EXPECT_EQ(fake->script->written, QStringList{said});
    fake->script->isSettable = false;
    EXPECT_TRUE(await(field()->setSelectedText(said)));
    EXPECT_EQ(program.marked(), said + u"|");
}

TEST_F(InputMethodTest, WhereTheProgramInFrontCanHaveNoFieldTheInputMethodIsLeftAlone)
{
    FieldProgram program = fields();
    program.show(Kind::line, u"|"_qs);
    elements = std::make_unique<InputMethodElements>(nothing(), connect(), [] { return false; });
    EXPECT_EQ(await(elements->focused()), nullptr);
}

} // namespace

} // namespace tulvane::test
