#pragma once
// Checks on a rendered QImage, for tests of what is drawn where: how many
// pixels of a colour lie in a rectangle, where the pixels of a colour are,
// whether anything other than the background is drawn in a rectangle, and how
// much two renderings differ. Pixels are compared unpremultiplied, channel by
// channel (alpha included), each channel allowed to differ by `tolerance`, so
// that antialiased edges or rounding can be allowed for.
//
// When a check fails, saveImage() keeps the image for a human to look at; put
// it in the failure message, which GoogleTest builds only on failure:
//     EXPECT_TRUE(anythingDrawn(image, legend, Qt::white)) << saveImage(image, "legend");

#include <QColor>
#include <QImage>
#include <QRect>
#include <QString>

#include <string>

namespace OrvTest {

// Whether a pixel value matches `color` within `tolerance` on every channel.
bool colorMatches(QRgb pixel, const QColor& color, int tolerance = 0);

// The number of pixels of `color` in the whole image, or inside `area`
// (clipped to the image, so an empty area holds none).
int countPixels(const QImage& image, const QColor& color, int tolerance = 0);
int countPixels(const QImage& image, const QRect& area, const QColor& color, int tolerance = 0);

// The smallest rectangle holding every pixel of `color`; a null QRect if there is none.
QRect boundingBox(const QImage& image, const QColor& color, int tolerance = 0);

// Whether any pixel inside `area` (clipped to the image) differs from `background`.
bool anythingDrawn(const QImage& image, const QRect& area, const QColor& background, int tolerance = 0);

// The fraction (0 to 1) of pixels that differ between two images of the same
// size; images of different sizes fail the test and count as wholly different.
double differingFraction(const QImage& a, const QImage& b, int tolerance = 0);

// Saves `image` as PNG under GoogleTest's temporary folder, named after the
// running test and `name`, and returns the path (or a note that it could not
// be saved) as a std::string, ready for a failure message. The file stays
// after the test for inspection.
std::string saveImage(const QImage& image, const QString& name);

} // namespace OrvTest
