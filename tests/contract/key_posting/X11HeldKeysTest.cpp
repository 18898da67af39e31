// The keyboard devices behind the one that programs see: their layouts, and what fingers hold on them.
#include "X11KeyPostingFixture.h"

#include <array>
#include <random>
#include <thread>

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

namespace tulvane {

namespace {

using X11HeldKeysTest = X11KeyPostingTest;

} // namespace

TEST_F(X11HeldKeysTest, TheLayoutOfTheUsersKeyboardAloneChangesNothing)
{
    setLayout(m_fingers, u"de"_qs, u"neo"_qs);
    EXPECT_TRUE(paste());
    EXPECT_TRUE(typeSpace());
    EXPECT_THAT(strokes(), ElementsAre(u"Ctrl+v"_qs, u"space"_qs));
    setLayout(m_fingers, u"ru"_qs);
    EXPECT_EQ(front().chord, PasteChord::controlV);
    EXPECT_TRUE(paste());
    EXPECT_THAT(strokes(), ElementsAre(u"Ctrl+v"_qs));
}

TEST_F(X11HeldKeysTest, TheLayoutOfThePostingKeyboardAloneIsTheOneThatCounts)
{
    setLayout(m_program, u"de"_qs, u"neo"_qs);
    EXPECT_TRUE(paste());
    EXPECT_THAT(strokes(), ElementsAre(u"Ctrl+v"_qs));
    setLayout(m_program, u"ru"_qs);
    EXPECT_EQ(front().chord, PasteChord::shiftInsert);
    EXPECT_TRUE(paste());
    EXPECT_THAT(strokes(), ElementsAre(u"Shift+Insert"_qs));
}

TEST_F(X11HeldKeysTest, AModifierThatOnlyTheUsersKeyboardHas)
{
    // Caps Lock's key is the third level there.
    setLayout(m_fingers, u"de"_qs, u"neo"_qs);
    m_fingers.press(DeviceKey::capsLock);
    m_front.catchUp();
    m_front.forgetKeys();
    EXPECT_TRUE(paste());
    EXPECT_TRUE(typeSpace());
    EXPECT_THAT(strokes(), ElementsAre(u"Ctrl+v"_qs, u"space"_qs));
    m_fingers.release(DeviceKey::capsLock);
    EXPECT_THAT(down(), IsEmpty());
    m_front.forgetKeys();
    m_fingers.tap(DeviceKey::f9);
    m_front.catchUp();
    EXPECT_EQ(m_front.keys().first().state, 0);
}

TEST_F(X11HeldKeysTest, AModifierThatAnotherProgramHoldsIsHeldAgain)
{
    m_program.press(DeviceKey::leftAlt);
    m_front.catchUp();
    m_front.forgetKeys();
    EXPECT_TRUE(paste());
    EXPECT_TRUE(typeSpace());
    EXPECT_THAT(strokes(), ElementsAre(u"Ctrl+v"_qs, u"space"_qs));
    EXPECT_THAT(down(), ElementsAre(code(DeviceKey::leftAlt)));
    m_program.release(DeviceKey::leftAlt);
    EXPECT_THAT(down(), IsEmpty());
}

TEST_F(X11HeldKeysTest, AModifierLetGoAroundAPasteIsNotStuck)
{
    std::mt19937 random(20);
    std::uniform_int_distribution<int> microseconds(0, 20000);
    constexpr std::array keys{DeviceKey::leftAlt, DeviceKey::leftShift, DeviceKey::leftControl,
                              DeviceKey::leftSuper, DeviceKey::rightControl};
    for (int round = 0; round < test::soakCount(200, 2000); ++round) {
        const DeviceKey held = keys.at(static_cast<std::size_t>(round) % keys.size());
        m_fingers.press(held);
        const std::chrono::microseconds after(microseconds(random));
        const std::chrono::microseconds before(microseconds(random) / 4);
        std::thread finger([&] {
            std::this_thread::sleep_for(after);
            m_fingers.release(held);
        });
        std::this_thread::sleep_for(before);
        const bool posted = paste() && typeSpace();
        finger.join();
        ASSERT_TRUE(posted);
        ASSERT_THAT(down(), IsEmpty()) << "round " << round << ": " << static_cast<int>(held);
        m_front.catchUp();
        ASSERT_THAT(strokes(), ElementsAre(u"Ctrl+v"_qs, u"space"_qs)) << "round " << round;
        m_front.forgetKeys();
    }
    EXPECT_TRUE(test::waitUntil([&] { return postingKeysDown().isEmpty(); }));
}

TEST_F(X11HeldKeysTest, WhatAFingerHoldsStaysHeldHoweverOftenTheTextIsPasted)
{
    m_fingers.press(DeviceKey::leftAlt);
    for (int round = 0; round < 20; ++round) {
        EXPECT_TRUE(paste());
        EXPECT_THAT(down(), ElementsAre(code(DeviceKey::leftAlt)));
    }
    m_fingers.release(DeviceKey::leftAlt);
    EXPECT_THAT(down(), IsEmpty());
    // The device that posts would not press it anew as long as it is down there.
    EXPECT_TRUE(test::waitUntil([&] { return postingKeysDown().isEmpty(); }));
    m_program.press(DeviceKey::leftAlt);
    EXPECT_THAT(down(), ElementsAre(code(DeviceKey::leftAlt)));
}

} // namespace tulvane
