#include "X11Peers.h"

#include <platform/linux/session/X11Abilities.h>
#include <platform/linux/session/X11Text.h>
#include <platform/linux/x11/keyboard/KeyboardLayout.h>
#include <platform/linux/x11/keyboard/KeyboardState.h>
#include <support/Await.h>
#include <support/VirtualDesktop.h>
#include <support/XTestKeys.h>

#include <QElapsedTimer>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <xkbcommon/xkbcommon-keysyms.h>

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

namespace tulvane {

namespace {

using test::DeviceKey;
using test::HeardKey;

const TerminalTable terminals{{u"vteish"_qs, PasteChord::controlShiftV, PasteSelection::clipboard},
                              {u"XTermish"_qs, PasteChord::shiftInsert, PasteSelection::primary}};

constexpr int groupShift = 13; // where an event's state holds the group

class X11KeyPostingTest : public testing::Test {
protected:
    X11KeyPostingTest() { m_front.takeFocus(); }

    bool post(int keyCode = KeyPosting::keyV, quint32 flags = KeyPosting::command)
    {
        const bool posted = test::await(m_text->keys().post(keyCode, flags));
        m_front.catchUp();
        return posted;
    }

    /// The presses of keys that are no modifiers: "Ctrl+v", by what the layout of the event's group says.
    QStringList strokes()
    {
        const auto layout = KeyboardLayout::current(m_front.link());
        QStringList strokes;
        for (const HeardKey& key : m_front.keys()) {
            if (!key.down || layout->isHeldModifier(static_cast<xcb_keycode_t>(key.key)))
                continue;
            QString text;
            for (const auto& [mask, name] :
                 {std::pair(XCB_MOD_MASK_CONTROL, "Ctrl+"), std::pair(XCB_MOD_MASK_SHIFT, "Shift+"),
                  std::pair(XCB_MOD_MASK_1, "Alt+"), std::pair(XCB_MOD_MASK_4, "Super+"),
                  std::pair(XCB_MOD_MASK_5, "Level3+")}) {
                if ((key.state & mask) != 0)
                    text += QString::fromLatin1(name);
            }
            strokes.append(text + letter(key, *layout));
        }
        return strokes;
    }
    static QString letter(const HeardKey& key, const KeyboardLayout& layout)
    {
        const auto group = static_cast<std::uint8_t>(key.state >> groupShift & 3);
        for (const auto& [name, letter] : {std::pair("v", XKB_KEY_v), std::pair("space", XKB_KEY_space),
                                           std::pair("Insert", XKB_KEY_Insert)}) {
            const auto place = layout.find(static_cast<xkb_keysym_t>(letter), group);
            if (place && place->key == key.key && place->group == group)
                return QString::fromLatin1(name);
        }
        return QString::number(key.key);
    }
    /// The keys that the server believes to be down now.
    QList<xcb_keycode_t> down() { return KeyboardState::current(m_front.link()).down; }
    static xcb_keycode_t code(DeviceKey key) { return static_cast<xcb_keycode_t>(static_cast<int>(key) + 8); }

    test::VirtualDesktop m_desktop;
    EventLoopScheduler m_scheduler;
    test::X11Peer m_front{m_desktop.display()};
    test::XTestKeys m_fingers{m_desktop.display()};
    std::unique_ptr<X11Text> m_text =
        X11Text::open(m_desktop.display().toLocal8Bit(), terminals, m_scheduler);
};

} // namespace

TEST_F(X11KeyPostingTest, PastesInEveryLayoutThatHasAV)
{
    for (const char* layout : {"us", "no", "de", "fr", "us(dvorak)", "no(colemak)", "ru,us", "gr,de"}) {
        m_desktop.run(u"setxkbmap"_qs,
                      {u"-layout"_qs, QString::fromLatin1(layout).section(u'(', 0, 0), u"-variant"_qs,
                       QString::fromLatin1(layout).contains(u'(')
                           ? QString::fromLatin1(layout).section(u'(', 1).chopped(1)
                           : QString()});
        m_front.forgetKeys();
        EXPECT_TRUE(post()) << layout;
        EXPECT_THAT(strokes(), ElementsAre(u"Ctrl+v"_qs)) << layout;
        EXPECT_TRUE(down().isEmpty());
    }
}

TEST_F(X11KeyPostingTest, InALayoutWithoutAVItPastesWithShiftInsert)
{
    m_desktop.setKeyboardLayout(u"ru"_qs);
    EXPECT_TRUE(post());
    EXPECT_THAT(strokes(), ElementsAre(u"Shift+Insert"_qs));
    EXPECT_EQ(&m_text->pasteboards().pasteSource(), &m_text->pasteboards().general());
    EXPECT_TRUE(post(KeyPosting::keySpace, KeyPosting::noFlags));
    EXPECT_EQ(strokes().last(), u"space"_qs);
}

TEST_F(X11KeyPostingTest, ATerminalInALayoutWithoutAVPastesTheSelection)
{
    m_desktop.setKeyboardLayout(u"ru"_qs);
    test::X11Peer terminal(m_desktop.display(), "VteIsh");
    terminal.takeFocus();
    EXPECT_NE(&m_text->pasteboards().pasteSource(), &m_text->pasteboards().general());
}

TEST_F(X11KeyPostingTest, UsesTheGroupThatHasAVAndPutsTheUsersGroupBack)
{
    m_desktop.setKeyboardLayout(u"us,ru"_qs);
    m_fingers.lockGroup(1);
    ASSERT_EQ(KeyboardState::current(m_front.link()).group, 1);
    EXPECT_TRUE(post());
    EXPECT_THAT(strokes(), ElementsAre(u"Ctrl+v"_qs));
    EXPECT_EQ(KeyboardState::current(m_front.link()).group, 0 + 1);
}

TEST_F(X11KeyPostingTest, StaysInTheUsersGroupWhereThatHasAV)
{
    m_desktop.run(u"setxkbmap"_qs, {u"-layout"_qs, u"us,us"_qs, u"-variant"_qs, u",dvorak"_qs});
    m_fingers.lockGroup(1);
    EXPECT_TRUE(post());
    ASSERT_FALSE(m_front.keys().isEmpty());
    for (const HeardKey& key : m_front.keys())
        EXPECT_EQ(key.state >> groupShift & 3, 1);
    EXPECT_THAT(strokes(), ElementsAre(u"Ctrl+v"_qs));
}

TEST_F(X11KeyPostingTest, FollowsAChangeOfTheLayoutBetweenTwoPastes)
{
    EXPECT_TRUE(post());
    m_desktop.run(u"setxkbmap"_qs, {u"us"_qs, u"-variant"_qs, u"dvorak"_qs});
    m_front.forgetKeys();
    EXPECT_TRUE(post());
    EXPECT_THAT(strokes(), ElementsAre(u"Ctrl+v"_qs));
}

TEST_F(X11KeyPostingTest, TerminalsArePastedIntoAsTheTableSays)
{
    test::X11Peer vte(m_desktop.display(), "VteIsh");
    vte.takeFocus();
    EXPECT_EQ(&m_text->pasteboards().pasteSource(), &m_text->pasteboards().general());
    EXPECT_TRUE(post());
    vte.catchUp();
    ASSERT_EQ(vte.keys().size(), 6);
    EXPECT_EQ(vte.keys().at(2).key, 55);
    EXPECT_EQ(vte.keys().at(2).state, XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_SHIFT);

    test::X11Peer xterm(m_desktop.display(), "xtermISH");
    xterm.takeFocus();
    EXPECT_NE(&m_text->pasteboards().pasteSource(), &m_text->pasteboards().general());
    EXPECT_TRUE(post());
    xterm.catchUp();
    ASSERT_EQ(xterm.keys().size(), 4);
    EXPECT_EQ(xterm.keys().at(1).key, 118);
    EXPECT_EQ(xterm.keys().at(1).state, XCB_MOD_MASK_SHIFT);
}

TEST_F(X11KeyPostingTest, HeldModifiersReachNeitherThePasteNorTheSpaceAndAreHeldAgain)
{
    m_desktop.setKeyboardLayout(u"no"_qs);
    for (const DeviceKey held : {DeviceKey::leftAlt, DeviceKey::rightAlt, DeviceKey::leftSuper,
                                 DeviceKey::rightSuper, DeviceKey::leftShift, DeviceKey::rightShift}) {
        m_fingers.press(held);
        m_front.catchUp();
        m_front.forgetKeys();
        EXPECT_TRUE(post());
        EXPECT_TRUE(post(KeyPosting::keySpace, KeyPosting::noFlags));
        EXPECT_THAT(strokes(), ElementsAre(u"Ctrl+v"_qs, u"space"_qs)) << static_cast<int>(held);
        EXPECT_THAT(down(), ElementsAre(code(held)));
        m_fingers.release(held);
        EXPECT_THAT(down(), IsEmpty());
    }
}

TEST_F(X11KeyPostingTest, SeveralHeldModifiersAtOnce)
{
    for (const DeviceKey held : {DeviceKey::leftControl, DeviceKey::leftShift, DeviceKey::leftAlt})
        m_fingers.press(held);
    m_front.catchUp();
    m_front.forgetKeys();
    EXPECT_TRUE(post());
    EXPECT_TRUE(post(KeyPosting::keySpace, KeyPosting::noFlags));
    EXPECT_THAT(strokes(), ElementsAre(u"Ctrl+v"_qs, u"space"_qs));
    EXPECT_EQ(down().size(), 3);
    for (const DeviceKey held : {DeviceKey::leftControl, DeviceKey::leftShift, DeviceKey::leftAlt})
        m_fingers.release(held);
    EXPECT_THAT(down(), IsEmpty());
}

TEST_F(X11KeyPostingTest, HeldControlAloneGivesAPasteToo)
{
    for (const DeviceKey held : {DeviceKey::leftControl, DeviceKey::rightControl}) {
        m_fingers.press(held);
        m_front.catchUp();
        m_front.forgetKeys();
        EXPECT_TRUE(post());
        EXPECT_TRUE(post(KeyPosting::keySpace, KeyPosting::noFlags));
        EXPECT_THAT(strokes(), ElementsAre(u"Ctrl+v"_qs, u"space"_qs));
        EXPECT_THAT(down(), ElementsAre(code(held)));
        m_fingers.release(held);
    }
}

TEST_F(X11KeyPostingTest, AltAndSuperNeverGoUpOrDownWithNoOtherKeyInBetween)
{
    for (const DeviceKey held : {DeviceKey::leftAlt, DeviceKey::leftSuper}) {
        for (const int keyCode : {KeyPosting::keyV, KeyPosting::keySpace}) {
            m_front.catchUp();
            m_front.forgetKeys();
            m_fingers.press(held);
            EXPECT_TRUE(
                post(keyCode, keyCode == KeyPosting::keyV ? KeyPosting::command : KeyPosting::noFlags));
            m_fingers.release(held);
            m_front.catchUp();
            const QList<HeardKey> keys = m_front.keys();
            for (qsizetype index = 0; index + 1 < keys.size(); ++index) {
                const bool alone = keys[index].down && keys[index].key == code(held) &&
                                   keys[index + 1].key == code(held) && !keys[index + 1].down;
                EXPECT_FALSE(alone) << "press and release next to each other at " << index;
            }
        }
    }
}

TEST_F(X11KeyPostingTest, LocksStayAsTheyAreAndAHeldLockKeyIsLeftAlone)
{
    m_fingers.tap(DeviceKey::capsLock);
    EXPECT_TRUE(post());
    EXPECT_TRUE(post(KeyPosting::keySpace, KeyPosting::noFlags));
    EXPECT_THAT(strokes().filter(u"v"_qs), ElementsAre(u"Ctrl+v"_qs));
    m_front.forgetKeys();
    m_fingers.tap(DeviceKey::f9);
    m_front.catchUp();
    EXPECT_EQ(m_front.keys().first().state & XCB_MOD_MASK_LOCK, XCB_MOD_MASK_LOCK);
}

TEST_F(X11KeyPostingTest, AModifierThatHoldsWithoutAKeyDoesNotReachTheSpace)
{
    KeyboardState::lockModifiers(m_front.link(), XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_1, true);
    m_front.catchUp();
    EXPECT_TRUE(post());
    EXPECT_TRUE(post(KeyPosting::keySpace, KeyPosting::noFlags));
    EXPECT_THAT(strokes(), ElementsAre(u"Ctrl+v"_qs, u"space"_qs));
    EXPECT_EQ(KeyboardState::current(m_front.link()).lockedModifiers, XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_1);
}

TEST_F(X11KeyPostingTest, WaitsForTheEndOfAGrabbedHotkey)
{
    test::XTestKeys grabber(m_desktop.display());
    ASSERT_TRUE(grabber.grab(DeviceKey::space, XCB_MOD_MASK_1));
    m_fingers.press(DeviceKey::leftAlt);
    m_fingers.press(DeviceKey::space);
    const auto posted = m_text->keys().post(KeyPosting::keyV, KeyPosting::command);
    EXPECT_FALSE(test::waitUntil([&] { return posted.isFinished(); }, 100ms));
    m_front.catchUp();
    EXPECT_THAT(strokes(), IsEmpty());
    m_fingers.release(DeviceKey::space);
    EXPECT_TRUE(test::await(posted));
    m_front.catchUp();
    EXPECT_THAT(strokes(), ElementsAre(u"Ctrl+v"_qs));
    m_fingers.release(DeviceKey::leftAlt);
    EXPECT_THAT(down(), IsEmpty());
}

TEST_F(X11KeyPostingTest, AGrabThatDoesNotEndIsAFailureAfterTwoSeconds)
{
    test::XTestKeys grabber(m_desktop.display());
    ASSERT_TRUE(grabber.grab(DeviceKey::f9, 0));
    m_fingers.press(DeviceKey::f9);
    QElapsedTimer clock;
    clock.start();
    EXPECT_FALSE(post());
    EXPECT_GE(clock.elapsed(), 1900);
    m_fingers.release(DeviceKey::f9);
    m_front.catchUp();
    EXPECT_THAT(strokes(), IsEmpty());
}

TEST_F(X11KeyPostingTest, AKeyThatTheUserTypesMeanwhileIsNoGrab)
{
    m_fingers.press(DeviceKey::a);
    QElapsedTimer clock;
    clock.start();
    EXPECT_TRUE(post());
    EXPECT_LT(clock.elapsed(), 1000);
    EXPECT_THAT(strokes().last(), u"Ctrl+v"_qs);
    EXPECT_THAT(down(), ElementsAre(code(DeviceKey::a)));
    m_fingers.release(DeviceKey::a);
}

TEST_F(X11KeyPostingTest, OtherKeysAndFlagsCannotBePosted)
{
    EXPECT_FALSE(post(KeyPosting::keyV, KeyPosting::noFlags));
    EXPECT_FALSE(post(KeyPosting::keySpace, KeyPosting::command));
    EXPECT_FALSE(post(0, KeyPosting::command));
    EXPECT_THAT(m_front.keys(), IsEmpty());
}

TEST_F(X11KeyPostingTest, FindsTheTextBelowThePointerWhenTheFocusFollowsIt)
{
    xcb_set_input_focus(m_front.link().connection(), XCB_INPUT_FOCUS_NONE, XCB_INPUT_FOCUS_POINTER_ROOT,
                        XCB_CURRENT_TIME);
    xcb_warp_pointer(m_front.link().connection(), noWindow, m_front.window(), 0, 0, 0, 0, 20, 20);
    m_front.catchUp();
    EXPECT_TRUE(post());
    EXPECT_THAT(strokes(), ElementsAre(u"Ctrl+v"_qs));
}

TEST_F(X11KeyPostingTest, TellsWhatTheServerCanDo)
{
    const auto abilities = x11Abilities(m_desktop.display().toLocal8Bit());
    EXPECT_TRUE(abilities.displayReached);
    EXPECT_TRUE(abilities.postsKeys);
    EXPECT_TRUE(abilities.watchesKeys);
    const auto none = x11Abilities(":4711");
    EXPECT_FALSE(none.displayReached || none.postsKeys || none.watchesKeys);
}

} // namespace tulvane
