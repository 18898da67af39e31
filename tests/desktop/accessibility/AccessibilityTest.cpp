#include <insertion/TextInserter.h>
#include <platform/fake/FakePrivacyPermissions.h>
#include <platform/linux/atspi/AtspiFocusedElements.h>
#include <platform/linux/session/X11Text.h>
#include <support/Await.h>
#include <support/fields/FieldProgram.h>

#include <QCoroTask>
#include <QElapsedTimer>

#include <gtest/gtest.h>

namespace tulvane {

namespace {

using Kind = test::FieldProgram::Kind;
using Toolkit = test::FieldProgram::Toolkit;

constexpr auto kept = "the user's own";

/// Everything that the program has for an insertion, on a desktop with real programs.
class AccessibilityTest : public testing::TestWithParam<Toolkit> {
protected:
    AccessibilityTest()
    {
        m_text->pasteboards().general().replace({PasteboardItem::text(QString::fromUtf8(kept))});
    }

    InsertionResult insert(const QString& text)
    {
        return QCoro::waitFor(m_inserter.insert(text, InsertionMethod::accessibilityThenPaste, true));
    }
    std::shared_ptr<FocusedElement> focused() { return test::await(m_elements.focused()); }
    /// Until the program has made itself known.
    void awaitFocused()
    {
        EXPECT_TRUE(test::waitUntil([this] { return focused() != nullptr; }));
    }

    void awaitValue(const QString& value)
    {
        EXPECT_TRUE(test::waitUntil([&] {
            const auto element = focused();
            return element && test::await(element->value()) == value;
        }));
    }
    /// Until the desktop says so, which may be before or after the program thinks so itself.
    void bringToFront(test::FieldProgram& program)
    {
        program.comeToFront();
        EXPECT_TRUE(test::waitUntil([&] { return m_text->frontProcess() == program.process(); }));
    }
    static Toolkit other() { return GetParam() == Toolkit::gtk ? Toolkit::qt : Toolkit::gtk; }

    test::VirtualDesktop m_desktop{{.windowManager = test::VirtualDesktop::WindowManager::openbox,
                                    .sessionBus = test::VirtualDesktop::SessionBus::own,
                                    .openboxKeys = {}}};
    EventLoopScheduler m_scheduler;
    std::unique_ptr<X11Text> m_text = X11Text::open(m_desktop.display().toLocal8Bit(), {}, m_scheduler);
    AtspiFocusedElements m_elements{m_desktop.environment().value(QStringLiteral("DBUS_SESSION_BUS_ADDRESS")),
                                    [this] { return m_text->frontProcess(); }};
    FakePrivacyPermissions m_permissions;
    TextInserter m_inserter{{m_text->pasteboards(), m_text->keys(), m_elements, m_permissions, m_scheduler}};
};

INSTANTIATE_TEST_SUITE_P(Toolkits, AccessibilityTest, testing::Values(Toolkit::gtk, Toolkit::qt),
                         [](const auto& toolkit) {
                             return toolkit.param == Toolkit::gtk ? std::string("Gtk") : std::string("Qt");
                         });

} // namespace

TEST_P(AccessibilityTest, ADictationIsInsertedAndTheClipboardUntouched)
{
    test::FieldProgram program(m_desktop, GetParam());
    program.show(Kind::line, u"Kjære [alle] sammen"_qs);
    awaitFocused();
    const qint64 before = m_text->pasteboards().general().changeCount();
    EXPECT_EQ(insert(u"«ærede» 😀 "_qs), InsertionResult::inserted);
    EXPECT_EQ(program.marked(), u"Kjære «ærede» 😀 | sammen"_qs);
    EXPECT_EQ(m_text->pasteboards().general().changeCount(), before);
    const PasteboardContents contents = test::await(m_text->pasteboards().general().contents());
    ASSERT_EQ(contents.items.size(), 1);
    EXPECT_EQ(contents.items.first().plainText(), QString::fromUtf8(kept));
}

TEST_P(AccessibilityTest, WhatDoesNotFitIsPastedAndNothingIsLost)
{
    test::FieldProgram program(m_desktop, GetParam());
    program.show(Kind::shortLine, u"0123[45]6789"_qs);
    awaitFocused();
    EXPECT_EQ(insert(u"abcdefgh"_qs), InsertionResult::pasted);
    // As much as fits comes in, as where the user pastes.
    EXPECT_TRUE(test::waitUntil([&] { return program.marked().contains(u'a'); }));
    const QString shown = program.marked().remove(u'|');
    EXPECT_TRUE(shown.startsWith(u"0123abcd"_qs) && shown.endsWith(u"6789"_qs)) << qPrintable(shown);
}

TEST_P(AccessibilityTest, PasswordsAndReadOnlyFieldsAreNotWrittenThisWay)
{
    test::FieldProgram program(m_desktop, GetParam());
    program.show(Kind::password, u"secret|"_qs);
    awaitFocused();
    EXPECT_EQ(insert(u"word"_qs), InsertionResult::pasted);
    program.show(Kind::readOnly, u"keep|"_qs);
    EXPECT_NE(insert(u"word"_qs), InsertionResult::inserted);
    EXPECT_EQ(program.marked().remove(u'|'), u"keep"_qs);
}

TEST_P(AccessibilityTest, AProgramInTheBackgroundIsNeverWrittenInto)
{
    test::FieldProgram background(m_desktop, GetParam());
    background.show(Kind::line, u"back|"_qs);
    awaitFocused();
    test::FieldProgram front(m_desktop, other());
    front.show(Kind::line, u"front|"_qs);
    awaitValue(u"front"_qs);
    EXPECT_EQ(insert(u" one"_qs), InsertionResult::inserted);
    const auto inFront = focused();
    bringToFront(background);
    // The other one may not have noticed yet that it is no longer in front; nothing is waited for.
    EXPECT_FALSE(test::await(inFront->setSelectedText(u" two"_qs)));
    EXPECT_EQ(front.marked(), u"front one|"_qs);
    // Nor may the one that came have noticed; until then it would be pasted into.
    awaitValue(u"back"_qs);
    EXPECT_EQ(insert(u" three"_qs), InsertionResult::inserted);
    EXPECT_EQ(background.marked(), u"back three|"_qs);
    EXPECT_EQ(front.marked(), u"front one|"_qs);
}

TEST_P(AccessibilityTest, AFrozenProgramInTheBackgroundIsNotWaitedFor)
{
    test::FieldProgram background(m_desktop, GetParam());
    background.show(Kind::line, u"back|"_qs);
    awaitFocused();
    test::FieldProgram front(m_desktop, other());
    front.show(Kind::line, u"front|"_qs);
    awaitValue(u"front"_qs);
    background.freeze();
    EXPECT_EQ(insert(u" one"_qs), InsertionResult::inserted);
    EXPECT_EQ(front.marked(), u"front one|"_qs);
    background.thaw();
}

TEST_P(AccessibilityTest, AFrozenProgramIsGivenUpInBoundedTime)
{
    test::FieldProgram program(m_desktop, GetParam());
    program.show(Kind::line, u"a|"_qs);
    awaitFocused();
    const auto element = focused();
    ASSERT_NE(element, nullptr);
    program.freeze();
    QElapsedTimer clock;
    clock.start();
    EXPECT_EQ(focused(), nullptr);
    EXPECT_LT(clock.elapsed(), 1000);
    EXPECT_FALSE(test::await(element->settable()));
    EXPECT_FALSE(test::await(element->setSelectedText(u"b"_qs)));
    EXPECT_LT(clock.elapsed(), 4000);
    program.thaw();
    EXPECT_TRUE(test::waitUntil([this] { return focused() != nullptr; }));
    EXPECT_EQ(program.marked(), u"a|"_qs);
}

TEST_P(AccessibilityTest, ADesktopWithoutProgramsHasNoFocusedElement)
{
    EXPECT_EQ(focused(), nullptr);
}

} // namespace tulvane
