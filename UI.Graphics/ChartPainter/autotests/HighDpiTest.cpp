// The chart drawn at several device pixels per logical pixel: the picture has
// the layout of the 1x one at that many times the pixels, found by scanning
// the images (axis lines, tick labels, the title), with pens and fonts grown
// by the ratio rather than kept one device pixel thin, and PNG files of it.

#include "ChartPainter.h"
#include "PaintedChart.h"
#include "Plot.h"

#include "ImageChecks.h"
#include "TempFolder.h"

#include <QImage>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <vector>

namespace {

namespace Chart = Orv::Chart;

const QColor airColour(0xe1, 0x57, 0x59);
// The sample's air temperature alone.
const QStringList airAlone = {QStringLiteral("variable/T2/enabled=false"), QStringLiteral("variable/p/enabled=false"),
                              QStringLiteral("variable/Tmean/enabled=false"), QStringLiteral("legend.1/enabled=false")};

// Ink of a pixel: 0 on white, 255 on black.
double ink(QRgb pixel)
{
    return 255.0 - qGray(pixel);
}

// The ink of each column (or row) of `area`, summed across it.
std::vector<double> profile(const QImage& image, QRect area, Qt::Orientation columns)
{
    area &= image.rect();
    const bool byColumn = columns == Qt::Vertical;
    std::vector<double> sums(static_cast<std::size_t>(byColumn ? area.width() : area.height()), 0.0);
    for (int y = area.top(); y <= area.bottom(); ++y)
        for (int x = area.left(); x <= area.right(); ++x)
            sums[static_cast<std::size_t>(byColumn ? x - area.left() : y - area.top())] += ink(image.pixel(x, y));
    return sums;
}

// A run of columns (or rows) with ink: where its ink's centre lies (pixel
// centres at i + 0.5, from the image's edge), how much ink it holds, and how
// many columns it spans.
struct InkRun {
    double centre = 0;
    double ink = 0;
    int begin = 0;
    int width = 0;
};

// The runs of entries above `threshold`, split where at least `gap` entries in a row are not.
std::vector<InkRun> runs(const std::vector<double>& sums, double threshold, int offset, int gap = 1)
{
    std::vector<InkRun> found;
    double moment = 0;
    for (int i = 0; i < static_cast<int>(sums.size()); ++i) {
        const double value = sums[static_cast<std::size_t>(i)];
        if (value <= threshold)
            continue;
        if (found.empty() || i - (found.back().begin + found.back().width) >= gap) {
            found.push_back({0, 0, i, 0});
            moment = 0;
        }
        InkRun& run = found.back();
        run.ink += value;
        moment += value * (offset + i + 0.5);
        run.centre = moment / run.ink;
        run.width = i - run.begin + 1;
    }
    return found;
}

// The box of the ink inside `area`.
QRectF inkBox(const QImage& image, QRect area)
{
    const std::vector<InkRun> across = runs(profile(image, area, Qt::Vertical), 0, area.left(), area.width());
    const std::vector<InkRun> down = runs(profile(image, area, Qt::Horizontal), 0, area.top(), area.height());
    if (across.size() != 1 || down.size() != 1)
        return {};
    return QRectF(area.left() + across[0].begin, area.top() + down[0].begin, across[0].width, down[0].width);
}

// The longest unbroken line of ink down each column (or along each row).
std::vector<int> longestStrokes(const QImage& image, Qt::Orientation columns)
{
    const bool byColumn = columns == Qt::Vertical;
    const int count = byColumn ? image.width() : image.height(), length = byColumn ? image.height() : image.width();
    std::vector<int> longest(static_cast<std::size_t>(count), 0);
    for (int i = 0; i < count; ++i)
        for (int j = 0, stroke = 0; j < length; ++j) {
            stroke = ink(byColumn ? image.pixel(i, j) : image.pixel(j, i)) > 60 ? stroke + 1 : 0;
            longest[static_cast<std::size_t>(i)] = std::max(longest[static_cast<std::size_t>(i)], stroke);
        }
    return longest;
}

// The axes: lines across more than half the image's height (or width),
// which neither texts, bars nor the dotted grid draw.
std::vector<InkRun> axisLines(const QImage& image, Qt::Orientation columns)
{
    const std::vector<int> strokes = longestStrokes(image, columns);
    const int length = columns == Qt::Vertical ? image.height() : image.width();
    std::vector<double> sums = profile(image, image.rect(), columns);
    for (std::size_t i = 0; i < sums.size(); ++i)
        if (2 * strokes[i] < length)
            sums[i] = 0;
    return runs(sums, 0, 0);
}

// The chart's marks as a 1x picture places them, and as one at `ratio` does.
struct Marks {
    std::vector<InkRun> columns; // vertical axis lines
    std::vector<InkRun> rows;    // horizontal axis lines
    std::vector<InkRun> bottomLabels;
    std::vector<InkRun> leftLabels;
    QRectF title;
};

// Strips beside the axes, past the ticks, in logical pixels times the ratio.
Marks marksOf(const QImage& image, double ratio)
{
    Marks marks;
    marks.columns = axisLines(image, Qt::Vertical);
    marks.rows = axisLines(image, Qt::Horizontal);
    if (marks.columns.size() < 2 || marks.rows.size() < 2)
        return marks;
    const double left = marks.columns.front().centre, bottom = marks.rows.back().centre;
    const auto scaled = [ratio](double logical) { return static_cast<int>(std::lround(logical * ratio)); };
    const QRect below(0, static_cast<int>(bottom) + scaled(6), image.width(), scaled(16));
    marks.bottomLabels = runs(profile(image, below, Qt::Vertical), 0, below.left(), scaled(3));
    const QRect beside(static_cast<int>(left) - scaled(40), 0, scaled(34), static_cast<int>(bottom));
    marks.leftLabels = runs(profile(image, beside, Qt::Horizontal), 0, beside.top(), scaled(3));
    marks.title = inkBox(image, QRect(0, 0, image.width(), scaled(30)));
    return marks;
}

class HighDpiTest : public ::testing::TestWithParam<double> {
protected:
    static constexpr QSize size{800, 500};

    // The sample, with these settings, as the painter draws it at `ratio`.
    QImage picture(double ratio, const QStringList& settings = {})
    {
        PaintedChart::assignAll(*chart, settings);
        const Chart::Plot plot(*chart, Chart::axisPairsOf(*chart), Chart::TickRoom{size, 100, {}});
        return Chart::ChartPainter(plot, size).image(ratio);
    }

    KelModifiedGroup group;
    std::unique_ptr<KelChart2D> chart = PaintedChart::sample(group);
};

// Each line of the 1x picture lies, times the ratio, within a device pixel of
// its line in the other.
void expectLinesScaled(const std::vector<InkRun>& one, const std::vector<InkRun>& other, double ratio, const char* what)
{
    ASSERT_EQ(one.size(), other.size()) << what;
    for (std::size_t i = 0; i < one.size(); ++i)
        EXPECT_NEAR(one[i].centre * ratio, other[i].centre, 1.0) << what << " " << i;
}

// Texts too, but for the half pixel by which the 1x picture may move a text
// to put its baseline on a whole pixel, which grows with the ratio. Their
// extent grows with the ratio too (by a pixel more or less at either size,
// for hinting): a font that kept its device pixel size would be `ratio` times too small.
void expectTextsScaled(const std::vector<InkRun>& one, const std::vector<InkRun>& other, double ratio, const char* what)
{
    ASSERT_EQ(one.size(), other.size()) << what;
    for (std::size_t i = 0; i < one.size(); ++i) {
        EXPECT_NEAR(one[i].centre * ratio, other[i].centre, 0.5 * ratio + 0.5) << what << " " << i;
        EXPECT_NEAR(one[i].width * ratio, other[i].width, ratio + 1.0) << what << " " << i;
    }
}

TEST_P(HighDpiTest, PictureHasTheRatiosPixelsAndTheSameLayout)
{
    const double ratio = GetParam();
    const QImage one = picture(1.0);
    const QImage scaled = picture(ratio);
    EXPECT_EQ(scaled.size(), (QSizeF(size) * ratio).toSize());
    EXPECT_EQ(scaled.devicePixelRatio(), ratio);

    const Marks at1 = marksOf(one, 1.0);
    const Marks atRatio = marksOf(scaled, ratio);
    ASSERT_EQ(at1.columns.size(), 2u) << OrvTest::saveImage(one, "one");
    // The top and bottom axes, and the bars' base line at 0 degC between them.
    ASSERT_EQ(at1.rows.size(), 3u) << OrvTest::saveImage(one, "one");
    expectLinesScaled(at1.columns, atRatio.columns, ratio, "vertical axis");
    expectLinesScaled(at1.rows, atRatio.rows, ratio, "horizontal line");
    EXPECT_EQ(at1.bottomLabels.size(), 7u) << "0 to 24 h by 4";
    EXPECT_EQ(at1.leftLabels.size(), 10u) << "-8 to 10 degC by 2";
    expectTextsScaled(at1.bottomLabels, atRatio.bottomLabels, ratio, "bottom tick label");
    expectTextsScaled(at1.leftLabels, atRatio.leftLabels, ratio, "left tick label");
    ASSERT_FALSE(at1.title.isEmpty());
    EXPECT_NEAR(at1.title.center().x() * ratio, atRatio.title.center().x(), 0.5 * ratio + 0.5);
    EXPECT_NEAR(at1.title.center().y() * ratio, atRatio.title.center().y(), 0.5 * ratio + 0.5);
    EXPECT_NEAR(at1.title.width() * ratio, atRatio.title.width(), ratio + 1.0);
    EXPECT_NEAR(at1.title.height() * ratio, atRatio.title.height(), ratio + 1.0);
}

// How many device pixels the air temperature's red covers: each pixel counts
// by how far it is from white to that red, read off how much redder than
// green it is (grey and black are neither).
double redCover(const QImage& image)
{
    double cover = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            const QRgb pixel = image.pixel(x, y);
            cover += std::max(0, qRed(pixel) - qGreen(pixel)) / double(airColour.red() - airColour.green());
        }
    return cover;
}

// A line one logical pixel wide is `ratio` device pixels wide: an axis holds ratio squared times the ink, a series
// line with its markers covers ratio squared times the pixels. A pen of width 0, which Qt keeps one device pixel
// thin at any ratio, is drawn one logical pixel wide, as a pen of width 1 is.
TEST_P(HighDpiTest, PensGrowWithTheRatio)
{
    const double ratio = GetParam();
    const double area = ratio * ratio;
    const std::vector<InkRun> axes1 = axisLines(picture(1.0), Qt::Vertical);
    const std::vector<InkRun> axesRatio = axisLines(picture(ratio), Qt::Vertical);
    ASSERT_EQ(axes1.size(), axesRatio.size());
    for (std::size_t i = 0; i < axes1.size(); ++i)
        EXPECT_NEAR(axesRatio[i].ink / axes1[i].ink, area, 0.1 * area) << "axis " << i;

    const double cover1 = redCover(picture(1.0, airAlone));
    ASSERT_GT(cover1, 1000);
    EXPECT_NEAR(redCover(picture(ratio, airAlone)) / cover1, area, 0.1 * area);

    const QStringList line = airAlone + QStringList{QStringLiteral("variable/T1/style/symbol=none")};
    const double one = redCover(picture(ratio, line + QStringList{QStringLiteral("variable/T1/style/lineWidth=1")}));
    const double hairline =
        redCover(picture(ratio, line + QStringList{QStringLiteral("variable/T1/style/lineWidth=0")}));
    ASSERT_GT(one, 300);
    EXPECT_NEAR(hairline / one, 1.0, 0.02);
}

INSTANTIATE_TEST_SUITE_P(Ratios, HighDpiTest, ::testing::Values(2.0, 1.5, 3.0),
                         [](const ::testing::TestParamInfo<double>& info) { return "x" + std::to_string(static_cast<int>(info.param * 10));
                         });

class HighDpiFileTest : public HighDpiTest {
protected:
    OrvTest::TempFolder folder;
};

// A PNG file at a pixel ratio holds the picture's pixels and says it has that
// many more per inch; SVG files do not depend on the ratio.
TEST_F(HighDpiFileTest, PngFileHoldsThePixelsOfItsRatio)
{
    const Chart::Plot plot(*chart, Chart::axisPairsOf(*chart), Chart::TickRoom{size, 100, {}});
    Chart::ChartPainter painter(plot, size);
    ASSERT_TRUE(painter.write(folder.path(QStringLiteral("one.svg"))));
    painter.setPixelRatio(2);
    ASSERT_TRUE(painter.write(folder.path(QStringLiteral("two.png"))));
    ASSERT_TRUE(painter.write(folder.path(QStringLiteral("two.svg"))));
    const QImage read(folder.path(QStringLiteral("two.png")));
    ASSERT_EQ(read.size(), QSize(1600, 1000));
    EXPECT_NEAR(read.dotsPerMeterX() * 0.0254, 192, 1);
    EXPECT_EQ(OrvTest::differingFraction(read.convertToFormat(QImage::Format_ARGB32),
                                         painter.image(2).convertToFormat(QImage::Format_ARGB32)),
              0.0);
    EXPECT_EQ(folder.read(QStringLiteral("one.svg")), folder.read(QStringLiteral("two.svg")));
}

} // namespace
