#include <platform/fake/FakeKeyboardGrab.h>
#include <platform/linux/x11/windows/X11KeyboardGrab.h>
#include <support/Await.h>
#include <support/XTestKeys.h>
#include <support/windows/RealDesktop.h>

#include <QKeyEvent>

#include <gtest/gtest.h>

namespace tulvane::test {

namespace {

/// Keeps the keys that it receives, as the X server numbers them.
class KeyWindow final : public QRasterWindow {
public:
    KeyWindow() { setGeometry(100, 100, 300, 200); }
    QList<quint32> pressed;

protected:
    void keyPressEvent(QKeyEvent* event) override
    {
        if (!event->isAutoRepeat())
            pressed.append(event->nativeScanCode());
    }
};

template <class Keyboard>
class WholeKeyboardContract : public testing::Test {
protected:
    /// A window that has the focus.
    void open()
    {
        ASSERT_TRUE(showAndWait(m_window, m_view));
        m_window.requestActivate();
        ASSERT_TRUE(waitUntil([&] { return m_window.isActive(); }));
    }

    ServerView& m_view = realView();
    KeyWindow m_window;
    Keyboard m_keyboard;
};

using Keyboards = testing::Types<FakeKeyboardGrab, X11KeyboardGrab>;
TYPED_TEST_SUITE(WholeKeyboardContract, Keyboards);

/// Another program's key: the space bar with Alt.
class TakenKeys : public WholeKeyboardContract<X11KeyboardGrab> {
protected:
    static constexpr quint32 space = 65;
    static constexpr std::uint16_t alt = 8;

    TakenKeys() { EXPECT_TRUE(m_keys.grab(DeviceKey::space, alt)); }
    void pressIt()
    {
        m_keys.press(DeviceKey::leftAlt);
        m_keys.tap(DeviceKey::space);
        m_keys.release(DeviceKey::leftAlt);
    }
    /// Whether the window receives it.
    [[nodiscard]] bool reaches(KeyWindow& window)
    {
        window.pressed.clear();
        pressIt();
        // A key that no program holds comes after it.
        m_keys.tap(DeviceKey::a);
        constexpr quint32 letterA = 38;
        EXPECT_TRUE(waitUntil([&] { return window.pressed.contains(letterA); }));
        return window.pressed.contains(space);
    }

    XTestKeys m_keys{realDesktop().display()};
};

} // namespace

TYPED_TEST(WholeKeyboardContract, IsOneWindowsAtATimeAndGivenBack)
{
    this->open();
    for (int i = 0; i < 3; ++i) {
        const auto hold = this->m_keyboard.hold(this->m_window);
        EXPECT_NE(hold, nullptr) << i;
    }
    EXPECT_TRUE(this->m_window.isActive());
}

TEST_F(TakenKeys, ReachTheWindowThatHasTheKeyboardAndNoneAfterwards)
{
    open();
    EXPECT_FALSE(reaches(m_window));
    auto hold = m_keyboard.hold(m_window);
    ASSERT_NE(hold, nullptr);
    EXPECT_TRUE(reaches(m_window));
    EXPECT_TRUE(m_window.isActive()) << "nobody has taken the focus";
    hold.reset();
    EXPECT_FALSE(reaches(m_window));
}

TEST_F(TakenKeys, GoWhereTheyBelongOnceTheWindowIsHidden)
{
    open();
    auto hold = m_keyboard.hold(m_window);
    ASSERT_NE(hold, nullptr);
    m_window.hide();
    KeyWindow next;
    ASSERT_TRUE(showAndWait(next, m_view));
    next.requestActivate();
    ASSERT_TRUE(waitUntil([&] { return next.isActive(); }));
    EXPECT_FALSE(reaches(next));
    hold.reset();
}

TEST_F(TakenKeys, AWindowThatIsGoneHoldsNothing)
{
    std::unique_ptr<KeyboardGrab::Hold> hold;
    {
        KeyWindow gone;
        ASSERT_TRUE(showAndWait(gone, m_view));
        hold = m_keyboard.hold(gone);
        ASSERT_NE(hold, nullptr);
    }
    open();
    EXPECT_FALSE(reaches(m_window));
    hold.reset();
    const auto next = m_keyboard.hold(m_window);
    EXPECT_NE(next, nullptr);
}

TEST_F(TakenKeys, NobodyGetsWhatAnotherProgramHasWhole)
{
    open();
    m_keys.press(DeviceKey::leftAlt);
    m_keys.press(DeviceKey::space); // while its key is down the keyboard is the other program's
    EXPECT_EQ(m_keyboard.hold(m_window), nullptr);
    m_keys.release(DeviceKey::space);
    m_keys.release(DeviceKey::leftAlt);
    EXPECT_NE(m_keyboard.hold(m_window), nullptr);
}

TEST(WholeKeyboardOfNoWindow, AWindowThatIsNotThereYetGetsNothing)
{
    X11KeyboardGrab keyboard;
    PlainWindow window;
    EXPECT_EQ(keyboard.hold(window), nullptr);
}

} // namespace tulvane::test
