#include "ImageChecks.h"

#include <QDir>
#include <QRegularExpression>

#include <gtest/gtest.h>

#include <cstdlib>

namespace OrvTest {

namespace {

// Every check reads ARGB32 pixels: painters often render premultiplied, and
// the colours tests name are not.
QImage unpremultiplied(const QImage& image)
{
    return image.format() == QImage::Format_ARGB32 ? image : image.convertToFormat(QImage::Format_ARGB32);
}

bool close(int a, int b, int tolerance)
{
    return std::abs(a - b) <= tolerance;
}

bool pixelsMatch(QRgb a, QRgb b, int tolerance)
{
    return close(qRed(a), qRed(b), tolerance) && close(qGreen(a), qGreen(b), tolerance)
           && close(qBlue(a), qBlue(b), tolerance) && close(qAlpha(a), qAlpha(b), tolerance);
}

const QRgb* line(const QImage& image, int y)
{
    return reinterpret_cast<const QRgb*>(image.constScanLine(y));
}

QString fileNamePart(const QString& text)
{
    static const QRegularExpression unsafe(QStringLiteral("[^A-Za-z0-9_.-]+"));
    return QString(text).replace(unsafe, QStringLiteral("_"));
}

} // namespace

bool colorMatches(QRgb pixel, const QColor& color, int tolerance)
{
    return pixelsMatch(pixel, color.rgba(), tolerance);
}

int countPixels(const QImage& image, const QColor& color, int tolerance)
{
    return countPixels(image, image.rect(), color, tolerance);
}

int countPixels(const QImage& image, const QRect& area, const QColor& color, int tolerance)
{
    const QImage pixels = unpremultiplied(image);
    const QRect rect = area.intersected(pixels.rect());
    int count = 0;
    for (int y = rect.top(); y <= rect.bottom(); ++y)
        for (int x = rect.left(); x <= rect.right(); ++x)
            count += colorMatches(line(pixels, y)[x], color, tolerance) ? 1 : 0;
    return count;
}

QRect boundingBox(const QImage& image, const QColor& color, int tolerance)
{
    const QImage pixels = unpremultiplied(image);
    QRect box;
    for (int y = 0; y < pixels.height(); ++y)
        for (int x = 0; x < pixels.width(); ++x)
            if (colorMatches(line(pixels, y)[x], color, tolerance))
                box |= QRect(x, y, 1, 1);
    return box;
}

bool anythingDrawn(const QImage& image, const QRect& area, const QColor& background, int tolerance)
{
    const QImage pixels = unpremultiplied(image);
    const QRect rect = area.intersected(pixels.rect());
    for (int y = rect.top(); y <= rect.bottom(); ++y)
        for (int x = rect.left(); x <= rect.right(); ++x)
            if (!colorMatches(line(pixels, y)[x], background, tolerance))
                return true;
    return false;
}

double differingFraction(const QImage& a, const QImage& b, int tolerance)
{
    if (a.size() != b.size()) {
        ADD_FAILURE() << "images of different sizes: " << a.width() << " x " << a.height() << " and " << b.width()
                      << " x " << b.height();
        return 1.0;
    }
    if (a.isNull())
        return 0.0;
    const QImage first = unpremultiplied(a);
    const QImage second = unpremultiplied(b);
    qint64 differing = 0;
    for (int y = 0; y < first.height(); ++y)
        for (int x = 0; x < first.width(); ++x)
            differing += pixelsMatch(line(first, y)[x], line(second, y)[x], tolerance) ? 0 : 1;
    return double(differing) / (double(first.width()) * first.height());
}

std::string saveImage(const QImage& image, const QString& name)
{
    QString test = QStringLiteral("no-test");
    if (const ::testing::TestInfo* info = ::testing::UnitTest::GetInstance()->current_test_info())
        test = QString::fromStdString(std::string(info->test_suite_name()) + '.' + info->name());
    const QString folder = QString::fromStdString(::testing::TempDir()) + QStringLiteral("orv-test-images");
    const QString path = folder + QLatin1Char('/') + fileNamePart(test + QLatin1Char('-') + name) + QStringLiteral(".png");
    if (!QDir().mkpath(folder) || !image.save(path, "PNG"))
        return "(could not save the image as " + path.toStdString() + ')';
    return path.toStdString();
}

} // namespace OrvTest
