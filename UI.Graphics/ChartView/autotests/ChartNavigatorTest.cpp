// Gestures as positions, angles and buttons: the ranges, history, hover,
// frames and kept picture they leave behind.
#include "ChartOverlays.h"
#include "ViewFixture.h"

#include "KelChartVariable.h"

#include <QSignalSpy>
#include <QTest>

#include <algorithm>

namespace {

using Orv::Chart::ChartNavigator;
using Orv::Chart::ViewState;
using viewtest::ViewFixture;

class ChartNavigatorTest : public ViewFixture {};

TEST(ChartNavigatorWithoutChart, IgnoresEveryGesture)
{
    ChartNavigator navigator([] { return QSize(400, 300); });
    const QSignalSpy ranges(&navigator, &ChartNavigator::rangesChanged);
    const QPointF centre(200, 150);
    EXPECT_TRUE(navigator.wheel(centre, 120));
    navigator.pinch(centre, 2);
    EXPECT_FALSE(navigator.press(centre, Qt::LeftButton, Qt::NoModifier));
    navigator.move(centre + QPointF(40, 0));
    navigator.release(centre + QPointF(40, 0));
    navigator.doubleClick(centre);
    navigator.zoomIn();
    navigator.fitY();
    EXPECT_EQ(ranges.count(), 0);
    EXPECT_TRUE(navigator.readOut().isEmpty());
    EXPECT_EQ(navigator.picture(1).pixelColor(5, 5), QColor(Qt::white));
}

TEST_F(ChartNavigatorTest, WheelNotchesOfOneGestureMakeOneViewAndSettleAfterARest)
{
    const QSignalSpy ranges(&navigator, &ChartNavigator::rangesChanged);
    for (int notch = 0; notch < 3; ++notch)
        EXPECT_TRUE(navigator.wheel(plot().center(), 120));
    EXPECT_EQ(ranges.count(), 3);
    EXPECT_EQ(navigator.history().size(), 2u);
    EXPECT_TRUE(frames().interactive());
    EXPECT_TRUE(QTest::qWaitFor([&] { return !frames().interactive(); }, 2000));
    navigator.back();
    EXPECT_TRUE(ViewState::of(frames().pairs()) == navigator.history().home());
}

TEST_F(ChartNavigatorTest, APinchZoomsAsTheWheelDoesAndOverTitleOrLegendTheWheelDoesNothing)
{
    navigator.wheel(plot().center(), 120);
    const std::vector<double> wheeled = settings();
    navigator.home();
    navigator.pinch(plot().center(), 1 / 0.8);
    const std::vector<double> pinched = settings();
    ASSERT_EQ(pinched.size(), wheeled.size());
    for (std::size_t i = 0; i < pinched.size(); ++i)
        EXPECT_NEAR(pinched[i], wheeled[i], 1e-9 * (1 + std::abs(wheeled[i])));
    const std::vector<double> before = settings();
    EXPECT_FALSE(navigator.wheel(QPointF(size.width() / 2.0, 3), 120)) << "over the title";
    EXPECT_EQ(settings(), before);
}

TEST_F(ChartNavigatorTest, ADragPansByTheWholeDragFromThePressAndSettlesOnRelease)
{
    const QPointF from = plot().center();
    navigator.press(from, Qt::LeftButton, Qt::NoModifier);
    for (int step = 1; step <= 10; ++step)
        navigator.move(from + QPointF(7.3 * step, -2.1 * step));
    EXPECT_TRUE(frames().interactive());
    navigator.release(from + QPointF(73, -21));
    EXPECT_FALSE(frames().interactive());
    const std::vector<double> dragged = settings();
    navigator.home();
    navigator.pan(from, from + QPointF(73, -21));
    EXPECT_EQ(settings(), dragged);
    EXPECT_EQ(navigator.history().size(), 3u) << "Home, the drag, Home again";
}

TEST_F(ChartNavigatorTest, ABandZoomsOnReleaseAndACancelledOneLeavesTheRanges)
{
    const std::vector<double> before = settings();
    const QRectF band(plot().center(), QSizeF(100, 80));
    navigator.press(band.topLeft(), Qt::LeftButton, Qt::ShiftModifier);
    navigator.move(band.bottomRight());
    EXPECT_EQ(navigator.drag(), ChartNavigator::Drag::Band);
    EXPECT_EQ(navigator.band(), band);
    EXPECT_TRUE(navigator.cancelBand());
    EXPECT_FALSE(navigator.cancelBand());
    navigator.release(band.bottomRight());
    EXPECT_EQ(settings(), before);

    navigator.press(band.topLeft(), Qt::RightButton, Qt::NoModifier);
    navigator.release(band.bottomRight());
    const std::vector<double> zoomed = settings();
    navigator.home();
    ranges().zoomTo(band);
    EXPECT_EQ(settings(), zoomed);
}

TEST_F(ChartNavigatorTest, ALegendClickTogglesItsSeriesAndNoDragFollows)
{
    const QSignalSpy toggled(&navigator, &ChartNavigator::seriesToggled);
    const QSignalSpy reloaded(&navigator, &ChartNavigator::reloaded);
    const QPointF entry = frames().layout().legendCell(0).center();
    const QString name = frames().layout().legendVariables()[0]->name();
    ASSERT_TRUE(navigator.press(entry, Qt::LeftButton, Qt::NoModifier));
    EXPECT_EQ(navigator.drag(), ChartNavigator::Drag::None);
    ASSERT_EQ(toggled.count(), 1);
    EXPECT_EQ(toggled[0][0].toString(), name);
    EXPECT_FALSE(toggled[0][1].toBool());
    EXPECT_EQ(reloaded.count(), 1);
    EXPECT_FALSE(dynamic_cast<KelChartVariable&>(*chart->variables.at(name)).enabled.get());
    // The hidden series keeps a faded entry, wherever the legend now puts it.
    const auto& entries = frames().layout().legendVariables();
    const auto again = std::find_if(entries.begin(), entries.end(), [&](auto* v) { return v->name() == name; });
    ASSERT_NE(again, entries.end());
    navigator.press(frames().layout().legendCell(std::size_t(again - entries.begin())).center(), Qt::LeftButton,
                    Qt::NoModifier);
    EXPECT_TRUE(dynamic_cast<KelChartVariable&>(*chart->variables.at(name)).enabled.get());
}

TEST_F(ChartNavigatorTest, ThePictureIsKeptUnderHoverAndDrawnAgainForANewFrame)
{
    const qint64 first = navigator.picture(1).cacheKey();
    const QSignalSpy hover(&navigator, &ChartNavigator::hoverChanged);
    navigator.move(plot().center());
    EXPECT_EQ(hover.count(), 1);
    EXPECT_FALSE(navigator.readOut().isEmpty());
    EXPECT_FALSE(navigator.hits().empty());
    EXPECT_EQ(navigator.picture(1).cacheKey(), first) << "hover draws over the kept picture";
    navigator.wheel(plot().center(), -120);
    EXPECT_NE(navigator.picture(1).cacheKey(), first);
    EXPECT_EQ(navigator.picture(2).size(), QSize(1600, 1200));
    EXPECT_EQ(navigator.picture(2).devicePixelRatio(), 2.0);
    navigator.clearHover();
    EXPECT_TRUE(navigator.readOut().isEmpty());
}

TEST_F(ChartNavigatorTest, OverlaysShowTheHoverOrTheBandAndNothingWithoutEither)
{
    const auto drawn = [&] {
        QImage image(size, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::white);
        QPainter painter(&image);
        Orv::Chart::ChartOverlays::paintAll(painter, navigator, size);
        painter.end();
        int marked = 0;
        for (int y = 0; y < image.height(); y += 2)
            for (int x = 0; x < image.width(); x += 2)
                marked += image.pixel(x, y) != qRgb(255, 255, 255) ? 1 : 0;
        return marked;
    };
    EXPECT_EQ(drawn(), 0);
    navigator.move(plot().center());
    const int hovered = drawn();
    EXPECT_GT(hovered, 100) << "crosshair, rings and box";
    navigator.press(plot().center(), Qt::RightButton, Qt::NoModifier);
    navigator.move(plot().center() + QPointF(200, 100));
    EXPECT_GT(drawn(), 100 * 50 / 2) << "the band's fill";
}

} // namespace
