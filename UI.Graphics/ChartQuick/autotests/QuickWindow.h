#pragma once
// A Qt Quick window holding one chart item that fills it, rendered by the
// software scene graph (the offscreen platform has no OpenGL), and the
// events a user's mouse sends to such a window.
#include "ChartItem.h"

#include <QCoreApplication>
#include <QMouseEvent>
#include <QQuickItemGrabResult>
#include <QQuickWindow>
#include <QSGRendererInterface>
#include <QSignalSpy>
#include <QTest>
#include <QWheelEvent>

#include <gtest/gtest.h>

namespace quicktest {

// Before the application is made: the offscreen platform has no OpenGL, so
// every window of the test process is drawn by the software scene graph.
inline const bool softwareSceneGraph = qputenv("QT_QUICK_BACKEND", "software");

struct QuickChart {
    explicit QuickChart(QSize size)
    {
        window = std::make_unique<QQuickWindow>();
        item = new Orv::Chart::ChartItem(window->contentItem());
        item->setSize(size);
        window->resize(size);
        QSignalSpy swapped(window.get(), &QQuickWindow::frameSwapped);
        window->show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(window.get()));
        EXPECT_TRUE(swapped.count() > 0 || swapped.wait(5000)) << "a first frame";
    }
    ~QuickChart()
    {
        delete item;
        window.reset();
    }
    QuickChart(const QuickChart&) = delete;
    QuickChart& operator=(const QuickChart&) = delete;

    // The item as the scene graph draws it, in device pixels. (The offscreen
    // platform's backing store gives the software scene graph no picture of
    // a whole window: grabWindow() is null there.)
    QImage grab()
    {
        const qreal ratio = window->effectiveDevicePixelRatio();
        const QSharedPointer<QQuickItemGrabResult> result = item->grabToImage((item->size() * ratio).toSize());
        if (!result)
            return {};
        QSignalSpy ready(result.data(), &QQuickItemGrabResult::ready);
        if (result->image().isNull() && !ready.wait(5000))
            return {};
        return result->image();
    }

    std::unique_ptr<QQuickWindow> window;
    Orv::Chart::ChartItem* item;
};

// A mouse event as the platform delivers it to a window or a widget at `at` in its coordinates.
inline void sendMouse(QObject* target, QEvent::Type type, QPointF at, Qt::MouseButton button,
                      Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    // A move holds the button it names (none: hovering); a release holds none.
    const Qt::MouseButtons held = type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::MouseButtons(button);
    const Qt::MouseButton changed = type == QEvent::MouseMove ? Qt::NoButton : button;
    QMouseEvent event(type, at, at, at, changed, held, modifiers);
    QCoreApplication::sendEvent(target, &event);
}

inline void sendWheel(QObject* target, QPointF at, int eighths)
{
    QWheelEvent event(at, at, QPoint(), QPoint(0, eighths), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(target, &event);
}

} // namespace quicktest
