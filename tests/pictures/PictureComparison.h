#pragma once

#include <QImage>
#include <QString>

namespace tulvane::test {

/// How far two pictures of one thing differ. A pixel counts as different when no pixel of the other picture
/// within one pixel of its place is of nearly its colour: edges that are smoothed a little otherwise do not
/// count, a letter that is missing or elsewhere does.
struct PictureDifference {
    double share = 0; ///< of different pixels, 0 to 1; 1 when the sizes differ
    QImage marked;    ///< the second picture, with the different pixels in red
    QString inWords;  ///< for a person; empty when `isSmall`

    /// Small enough to be the same picture drawn by another version of a font library.
    [[nodiscard]] bool isSmall() const { return share <= most; }
    static constexpr double most = 0.001;
};

[[nodiscard]] PictureDifference compare(const QImage& reference, const QImage& picture);

} // namespace tulvane::test
