// Whatever the keyboard's layout, and whatever the user holds down on it meanwhile.
#include "InsertionFixture.h"

#include <platform/linux/x11/keyboard/KeyboardState.h>

#include <gmock/gmock.h>

namespace tulvane::test {
namespace {

const auto said = QStringLiteral("Blåbærsyltetøy «på brød» – 5 € 😀 ");

class KeyboardOf : public InsertionFixture, public testing::WithParamInterface<Target> {
protected:
    KeyboardOf() { open(GetParam()); }

    void useLayout(const QString& layout, const QString& variant = {})
    {
        m_desktop.run(QStringLiteral("setxkbmap"),
                      {QStringLiteral("-layout"), layout, QStringLiteral("-variant"), variant});
    }
    static xcb_keycode_t code(DeviceKey key) { return static_cast<xcb_keycode_t>(static_cast<int>(key) + 8); }
};

TEST_P(KeyboardOf, everyLayout)
{
    using Layout = std::pair<const char*, const char*>;
    for (const auto& [layout, variant] : {Layout{"us", ""}, Layout{"no", ""}, Layout{"de", ""},
                                          Layout{"fr", ""}, Layout{"us", "dvorak"}, Layout{"ru", ""}}) {
        SCOPED_TRACE(std::string(layout) + " " + variant);
        useLayout(QString::fromLatin1(layout), QString::fromLatin1(variant));
        expectArrives(said);
    }
    // The second of two stays the user's.
    useLayout(QStringLiteral("us,ru"));
    m_fingers.lockGroup(1);
    expectArrives(said);
    EXPECT_EQ(KeyboardState::current(*m_link).group, 1);
}

TEST_P(KeyboardOf, aLayoutThatOnlyTheUsersOwnKeyboardHas)
{
    for (const auto& [layout, variant] :
         {std::pair("de", "neo"), std::pair("ru", ""), std::pair("us", "dvorak")}) {
        SCOPED_TRACE(std::string(layout) + " " + variant);
        m_desktop.run(QStringLiteral("setxkbmap"),
                      {QStringLiteral("-device"), QString::number(m_fingers.device()),
                       QStringLiteral("-layout"), QString::fromLatin1(layout), QStringLiteral("-variant"),
                       QString::fromLatin1(variant)});
        // Programs see the layout of the keyboard that was used last.
        m_fingers.tap(DeviceKey::leftShift);
        expectArrives(said);
    }
}

TEST_P(KeyboardOf, whatIsHeldOrLockedChangesNothingAndIsNotStuckAfterwards)
{
    for (const DeviceKey held :
         {DeviceKey::leftAlt, DeviceKey::leftShift, DeviceKey::leftControl, DeviceKey::leftSuper}) {
        SCOPED_TRACE(static_cast<int>(held));
        m_fingers.press(held);
        expectArrives(said);
        EXPECT_THAT(down(), testing::ElementsAre(code(held)));
        m_fingers.release(held);
        EXPECT_THAT(down(), testing::IsEmpty());
        // The next key is an ordinary one.
        m_fingers.tap(DeviceKey::q);
        expectHeld(said + QLatin1Char('q'));
    }
    m_fingers.tap(DeviceKey::capsLock);
    expectArrives(said);
    m_fingers.tap(DeviceKey::q);
    expectHeld(said + QLatin1Char('Q'));
}

INSTANTIATE_TEST_SUITE_P(Programs, KeyboardOf, testing::ValuesIn(everyTarget), nameOfParameter);

} // namespace
} // namespace tulvane::test
