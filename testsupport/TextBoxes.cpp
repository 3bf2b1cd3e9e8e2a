#include "TextBoxes.h"

#include <QFontMetricsF>
#include <QPaintDevice>
#include <QPaintEngine>
#include <QPainter>
#include <QTextItem>
#include <QTransform>

namespace OrvTest {

namespace {

// Keeps the transform the painter is in and records each text item.
class RecordingEngine : public QPaintEngine {
public:
    explicit RecordingEngine(QList<DrawnText>& texts)
        : QPaintEngine(QPaintEngine::AllFeatures)
        , m_texts(texts)
    {
    }

    bool begin(QPaintDevice*) override { return true; }
    bool end() override { return true; }
    Type type() const override { return QPaintEngine::User; }

    void updateState(const QPaintEngineState& state) override
    {
        if (state.state() & QPaintEngine::DirtyTransform)
            m_transform = state.transform();
    }

    void drawTextItem(const QPointF& at, const QTextItem& item) override
    {
        if (item.text().trimmed().isEmpty())
            return;
        const QFontMetricsF metrics(item.font());
        const QRectF box(at.x(), at.y() - metrics.ascent(), metrics.horizontalAdvance(item.text()), metrics.height());
        m_texts.append({item.text(), m_transform.mapRect(box)});
    }

    void drawPixmap(const QRectF&, const QPixmap&, const QRectF&) override {}
    void drawPolygon(const QPointF*, int, PolygonDrawMode) override {}
    void drawPath(const QPainterPath&) override {}
    void drawLines(const QLineF*, int) override {}
    void drawRects(const QRectF*, int) override {}
    void drawEllipse(const QRectF&) override {}
    void drawPoints(const QPointF*, int) override {}
    void drawImage(const QRectF&, const QImage&, const QRectF&, Qt::ImageConversionFlags) override {}

private:
    QList<DrawnText>& m_texts;
    QTransform m_transform;
};

class RecordingDevice : public QPaintDevice {
public:
    RecordingDevice(QSize size, QList<DrawnText>& texts)
        : m_size(size)
        , m_engine(texts)
    {
    }

    QPaintEngine* paintEngine() const override { return &m_engine; }

protected:
    int metric(PaintDeviceMetric metric) const override
    {
        switch (metric) {
        case PdmWidth:
            return m_size.width();
        case PdmHeight:
            return m_size.height();
        case PdmWidthMM:
            return qRound(m_size.width() * 25.4 / 96.0);
        case PdmHeightMM:
            return qRound(m_size.height() * 25.4 / 96.0);
        case PdmDpiX:
        case PdmDpiY:
        case PdmPhysicalDpiX:
        case PdmPhysicalDpiY:
            return 96;
        case PdmDevicePixelRatioScaled:
            return static_cast<int>(devicePixelRatioFScale());
        default:
            return QPaintDevice::metric(metric);
        }
    }

private:
    QSize m_size;
    mutable RecordingEngine m_engine;
};

} // namespace

QList<DrawnText> drawnTexts(QSize size, const std::function<void(QPainter&)>& paint)
{
    QList<DrawnText> texts;
    RecordingDevice device(size, texts);
    QPainter painter(&device);
    paint(painter);
    painter.end();
    return texts;
}

QStringList overlappingTexts(const QList<DrawnText>& texts, double tolerance)
{
    QStringList pairs;
    for (int i = 0; i < texts.size(); ++i) {
        for (int k = i + 1; k < texts.size(); ++k) {
            const QRectF shared = texts[i].box.intersected(texts[k].box);
            if (shared.width() > tolerance && shared.height() > tolerance)
                pairs << texts[i].text + QStringLiteral(" / ") + texts[k].text;
        }
    }
    return pairs;
}

QStringList textsOutside(const QList<DrawnText>& texts, QSize size, double tolerance)
{
    const QRectF device = QRectF(QPointF(0, 0), QSizeF(size)).adjusted(-tolerance, -tolerance, tolerance, tolerance);
    QStringList outside;
    for (const DrawnText& text : texts)
        if (!device.contains(text.box))
            outside << text.text;
    return outside;
}

} // namespace OrvTest
