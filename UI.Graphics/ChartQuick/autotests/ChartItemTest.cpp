// The chart item as QML uses it: the module, its properties, its methods and
// what a source that cannot be shown does.
#include "QuickWindow.h"

#include "ChartFile.h"
#include "SampleChart.h"
#include "TempFolder.h"

#include "KelChartAxisContinuous.h"
#include "KelChartAxisPair.h"

#include <QNativeGestureEvent>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QSignalSpy>
#include <QWindow>

#include <cmath>
#include <memory>

#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/lsan_interface.h>
#endif

namespace {

using Orv::Chart::ChartItem;

class ChartItemTest : public ::testing::Test {
protected:
    static void SetUpTestSuite() { ChartItem::registerQmlTypes(); }

    // An item made by QML from `body` inside `Chart { }`.
    std::unique_ptr<ChartItem> fromQml(const QByteArray& body)
    {
        QQmlComponent component(&engine);
        component.setData("import QtQuick 2.15\nimport Orv.Chart 1.0\nChart { width: 800; height: 500\n" + body + "\n}",
                          QUrl());
        std::unique_ptr<QObject> made(component.create());
        EXPECT_TRUE(made) << component.errorString().toStdString();
        return std::unique_ptr<ChartItem>(qobject_cast<ChartItem*>(made.release()));
    }

    QQmlEngine engine;
    OrvTest::TempFolder folder;
};

// What QML writes to the item and its axes reaches the chart's own properties, which the next frame draws; a range
// fixes the axis.
TEST_F(ChartItemTest, QmlMakesTheChartWithTheSampleAndWritesItsProperties)
{
    const auto item = fromQml("title: \"Station\"\nxAxis.min: 2\nxAxis.max: 20\nyAxis.logarithmic: true\n"
                              "yAxis.title: \"level\"");
    ASSERT_TRUE(item);
    ASSERT_TRUE(item->hasChart());
    EXPECT_TRUE(item->errorString().isEmpty());
    EXPECT_EQ(item->title(), QStringLiteral("Station"));
    EXPECT_EQ(item->frames()->chart().title.get(), QStringLiteral("Station"));
    EXPECT_EQ(item->xAxis()->kind(), QStringLiteral("continuous"));
    EXPECT_EQ(item->yAxis()->kind(), QStringLiteral("continuous"));
    EXPECT_DOUBLE_EQ(item->xAxis()->min(), 2);
    EXPECT_DOUBLE_EQ(item->xAxis()->max(), 20);
    EXPECT_FALSE(item->xAxis()->autoScale());
    const auto* left = dynamic_cast<const KelChartAxisContinuous*>(item->frames()->pairs().y->first());
    ASSERT_NE(left, nullptr);
    EXPECT_TRUE(left->logarithmic.get());
    EXPECT_TRUE(item->yAxis()->logarithmic());
    EXPECT_EQ(left->title.get(), QStringLiteral("level"));
    EXPECT_EQ(item->yAxis()->title(), QStringLiteral("level"));

    const QSignalSpy changed(item->yAxis(), &Orv::Chart::ChartAxis::changed);
    item->yAxis()->setLogarithmic(false);
    item->yAxis()->setLogarithmic(false); // no change, no signal
    item->xAxis()->setAutoScale(true);
    EXPECT_FALSE(left->logarithmic.get());
    EXPECT_TRUE(item->xAxis()->autoScale());
    EXPECT_GE(changed.count(), 1);
    const int afterChanges = changed.count();
    item->yAxis()->setTitle(QStringLiteral("level"));
    EXPECT_EQ(changed.count(), afterChanges);
}

TEST_F(ChartItemTest, MethodsMoveTheViewAndSignalIt)
{
    const auto item = fromQml("");
    ASSERT_TRUE(item);
    const QSignalSpy ranges(item.get(), &ChartItem::rangesChanged);
    const QSignalSpy axis(item->xAxis(), &Orv::Chart::ChartAxis::changed);
    const double width = item->xAxis()->max() - item->xAxis()->min();
    ASSERT_TRUE(std::isfinite(width));
    QMetaObject::invokeMethod(item.get(), "zoomIn");
    EXPECT_NEAR(item->xAxis()->max() - item->xAxis()->min(), 0.8 * width, 1e-9 * width);
    QMetaObject::invokeMethod(item.get(), "fitY");
    QMetaObject::invokeMethod(item.get(), "zoomOut");
    EXPECT_NEAR(item->xAxis()->max() - item->xAxis()->min(), width, 1e-9 * width);
    EXPECT_EQ(ranges.count(), 3);
    EXPECT_GE(axis.count(), 3);
    EXPECT_TRUE(item->canGoBack());
    const double zoomedOut = item->xAxis()->max();
    QMetaObject::invokeMethod(item.get(), "back");
    EXPECT_NE(item->xAxis()->max(), zoomedOut);
    EXPECT_TRUE(item->canGoForward());
    QMetaObject::invokeMethod(item.get(), "forward");
    EXPECT_EQ(item->xAxis()->max(), zoomedOut);
    QMetaObject::invokeMethod(item.get(), "home");
    EXPECT_TRUE(item->xAxis()->autoScale() || item->xAxis()->max() - item->xAxis()->min() == width);
}

TEST_F(ChartItemTest, ACsvSourceIsSetUpForItsDataAndAChartFileLoaded)
{
    const QString csv = folder.write("week.csv", "day,pressure [hPa]\nMon,1012\nTue,1008\nWed,995\n");
    const auto item = fromQml("");
    ASSERT_TRUE(item);
    const QSignalSpy changed(item.get(), &ChartItem::chartChanged);
    item->setSource(QUrl::fromLocalFile(csv));
    EXPECT_TRUE(item->errorString().isEmpty()) << item->errorString().toStdString();
    EXPECT_EQ(changed.count(), 1);
    EXPECT_EQ(item->title(), QStringLiteral("week"));
    EXPECT_EQ(item->xAxis()->kind(), QStringLiteral("discrete"));
    EXPECT_TRUE(std::isnan(item->xAxis()->min()));

    KelModifiedGroup group;
    const auto sample = Orv::Chart::SampleChart::build(group);
    sample->title.set(QStringLiteral("saved"));
    const QString json = folder.path("chart.json");
    ASSERT_TRUE(Orv::Chart::ChartFile::save(*sample, json));
    item->setSource(QUrl::fromLocalFile(json));
    EXPECT_TRUE(item->errorString().isEmpty()) << item->errorString().toStdString();
    EXPECT_EQ(item->title(), QStringLiteral("saved"));
}

struct BrokenSource {
    const char* name;
    QByteArray bytes;
    const char* suffix;
};

class BrokenSourceTest : public ChartItemTest, public ::testing::WithParamInterface<BrokenSource> {};

// The chart shown before stays; the fault names the file.
TEST_P(BrokenSourceTest, SetsTheErrorAndKeepsTheChart)
{
    const auto item = fromQml("title: \"before\"");
    ASSERT_TRUE(item);
    const QSignalSpy error(item.get(), &ChartItem::errorStringChanged);
    const QString path = GetParam().bytes.isNull()
                             ? folder.path(QStringLiteral("missing.") + GetParam().suffix)
                             : folder.write(QStringLiteral("broken.") + GetParam().suffix, GetParam().bytes);
    item->setSource(QUrl::fromLocalFile(path));
    EXPECT_FALSE(item->errorString().isEmpty());
    EXPECT_TRUE(item->errorString().contains(QFileInfo(path).fileName())) << item->errorString().toStdString();
    EXPECT_EQ(error.count(), 1);
    EXPECT_TRUE(item->hasChart());
    EXPECT_EQ(item->title(), QStringLiteral("before"));
    item->setSource(QUrl());
    EXPECT_TRUE(item->errorString().isEmpty()) << "the sample loads";
}

INSTANTIATE_TEST_SUITE_P(
    Files, BrokenSourceTest,
    ::testing::Values(BrokenSource{"Missing", QByteArray(), "csv"},
                      BrokenSource{"RaggedCsv", "a,b\n1,2\n3,4,5,6\n\"unterminated\n", "csv"},
                      BrokenSource{"NotJson", "{ this is not json", "json"},
                      BrokenSource{"JsonOfNoChart", "[1, 2, 3]", "json"},
                      BrokenSource{"Binary", QByteArray("\x00\xff\x10\x00", 4), "json"}),
    [](const ::testing::TestParamInfo<BrokenSource>& info) { return std::string(info.param.name); });

TEST_F(ChartItemTest, AFolderOrARemoteUrlIsRefusedWithoutReading)
{
    const auto item = fromQml("");
    ASSERT_TRUE(item);
    item->setSource(QUrl::fromLocalFile(folder.path()));
    EXPECT_FALSE(item->errorString().isEmpty());
    item->setSource(QUrl(QStringLiteral("https://example.org/data.csv")));
    EXPECT_TRUE(item->errorString().contains(QStringLiteral("only local files")));
}

TEST_F(ChartItemTest, AWindowShowsTheChartAndTheHoverOverIt)
{
    quicktest::QuickChart quick(QSize(800, 500));
    const QSignalSpy hover(quick.item, &ChartItem::hoverChanged);
    const QImage before = quick.grab();
    const QPointF centre = quick.item->frames()->layout().plot().center();
    quicktest::sendMouse(quick.window.get(), QEvent::MouseMove, centre, Qt::NoButton);
    EXPECT_GE(hover.count(), 1);
    EXPECT_FALSE(quick.item->readOut().isEmpty());
    const QImage after = quick.grab();
    ASSERT_FALSE(before.isNull());
    ASSERT_EQ(after.size(), before.size());
    int changed = 0;
    for (int y = 0; y < after.height(); y += 2)
        for (int x = 0; x < after.width(); x += 2)
            changed += after.pixel(x, y) != before.pixel(x, y) ? 1 : 0;
    EXPECT_GT(changed, 100) << "crosshair and box";
    const qint64 kept = quick.item->keptFrame().cacheKey();
    EXPECT_EQ(kept, quick.item->keptFrame().cacheKey());

    // The pointer leaves the window: no read-out is left behind.
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(quick.window.get(), &leave);
    EXPECT_TRUE(quick.item->readOut().isEmpty());
}

// A touchpad's pinch comes as native zoom steps: a step of 0.25 shows 1 / 1.25 of the x range
// about the point under the fingers.
TEST_F(ChartItemTest, ANativeZoomGestureZoomsAboutItsPoint)
{
    quicktest::QuickChart quick(QSize(800, 500));
    const QPointF at = quick.item->frames()->layout().plot().center();
    const Orv::Chart::ChartAxis& x = *quick.item->xAxis();
    const double width = x.max() - x.min();
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    QNativeGestureEvent zoom(Qt::ZoomNativeGesture, QPointingDevice::primaryPointingDevice(), 2, at, at, at, 0.25,
                             QPointF());
#else
    QNativeGestureEvent zoom(Qt::ZoomNativeGesture, nullptr, at, at, at, 0.25, 0, 0);
#endif
    QCoreApplication::sendEvent(quick.item, &zoom);
    EXPECT_TRUE(zoom.isAccepted());
    EXPECT_NEAR(x.max() - x.min(), width / 1.25, 1e-9 * width);
}

TEST_F(ChartItemTest, TwoFingersSpreadingZoomAboutTheirCentreAndOneFingerPans)
{
    quicktest::QuickChart quick(QSize(800, 500));
    QWindow* window = quick.window.get();
    const QPoint centre = quick.item->frames()->layout().plot().center().toPoint();
    const Orv::Chart::ChartAxis& x = *quick.item->xAxis();
    const double width = x.max() - x.min();
    decltype(QTest::createTouchDevice()) device = nullptr; // QTouchDevice in Qt 5, QPointingDevice in 6
    // Qt 5 keeps each touch device, and Qt Quick its own record of it made at the first touch, for the life of the
    // process and never frees them: what they allocate is not a leak of this code.
#ifdef __SANITIZE_ADDRESS__
    __lsan_disable();
#endif
    device = QTest::createTouchDevice();
    QTest::touchEvent(window, device)
        .press(0, centre - QPoint(100, 0), window)
        .press(1, centre + QPoint(100, 0), window);
#ifdef __SANITIZE_ADDRESS__
    __lsan_enable();
#endif
    QTest::touchEvent(window, device).move(0, centre - QPoint(125, 0), window).move(1, centre + QPoint(125, 0), window);
    QTest::touchEvent(window, device)
        .release(0, centre - QPoint(125, 0), window)
        .release(1, centre + QPoint(125, 0), window);
    EXPECT_NEAR(x.max() - x.min(), 0.8 * width, 1e-9 * width) << "fingers 1.25 times as far apart";

    const double min = x.min();
    QTest::touchEvent(window, device).press(0, centre, window);
    QTest::touchEvent(window, device).move(0, centre + QPoint(40, 0), window);
    QTest::touchEvent(window, device).release(0, centre + QPoint(40, 0), window);
    EXPECT_NEAR(x.max() - x.min(), 0.8 * width, 1e-9 * width);
    EXPECT_LT(x.min(), min) << "dragged right: earlier values come into view";
}

} // namespace
