#include "ChartPainter.h"

#include "AxisPainter_p.h"
#include "SeriesLook_p.h"
#include "SeriesPainter_p.h"
#include "TextStyle_p.h"

#include "OrvDiagnostics.h"

#include <QFileInfo>
#include <QImage>
#include <QPageSize>
#include <QPdfWriter>
#include <QSaveFile>
#include <QLinearGradient>
#include <QSvgGenerator>

#include <cmath>

namespace Orv::Chart {

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

ChartPainter::ChartPainter(const Plot& pipeline, QSize size)
    : m_pipeline(pipeline)
    , m_layout(pipeline, size)
{
    makeOwnViews();
}

ChartPainter::ChartPainter(const Plot& pipeline, QSize size, std::vector<const KelChartDecimatedView*> views,
                           bool listsHidden)
    : m_pipeline(pipeline)
    , m_layout(pipeline, size, listsHidden)
    , m_views(std::move(views))
{
    if (m_views.size() != pipeline.scaling().size()) {
        orvdebug::warning("the chart painter got ", m_views.size(), " decimated views for ",
                          pipeline.scaling().size(), " variables; it makes its own");
        makeOwnViews();
    }
}

void ChartPainter::makeOwnViews()
{
    m_views.clear();
    const KelChartPerVariableScaling& scaling = m_pipeline.scaling();
    for (std::size_t i = 0; i < scaling.size(); ++i) {
        m_ownViews.push_back(std::make_unique<KelChartDecimatedView>(scaling.variable(i)));
        m_views.push_back(m_ownViews.back().get());
    }
}

void ChartPainter::paint(QPainter& painter) const
{
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::TextAntialiasing);
    painter.fillRect(QRectF(QPointF(0, 0), m_layout.size()), Qt::white);
    paintTitle(painter);
    AxisPainter axes(painter, m_layout, m_locale);
    for (const PlotAxis& axis : m_pipeline.axes())
        axes.paintGrid(axis);
    const KelChartPerVariableScaling& scaling = m_pipeline.scaling();
    const LineStroke::Joins joins = m_interactive ? LineStroke::Joins::Plain : LineStroke::Joins::Pen;
    for (std::size_t i = 0; i < scaling.size(); ++i)
        if (scaling.valid(i))
            SeriesPainter(painter, m_pipeline, m_layout, i, *m_views[i], joins).paint();
    for (const PlotAxis& axis : m_pipeline.axes())
        axes.paintAxis(axis);
    paintLegend(painter);
}

// Elided to the image less a margin at each side, so that a long title stays inside.
void ChartPainter::paintTitle(QPainter& painter) const
{
    painter.setFont(pixelFont(15, true));
    const KelChart& chart = m_pipeline.chart();
    const QRectF area = m_layout.titleArea().adjusted(titleMargin, 0, -titleMargin, 0);
    paintShadowedText(painter, area, Qt::AlignCenter, elided(painter, chart.title.get(), area.width()),
                      chart.textColor.get(), chart.textShadowColor.get());
}

void ChartPainter::paintLegend(QPainter& painter) const
{
    const LegendGrid& grid = m_layout.legendGrid();
    if (grid.columns == 0)
        return;
    paintLegendBox(painter);
    painter.setFont(pixelFont(11));
    const std::vector<const KelChartVariable*>& entries = m_layout.legendVariables();
    for (std::size_t entry = 0; entry < grid.shown; ++entry)
        paintLegendEntry(painter, *entries[entry], m_layout.legendCell(entry));
    if (grid.more > 0)
        paintLegendText(painter, m_layout.legendCell(grid.shown).adjusted(4, 0, -4, 0),
                        QStringLiteral("and %1 more").arg(grid.more));
}

void ChartPainter::paintLegendBox(QPainter& painter) const
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

void ChartPainter::paintLegendText(QPainter& painter, const QRectF& box, const QString& text) const
{
    const LegendLook& look = m_layout.legend();
    paintShadowedText(painter, box, Qt::AlignLeft | Qt::AlignVCenter, elided(painter, text, box.width()), look.text,
                      look.shadow);
}

// A swatch of the series' look, then its title, or its name when untitled;
// a hidden series' entry is faded.
void ChartPainter::paintLegendEntry(QPainter& painter, const KelChartVariable& variable, const QRectF& cell) const
{
    constexpr double hiddenOpacity = 0.3;
    const KelChartVariableStyle& style = variable.style;
    const QRectF swatch(cell.left(), cell.center().y() - 5, swatchWidth, 10);
    const double opacity = painter.opacity();
    if (!variable.enabled.get())
        painter.setOpacity(opacity * hiddenOpacity);
    painter.save();
    if (SeriesLook::drawsFromBaseLine(style)) {
        // A gradient outline shows in its first colour, as the line's swatch does.
        painter.setPen(SeriesLook::linePen(style, QBrush(SeriesLook::lineColour(style))));
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
    painter.setOpacity(opacity);
}

std::optional<ChartPainter::Format> ChartPainter::formatOf(const QString& path)
{
    const QString suffix = QFileInfo(path).suffix().toLower();
    if (suffix == QLatin1String("png"))
        return Format::Png;
    if (suffix == QLatin1String("svg"))
        return Format::Svg;
    if (suffix == QLatin1String("pdf"))
        return Format::Pdf;
    return std::nullopt;
}

bool ChartPainter::write(const QString& path, QString* error) const
{
    if (const std::optional<Format> format = formatOf(path))
        return write(path, *format, error);
    if (error)
        *error = QStringLiteral("%1: unknown image format, expected a .png, .svg or .pdf file").arg(path);
    return false;
}

bool ChartPainter::write(const QString& path, Format format, QString* error) const
{
    QSaveFile file(path);
    const bool written = file.open(QIODevice::WriteOnly)
                         && (format == Format::Png   ? writePng(file)
                             : format == Format::Svg ? writeSvg(file)
                                                     : writePdf(file))
                         && file.commit();
    if (!written && error)
        *error = QStringLiteral("%1: cannot write: %2").arg(path, file.errorString());
    return written;
}

QImage ChartPainter::image(qreal ratio) const
{
    if (!(ratio > 0.0) || !std::isfinite(ratio))
        ratio = 1.0;
    // Painting on an image with a pixel ratio scales the painter by it: the
    // layout's positions, fonts and pen widths all grow by the ratio.
    QImage image((QSizeF(m_layout.size()) * ratio).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::white);
    QPainter painter(&image);
    paint(painter);
    return image;
}

// The file says how many pixels make an inch, so that a viewer that reads it
// shows a picture of any ratio at the chart's size.
bool ChartPainter::writePng(QIODevice& device) const
{
    constexpr double dotsPerMeterAt96Dpi = 96 / 0.0254;
    QImage picture = image(m_pixelRatio);
    const int dotsPerMeter = qRound(dotsPerMeterAt96Dpi * picture.devicePixelRatio());
    picture.setDotsPerMeterX(dotsPerMeter);
    picture.setDotsPerMeterY(dotsPerMeter);
    return picture.save(&device, "PNG");
}

bool ChartPainter::writeSvg(QIODevice& device) const
{
    QSvgGenerator svg;
    svg.setOutputDevice(&device);
    svg.setSize(m_layout.size());
    svg.setViewBox(QRect(QPoint(0, 0), m_layout.size()));
    svg.setTitle(m_pipeline.chart().title.get());
    QPainter painter;
    if (!painter.begin(&svg))
        return false;
    paint(painter);
    return painter.end();
}

// One page of the chart's size at 96 dots per inch, as the pixel layout was made for.
bool ChartPainter::writePdf(QIODevice& device) const
{
    constexpr int dotsPerInch = 96;
    QPdfWriter pdf(&device);
    pdf.setResolution(dotsPerInch);
    pdf.setTitle(m_pipeline.chart().title.get());
    pdf.setPageMargins(QMarginsF());
    pdf.setPageSize(QPageSize(QSizeF(m_layout.size()) / dotsPerInch, QPageSize::Inch));
    QPainter painter;
    if (!painter.begin(&pdf))
        return false;
    paint(painter);
    return painter.end();
}

} // namespace Orv::Chart
