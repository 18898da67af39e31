#include "PictureComparison.h"

#include <algorithm>
#include <cstdlib>

namespace tulvane::test {

namespace {

/// Of 255, in any channel: what smoothing changes at most.
constexpr int nearly = 40;

bool isNearly(QRgb a, QRgb b)
{
    return std::abs(qRed(a) - qRed(b)) <= nearly && std::abs(qGreen(a) - qGreen(b)) <= nearly &&
           std::abs(qBlue(a) - qBlue(b)) <= nearly && std::abs(qAlpha(a) - qAlpha(b)) <= nearly;
}

bool isFoundNear(QRgb color, const QImage& image, int x, int y)
{
    for (int v = std::max(0, y - 1); v <= std::min(image.height() - 1, y + 1); ++v) {
        for (int u = std::max(0, x - 1); u <= std::min(image.width() - 1, x + 1); ++u) {
            if (isNearly(color, image.pixel(u, v)))
                return true;
        }
    }
    return false;
}

} // namespace

PictureDifference compare(const QImage& reference, const QImage& picture)
{
    const QImage a = reference.convertToFormat(QImage::Format_ARGB32);
    const QImage b = picture.convertToFormat(QImage::Format_ARGB32);
    PictureDifference difference;
    difference.marked = b;
    if (a.size() != b.size()) {
        difference.share = 1;
        difference.inWords = QStringLiteral("%1 x %2 in place of %3 x %4")
                                 .arg(b.width())
                                 .arg(b.height())
                                 .arg(a.width())
                                 .arg(a.height());
        return difference;
    }
    qint64 count = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            if (isNearly(a.pixel(x, y), b.pixel(x, y)) ||
                (isFoundNear(a.pixel(x, y), b, x, y) && isFoundNear(b.pixel(x, y), a, x, y)))
                continue;
            difference.marked.setPixel(x, y, qRgb(255, 0, 0));
            ++count;
        }
    }
    difference.share = static_cast<double>(count) / (static_cast<double>(a.width()) * a.height());
    if (!difference.isSmall())
        difference.inWords =
            QStringLiteral("%1 pixels differ (%2 %)").arg(count).arg(100 * difference.share, 0, 'f', 2);
    return difference;
}

} // namespace tulvane::test
