#include "Renderer.h"

#include "AxisPainter.h"
#include "Failure.h"
#include "Files.h"
#include "SeriesLook.h"
#include "SeriesPainter.h"
#include "TextStyle.h"

#include <QImage>
#include <QSvgGenerator>

namespace kelchart {

namespace {

constexpr double swatchWidth = 30;

} // namespace

Renderer::Renderer(const Pipeline& pipeline, QSize size)
    : m_pipeline(pipeline)
    , m_layout(pipeline, size)
{
}

void Renderer::paint(QPainter& painter) const
{
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::TextAntialiasing);
    painter.fillRect(QRectF(QPointF(0, 0), m_layout.size()), Qt::white);
    paintTitle(painter);
    AxisPainter axes(painter, m_layout);
    for (const AxisResult& axis : m_pipeline.axes())
        axes.paintGrid(axis);
    const KelChartPerVariableScaling& scaling = m_pipeline.scaling();
    for (std::size_t i = 0; i < scaling.size(); ++i)
        if (scaling.valid(i))
            SeriesPainter(painter, m_pipeline, m_layout, i).paint();
    for (const AxisResult& axis : m_pipeline.axes())
        axes.paintAxis(axis);
    paintLegend(painter);
}

void Renderer::paintTitle(QPainter& painter) const
{
    painter.setFont(pixelFont(15, true));
    const KelChart& chart = m_pipeline.chart();
    paintShadowedText(painter, m_layout.titleArea(), Qt::AlignCenter, chart.title.get(), chart.textColor.get(),
                      chart.textShadowColor.get());
}

void Renderer::paintLegend(QPainter& painter) const
{
    painter.setFont(pixelFont(11));
    const std::vector<std::size_t>& entries = m_layout.legendEntries();
    for (std::size_t entry = 0; entry < entries.size(); ++entry)
        paintLegendEntry(painter, m_pipeline.scaling().variable(entries[entry]).variable(), m_layout.legendCell(entry));
}

// A swatch of the series' look, then its title, or its name when untitled.
void Renderer::paintLegendEntry(QPainter& painter, const KelChartVariable& variable, const QRectF& cell) const
{
    const KelChartVariableStyle& style = variable.style;
    const QRectF swatch(cell.left(), cell.center().y() - 5, swatchWidth, 10);
    painter.save();
    if (SeriesLook::drawsFromBaseLine(style)) {
        painter.setPen(SeriesLook::linePen(style));
        painter.setBrush(SeriesLook::fillBrush(style, 0, QBrush(SeriesLook::lineColour(style))));
        painter.drawRect(swatch);
    } else {
        painter.setPen(SeriesLook::linePen(style, QBrush(SeriesLook::lineColour(style))));
        painter.drawLine(QPointF(swatch.left(), swatch.center().y()), QPointF(swatch.right(), swatch.center().y()));
    }
    SeriesLook::paintSymbol(painter, style, 0, swatch.center());
    painter.restore();
    const QString name = variable.title.get().isEmpty() ? variable.name() : variable.title.get();
    const QRectF text = cell.adjusted(swatchWidth + 6, 0, -4, 0);
    const KelChart& chart = m_pipeline.chart();
    paintShadowedText(painter, text, Qt::AlignLeft | Qt::AlignVCenter,
                      painter.fontMetrics().elidedText(name, Qt::ElideRight, static_cast<int>(text.width())),
                      chart.textColor.get(), chart.textShadowColor.get());
}

void Renderer::writePng(const QString& path) const
{
    QImage image(m_layout.size(), QImage::Format_ARGB32_Premultiplied);
    {
        QPainter painter(&image);
        paint(painter);
    }
    OutputFile file(path);
    if (!image.save(&file.device(), "PNG"))
        throw Failure(QStringLiteral("%1: cannot write the PNG image").arg(path));
    file.commit();
}

void Renderer::writeSvg(const QString& path) const
{
    OutputFile file(path);
    QSvgGenerator svg;
    svg.setOutputDevice(&file.device());
    svg.setSize(m_layout.size());
    svg.setViewBox(QRect(QPoint(0, 0), m_layout.size()));
    svg.setTitle(m_pipeline.chart().title.get());
    {
        QPainter painter;
        if (!painter.begin(&svg))
            throw Failure(QStringLiteral("%1: cannot write the SVG drawing").arg(path));
        paint(painter);
    }
    file.commit();
}

} // namespace kelchart
