#include "KelChartDecimatedView.h"

#include "OrvDebug.h"

#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <numeric>
#include <random>
#include <set>

namespace {

using View = KelChartDecimatedView;
using Indices = std::vector<std::size_t>;
constexpr float nan = std::numeric_limits<float>::quiet_NaN();
constexpr std::size_t cut = View::breakMark;

class DecimatedViewTest : public ::testing::Test {
protected:
    const KelChartVariableCache& cacheOf(std::vector<float> x, std::vector<float> y, bool sort = true,
                                         std::vector<bool> yUndefined = {})
    {
        variable.variableiter.setVector2Data(std::move(x), std::move(y), {}, std::move(yUndefined));
        cache = std::make_unique<KelChartVariableCache>(variable, sort, QStringList());
        return *cache;
    }
    // Points at x = 0, 1, ... with the given y.
    const KelChartVariableCache& series(std::vector<float> y, std::vector<bool> yUndefined = {})
    {
        std::vector<float> x(y.size());
        for (std::size_t k = 0; k < x.size(); ++k)
            x[k] = float(k);
        return cacheOf(std::move(x), std::move(y), true, std::move(yUndefined));
    }

    KelModifiedGroup group;
    KelChartVariable variable{group};
    std::unique_ptr<KelChartVariableCache> cache;
};

TEST_F(DecimatedViewTest, OneColumnKeepsFirstLowestHighestAndLast)
{
    View view(series({5, 3, 9, 1, 4, 8, 6}));
    EXPECT_EQ(view.lines(-0.5, 6.5, 1), (Indices{0, 2, 3, 6}));
}

TEST_F(DecimatedViewTest, KeepsOnePointBeyondEachEnd)
{
    std::vector<float> y(100);
    std::iota(y.begin(), y.end(), 0.0f);
    View view(series(y));
    EXPECT_EQ(view.lines(49.5, 52.5, 3), (Indices{49, 50, 51, 52, 53}));
    EXPECT_EQ(view.lines(-10, 0.5, 1), (Indices{0, 1}));
    EXPECT_EQ(view.lines(98.5, 120, 4), (Indices{98, 99}));
    // Wholly outside: the line across the view, or the nearest point.
    EXPECT_EQ(view.lines(10.2, 10.8, 5), (Indices{10, 11}));
    EXPECT_EQ(view.lines(200, 300, 5), (Indices{99}));
    EXPECT_EQ(view.lines(-300, -200, 5), (Indices{0}));
    // Mirrored.
    EXPECT_EQ(view.lines(52.5, 49.5, 3), (Indices{49, 50, 51, 52, 53}));
}

TEST_F(DecimatedViewTest, BreaksAtUndefinedAndNaNPoints)
{
    std::vector<bool> undefined(15, false);
    undefined[5] = true;
    View view(series({0, 2, 1, 3, 4, 5, 7, 9, 8, nan, 10, 12, 11, 13, 14}, undefined));
    // The point without y is left out of the cache: index 5 is x = 6, the NaN is at index 8.
    EXPECT_EQ(view.lines(-0.5, 14.5, 1), (Indices{0, 4, cut, 5, 6, 7, cut, 9, 13}));
    EXPECT_EQ(view.lines(-0.5, 14.5, 15), (Indices{0, 1, 2, 3, 4, cut, 5, 6, 7, cut, 9, 10, 11, 12, 13}));
}

TEST_F(DecimatedViewTest, SeriesWithoutDrawablePoints)
{
    EXPECT_EQ(View(series(std::vector<float>(1000, nan))).lines(0, 1000, 10), Indices{});
    EXPECT_EQ(View(series(std::vector<float>(1000, 1.0f), std::vector<bool>(1000, true))).lines(0, 1000, 10), Indices{});
    EXPECT_EQ(View(KelChartVariableCache()).lines(0, 1, 10), Indices{});
    std::vector<float> every2nd(1000, 1.0f);
    for (std::size_t k = 0; k < every2nd.size(); k += 2)
        every2nd[k] = nan;
    const Indices lone = View(series(every2nd)).lines(0, 1000, 10);
    EXPECT_EQ(lone.size(), 999u);
    EXPECT_EQ(std::count(lone.begin(), lone.end(), cut), 499);
}

TEST_F(DecimatedViewTest, BadRequestsAreReportedAndGiveNothing)
{
    View view(series({1, 2, 3}));
    orvdebug::ScopedCapture capture(kel::debug_logger::debuglogger());
    EXPECT_EQ(view.lines(0, 2, 0), Indices{});
    EXPECT_EQ(view.lines(1, 1, 10), Indices{});
    EXPECT_EQ(view.lines(0, std::numeric_limits<double>::infinity(), 10), Indices{});
    EXPECT_EQ(view.lines(-0.5, 2.5, std::numeric_limits<long>::max()), (Indices{0, 1, 2}));
    EXPECT_EQ(view.points(View::Placement{}), Indices{});
    EXPECT_EQ(capture.texts(orvdebug::Stream::Err).size(), 5u);
}

// A random walk drawn with a 1-pixel pen, in full and through the view.
struct WalkCase {
    bool sorted;
    bool snapped;
    std::size_t size;
    bool mirrored = false;
};

class DecimatedPixelTest : public DecimatedViewTest, public ::testing::WithParamInterface<WalkCase> {
protected:
    static constexpr int imageWidth = 640;
    static constexpr int imageHeight = 360;

    void SetUp() override
    {
        std::mt19937 random(7);
        std::normal_distribution<float> step;
        std::vector<float> x(GetParam().size), y(GetParam().size);
        for (std::size_t k = 1; k < y.size(); ++k) {
            y[k] = y[k - 1] + step(random);
            x[k] = GetParam().sorted ? float(k) : x[k - 1] + step(random) * 10.0f;
        }
        const auto [yLow, yHigh] = std::minmax_element(y.begin(), y.end());
        const auto [xLow, xHigh] = std::minmax_element(x.begin(), x.end());
        // A view a little inside the data, so that lines leave it.
        const float xFrom = *xLow * 0.9f + *xHigh * 0.1f;
        placement.matrix = GetParam().mirrored ? Orv::Math::DoubleMatrix::ortho(*xHigh, xFrom, *yLow, *yHigh, -1, 1)
                                               : Orv::Math::DoubleMatrix::ortho(xFrom, *xHigh, *yLow, *yHigh, -1, 1);
        placement.left = 20;
        placement.bottom = imageHeight - 20;
        placement.width = imageWidth - 40;
        placement.height = imageHeight - 40;
        cacheOf(std::move(x), std::move(y), GetParam().sorted);
    }
    QPointF pixel(std::size_t k) const
    {
        const auto at = placement.matrix.map(cache->x()[k], cache->y()[k], 0.0);
        const QPointF p(placement.left + (at.x + 1.0) / 2.0 * placement.width,
                        placement.bottom - (at.y + 1.0) / 2.0 * placement.height);
        return GetParam().snapped ? QPointF(std::floor(p.x()) + 0.5, std::floor(p.y()) + 0.5) : p;
    }
    QImage draw(const Indices& indices) const
    {
        QImage image(imageWidth, imageHeight, QImage::Format_Grayscale8);
        image.fill(Qt::white);
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing, !GetParam().snapped);
        painter.setPen(QPen(Qt::black, 1.0));
        painter.setClipRect(QRectF(placement.left, placement.bottom - placement.height, placement.width, placement.height));
        QPolygonF line;
        for (const std::size_t k : indices) {
            if (k != cut)
                line << pixel(k);
            if (k == cut || &k == &indices.back()) {
                painter.drawPolyline(line);
                line.clear();
            }
        }
        return image;
    }

    View::Placement placement;
};

TEST_P(DecimatedPixelTest, DrawsTheFullPicture)
{
    Indices all(cache->x().size());
    std::iota(all.begin(), all.end(), 0);
    const Indices kept = View(*cache).lines(placement);
    if (GetParam().sorted) {
        EXPECT_LT(kept.size(), 4u * imageWidth + 4);
    }
    const QImage full = draw(all);
    const QImage reduced = draw(kept);
    if (GetParam().snapped) {
        EXPECT_TRUE(full == reduced);
        return;
    }
    int differing = 0;
    for (int row = 0; row < imageHeight; ++row)
        for (int column = 0; column < imageWidth; ++column) {
            if (std::abs(qGray(full.pixel(column, row)) - qGray(reduced.pixel(column, row))) <= 2)
                continue;
            ++differing;
            bool nearStroke = false;
            for (int dy = -1; dy <= 1; ++dy)
                for (int dx = -1; dx <= 1; ++dx)
                    nearStroke = nearStroke || (full.valid(column + dx, row + dy) && qGray(full.pixel(column + dx, row + dy)) < 255);
            EXPECT_TRUE(nearStroke) << column << ", " << row;
        }
    EXPECT_LE(differing, imageWidth * imageHeight / 500);
}

INSTANTIATE_TEST_SUITE_P(Walks, DecimatedPixelTest,
                         ::testing::Values(WalkCase{true, true, 1000000}, WalkCase{true, false, 1000000},
                                           WalkCase{false, true, 100000},
                                           WalkCase{true, true, 100000, true}));

TEST_P(DecimatedPixelTest, PointsKeepOnePerOccupiedCell)
{
    const auto cellOf = [&](std::size_t k) {
        const QPointF p = pixel(k);
        return std::make_pair(std::floor(p.x()), std::floor(p.y()));
    };
    const Indices kept = View(*cache).points(placement);
    std::set<std::pair<double, double>> cells;
    for (std::size_t k = 0; k < cache->x().size(); ++k) {
        const QPointF p = pixel(k);
        if (p.x() >= 20 && p.x() < imageWidth - 19 && p.y() >= 20 && p.y() < imageHeight - 19)
            cells.insert(cellOf(k));
    }
    std::set<std::pair<double, double>> keptCells;
    for (const std::size_t k : kept)
        keptCells.insert(cellOf(k));
    EXPECT_EQ(kept.size(), cells.size());
    EXPECT_EQ(keptCells, cells);
    EXPECT_TRUE(std::is_sorted(kept.begin(), kept.end()));
}

TEST_P(DecimatedPixelTest, SummaryIsSmall)
{
    const View view(*cache);
    EXPECT_EQ(view.ordered(), GetParam().sorted);
    EXPECT_LE(view.summaryBytes() * 8, 2 * sizeof(double) * cache->x().size());
}

} // namespace
