// Lines drawn as separate segments look like Qt's polylines: a dense zig-zag
// as a series draws in every pixel column, and a sparse line with sharp turns
// and a full reversal, each with a thin and a broad pen. Only antialiased
// edges where segments overlap may differ, never a pixel that one picture
// covers and the other leaves empty. Pens and devices that keep the polyline
// draw exactly it. The frames of a view keep their interactive mode across
// new scales and data.

#include "ChartFrames.h"
#include "ChartSetUp.h"
#include "DataBinding.h"
#include "LineStroke_p.h"

#include "ImageChecks.h"

#include "KelChart2D.h"

#include <QImage>
#include <QPainter>
#include <QPicture>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <functional>
#include <random>
#include <string>
#include <tuple>

namespace {

namespace Chart = Orv::Chart;
using Joins = Chart::LineStroke::Joins;

const QColor penColour(0x10, 0x30, 0xd0);
constexpr QSize imageSize(400, 300);

// Per column the first, lowest, highest and last point of a random walk, as a decimated view gives them.
QPolygonF denseZigZag()
{
    std::mt19937 random(7);
    std::normal_distribution<double> step(0.0, 6.0);
    QPolygonF line;
    double y = 150;
    for (int column = 0; column < 360; ++column) {
        const double x = 20 + column + 0.1 * (column % 7);
        const double a = y + step(random);
        const double b = y + step(random);
        line << QPointF(x, y) << QPointF(x + 0.2, std::min(a, b)) << QPointF(x + 0.5, std::max(a, b));
        y = std::clamp(y + step(random), 40.0, 260.0);
        line << QPointF(x + 0.8, y);
    }
    return line;
}

// Acute turns both ways, right angles and a line that runs back on itself at its end.
QPolygonF sharpTurns()
{
    const double corners[] = {20,  260, 90,  30,  110, 270, 190, 40,  192.5, 250, 260, 250,
                              260, 60,  380, 120, 300, 120, 360, 200, 380,   280, 330, 280};
    QPolygonF line;
    for (std::size_t i = 0; i + 1 < std::size(corners); i += 2)
        line << QPointF(corners[i], corners[i + 1]);
    return line;
}

QImage drawn(const std::function<void(QPainter&)>& draw, const QPen& pen)
{
    QImage image(imageSize, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(pen);
    draw(painter);
    return image;
}

QImage polyline(const QPolygonF& line, const QPen& pen)
{
    return drawn([&](QPainter& painter) { painter.drawPolyline(line); }, pen);
}

QImage stroked(const QPolygonF& line, const QPen& pen, Joins joins)
{
    return drawn([&](QPainter& painter) { Chart::LineStroke::drawLine(painter, line, joins); }, pen);
}

QPen seriesPen(double width, const QColor& colour = penColour)
{
    return QPen(colour, width, Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin);
}

bool covered(QRgb pixel)
{
    return OrvTest::colorMatches(pixel, penColour, 24);
}

bool empty(QRgb pixel, int tolerance = 24)
{
    return OrvTest::colorMatches(pixel, Qt::white, tolerance);
}

// Pixels where `drawn` shows something that `reference` leaves quite empty.
int drawnOutside(const QImage& reference, const QImage& drawn, bool (*isEmpty)(QRgb), bool (*isDrawn)(QRgb))
{
    int count = 0;
    for (int y = 0; y < reference.height(); ++y)
        for (int x = 0; x < reference.width(); ++x)
            count += isEmpty(reference.pixel(x, y)) && isDrawn(drawn.pixel(x, y)) ? 1 : 0;
    return count;
}

struct StrokeCase {
    const char* name;
    QPolygonF (*line)();
    double width;
};

int drawnPixels(const QImage& image)
{
    return image.width() * image.height() - OrvTest::countPixels(image, Qt::white);
}

class SegmentStrokeTest : public ::testing::TestWithParam<StrokeCase> {};

// Joined by the pen, the segments look like the polyline: a missing join, a cap where none belongs or a misplaced
// segment covers what the other leaves empty. Without joins the line loses the rounding of its turns and nothing
// else, and covers nothing the polyline leaves empty.
TEST_P(SegmentStrokeTest, LooksLikeThePolylineOrLosesOnlyItsJoins)
{
    const QPolygonF line = GetParam().line();
    const QPen pen = seriesPen(GetParam().width);
    const QImage expected = polyline(line, pen);
    const QImage actual = stroked(line, pen, Joins::Pen);
    EXPECT_LT(OrvTest::differingFraction(expected, actual, 16), 0.01) << OrvTest::saveImage(actual, "segments");
    const auto isEmpty = [](QRgb pixel) { return empty(pixel); };
    EXPECT_EQ(drawnOutside(expected, actual, isEmpty, covered) + drawnOutside(actual, expected, isEmpty, covered), 0)
        << OrvTest::saveImage(expected, "polyline") << " " << OrvTest::saveImage(actual, "segments");

    const QImage plain = stroked(line, pen, Joins::Plain);
    const auto whollyEmpty = [](QRgb pixel) { return empty(pixel, 0); };
    const auto anyInk = [](QRgb pixel) { return !empty(pixel); };
    EXPECT_EQ(drawnOutside(expected, plain, whollyEmpty, anyInk), 0) << OrvTest::saveImage(plain, "plain");
    EXPECT_GT(drawnPixels(plain), 0.85 * drawnPixels(expected)) << OrvTest::saveImage(plain, "plain");
}

INSTANTIATE_TEST_SUITE_P(Lines, SegmentStrokeTest,
                         ::testing::Values(StrokeCase{"DenseThin", denseZigZag, 1.5},
                                           StrokeCase{"DenseBroad", denseZigZag, 4},
                                           StrokeCase{"SparseThin", sharpTurns, 1.5},
                                           StrokeCase{"SparseBroad", sharpTurns, 6}),
                         [](const auto& info) { return std::string(info.param.name); });

QPen dashed()
{
    QPen pen = seriesPen(2);
    pen.setDashPattern({4, 3});
    return pen;
}

struct KeptCase {
    const char* name;
    QPen pen;
};

class PolylineKeptTest : public ::testing::TestWithParam<std::tuple<KeptCase, Joins>> {};

// Dashes run on along the line, and overlapping translucent segments would show darker joints.
TEST_P(PolylineKeptTest, DrawsExactlyThePolyline)
{
    const auto& [kept, joins] = GetParam();
    for (const QPolygonF& line : {denseZigZag(), sharpTurns()})
        EXPECT_EQ(stroked(line, kept.pen, joins), polyline(line, kept.pen)) << kept.name;
}

INSTANTIATE_TEST_SUITE_P(
    Pens, PolylineKeptTest,
    ::testing::Combine(::testing::Values(KeptCase{"Hairline", seriesPen(1)}, KeptCase{"Dashed", dashed()},
                                         KeptCase{"Translucent", seriesPen(2, QColor(0x10, 0x30, 0xd0, 0x80))}),
                       ::testing::Values(Joins::Pen, Joins::Plain)),
    [](const auto& info) {
        return std::string(std::get<0>(info.param).name) + (std::get<1>(info.param) == Joins::Pen ? "Pen" : "Plain");
    });

// A vector device records the one polyline, however the line is to be joined.
TEST(LineStrokeTest, VectorDevicesGetOnePolyline)
{
    const auto recorded = [](const std::function<void(QPainter&)>& draw) {
        QPicture picture;
        QPainter painter(&picture);
        painter.setPen(seriesPen(3));
        draw(painter);
        painter.end();
        return QByteArray(picture.data(), static_cast<int>(picture.size()));
    };
    EXPECT_EQ(recorded([](QPainter& p) { Chart::LineStroke::drawLine(p, denseZigZag(), Joins::Plain); }),
              recorded([](QPainter& p) { p.drawPolyline(denseZigZag()); }));
}

// A dense walk in a chart set up as for a CSV file, whose lines are wider than a pixel.
void bindWalk(KelChart2D& chart)
{
    Chart::DataSeries series;
    series.x = {QStringLiteral("t"), {}, {}, {}};
    series.y = {QStringLiteral("walk"), {}, {}, {}};
    std::mt19937 random(3);
    std::normal_distribution<float> step;
    float y = 0;
    for (int i = 0; i < 20000; ++i) {
        series.x.append(static_cast<float>(i), false);
        series.y.append(y += step(random), false);
    }
    Chart::DataSet data;
    data.series.push_back(std::move(series));
    Chart::setUpChartForData(chart, data, QStringLiteral("walk"));
    Chart::bindData(chart.variables, Chart::axisPairsOf(chart), std::move(data));
}

QImage frame(const Chart::ChartFrames& frames)
{
    QImage image(frames.size(), QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&image);
    frames.paint(painter);
    return image;
}

TEST(InteractiveFramesTest, ModeSurvivesNewScalesAndData)
{
    KelModifiedGroup group;
    KelChart2D chart(group);
    bindWalk(chart);
    Chart::ChartFrames frames(chart, Chart::axisPairsOf(chart));
    frames.rescale(imageSize);
    const QImage settled = frame(frames);
    frames.setInteractive(true);
    const QImage interactive = frame(frames);
    EXPECT_NE(interactive, settled);
    frames.rescale(imageSize);
    EXPECT_EQ(frame(frames), interactive);
    frames.reload();
    EXPECT_EQ(frame(frames), interactive);
    EXPECT_TRUE(frames.interactive());
    frames.setInteractive(false);
    EXPECT_EQ(frame(frames), settled);
}

} // namespace
