#include "PictureComparison.h"

#include <QPainter>

#include <gtest/gtest.h>

namespace tulvane::test {

namespace {

QImage page()
{
    QImage image(200, 100, QImage::Format_ARGB32);
    image.fill(Qt::white);
    return image;
}

QImage withLine(int x, int shade)
{
    QImage image = page();
    for (int y = 20; y < 60; ++y)
        image.setPixel(x, y, qRgb(shade, shade, shade));
    return image;
}

TEST(PictureComparisonTest, TheSamePictureDoesNotDiffer)
{
    EXPECT_EQ(compare(withLine(50, 0), withLine(50, 0)).share, 0);
}

TEST(PictureComparisonTest, SmoothingThatMovesAnEdgeByOnePixelDoesNotCount)
{
    EXPECT_TRUE(compare(withLine(50, 0), withLine(51, 0)).isSmall());
    EXPECT_TRUE(compare(withLine(50, 0), withLine(50, 30)).isSmall());
}

TEST(PictureComparisonTest, WhatIsMissingElsewhereOrOfAnotherColourCounts)
{
    EXPECT_FALSE(compare(withLine(50, 0), page()).isSmall());
    EXPECT_FALSE(compare(page(), withLine(50, 0)).isSmall());
    EXPECT_FALSE(compare(withLine(50, 0), withLine(54, 0)).isSmall());
    EXPECT_FALSE(compare(withLine(50, 0), withLine(50, 120)).isSmall());
    EXPECT_FALSE(compare(withLine(50, 0), withLine(50, 120)).inWords.isEmpty());
}

TEST(PictureComparisonTest, AnotherSizeIsAnotherPicture)
{
    EXPECT_EQ(compare(page(), page().copy(0, 0, 200, 99)).share, 1);
}

} // namespace

} // namespace tulvane::test
