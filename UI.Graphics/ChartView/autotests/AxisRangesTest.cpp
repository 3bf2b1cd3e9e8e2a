// Pan and zoom written into the axes' properties, in scale coordinates.
#include "ViewFixture.h"

#include <limits>

namespace {

using Orv::Chart::AxisSpan;
using viewtest::ViewFixture;

class AxisRangesTest : public ViewFixture {};

TEST_F(AxisRangesTest, ASpanConvertsPixelsToScaleCoordinates)
{
    for (const AxisSpan& span : spans()) {
        const double extent = span.horizontal ? span.plot.width() : span.plot.height();
        EXPECT_NEAR(span.perPixel() * extent, span.max - span.min, 1e-9 * (span.max - span.min));
        const QPointF start = span.horizontal ? QPointF(span.plot.left(), span.plot.center().y())
                                              : QPointF(span.plot.center().x(), span.plot.bottom());
        EXPECT_NEAR(span.valueAt(start), span.min, 1e-9 * (span.max - span.min));
    }
}

TEST_F(AxisRangesTest, AnInvertedAxisRunsFromItsMaximumAndPansTheOtherWay)
{
    axis(QStringLiteral("axis.y.left")).inverted.set(true);
    navigator.reload();
    AxisSpan left{};
    for (const AxisSpan& span : spans())
        if (span.name == QStringLiteral("axis.y.left"))
            left = span;
    ASSERT_NE(left.axis, nullptr);
    ASSERT_TRUE(left.inverted);
    const double width = left.max - left.min;
    EXPECT_NEAR(left.valueAt(plot().bottomLeft()), left.max, 1e-9 * width);
    EXPECT_NEAR(left.valueAt(plot().topLeft()), left.min, 1e-9 * width);
    // Dragging down brings lower values into view on an inverted axis.
    ranges().pan(plot().center(), plot().center() + QPointF(0, 50));
    EXPECT_NEAR(left.axis->min.get(), left.min - 50 * left.perPixel(), 1e-9 * width);
    EXPECT_NEAR(left.axis->max.get(), left.max - 50 * left.perPixel(), 1e-9 * width);
}

TEST_F(AxisRangesTest, ZoomsTheScaleCannotShowLeaveTheAxesAsTheyAre)
{
    const std::vector<double> before = settings();
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double inf = std::numeric_limits<double>::infinity();
    for (const double factor : {0.0, -0.5, nan, inf, 1e-300}) {
        ranges().zoom(plot().center(), factor);
        EXPECT_EQ(settings(), before) << "factor " << factor;
    }
}

TEST_F(AxisRangesTest, ABandOnePixelThinLeavesThatAxisAlone)
{
    const std::vector<double> before = settings();
    const auto spansBefore = spans();
    ranges().zoomTo(QRectF(plot().center(), QSizeF(0.5, 100)));
    const std::vector<double> after = settings();
    ASSERT_EQ(after.size(), before.size());
    for (std::size_t i = 0; i < spansBefore.size(); ++i) {
        if (spansBefore[i].horizontal)
            EXPECT_EQ(std::vector<double>(after.begin() + 3 * i, after.begin() + 3 * i + 3),
                      std::vector<double>(before.begin() + 3 * i, before.begin() + 3 * i + 3))
                << "x untouched";
        else
            EXPECT_EQ(after[3 * i], 0.0) << "y zoomed";
    }
}

} // namespace
