// Shows the sample chart in a Qt Quick window through the installed Qt Quick
// library, from QML (import Orv.Chart 1.0), and grabs the item: the picture
// must have the item's size and show the series in colour. The offscreen
// platform has no OpenGL: Qt Quick draws in software.

#include <ChartItem.h>

#include <QEventLoop>
#include <QGuiApplication>
#include <QImage>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItemGrabResult>
#include <QQuickWindow>
#include <QTimer>

#include <cstdio>
#include <memory>

namespace {

int check(bool ok, const char* what)
{
    std::printf("%s: %s\n", ok ? "ok" : "FAILED", what);
    return ok ? 0 : 1;
}

bool showsColour(const QImage& image)
{
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (image.pixelColor(x, y).hsvSaturation() > 100)
                return true;
    return false;
}

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QUICK_BACKEND"))
        qputenv("QT_QUICK_BACKEND", "software");
    QGuiApplication app(argc, argv);
    Orv::Chart::ChartItem::registerQmlTypes();

    QQmlEngine engine;
    QQmlComponent component(&engine);
    component.setData("import Orv.Chart 1.0\nChart { width: 640; height: 400; title: \"From QML\" }", QUrl());
    std::unique_ptr<QObject> made(component.create());
    auto* item = qobject_cast<Orv::Chart::ChartItem*>(made.get());
    if (item == nullptr) {
        std::fprintf(stderr, "chart-quick: %s\n", qPrintable(component.errorString()));
        return 1;
    }
    QQuickWindow window;
    window.resize(640, 400);
    item->setParentItem(window.contentItem());
    window.show();

    QImage shot;
    QEventLoop loop;
    QTimer::singleShot(10000, &loop, &QEventLoop::quit);
    const QSharedPointer<QQuickItemGrabResult> grab = item->grabToImage();
    if (grab)
        QObject::connect(grab.data(), &QQuickItemGrabResult::ready, &loop, [&] {
            shot = grab->image();
            loop.quit();
        });
    loop.exec();

    int failures = 0;
    failures += check(item->hasChart() && item->title() == QStringLiteral("From QML"), "QML set the sample's title");
    failures += check(shot.size() == QSize(640, 400), "the grab has the item's size");
    failures += check(showsColour(shot), "the chart shows its series in colour");
    item->setParentItem(nullptr);
    return failures == 0 ? 0 : 1;
}
