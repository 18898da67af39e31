#include <platform/linux/desktop/shell/SymbolIcon.h>
#include <support/Paths.h>

#include <QImage>
#include <QPainter>
#include <QPixmap>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

namespace tulvane::test {

namespace {

QString symbol(const char* name)
{
    return sourceFolder() + u"/resources/symbols/"_qs + QString::fromLatin1(name) + u".svg"_qs;
}

/// How far the icon's darkest or lightest point is from the bar's own grey, of 255.
int contrast(const QIcon& icon, int bar)
{
    QImage image(22, 22, QImage::Format_RGB32);
    image.fill(QColor(bar, bar, bar));
    QPainter painter(&image);
    icon.paint(&painter, image.rect());
    painter.end();
    int most = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            most = std::max(most, std::abs(qGray(image.pixel(x, y)) - bar));
    }
    return most;
}

} // namespace

TEST(SymbolIconTest, TheToneIsTheBarsOpposite)
{
    const IconTone onLight = toneFor({u"KDE"_qs}, false);
    const IconTone onDark = toneFor({u"KDE"_qs}, true);
    EXPECT_LT(onLight.symbol.lightness(), 60);
    EXPECT_GT(onDark.symbol.lightness(), 200);
    EXPECT_EQ(onLight.rim, onDark.symbol);
    // Their bar is dark, whatever the theme.
    EXPECT_EQ(toneFor({u"ubuntu"_qs, u"GNOME"_qs}, false), onDark);
    EXPECT_EQ(toneFor({}, false), onLight);
}

TEST(SymbolIconTest, AWrongGuessCanStillBeRead)
{
    for (const char* name : {"mic", "mic.fill", "mic.slash", "waveform"}) {
        for (const bool isDark : {false, true}) {
            const QIcon icon = symbolIcon(symbol(name), toneFor({}, isDark));
            EXPECT_GT(contrast(icon, isDark ? 20 : 240), 180) << name;
            EXPECT_GT(contrast(icon, isDark ? 250 : 10), 60) << name;
        }
    }
}

TEST(SymbolIconTest, EachSizeIsDrawnForItself)
{
    const QIcon icon = symbolIcon(symbol("mic"), toneFor({}, false));
    EXPECT_TRUE(icon.availableSizes().contains(QSize(22, 22)));
    for (const QSize size : icon.availableSizes())
        EXPECT_EQ(icon.pixmap(size, 1.0).size(), size);
    EXPECT_NE(icon.pixmap(22, 22).toImage(),
              symbolIcon(symbol("mic.fill"), toneFor({}, false)).pixmap(22, 22).toImage());
}

TEST(SymbolIconTest, WithoutAFileThereIsNothingToSee)
{
    const QIcon icon = symbolIcon(u"/nowhere.svg"_qs, toneFor({}, false));
    EXPECT_EQ(contrast(icon, 240), 0);
}

} // namespace tulvane::test
