#include <platform/fake/FakeUserDefaults.h>
#include <ui/windows/WindowFrame.h>

#include <QScreen>
#include <QWindow>

#include <gtest/gtest.h>

namespace tulvane::test {

namespace {

/// The desktop opens a window on a smaller screen than it was made for, or its screen becomes smaller.
class WindowFrameTest : public testing::Test {
protected:
    void show(QSize size)
    {
        m_window.setMinimumSize(QSize(300, 200));
        m_frame.emplace(m_window, QStringLiteral("Test"), m_defaults);
        m_window.resize(size);
        m_window.show();
        Q_EMIT m_window.screenChanged(m_window.screen());
    }
    [[nodiscard]] QSize screen() const { return m_window.screen()->geometry().size(); }

    FakeUserDefaults m_defaults;
    QWindow m_window;
    std::optional<WindowFrame> m_frame;
};

} // namespace

TEST_F(WindowFrameTest, AWindowThatIsLargerThanItsScreenIsMadeToFit)
{
    show(screen() + QSize(200, 300));
    EXPECT_LE(m_window.width(), screen().width());
    EXPECT_LT(m_window.height(), screen().height()) << "there is room for its title bar";
}

TEST_F(WindowFrameTest, AScreenThatChangesBoundsTheWindow)
{
    show(QSize(300, 200));
    m_window.resize(screen() * 2);
    Q_EMIT m_window.screen()->geometryChanged(m_window.screen()->geometry());
    EXPECT_LE(m_window.width(), screen().width());
    EXPECT_LT(m_window.height(), screen().height());
}

TEST_F(WindowFrameTest, OneThatFillsTheScreenKeepsTheSizeThatItWasGiven)
{
    show(screen());
    EXPECT_EQ(m_window.size(), screen());
}

} // namespace tulvane::test
