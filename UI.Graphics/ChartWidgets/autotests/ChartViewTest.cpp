// The chart widget beyond the plain gestures: what it draws (no chart, the
// rubber band, the hover box, overlays over the kept picture), gestures that
// must change nothing, and when frames are painted again.
#include "ChartWidget.h"
#include "DataBinding.h"
#include "HoverText.h"
#include "SampleChart.h"
#include "ViewState.h"

#include <QApplication>
#include <QImage>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QSignalSpy>
#include <QTest>
#include <QWheelEvent>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <memory>

namespace {

using Orv::Chart::ChartWidget;

void mouse(QWidget& widget, QEvent::Type type, QPointF at, Qt::MouseButton button)
{
    const Qt::MouseButtons held = type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::MouseButtons(button);
    QMouseEvent event(type, at, widget.mapToGlobal(at.toPoint()), button, held, Qt::NoModifier);
    QApplication::sendEvent(&widget, &event);
}

void wheel(QWidget& widget, QPointF at, QPoint angle)
{
    QWheelEvent event(at, widget.mapToGlobal(at.toPoint()), QPoint(), angle, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(&widget, &event);
}

void key(QWidget& widget, int key)
{
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
    QApplication::sendEvent(&widget, &event);
}

// Without a chart every gesture is ignored and the widget says that there is nothing to draw.
TEST(ChartWidgetWithoutChart, IgnoresGesturesAndSaysSo)
{
    ChartWidget view;
    view.resize(400, 300);
    const QSignalSpy ranges(&view, &ChartWidget::rangesChanged);
    const QSignalSpy hover(&view, &ChartWidget::hoverChanged);
    const QPointF centre(200, 150);
    wheel(view, centre, QPoint(0, 120));
    mouse(view, QEvent::MouseButtonPress, centre, Qt::LeftButton);
    mouse(view, QEvent::MouseMove, centre + QPointF(50, 20), Qt::LeftButton);
    mouse(view, QEvent::MouseButtonRelease, centre + QPointF(50, 20), Qt::LeftButton);
    mouse(view, QEvent::MouseButtonDblClick, centre, Qt::LeftButton);
    mouse(view, QEvent::MouseMove, centre, Qt::NoButton);
    view.reload();
    EXPECT_EQ(view.frames(), nullptr);
    EXPECT_EQ(ranges.count(), 0);
    EXPECT_EQ(hover.count(), 0);
    EXPECT_TRUE(view.hoverLines().isEmpty());

    // A white widget with the notice in its middle.
    const QImage image = view.grab().toImage();
    EXPECT_EQ(image.pixelColor(3, 3), QColor(Qt::white));
    int dark = 0;
    for (int x = 100; x < 300; ++x)
        dark += image.pixelColor(x, 150).lightness() < 128 ? 1 : 0;
    for (int y = 140; y < 160; ++y)
        dark += image.pixelColor(200, y).lightness() < 128 ? 1 : 0;
    EXPECT_GT(dark, 0) << "the notice's text";
}

class ChartViewTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        chart = Orv::Chart::SampleChart::build(group);
        Orv::Chart::bindData(chart->variables, Orv::Chart::axisPairsOf(*chart), Orv::Chart::SampleChart::data());
        view.setChart(chart.get(), Orv::Chart::axisPairsOf(*chart));
        view.resize(800, 600);
        ASSERT_NE(view.frames(), nullptr);
    }

    const Orv::Chart::ChartFrames& frames() const { return *view.frames(); }
    QRectF plot() const { return frames().layout().plot(); }
    Orv::Chart::ViewState settings() const { return Orv::Chart::ViewState::of(frames().pairs()); }

    KelModifiedGroup group;
    std::unique_ptr<KelChart2D> chart;
    ChartWidget view;
};

TEST_F(ChartViewTest, AWheelWithoutVerticalTurnChangesNothing)
{
    const QSignalSpy changed(&view, &ChartWidget::rangesChanged);
    const auto before = settings();
    wheel(view, plot().center(), QPoint(120, 0));
    EXPECT_EQ(changed.count(), 0);
    EXPECT_EQ(settings(), before);
    wheel(view, plot().center(), QPoint(0, 120));
    EXPECT_EQ(changed.count(), 1);
    EXPECT_NE(settings(), before);
}

TEST_F(ChartViewTest, TheRubberBandIsDrawnWhileDraggingAndGoneAfter)
{
    const QPointF a = plot().topLeft() + QPointF(60, 60);
    const QPointF b = a + QPointF(200, 150);
    const QPointF inside = a + QPointF(37, 41);
    const QColor plain = view.grab().toImage().pixelColor(inside.toPoint());
    mouse(view, QEvent::MouseButtonPress, a, Qt::RightButton);
    mouse(view, QEvent::MouseMove, b, Qt::RightButton);
    const QColor banded = view.grab().toImage().pixelColor(inside.toPoint());
    // A translucent blue over whatever was there: red drops more than blue.
    EXPECT_NE(banded, plain);
    EXPECT_GT(plain.red() - banded.red(), plain.blue() - banded.blue());
    const QSignalSpy changed(&view, &ChartWidget::rangesChanged);
    mouse(view, QEvent::MouseButtonRelease, b, Qt::RightButton);
    EXPECT_EQ(changed.count(), 1);
}

TEST_F(ChartViewTest, TheHoverBoxSitsBesideTheCursorInsideTheWidgetAndLeavesWithIt)
{
    const QSignalSpy hover(&view, &ChartWidget::hoverChanged);
    const QImage plain = view.grab().toImage();
    // Below right of the cursor, flipped to the side and above where the widget ends.
    const QRectF inner = plot().adjusted(2, 2, -2, -2);
    for (const auto& [cursor, step] :
         {std::pair{plot().center(), QPoint(17, 17)}, std::pair{inner.topLeft(), QPoint(17, 17)},
          std::pair{inner.bottomRight(), QPoint(-17, -17)}, std::pair{inner.bottomLeft(), QPoint(17, -17)}}) {
        mouse(view, QEvent::MouseMove, cursor, Qt::NoButton);
        ASSERT_FALSE(view.hoverLines().isEmpty());
        ASSERT_FALSE(hover.isEmpty());
        EXPECT_EQ(hover.last().at(0).toString(),
                  (QStringList(view.readOut()) + view.hoverLines()).join(QStringLiteral("; ")));
        const QPoint corner = cursor.toPoint() + step;
        const QColor box = view.grab().toImage().pixelColor(corner);
        EXPECT_GT(box.red(), 230);
        EXPECT_GT(box.green(), 230);
        EXPECT_GT(box.red() - box.blue(), 5) << "the pale yellow box at " << corner.x() << "," << corner.y();
        EXPECT_NE(box, plain.pixelColor(corner));
    }
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(&view, &leave);
    EXPECT_TRUE(view.hoverLines().isEmpty());
    EXPECT_EQ(hover.last().at(0).toString(), QString());
}

// The chart's picture is painted once and kept: gestures that only move what
// is drawn over it leave it alone, and the widget shows it with their marks.
TEST_F(ChartViewTest, OverlaysAreDrawnOverTheKeptPictureWithoutPaintingTheChart)
{
    // A hidden widget gets a resize event, hence a new frame, with every grab.
    view.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&view));
    view.clearFocus();
    view.grab();
    const QImage kept = view.keptFrame();
    ASSERT_FALSE(kept.isNull());
    EXPECT_EQ(kept, view.image()) << "the kept picture is the chart as drawn now";
    const QPoint cursor = (plot().topLeft() + QPointF(plot().width() * 0.3, plot().height() * 0.6)).toPoint();
    for (int step = 8; step >= 0; step -= 2)
        mouse(view, QEvent::MouseMove, cursor + QPoint(step, step), Qt::NoButton);
    ASSERT_FALSE(view.hoverLines().isEmpty());
    const QImage shown = view.grab().toImage();
    EXPECT_EQ(view.keptFrame().cacheKey(), kept.cacheKey()) << "a hover does not paint the chart";

    // Above the cursor, but for the crosshair and the markers, the widget shows the kept picture; the box
    // hangs below the cursor, as wide as the widget lets it be.
    const auto hits = Orv::Chart::HoverText::at(frames(), cursor).hits;
    const auto overlaid = [&](QPoint pixel) {
        const bool marked = std::any_of(hits.begin(), hits.end(), [&](const Orv::Chart::HoverText::Hit& hit) {
            return QLineF(hit.pixel, pixel).length() <= 8;
        });
        return marked || std::abs(pixel.x() - cursor.x()) <= 1 || pixel.y() >= cursor.y() - 1;
    };
    int alike = 0, changed = 0, elsewhere = 0;
    for (int y = 0; y < kept.height(); ++y) {
        for (int x = 0; x < kept.width(); ++x) {
            const bool same = shown.pixel(x, y) == kept.pixel(x, y);
            if (!overlaid({x, y}))
                (same ? alike : elsewhere) += 1;
            else if (!same)
                ++changed;
        }
    }
    EXPECT_EQ(elsewhere, 0) << "pixels changed away from the overlays";
    EXPECT_GT(alike, kept.width() * cursor.y() * 9 / 10);
    EXPECT_GT(changed, plot().width()) << "the crosshair at least";

    // The rubber band and the point cursor are overlays too.
    mouse(view, QEvent::MouseButtonPress, cursor, Qt::RightButton);
    mouse(view, QEvent::MouseMove, cursor + QPoint(80, 60), Qt::RightButton);
    view.grab();
    key(view, Qt::Key_Escape);
    view.setPointCursor(1, 12);
    ASSERT_TRUE(view.pointCursor().valid());
    view.grab();
    EXPECT_EQ(view.keptFrame().cacheKey(), kept.cacheKey());
}

TEST_F(ChartViewTest, ADragPaintsInteractiveFramesAndTheSettledOneOnRelease)
{
    view.grab();
    const QImage before = view.keptFrame();
    const QPointF from = plot().center();
    mouse(view, QEvent::MouseButtonPress, from, Qt::LeftButton);
    mouse(view, QEvent::MouseMove, from + QPointF(40, 10), Qt::LeftButton);
    EXPECT_TRUE(frames().interactive());
    view.grab();
    const QImage started = view.keptFrame();
    EXPECT_NE(started.cacheKey(), before.cacheKey());
    mouse(view, QEvent::MouseMove, from + QPointF(80, 30), Qt::LeftButton);
    view.grab();
    const QImage dragging = view.keptFrame();
    EXPECT_NE(dragging.cacheKey(), started.cacheKey());
    EXPECT_EQ(dragging, view.image()) << "the panned frame, not one before";
    mouse(view, QEvent::MouseButtonRelease, from + QPointF(80, 30), Qt::LeftButton);
    EXPECT_FALSE(frames().interactive());
    view.grab();
    EXPECT_NE(view.keptFrame().cacheKey(), dragging.cacheKey());
    EXPECT_EQ(view.keptFrame(), view.image());
    EXPECT_NE(view.keptFrame(), before);
}

// The wheel and the keys never say that their gesture ended: a rest does.
TEST_F(ChartViewTest, WheelAndKeysSettleAfterARest)
{
    for (const auto& gesture :
         std::vector<std::function<void()>>{[&] { wheel(view, plot().center(), QPoint(0, 120)); },
                                            [&] { key(view, Qt::Key_Up); }, [&] { key(view, Qt::Key_Minus); }}) {
        gesture();
        EXPECT_TRUE(frames().interactive());
        view.grab();
        const qint64 interactive = view.keptFrame().cacheKey();
        EXPECT_TRUE(QTest::qWaitFor([&] { return !frames().interactive(); }, 2000));
        view.grab();
        EXPECT_NE(view.keptFrame().cacheKey(), interactive) << "painted again once settled";
        EXPECT_EQ(view.keptFrame(), view.image());
    }
}

} // namespace
