#include <support/Await.h>
#include <support/ui/UiWorld.h>
#include <ui/look/RoundBox.h>

#include <QImage>
#include <QQuickWindow>
#include <QtMath>

#include <gtest/gtest.h>

namespace tulvane::test {

namespace {

constexpr QRgb white = 0xffffffff;
constexpr QRgb blue = 0xff0000ff;
constexpr QRgb red = 0xffff0000;

/// Boxes in a white window. The suite is also run at other scales of the screen, at which an odd place lies
/// between the screen's pixels.
class EveryWindowsBoxes : public testing::TestWithParam<QPointF> {
protected:
    EveryWindowsBoxes()
    {
        m_window.setColor(Qt::white);
        m_window.resize(200, 120);
        m_box.setParentItem(m_window.contentItem());
        m_box.setPosition(GetParam());
        m_box.setSize(QSizeF(101, 63));
        m_box.setRadius(9);
        m_box.setColor(QColor::fromRgb(red));
        m_window.show();
    }
    void setLine(qreal width)
    {
        m_box.border()->width = width;
        m_box.border()->color = QColor::fromRgb(blue);
        Q_EMIT m_box.border()->changed();
    }
    [[nodiscard]] QImage picture()
    {
        UiWorld::settle();
        return m_window.grabWindow().convertToFormat(QImage::Format_ARGB32);
    }
    /// Where the box is, in the screen's pixels: the place of the first and the last that are not white.
    [[nodiscard]] static QRect place(const QImage& image)
    {
        QRect found;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                if (image.pixel(x, y) != white)
                    found |= QRect(x, y, 1, 1);
            }
        }
        return found;
    }
    [[nodiscard]] qreal scale() const { return m_window.effectiveDevicePixelRatio(); }

    QQuickWindow m_window;
    RoundBox m_box;
};

} // namespace

TEST_P(EveryWindowsBoxes, AreNotDrawnOutsideWhatTheirParentShows)
{
    QQuickItem view;
    view.setParentItem(m_window.contentItem());
    view.setSize(QSizeF(200, 40));
    view.setClip(true);
    m_box.setParentItem(&view);
    m_box.setY(50);
    EXPECT_EQ(place(picture()), QRect()) << "wholly outside";
    m_box.setY(30);
    EXPECT_EQ(place(picture()).bottom() + 1, qRound(40 * scale()));
    m_box.setParentItem(m_window.contentItem());
}

TEST_P(EveryWindowsBoxes, HaveTheirEdgesOnThePixelsOfTheScreen)
{
    const QImage image = picture();
    const QRect box = place(image);
    const QPointF corner = GetParam() * scale();
    EXPECT_EQ(box.topLeft(), QPoint(qRound(corner.x()), qRound(corner.y())));
    EXPECT_EQ(box.right() + 1, qRound(corner.x() + 101 * scale()));
    EXPECT_EQ(box.bottom() + 1, qRound(corner.y() + 63 * scale()));
    const int round = qCeil(9 * scale());
    for (int x = box.left() + round; x <= box.right() - round; ++x) {
        ASSERT_EQ(image.pixel(x, box.top()), red) << x;
        ASSERT_EQ(image.pixel(x, box.bottom()), red) << x;
    }
    EXPECT_EQ(image.pixel(box.topLeft()), white) << "the corners are round";
    EXPECT_EQ(image.pixel(box.bottomRight()), white);
}

TEST_P(EveryWindowsBoxes, HaveALineThatIsTheSameAllAround)
{
    setLine(1);
    const QImage image = picture();
    const QRect box = place(image);
    const int line = std::max(1, qRound(scale()));
    const QPoint middle = box.center();
    for (int i = 0; i < line; ++i) {
        EXPECT_EQ(image.pixel(middle.x(), box.top() + i), blue) << i;
        EXPECT_EQ(image.pixel(middle.x(), box.bottom() - i), blue) << i;
        EXPECT_EQ(image.pixel(box.left() + i, middle.y()), blue) << i;
        EXPECT_EQ(image.pixel(box.right() - i, middle.y()), blue) << i;
    }
    EXPECT_EQ(image.pixel(middle.x(), box.top() + line), red);
    EXPECT_EQ(image.pixel(middle.x(), box.bottom() - line), red);
    // Each corner is the mirror of its neighbour, so none has a gap.
    const QImage cut = image.copy(box);
    const QImage mirrored = cut.mirrored(true, false);
    const QImage upsideDown = cut.mirrored(false, true);
    const int round = qCeil(9 * scale());
    for (int y = 0; y < round; ++y) {
        for (int x = 0; x < round; ++x) {
            ASSERT_LT(std::abs(qBlue(cut.pixel(x, y)) - qBlue(mirrored.pixel(x, y))), 20) << x << "," << y;
            ASSERT_LT(std::abs(qBlue(cut.pixel(x, y)) - qBlue(upsideDown.pixel(x, y))), 20) << x << "," << y;
        }
    }
}

TEST_P(EveryWindowsBoxes, FollowWhatIsChanged)
{
    static_cast<void>(picture());
    m_box.setColor(QColor::fromRgb(blue));
    EXPECT_EQ(picture().pixel(place(picture()).center()), blue);
    m_box.setRadius(0);
    const QRect square = place(picture());
    EXPECT_EQ(picture().pixel(square.topLeft()), blue);
    m_box.setSize(QSizeF(20, 20));
    EXPECT_LT(place(picture()).width(), square.width());
    m_box.setOpacity(0.5);
    const QRgb half = picture().pixel(place(picture()).center());
    EXPECT_NEAR(qRed(half), 128, 2);
    m_box.setOpacity(1);
    m_box.setColor(Qt::transparent);
    EXPECT_TRUE(place(picture()).isNull());
    setLine(2);
    EXPECT_FALSE(place(picture()).isNull());
    m_box.setWidth(0);
    EXPECT_TRUE(place(picture()).isNull());
}

TEST_P(EveryWindowsBoxes, EndWhereTheirParentIsCutOff)
{
    QQuickItem frame(m_window.contentItem());
    frame.setClip(true);
    frame.setSize(QSizeF(60, 200));
    m_box.setParentItem(&frame);
    EXPECT_LE(place(picture()).right() + 1, qCeil(60 * scale()));
    m_box.setParentItem(nullptr);
}

INSTANTIATE_TEST_SUITE_P(Places, EveryWindowsBoxes,
                         testing::Values(QPointF(20, 20), QPointF(21, 23), QPointF(22.5, 19.5)));

} // namespace tulvane::test
