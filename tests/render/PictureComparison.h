#pragma once

#include <QImage>

namespace orvantile::test {

/// How far two pictures of the same size differ.
struct PictureDifference {
    double mean = 0;     ///< of all channels of all pixels
    double farShare = 0; ///< of pixels that anybody would see to differ
};

[[nodiscard]] PictureDifference compare(const QImage& left, const QImage& right);

/// Fails the running test when more than `farShare` of the pixels of `actual` look different from the picture
/// in the file at `path`, and keeps it in the folder for temporary files. With ORVANTILE_UPDATE_GOLDENS=1 it
/// is written to `path` instead; look at it before committing.
void expectGolden(const QImage& actual, const QString& path, double farShare = 0.002);

} // namespace orvantile::test
