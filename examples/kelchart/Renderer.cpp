#include "Renderer.h"

#include "AxisPainter.h"
#include "Failure.h"
#include "Files.h"
#include "SeriesLook.h"
#include "SeriesPainter.h"
#include "TextStyle.h"

#include <QImage>
#include <QLinearGradient>
#include <QSvgGenerator>

namespace kelchart {

namespace {

constexpr double swatchWidth = 30;
constexpr double titleMargin = 8;

// One colour fills; several run from top to bottom.
QBrush backgroundBrush(const QList<QColor>& colours, const QRectF& box)
{
    if (colours.isEmpty())
        return Qt::NoBrush;
    if (colours.size() == 1)
        return colours.front();
    QLinearGradient gradient(box.topLeft(), box.bottomLeft());
    for (int i = 0; i < colours.size(); ++i)
        gradient.setColorAt(static_cast<double>(i) / (colours.size() - 1), colours[i]);
    return gradient;
}

} // namespace

Renderer::Renderer(const Pipeline& pipeline, QSize size)
    : m_pipeline(pipeline)
    , m_layout(pipeline, size)
{
    const KelChartPerVariableScaling& scaling = pipeline.scaling();
    for (std::size_t i = 0; i < scaling.size(); ++i) {
        m_ownViews.push_back(std::make_unique<KelChartDecimatedView>(scaling.variable(i)));
        m_views.push_back(m_ownViews.back().get());
    }
}

Renderer::Renderer(const Pipeline& pipeline, QSize size, std::vector<const KelChartDecimatedView*> views)
    : m_pipeline(pipeline)
    , m_layout(pipeline, size)
    , m_views(std::move(views))
{
    if (m_views.size() != pipeline.scaling().size())
        throw Failure(QStringLiteral("the renderer needs one decimated view per variable"));
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
            SeriesPainter(painter, m_pipeline, m_layout, i, *m_views[i]).paint();
    for (const AxisResult& axis : m_pipeline.axes())
        axes.paintAxis(axis);
    paintLegend(painter);
}

// Elided to the image less a margin at each side, so that a long title stays inside.
void Renderer::paintTitle(QPainter& painter) const
{
    painter.setFont(pixelFont(15, true));
    const KelChart& chart = m_pipeline.chart();
    const QRectF area = m_layout.titleArea().adjusted(titleMargin, 0, -titleMargin, 0);
    paintShadowedText(painter, area, Qt::AlignCenter, elided(painter, chart.title.get(), area.width()),
                      chart.textColor.get(), chart.textShadowColor.get());
}

void Renderer::paintLegend(QPainter& painter) const
{
    const LegendGrid& grid = m_layout.legendGrid();
    if (grid.columns == 0)
        return;
    paintLegendBox(painter);
    painter.setFont(pixelFont(11));
    const std::vector<std::size_t>& entries = m_layout.legendEntries();
    for (std::size_t entry = 0; entry < grid.shown; ++entry)
        paintLegendEntry(painter, m_pipeline.scaling().variable(entries[entry]).variable(), m_layout.legendCell(entry));
    if (grid.more > 0)
        paintLegendText(painter, m_layout.legendCell(grid.shown).adjusted(4, 0, -4, 0),
                        QStringLiteral("and %1 more").arg(grid.more));
}

void Renderer::paintLegendBox(QPainter& painter) const
{
    const LegendLook& look = m_layout.legend();
    if (!look.boxed())
        return;
    const QRectF box = m_layout.legendBox();
    painter.save();
    painter.setPen(look.border.alpha() > 0 ? QPen(look.border, 1.0) : QPen(Qt::NoPen));
    painter.setBrush(backgroundBrush(look.background, box));
    painter.drawRect(box.adjusted(0.5, 0.5, -0.5, -0.5));
    painter.restore();
}

void Renderer::paintLegendText(QPainter& painter, const QRectF& box, const QString& text) const
{
    const LegendLook& look = m_layout.legend();
    paintShadowedText(painter, box, Qt::AlignLeft | Qt::AlignVCenter, elided(painter, text, box.width()), look.text,
                      look.shadow);
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
    paintLegendText(painter, cell.adjusted(swatchWidth + 6, 0, -4, 0), name);
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
