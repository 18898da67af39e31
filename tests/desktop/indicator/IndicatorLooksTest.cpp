#include "IndicatorOnDesktop.h"

#include <cmath>

namespace tulvane::test {

namespace {

constexpr quint32 wallpaper = 0x3366cc;

/// The wallpaper is far bluer than anything on the pill, also where the shadow lies on it.
bool isPill(quint32 color)
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

class PillLooksTest : public IndicatorOnDesktop {
protected:
    /// The pill's own place on the screen, found by its colour in the row of its middle.
    [[nodiscard]] QRect body(const ScreenPicture& picture) const
    {
        const QRect panel = m_view.place(*pill());
        const int row = panel.bottom() + 1 - 28 - 24;
        int left = panel.left();
        while (left < panel.right() && !isPill(picture.at({left, row})))
            ++left;
        int right = panel.right();
        while (right > left && !isPill(picture.at({right, row})))
            --right;
        return {QPoint(left, row - 24), QPoint(right, row + 23)};
    }
    void showOverTheWallpaper()
    {
        m_here.launch();
        openFilm(wallpaper);
        ask("start");
        ASSERT_TRUE(waitForPill());
        ASSERT_TRUE(waitUntil([&] { return isOpaque() && body(m_view.picture()).width() > 60; }));
    }
    static QList<QPoint> corners(const QRect& rect)
    {
        return {rect.topLeft(), rect.topRight(), rect.bottomLeft(), rect.bottomRight()};
    }
};

TEST_F(PillLooksTest, WithoutACompositorItIsCutToItsOutline)
{
    showOverTheWallpaper();
    const ScreenPicture picture = m_view.picture();
    const QRect panel = m_view.place(*pill());
    const QRect pill = body(picture);
    EXPECT_EQ(pill.center().x(), panel.center().x());
    // Nothing outside it, and nothing in its corners, but the wallpaper itself.
    for (int y = panel.top(); y <= panel.bottom(); ++y) {
        for (int x = panel.left(); x <= panel.right(); ++x) {
            if (!pill.contains(x, y)) {
                ASSERT_EQ(picture.at({x, y}), wallpaper) << x << "," << y;
            }
        }
    }
    for (const QPoint corner : corners(pill)) {
        const QPoint inwards =
            QPoint(corner.x() < pill.center().x() ? 3 : -3, corner.y() < pill.center().y() ? 3 : -3);
        EXPECT_EQ(picture.at(corner + inwards), wallpaper);
    }
    EXPECT_TRUE(isPill(picture.at(pill.center() + QPoint(0, -20))));
    // It goes at once, with nothing left behind.
    ask("cancel");
    ASSERT_TRUE(waitForNoPill());
    EXPECT_TRUE(waitUntil([&] { return m_view.picture().at(pill.center()) == wallpaper; }));
}

TEST_F(PillLooksTest, WithACompositorItsCornersShowTheWallpaperUnderASoftShadow)
{
    m_here.desktop.start(QStringLiteral("picom"),
                         words("--backend xrender --config /dev/null --log-level error"));
    ASSERT_TRUE(waitUntil([&] { return m_view.owner(QStringLiteral("_NET_WM_CM_S0")) != 0; }));
    showOverTheWallpaper();
    const ScreenPicture picture = m_view.picture();
    const QRect panel = m_view.place(*pill());
    const QRect pill = body(picture);
    EXPECT_EQ(m_view.boundingShape(*this->pill()), QList<QRect>{QRect(0, 0, 316, 104)});
    for (const QPoint corner : corners(panel))
        EXPECT_EQ(picture.at(corner), wallpaper);
    for (const QPoint corner : corners(pill)) {
        const QPoint inwards =
            QPoint(corner.x() < pill.center().x() ? 3 : -3, corner.y() < pill.center().y() ? 3 : -3);
        EXPECT_TRUE(isShadedWallpaper(picture.at(corner + inwards), 0.6))
            << std::hex << picture.at(corner + inwards);
    }
    EXPECT_TRUE(isPill(picture.at(pill.center() + QPoint(0, -20))));
    ask("cancel");
    ASSERT_TRUE(waitForNoPill());
    EXPECT_TRUE(waitUntil([&] { return m_view.picture().at(pill.center()) == wallpaper; }));
}

TEST_F(PillLooksTest, ACompositorThatComesAndGoesIsNoticedWhenThePillHasSomethingNewToSay)
{
    showOverTheWallpaper();
    EXPECT_GT(m_view.boundingShape(*pill()).size(), 20);
    QProcess& picom = m_here.desktop.start(QStringLiteral("picom"),
                                           words("--backend xrender --config /dev/null --log-level error"));
    ASSERT_TRUE(waitUntil([&] { return m_view.owner(QStringLiteral("_NET_WM_CM_S0")) != 0; }));
    ask("cancel");
    ASSERT_TRUE(waitForNoPill());
    ask("start");
    ASSERT_TRUE(waitForPill());
    EXPECT_EQ(m_view.boundingShape(*pill()), QList<QRect>{QRect(0, 0, 316, 104)});
    picom.kill();
    ASSERT_TRUE(waitUntil([&] { return m_view.owner(QStringLiteral("_NET_WM_CM_S0")) == 0; }));
    ask("cancel");
    ASSERT_TRUE(waitForNoPill());
    ask("start");
    ASSERT_TRUE(waitForPill());
    EXPECT_TRUE(waitUntil([&] { return m_view.boundingShape(*pill()).size() > 20; }));
}

} // namespace

} // namespace tulvane::test
