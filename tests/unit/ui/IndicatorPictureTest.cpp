#include "IndicatorFixture.h"

#include <platform/fake/FakeIndicatorSurface.h>
#include <support/Await.h>

namespace tulvane::test {

namespace {

const Phase recording{Phase::Kind::recording, {}};

/// On a desktop where the toolkit's window cannot be the indicator's panel.
class IndicatorPictureTest : public IndicatorFixture {
protected:
    IndicatorPictureTest() { m_surface = &m_pictures; }
    /// How much of the picture is as opaque as the indicator's body.
    [[nodiscard]] double opaqueShare() const
    {
        int opaque = 0;
        for (int y = 0; y < m_pictures.last.height(); ++y) {
            for (int x = 0; x < m_pictures.last.width(); ++x)
                opaque += m_pictures.last.pixelColor(x, y).alpha() > 200 ? 1 : 0;
        }
        return opaque / static_cast<double>(m_pictures.last.width() * m_pictures.last.height());
    }

    FakeIndicatorSurface m_pictures;
};

} // namespace

TEST_F(IndicatorPictureTest, IsShownInPicturesWithThePixelsOfTheScreen)
{
    show(recording);
    EXPECT_EQ(m_indicator.panel(), nullptr);
    EXPECT_EQ(m_panel->preparations(), 0);
    ASSERT_FALSE(m_pictures.last.isNull());
    EXPECT_EQ(m_pictures.last.size(), QSize(632, 208));
    EXPECT_EQ(m_pictures.last.devicePixelRatio(), 2);
    EXPECT_GT(opaqueShare(), 0.1);
    EXPECT_LT(opaqueShare(), 0.6);
}

TEST_F(IndicatorPictureTest, EachChangeIsANewPictureAndStillnessIsNone)
{
    still();
    show(recording);
    const int before = m_pictures.shown;
    m_indicator.setPhase({Phase::Kind::transcribing, {}});
    EXPECT_TRUE(waitUntil([&] { return m_pictures.shown > before; }));
    m_indicator.hide(false);
    EXPECT_TRUE(m_pictures.last.isNull());
    const int after = m_pictures.shown;
    m_indicator.setPhase(recording);
    runEventLoopFor(std::chrono::milliseconds(100));
    EXPECT_EQ(m_pictures.shown, after);
}

TEST_F(IndicatorPictureTest, ANewDictationHasItsOwnSurfaceSinceTheScreenInUseMayBeAnother)
{
    still();
    show(recording);
    show({Phase::Kind::transcribing, {}});
    show({Phase::Kind::notice, QStringLiteral("Copied to clipboard")});
    EXPECT_EQ(m_pictures.hidden, 0) << "it stays where it is for a whole dictation";
    show(recording);
    EXPECT_EQ(m_pictures.hidden, 1);
    EXPECT_FALSE(m_pictures.last.isNull());
    show(recording);
    EXPECT_EQ(m_pictures.hidden, 1);
}

TEST_F(IndicatorPictureTest, ItComesBackOnANewSurfaceWhileItFades)
{
    show(recording);
    advance(150);
    m_indicator.setPhase({});
    m_indicator.hide(true);
    advance(50);
    m_pictures.pixelsPerPoint = 1;
    show(recording);
    EXPECT_EQ(m_pictures.hidden, 1);
    EXPECT_EQ(m_pictures.last.size(), QSize(316, 104)) << "sharp on the screen where it is";
    advance(500);
    EXPECT_EQ(m_pictures.hidden, 1);
    EXPECT_FALSE(m_pictures.last.isNull());
}

TEST_F(IndicatorPictureTest, IsWholeWhileAPartOfItMovesAndWhenItComesBack)
{
    show(recording);
    const double whole = opaqueShare();
    for (int i = 1; i <= 4; ++i) {
        const int before = m_pictures.shown;
        m_indicator.setLevel(static_cast<float>(i) / 4);
        advance(100);
        EXPECT_TRUE(waitUntil([&] { return m_pictures.shown > before; }));
        EXPECT_NEAR(opaqueShare(), whole, 0.03);
    }
    m_indicator.hide(false);
    m_indicator.show();
    EXPECT_NEAR(opaqueShare(), whole, 0.03);
}

TEST_F(IndicatorPictureTest, FadesAndIsGoneAtTheEnd)
{
    show(recording);
    EXPECT_EQ(m_pictures.opacity, 0);
    advance(150);
    EXPECT_EQ(m_pictures.opacity, 1);
    m_indicator.hide(true);
    advance(100);
    EXPECT_NEAR(m_pictures.opacity, 0.5, 0.08);
    EXPECT_FALSE(m_pictures.last.isNull());
    advance(100);
    EXPECT_TRUE(m_pictures.last.isNull());
    EXPECT_EQ(m_pictures.hidden, 1);
    m_indicator.show();
    EXPECT_FALSE(m_pictures.last.isNull());
    m_indicator.close();
}

} // namespace tulvane::test
