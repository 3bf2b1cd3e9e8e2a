// What the hover tells of the cursor's position and the points near it.
#include "HoverText.h"
#include "ViewFixture.h"

#include "KelChartAxisTime.h"

#include <QRegularExpression>

#include <cstdint>

namespace {

using Orv::Chart::AxisSpan;
using viewtest::dataOf;
using viewtest::ViewFixture;

class HoverTextTest : public ViewFixture {
protected:
    // Points at these microseconds after 2012-03-04 00:00:00 UTC on a time axis.
    void showTimes(const std::vector<float>& ys, std::initializer_list<std::int64_t> micros)
    {
        Orv::Chart::DataSet data = dataOf(std::vector<float>(ys.size(), 0), ys);
        data.timeX = true;
        for (const std::int64_t after : micros)
            data.xTimes.push_back({1330819200LL * 1000000 + after, true});
        showData(data);
    }
    Orv::Chart::HoverText::Hover at(double share) const
    {
        return Orv::Chart::HoverText::at(frames(),
                                         QPointF(plot().left() + share * plot().width(), plot().center().y()));
    }
};

TEST_F(HoverTextTest, HoverOnATimeAxisNamesTheInstantInItsZoneAndPrecision)
{
    showTimes({1, 5, 2}, {0, 3600LL * 1000000, 7200LL * 1000000});
    const QStringList lines = Orv::Chart::HoverText::lines(frames(), QPointF(plot().left() + 1, plot().center().y()));
    ASSERT_EQ(lines.size(), 1);
    EXPECT_EQ(lines[0], QStringLiteral("y: x = 2012-03-04 00:00:00 UTC, y = 1")) << lines[0].toStdString();
    const QStringList last = Orv::Chart::HoverText::lines(frames(), QPointF(plot().right() - 1, plot().center().y()));
    ASSERT_EQ(last.size(), 1);
    EXPECT_TRUE(last[0].startsWith(QStringLiteral("y: x = 2012-03-04 02:00:00"))) << last[0].toStdString();

    // Instants read in the axis's zone, to the fraction of a second they carry; the cursor's own position to what
    // one pixel tells apart.
    showTimes({1, 3, 2}, {0, 250000, 500000});
    dynamic_cast<KelChartAxisTime&>(*frames().pairs().find(QStringLiteral("axis.x.bottom")))
        .timeZone.set(QStringLiteral("Europe/Berlin"));
    navigator.reload();
    const Orv::Chart::HoverText::Hover first = at(0.001);
    ASSERT_EQ(first.hits.size(), 1u);
    EXPECT_EQ(first.hits[0].line, QStringLiteral("y: x = 2012-03-04 01:00:00 CET, y = 1"));
    const Orv::Chart::HoverText::Hover middle = at(0.5);
    ASSERT_EQ(middle.hits.size(), 1u);
    EXPECT_EQ(middle.hits[0].line, QStringLiteral("y: x = 2012-03-04 01:00:00.250 CET, y = 3"));
    // Half a second over some hundred pixels: milliseconds, in the zone.
    EXPECT_TRUE(middle.readOut.startsWith(QStringLiteral("x = 2012-03-04 01:00:00.25")))
        << middle.readOut.toStdString();
    EXPECT_TRUE(middle.readOut.contains(QStringLiteral("CET"))) << middle.readOut.toStdString();
}

// The sample's pressure sensor has gaps: no line says "nan" anywhere along the plot.
TEST_F(HoverTextTest, GapsInASeriesNeverReadAsNan)
{
    for (double x = plot().left() + 1; x < plot().right(); x += 3) {
        const QStringList lines = Orv::Chart::HoverText::lines(frames(), QPointF(x, plot().center().y()));
        EXPECT_TRUE(lines.filter(QStringLiteral("nan"), Qt::CaseInsensitive).isEmpty())
            << lines.join('\n').toStdString();
    }
}

TEST_F(HoverTextTest, TheReadOutShowsTheDigitsAPixelTellsApart)
{
    const QPointF cursor = plot().center();
    const QString wide = Orv::Chart::HoverText::at(frames(), cursor).readOut;
    // 24 h over some 500 px: tenths of an hour; 18 degC over ~400 px: hundredths.
    EXPECT_TRUE(wide.contains(QRegularExpression(QStringLiteral("^time = \\d+\\.\\d{2} h, period = \\w+, "
                                                                "temperature = -?\\d+\\.\\d{2} degC, "
                                                                "pressure = \\d+\\.\\d{3} kPa$"))))
        << wide.toStdString();
    for (int notch = 0; notch < 10; ++notch)
        navigator.wheel(cursor, 120);
    const QString deep = Orv::Chart::HoverText::at(frames(), cursor).readOut;
    EXPECT_TRUE(deep.contains(QRegularExpression(QStringLiteral("^time = \\d+\\.\\d{3} h")))) << deep.toStdString();
}

TEST_F(HoverTextTest, HoverOnAnInvertedAxisNamesThePointDrawnThere)
{
    showData(dataOf({1, 2, 3, 4}, {10, 20, 30, 40}));
    axis(QStringLiteral("axis.x.bottom")).inverted.set(true);
    navigator.reload();
    const QStringList lines = Orv::Chart::HoverText::lines(frames(), QPointF(plot().left() + 1, plot().center().y()));
    ASSERT_EQ(lines.size(), 1);
    EXPECT_EQ(lines[0], QStringLiteral("y: x = 4, y = 40"));
}

TEST_F(HoverTextTest, HoverOnUnsortedPointsNamesTheNearestOnScreen)
{
    // x goes back and forth: the nearest point is found by screen distance.
    showData(dataOf({1, 5, 2, 4}, {10, 50, 20, 40}));
    auto pixelOf = [&](double x, double y) {
        QPointF pixel;
        for (const AxisSpan& span : spans()) {
            const double t = ((span.horizontal ? x : y) - span.min) / (span.max - span.min);
            if (span.horizontal)
                pixel.setX(span.plot.left() + t * span.plot.width());
            else
                pixel.setY(span.plot.bottom() - t * span.plot.height());
        }
        return pixel;
    };
    const QStringList lines = Orv::Chart::HoverText::lines(frames(), pixelOf(2.1, 21) + QPointF(0.5, 0.5));
    ASSERT_EQ(lines.size(), 1);
    EXPECT_EQ(lines[0], QStringLiteral("y: x = 2, y = 20"));
}

TEST_F(HoverTextTest, SeriesWithoutAPointToNameGetNoLine)
{
    // The second series has no defined point at all.
    Orv::Chart::DataSet data = dataOf({1, 2, 3}, {1, 2, 3});
    Orv::Chart::DataSet empty = dataOf({1, 2, 3}, {NAN, NAN, NAN});
    empty.series[0].y.name = QStringLiteral("z");
    data.series.push_back(empty.series[0]);
    showData(data);
    const QStringList lines = Orv::Chart::HoverText::lines(frames(), plot().center());
    ASSERT_EQ(lines.size(), 1) << lines.join(QLatin1Char('\n')).toStdString();
    EXPECT_TRUE(lines[0].startsWith(QStringLiteral("y: ")));
}

} // namespace
