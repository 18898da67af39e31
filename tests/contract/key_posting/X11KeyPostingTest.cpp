#include "X11KeyPostingFixture.h"

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

namespace tulvane {

TEST_F(X11KeyPostingTest, PastesInEveryLayoutThatHasAV)
{
    for (const char* layout : {"us", "no", "de", "fr", "us(dvorak)", "no(colemak)", "ru,us", "gr,de"}) {
        m_desktop.run(u"setxkbmap"_qs,
                      {u"-layout"_qs, QString::fromLatin1(layout).section(u'(', 0, 0), u"-variant"_qs,
                       QString::fromLatin1(layout).contains(u'(')
                           ? QString::fromLatin1(layout).section(u'(', 1).chopped(1)
                           : QString()});
        m_front.forgetKeys();
        EXPECT_TRUE(paste()) << layout;
        EXPECT_THAT(strokes(), ElementsAre(u"Ctrl+v"_qs)) << layout;
        EXPECT_TRUE(down().isEmpty());
    }
}

TEST_F(X11KeyPostingTest, InALayoutWithoutAVItPastesWithShiftInsert)
{
    m_desktop.setKeyboardLayout(u"ru"_qs);
    EXPECT_TRUE(paste());
    EXPECT_THAT(strokes(), ElementsAre(u"Shift+Insert"_qs));
    EXPECT_EQ(front().selection, PasteSelection::clipboard);
    EXPECT_TRUE(typeSpace());
    EXPECT_EQ(strokes().last(), u"space"_qs);
}

TEST_F(X11KeyPostingTest, ATerminalInALayoutWithoutAVPastesTheSelection)
{
    m_desktop.setKeyboardLayout(u"ru"_qs);
    test::X11Peer terminal(m_desktop.display(), "VteIsh");
    terminal.takeFocus();
    EXPECT_EQ(front().selection, PasteSelection::primary);
}

TEST_F(X11KeyPostingTest, UsesTheGroupThatHasAVAndPutsTheUsersGroupBack)
{
    m_desktop.setKeyboardLayout(u"us,ru"_qs);
    m_fingers.lockGroup(1);
    ASSERT_EQ(KeyboardState::current(m_front.link()).group, 1);
    EXPECT_TRUE(paste());
    EXPECT_THAT(strokes(), ElementsAre(u"Ctrl+v"_qs));
    EXPECT_EQ(KeyboardState::current(m_front.link()).group, 0 + 1);
}

TEST_F(X11KeyPostingTest, StaysInTheUsersGroupWhereThatHasAV)
{
    m_desktop.run(u"setxkbmap"_qs, {u"-layout"_qs, u"us,us"_qs, u"-variant"_qs, u",dvorak"_qs});
    m_fingers.lockGroup(1);
    EXPECT_TRUE(paste());
    ASSERT_FALSE(m_front.keys().isEmpty());
    for (const HeardKey& key : m_front.keys())
        EXPECT_EQ(key.state >> groupShift & 3, 1);
    EXPECT_THAT(strokes(), ElementsAre(u"Ctrl+v"_qs));
}

TEST_F(X11KeyPostingTest, FollowsAChangeOfTheLayoutBetweenTwoPastes)
{
    EXPECT_TRUE(paste());
    m_desktop.run(u"setxkbmap"_qs, {u"us"_qs, u"-variant"_qs, u"dvorak"_qs});
    m_front.forgetKeys();
    EXPECT_TRUE(paste());
    EXPECT_THAT(strokes(), ElementsAre(u"Ctrl+v"_qs));
}

TEST_F(X11KeyPostingTest, TerminalsArePastedIntoAsTheTableSays)
{
    test::X11Peer vte(m_desktop.display(), "VteIsh");
    vte.takeFocus();
    EXPECT_EQ(front().selection, PasteSelection::clipboard);
    EXPECT_TRUE(paste());
    vte.catchUp();
    ASSERT_EQ(vte.keys().size(), 6);
    EXPECT_EQ(vte.keys().at(2).key, 55);
    EXPECT_EQ(vte.keys().at(2).state, XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_SHIFT);

    test::X11Peer xterm(m_desktop.display(), "xtermISH");
    xterm.takeFocus();
    EXPECT_EQ(front().selection, PasteSelection::primary);
    EXPECT_TRUE(paste());
    xterm.catchUp();
    ASSERT_EQ(xterm.keys().size(), 4);
    EXPECT_EQ(xterm.keys().at(1).key, 118);
    EXPECT_EQ(xterm.keys().at(1).state, XCB_MOD_MASK_SHIFT);
}

TEST_F(X11KeyPostingTest, AnyChordOfTheTable)
{
    PasteTarget target = front();
    for (const auto& [chord, expected] :
         {std::pair(PasteChord{PasteChord::control | PasteChord::alt, u"v"_qs}, u"Ctrl+Alt+v"_qs),
          std::pair(PasteChord{PasteChord::super | PasteChord::shift, u"insert"_qs},
                    u"Shift+Super+Insert"_qs),
          std::pair(PasteChord{PasteChord::control, u"y"_qs}, u"Ctrl+29"_qs),
          std::pair(PasteChord{0, u"f12"_qs}, u"96"_qs)}) {
        m_front.forgetKeys();
        target.chord = chord;
        EXPECT_TRUE(test::await(m_text->keys().paste(target)));
        m_front.catchUp();
        EXPECT_THAT(strokes(), ElementsAre(expected));
        EXPECT_THAT(down(), IsEmpty());
    }
    target.chord.key = u"no key"_qs;
    EXPECT_FALSE(test::await(m_text->keys().paste(target)));
}

TEST_F(X11KeyPostingTest, HeldModifiersReachNeitherThePasteNorTheSpaceAndAreHeldAgain)
{
    m_desktop.setKeyboardLayout(u"no"_qs);
    for (const DeviceKey held : {DeviceKey::leftAlt, DeviceKey::rightAlt, DeviceKey::leftSuper,
                                 DeviceKey::rightSuper, DeviceKey::leftShift, DeviceKey::rightShift}) {
        m_fingers.press(held);
        m_front.catchUp();
        m_front.forgetKeys();
        EXPECT_TRUE(paste());
        EXPECT_TRUE(typeSpace());
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
    EXPECT_TRUE(paste());
    EXPECT_TRUE(typeSpace());
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
        EXPECT_TRUE(paste());
        EXPECT_TRUE(typeSpace());
        EXPECT_THAT(strokes(), ElementsAre(u"Ctrl+v"_qs, u"space"_qs));
        EXPECT_THAT(down(), ElementsAre(code(held)));
        m_fingers.release(held);
    }
}

TEST_F(X11KeyPostingTest, AltAndSuperNeverGoUpOrDownWithNoOtherKeyInBetween)
{
    for (const DeviceKey held : {DeviceKey::leftAlt, DeviceKey::leftSuper}) {
        for (const bool pastes : {true, false}) {
            m_front.catchUp();
            m_front.forgetKeys();
            m_fingers.press(held);
            EXPECT_TRUE(pastes ? paste() : typeSpace());
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
    EXPECT_TRUE(paste());
    EXPECT_TRUE(typeSpace());
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
    EXPECT_TRUE(paste());
    EXPECT_TRUE(typeSpace());
    EXPECT_THAT(strokes(), ElementsAre(u"Ctrl+v"_qs, u"space"_qs));
    EXPECT_EQ(KeyboardState::current(m_front.link()).lockedModifiers, XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_1);
}

TEST_F(X11KeyPostingTest, WaitsForTheEndOfAGrabbedHotkey)
{
    test::XTestKeys grabber(m_desktop.display());
    ASSERT_TRUE(grabber.grab(DeviceKey::space, XCB_MOD_MASK_1));
    m_fingers.press(DeviceKey::leftAlt);
    m_fingers.press(DeviceKey::space);
    const auto posted = m_text->keys().paste(front());
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

TEST_F(X11KeyPostingTest, WhatWaitedForAGrabIsNotPostedIntoAnotherWindow)
{
    test::XTestKeys grabber(m_desktop.display());
    ASSERT_TRUE(grabber.grab(DeviceKey::f9, 0));
    test::X11Peer other(m_desktop.display());
    m_front.takeFocus();
    m_fingers.press(DeviceKey::f9);
    const auto posted = m_text->keys().paste(front());
    EXPECT_FALSE(test::waitUntil([&] { return posted.isFinished(); }, 50ms));
    other.takeFocus();
    m_fingers.release(DeviceKey::f9);
    EXPECT_FALSE(test::await(posted));
    m_front.catchUp();
    other.catchUp();
    EXPECT_THAT(strokes(), IsEmpty());
    EXPECT_THAT(other.keys(), IsEmpty());
}

TEST_F(X11KeyPostingTest, AnotherPartOfTheTargetsWindowMayHaveTheFocusByThen)
{
    const PasteTarget target = front();
    xcb_connection_t* const connection = m_front.link().connection();
    const xcb_window_t part = xcb_generate_id(connection);
    const std::uint32_t keys = XCB_EVENT_MASK_KEY_PRESS;
    xcb_create_window(connection, XCB_COPY_FROM_PARENT, part, m_front.window(), 0, 0, 10, 10, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &keys);
    xcb_map_window(connection, part);
    xcb_set_input_focus(connection, XCB_INPUT_FOCUS_NONE, part, XCB_CURRENT_TIME);
    m_front.catchUp();
    EXPECT_TRUE(test::await(m_text->keys().paste(target)));
    m_front.catchUp();
    EXPECT_THAT(strokes(), ElementsAre(u"Ctrl+v"_qs));
}

TEST_F(X11KeyPostingTest, WhereNoWindowHasTheFocusNothingIsPosted)
{
    xcb_set_input_focus(m_front.link().connection(), XCB_INPUT_FOCUS_NONE, XCB_INPUT_FOCUS_NONE,
                        XCB_CURRENT_TIME);
    m_front.catchUp();
    EXPECT_EQ(front().window, 0);
    EXPECT_FALSE(paste());
    m_front.takeFocus();
    EXPECT_FALSE(test::await(m_text->keys().paste({})));
    EXPECT_THAT(strokes(), IsEmpty());
}

TEST_F(X11KeyPostingTest, AGrabThatDoesNotEndIsAFailureAfterTwoSeconds)
{
    test::XTestKeys grabber(m_desktop.display());
    ASSERT_TRUE(grabber.grab(DeviceKey::f9, 0));
    m_fingers.press(DeviceKey::f9);
    QElapsedTimer clock;
    clock.start();
    EXPECT_FALSE(paste());
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
    EXPECT_TRUE(paste());
    EXPECT_LT(clock.elapsed(), 1000);
    EXPECT_THAT(strokes().last(), u"Ctrl+v"_qs);
    EXPECT_THAT(down(), ElementsAre(code(DeviceKey::a)));
    m_fingers.release(DeviceKey::a);
}

TEST_F(X11KeyPostingTest, NoSpacesAreNoKeys)
{
    EXPECT_TRUE(test::await(m_text->keys().typeSpaces(0)));
    m_front.catchUp();
    EXPECT_THAT(m_front.keys(), IsEmpty());
}

TEST_F(X11KeyPostingTest, FindsTheTextBelowThePointerWhenTheFocusFollowsIt)
{
    xcb_set_input_focus(m_front.link().connection(), XCB_INPUT_FOCUS_NONE, XCB_INPUT_FOCUS_POINTER_ROOT,
                        XCB_CURRENT_TIME);
    xcb_warp_pointer(m_front.link().connection(), noWindow, m_front.window(), 0, 0, 0, 0, 20, 20);
    m_front.catchUp();
    EXPECT_TRUE(paste());
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
