#include "IndicatorOnDesktop.h"

#include <cmath>

namespace tulvane::test {

namespace {

constexpr quint32 wallpaper = 0x3366cc;

/// The wallpaper is far bluer than anything on the indicator, also where the shadow lies on it.
bool isIndicator(quint32 color)
{
    return static_cast<int>(color & 0xff) - static_cast<int>(color >> 16 & 0xff) < 50;
}

/// A part of the wallpaper's light, its hue kept: what a shadow leaves of it.
bool isShadedWallpaper(quint32 color, double least)
{
    const double part = (color & 0xff) / static_cast<double>(wallpaper & 0xff);
    const double red = (color >> 16 & 0xff) / static_cast<double>(wallpaper >> 16 & 0xff);
    return part >= least && part <= 1.001 && std::abs(red - part) < 0.06;
}

class IndicatorLooksTest : public IndicatorOnDesktop {
protected:
    /// The indicator's own place on the screen, found by its colour in the row of its middle.
    [[nodiscard]] QRect body(const ScreenPicture& picture) const
    {
        const QRect panel = m_view.place(*indicator());
        const int row = panel.bottom() + 1 - 28 - 24;
        int left = panel.left();
        while (left < panel.right() && !isIndicator(picture.at({left, row})))
            ++left;
        int right = panel.right();
        while (right > left && !isIndicator(picture.at({right, row})))
            --right;
        return {QPoint(left, row - 24), QPoint(right, row + 23)};
    }
    void showOverTheWallpaper()
    {
        m_here.launch();
        openFilm(wallpaper);
        ask("start");
        ASSERT_TRUE(waitForIndicator());
        ASSERT_TRUE(waitUntil([&] { return isOpaque() && body(m_view.picture()).width() > 60; }));
    }
    static QList<QPoint> corners(const QRect& rect)
    {
        return {rect.topLeft(), rect.topRight(), rect.bottomLeft(), rect.bottomRight()};
    }
};

TEST_F(IndicatorLooksTest, WithoutACompositorItIsCutToItsOutline)
{
    showOverTheWallpaper();
    const ScreenPicture picture = m_view.picture();
    const QRect panel = m_view.place(*indicator());
    const QRect indicator = body(picture);
    EXPECT_EQ(indicator.center().x(), panel.center().x());
    // Nothing outside it, and nothing in its corners, but the wallpaper itself.
    for (int y = panel.top(); y <= panel.bottom(); ++y) {
        for (int x = panel.left(); x <= panel.right(); ++x) {
            if (!indicator.contains(x, y)) {
                ASSERT_EQ(picture.at({x, y}), wallpaper) << x << "," << y;
            }
        }
    }
    for (const QPoint corner : corners(indicator)) {
        const QPoint inwards = QPoint(corner.x() < indicator.center().x() ? 3 : -3,
                                      corner.y() < indicator.center().y() ? 3 : -3);
        EXPECT_EQ(picture.at(corner + inwards), wallpaper);
    }
    EXPECT_TRUE(isIndicator(picture.at(indicator.center() + QPoint(0, -20))));
    // It goes at once, with nothing left behind.
    ask("cancel");
    ASSERT_TRUE(waitForNoIndicator());
    EXPECT_TRUE(waitUntil([&] { return m_view.picture().at(indicator.center()) == wallpaper; }));
}

TEST_F(IndicatorLooksTest, WithACompositorItsCornersShowTheWallpaperUnderASoftShadow)
{
    m_here.desktop.start(QStringLiteral("picom"),
                         words("--backend xrender --config /dev/null --log-level error"));
    ASSERT_TRUE(waitUntil([&] { return m_view.owner(QStringLiteral("_NET_WM_CM_S0")) != 0; }));
    showOverTheWallpaper();
    const ScreenPicture picture = m_view.picture();
    const QRect panel = m_view.place(*indicator());
    const QRect indicator = body(picture);
    EXPECT_EQ(m_view.boundingShape(*this->indicator()), QList<QRect>{QRect(0, 0, 316, 104)});
    for (const QPoint corner : corners(panel))
        EXPECT_EQ(picture.at(corner), wallpaper);
    for (const QPoint corner : corners(indicator)) {
        const QPoint inwards = QPoint(corner.x() < indicator.center().x() ? 3 : -3,
                                      corner.y() < indicator.center().y() ? 3 : -3);
        EXPECT_TRUE(isShadedWallpaper(picture.at(corner + inwards), 0.6))
            << std::hex << picture.at(corner + inwards);
    }
    EXPECT_TRUE(isIndicator(picture.at(indicator.center() + QPoint(0, -20))));
    ask("cancel");
    ASSERT_TRUE(waitForNoIndicator());
    EXPECT_TRUE(waitUntil([&] { return m_view.picture().at(indicator.center()) == wallpaper; }));
}

TEST_F(IndicatorLooksTest, ACompositorThatComesAndGoesIsNoticedWhenTheIndicatorHasSomethingNewToSay)
{
    showOverTheWallpaper();
    EXPECT_GT(m_view.boundingShape(*indicator()).size(), 20);
    QProcess& picom = m_here.desktop.start(QStringLiteral("picom"),
                                           words("--backend xrender --config /dev/null --log-level error"));
    ASSERT_TRUE(waitUntil([&] { return m_view.owner(QStringLiteral("_NET_WM_CM_S0")) != 0; }));
    ask("cancel");
    ASSERT_TRUE(waitForNoIndicator());
    ask("start");
    ASSERT_TRUE(waitForIndicator());
    EXPECT_EQ(m_view.boundingShape(*indicator()), QList<QRect>{QRect(0, 0, 316, 104)});
    picom.kill();
    ASSERT_TRUE(waitUntil([&] { return m_view.owner(QStringLiteral("_NET_WM_CM_S0")) == 0; }));
    ask("cancel");
    ASSERT_TRUE(waitForNoIndicator());
    ask("start");
    ASSERT_TRUE(waitForIndicator());
    EXPECT_TRUE(waitUntil([&] { return m_view.boundingShape(*indicator()).size() > 20; }));
}

} // namespace

} // namespace tulvane::test
