#include <platform/linux/x11/windows/X11IndicatorPanel.h>
#include <support/Await.h>
#include <support/windows/RealDesktop.h>

#include <gtest/gtest.h>

namespace tulvane::test {

namespace {

using namespace std::chrono_literals;

class X11IndicatorPanelTest : public testing::Test {
protected:
    X11IndicatorPanelTest()
    {
        QSurfaceFormat format = m_window.requestedFormat();
        format.setAlphaBufferSize(8);
        m_window.setFormat(format);
        m_window.setGeometry(400, 500, 316, 104);
        m_panel.prepare(m_window);
    }
    void show()
    {
        ASSERT_TRUE(showAndWait(m_window, m_view));
        m_panel.raise(m_window);
    }
    [[nodiscard]] xcb_window_t id() { return idOf(m_window); }
    [[nodiscard]] bool isOnTop() { return m_view.stack().last() == id(); }

    ServerView& m_view = realView();
    PlainWindow m_window;
    X11IndicatorPanel m_panel{X11Connection::open(realDesktop().display().toLocal8Bit())};
};

} // namespace

TEST_F(X11IndicatorPanelTest, IsAnUnmanagedMessageThatGetsNoClicks)
{
    show();
    EXPECT_TRUE(m_view.isUnmanaged(id()));
    EXPECT_EQ(m_view.topLevel(id()), id());
    EXPECT_EQ(m_view.place(id()), QRect(400, 500, 316, 104));
    EXPECT_EQ(m_view.depth(id()), 32);
    EXPECT_EQ(m_view.inputShape(id()), QList<QRect>());
    EXPECT_EQ(m_view.atoms(id(), "_NET_WM_WINDOW_TYPE"),
              QStringList{QStringLiteral("_NET_WM_WINDOW_TYPE_NOTIFICATION")});
    EXPECT_EQ(m_view.numbers(id(), "_GTK_FRAME_EXTENTS"), QList<quint32>({0, 0, 0, 0}));
    // All of that holds for the second show, too.
    m_window.hide();
    show();
    EXPECT_EQ(m_view.inputShape(id()), QList<QRect>());
    EXPECT_EQ(m_view.atoms(id(), "_NET_WM_WINDOW_TYPE"),
              QStringList{QStringLiteral("_NET_WM_WINDOW_TYPE_NOTIFICATION")});
}

TEST_F(X11IndicatorPanelTest, TheFocusStaysWhereItIs)
{
    PlainWindow front;
    ASSERT_TRUE(showAndWait(front, m_view));
    ASSERT_TRUE(waitUntil([&] { return m_view.active() == idOf(front); }));
    const xcb_window_t focus = m_view.focus();
    for (int i = 0; i < 5; ++i) {
        show();
        EXPECT_EQ(m_view.focus(), focus);
        EXPECT_EQ(m_view.active(), idOf(front));
        m_window.hide();
    }
    EXPECT_EQ(m_view.focus(), focus);
}

TEST_F(X11IndicatorPanelTest, IsAboveAFullScreenProgram)
{
    const xcb_window_t film = m_view.show({.place = QRect(QPoint(), m_view.size()), .isFullScreen = true});
    ASSERT_TRUE(waitUntil([&] { return m_view.isViewable(film); }));
    show();
    // The window manager may put the film on top once more, when it gets the focus.
    EXPECT_TRUE(waitUntil([&] { return isOnTop(); }));
    // A second one that comes while the indicator is there.
    const xcb_window_t next = m_view.show({.place = QRect(QPoint(), m_view.size()), .isFullScreen = true});
    ASSERT_TRUE(waitUntil([&] { return m_view.isViewable(next); }));
    EXPECT_TRUE(waitUntil([&] { return isOnTop(); }));
    m_view.destroy(film);
    m_view.destroy(next);
}

TEST_F(X11IndicatorPanelTest, ComesBackAboveWhatIsPutOverIt)
{
    show();
    for (int i = 0; i < 2; ++i) {
        const xcb_window_t menu = m_view.show({.place = {300, 450, 400, 200}, .isUnmanaged = true});
        ASSERT_TRUE(m_view.stack().contains(menu));
        EXPECT_TRUE(waitUntil([&] { return isOnTop(); }, 2s));
        m_view.destroy(menu);
    }
}

TEST_F(X11IndicatorPanelTest, DoesNotFightForEver)
{
    show();
    const xcb_window_t stubborn = m_view.show({.place = {300, 450, 400, 200}, .isUnmanaged = true});
    int returns = 0;
    while (returns < 20 && waitUntil([&] { return isOnTop(); }, 400ms)) {
        ++returns;
        m_view.raise(stubborn);
    }
    EXPECT_GE(returns, 2);
    EXPECT_LE(returns, StackingOrder::patience + 1);
    // The next thing that it has to say is worth being seen again.
    m_panel.raise(m_window);
    EXPECT_TRUE(waitUntil([&] { return isOnTop(); }, 2s));
    m_view.destroy(stubborn);
}

TEST_F(X11IndicatorPanelTest, KnowsWhetherACompositorIsThere)
{
    EXPECT_FALSE(m_panel.isBlended());
    m_view.own(QStringLiteral("_NET_WM_CM_S0"), true);
    EXPECT_TRUE(m_panel.isBlended());
    m_view.own(QStringLiteral("_NET_WM_CM_S0"), false);
    EXPECT_FALSE(m_panel.isBlended());
    EXPECT_FALSE(X11IndicatorPanel(X11Connection::open(":4711")).isBlended());
}

TEST_F(X11IndicatorPanelTest, IsCutToItsOutlineAndMadeWholeAgain)
{
    const QRect whole(0, 0, 316, 104);
    for (const bool isShown : {false, true}) {
        if (isShown)
            show();
        m_panel.cut(m_window, PanelOutline{{60, 28, 196, 48}, 24});
        ASSERT_TRUE(waitUntil([&] { return m_view.boundingShape(id()).size() > 20; }));
        QRegion region;
        for (const QRect& rect : m_view.boundingShape(id()))
            region += rect;
        EXPECT_EQ(region.boundingRect(), QRect(60, 28, 196, 48));
        EXPECT_FALSE(region.contains(QPoint(60, 28)));
        EXPECT_FALSE(region.contains(QPoint(255, 75)));
        EXPECT_TRUE(region.contains(QPoint(60, 52)));
        m_panel.cut(m_window, std::nullopt);
        EXPECT_TRUE(waitUntil([&] { return m_view.boundingShape(id()) == QList<QRect>{whole}; }));
        EXPECT_EQ(m_view.inputShape(id()), QList<QRect>());
    }
}

TEST_F(X11IndicatorPanelTest, TellsTheCompositorItsOpacity)
{
    show();
    m_panel.setOpacity(m_window, 0);
    EXPECT_TRUE(
        waitUntil([&] { return m_view.numbers(id(), "_NET_WM_WINDOW_OPACITY") == QList<quint32>{0}; }));
    m_panel.setOpacity(m_window, 0.5);
    ASSERT_TRUE(waitUntil([&] { return m_view.numbers(id(), "_NET_WM_WINDOW_OPACITY").value(0) != 0; }));
    EXPECT_NEAR(m_view.numbers(id(), "_NET_WM_WINDOW_OPACITY").value(0), 0x7fffffff, 0x1000000);
}

} // namespace tulvane::test
