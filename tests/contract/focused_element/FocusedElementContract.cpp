#include <platform/fake/FakeFocusedElement.h>
#include <platform/linux/atspi/AtspiFocusedElements.h>
#include <platform/linux/wayland/fields/InputMethodElement.h>
#include <platform/linux/wayland/fields/InputMethodElements.h>
#include <support/Await.h>
#include <support/fields/FieldProgram.h>
#include <support/wayland/WaylandDesktop.h>

#include <gtest/gtest.h>

namespace tulvane {

namespace {

using Kind = test::FieldProgram::Kind;

/// What the scripted element does, shown as FieldProgram shows it.
class FakeWorld {
public:
    FocusedElements& elements() { return m_elements; }
    void show(Kind kind, const QString& marked)
    {
        FakeElementScript script;
        QString text = marked;
        const bool hasSelection = marked.contains(u'[');
        const qsizetype start = text.indexOf(hasSelection ? u'[' : u'|');
        text.remove(start, 1);
        const qsizetype end = hasSelection ? text.indexOf(u']') : start;
        if (hasSelection)
            text.remove(end, 1);
        script.value = text;
        script.selection = {start, end};
        script.isSettable = kind != Kind::readOnly;
        script.writeApplies = kind != Kind::ignoring;
        if (kind == Kind::password)
            script.role = FocusedElement::secureTextFieldRole;
        if (kind == Kind::area)
            script.role = u"AXTextArea"_qs;
        *m_elements.script = script;
    }
    QString marked()
    {
        const FakeElementScript& script = *m_elements.script;
        const auto [start, end] = script.selection.value_or(std::pair(0, 0));
        QString text = script.value.value_or(QString());
        return start == end ? text.insert(start, u'|') : text.insert(end, u']').insert(start, u'[');
    }
    void leave() { m_elements.script->present = false; }

private:
    FakeFocusedElements m_elements;
};

template <test::FieldProgram::Toolkit toolkit>
class DesktopWorld {
public:
    FocusedElements& elements() { return m_elements; }
    void show(Kind kind, const QString& marked) { m_program.show(kind, marked); }
    QString marked() { return m_program.marked(); }
    void leave() { m_program.quit(); }

private:
    test::VirtualDesktop m_desktop{{.windowManager = test::VirtualDesktop::WindowManager::openbox,
                                    .sessionBus = test::VirtualDesktop::SessionBus::own,
                                    .openboxKeys = {}}};
    test::FieldProgram m_program{m_desktop, toolkit};
    AtspiFocusedElements m_elements{
        m_desktop.environment().value(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"))};
};

/// The same on a Wayland desktop, with the input method behind accessibility where the compositor has one.
template <test::FieldProgram::Toolkit toolkit, test::WaylandDesktop::Kind kind>
class WaylandWorld {
public:
    static constexpr test::WaylandDesktop::Kind desktopKind = kind;

    FocusedElements& elements() { return m_elements; }
    void show(Kind shown, const QString& marked) { m_program.show(shown, marked); }
    QString marked() { return m_program.marked(); }
    void leave() { m_program.quit(); }

private:
    static QProcess& started(test::WaylandDesktop& desktop)
    {
        QStringList command = test::FieldProgram::command(toolkit, QStringLiteral("wayland"));
        return desktop.start(command.takeFirst(), command);
    }

    test::WaylandDesktop m_desktop{kind};
    test::FieldProgram m_program{started(m_desktop), toolkit};
    InputMethodElements m_elements{
        std::make_shared<AtspiFocusedElements>(m_desktop.bus()),
        WaylandConnection::open(WaylandConnection::socketOf(m_desktop.environment()))};
};

using Toolkit = test::FieldProgram::Toolkit;
using Desktop = test::WaylandDesktop::Kind;
using GtkOnSway = WaylandWorld<Toolkit::gtk, Desktop::sway>;
using QtOnSway = WaylandWorld<Toolkit::qt, Desktop::sway>;
using GtkOnKWin = WaylandWorld<Toolkit::gtk, Desktop::kwin>;
using QtOnKWin = WaylandWorld<Toolkit::qt, Desktop::kwin>;
using GtkWorld = DesktopWorld<test::FieldProgram::Toolkit::gtk>;
using QtWorld = DesktopWorld<test::FieldProgram::Toolkit::qt>;

/// One world for all tests of a backend: a desktop takes longer to come up than all of them.
template <class World>
class FocusedElementContract : public testing::Test {
protected:
    static void SetUpTestSuite()
    {
        if (absent().isEmpty())
            world() = std::make_unique<World>();
    }
    void SetUp() override
    {
        if (!absent().isEmpty())
            GTEST_SKIP() << "not installed: " << qPrintable(absent().join(u' '));
    }
    /// The packages that the world needs and this machine lacks.
    static QStringList absent()
    {
        if constexpr (requires { World::desktopKind; })
            return test::WaylandDesktop::missing(World::desktopKind);
        return {};
    }
    static void TearDownTestSuite() { world() = nullptr; }
    static std::unique_ptr<World>& world()
    {
        static std::unique_ptr<World> theWorld;
        return theWorld;
    }

    /// The field's element, as soon as the program has made itself known.
    std::shared_ptr<FocusedElement> element(Kind kind, const QString& marked)
    {
        world()->show(kind, marked);
        std::shared_ptr<FocusedElement> found;
        // Until the program has, its field is the input method's, which is not told the whole text.
        EXPECT_TRUE(test::waitUntil([&] {
            found = nullptr;
            found = test::await(world()->elements().focused());
            return found != nullptr && dynamic_cast<InputMethodElement*>(found.get()) == nullptr;
        }));
        return found;
    }
    /// What becomes of a field when this is written into it.
    QString written(Kind kind, const QString& marked, const QString& text)
    {
        const auto field = element(kind, marked);
        EXPECT_TRUE(test::await(field->settable()));
        EXPECT_TRUE(test::await(field->setSelectedText(text)));
        return world()->marked();
    }
    /// The same for a line and for an area.
    void expectWritten(const QString& marked, const QString& text, const QString& expected)
    {
        EXPECT_EQ(written(Kind::line, marked, text), expected);
        EXPECT_EQ(written(Kind::area, marked, text), expected);
    }
};

using Worlds = testing::Types<FakeWorld, GtkWorld, QtWorld, GtkOnSway, QtOnSway, GtkOnKWin, QtOnKWin>;
TYPED_TEST_SUITE(FocusedElementContract, Worlds);

} // namespace

TYPED_TEST(FocusedElementContract, WritesIntoAnEmptyField)
{
    this->expectWritten(u"|"_qs, u"Hei."_qs, u"Hei.|"_qs);
}

TYPED_TEST(FocusedElementContract, WritesAtTheCaretAndPutsItBehindTheText)
{
    this->expectWritten(u"Hei | du"_qs, u"på deg"_qs, u"Hei på deg| du"_qs);
    this->expectWritten(u"|slutt"_qs, u"start "_qs, u"start |slutt"_qs);
    this->expectWritten(u"start|"_qs, u" slutt"_qs, u"start slutt|"_qs);
}

TYPED_TEST(FocusedElementContract, ReplacesTheSelection)
{
    this->expectWritten(u"et [gammelt] ord"_qs, u"nytt"_qs, u"et nytt| ord"_qs);
    this->expectWritten(u"[alt]"_qs, u"noe annet enn før"_qs, u"noe annet enn før|"_qs);
    this->expectWritten(u"aa[aa]aa"_qs, u"a"_qs, u"aaa|aa"_qs);
}

TYPED_TEST(FocusedElementContract, CountsCharactersAsTheProgramDoes)
{
    this->expectWritten(u"😀😀|ø😀"_qs, u"æøåÆØÅ «»–€😀"_qs, u"😀😀æøåÆØÅ «»–€😀|ø😀"_qs);
    this->expectWritten(u"«😀[å😀]–€»"_qs, u"😀 ok"_qs, u"«😀😀 ok|–€»"_qs);
    this->expectWritten(u"|"_qs, u"😀"_qs, u"😀|"_qs);
}

TYPED_TEST(FocusedElementContract, WritesOneTextAfterTheOther)
{
    const auto field = this->element(Kind::line, u"|"_qs);
    EXPECT_TRUE(test::await(field->setSelectedText(u"En 😀, "_qs)));
    EXPECT_TRUE(test::await(field->setSelectedText(u"to, "_qs)));
    EXPECT_TRUE(test::await(field->setSelectedText(u"tre."_qs)));
    EXPECT_EQ(this->world()->marked(), u"En 😀, to, tre.|"_qs);
}

TYPED_TEST(FocusedElementContract, WritesAcrossLines)
{
    EXPECT_EQ(this->written(Kind::area, u"én\nt[o\ntr]e\nfire"_qs, u"\n–\n"_qs), u"én\nt\n–\n|e\nfire"_qs);
}

TYPED_TEST(FocusedElementContract, TheValueIsTheWholeText)
{
    const auto field = this->element(Kind::area, u"«én😀»\n[to]"_qs);
    EXPECT_EQ(test::await(field->value()), u"«én😀»\nto"_qs);
    EXPECT_TRUE(test::await(field->setSelectedText(u"tre"_qs)));
    EXPECT_EQ(test::await(field->value()), u"«én😀»\ntre"_qs);
}

TYPED_TEST(FocusedElementContract, TheRoleTellsLinesFromAreasAndPasswordsFromBoth)
{
    EXPECT_EQ(test::await(this->element(Kind::line, u"|"_qs)->role()), u"AXTextField"_qs);
    EXPECT_EQ(test::await(this->element(Kind::area, u"|"_qs)->role()), u"AXTextArea"_qs);
    EXPECT_EQ(test::await(this->element(Kind::password, u"hemmelig|"_qs)->role()),
              FocusedElement::secureTextFieldRole);
}

TYPED_TEST(FocusedElementContract, AFieldThatCannotBeEditedIsNotSettable)
{
    EXPECT_FALSE(test::await(this->element(Kind::readOnly, u"les|"_qs)->settable()));
    EXPECT_TRUE(test::await(this->element(Kind::line, u"skriv|"_qs)->settable()));
}

TYPED_TEST(FocusedElementContract, WhatAFieldAcceptsAndIgnoresIsNotInItsValue)
{
    const auto field = this->element(Kind::ignoring, u"som [før]"_qs);
    (void)test::await(field->setSelectedText(u"nytt"_qs));
    EXPECT_EQ(test::await(field->value()), u"som før"_qs);
}

// The last one: the program does not come back.
TYPED_TEST(FocusedElementContract, WithoutAFocusedElementThereIsNone)
{
    this->world()->leave();
    EXPECT_EQ(test::await(this->world()->elements().focused()), nullptr);
}

} // namespace tulvane
