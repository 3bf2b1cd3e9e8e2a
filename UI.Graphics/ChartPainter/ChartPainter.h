#pragma once
// Draws a chart from the results of its pipeline with Qt's painter: title,
// grid, series, axes and legend, onto any paint device (an image, an SVG or
// PDF generator, a widget), or into a PNG, SVG or PDF file. All positions
// come from the pipeline's scales and matrices through the layout.
//
// Files are written to a temporary file and renamed, so a failed write leaves
// no half-written file; a failure is a result with a message naming the file.
//
// The layout is in logical pixels. Raster pictures may have several device
// pixels per logical one (a pixel ratio, as on high-DPI screens): the chart is
// then drawn at full resolution, every position times the ratio, rather than
// a 1x picture scaled up. SVG and PDF files are vector, with text as text;
// a PDF page is the layout's size at 96 logical pixels per inch.

#include "ChartLayout.h"
#include "OrvChartPainterExport.h"
#include "Plot.h"

#include "KelChartDecimatedView.h"

#include <QImage>
#include <QLocale>
#include <QPainter>
#include <QSize>
#include <QIODevice>
#include <QString>

#include <memory>
#include <optional>
#include <vector>

namespace Orv::Chart {

class ORV_CHARTPAINTER_EXPORT ChartPainter {
public:
    ChartPainter(const Plot& pipeline, QSize size);
    // Draws through the host's decimated views, one per variable of the
    // pipeline's caches in their order, kept across frames so that each
    // summary is built once; they must outlive the painter. With another
    // count of views it warns and makes its own.
    // `listsHidden`: the legend keeps faded entries for hidden series (see LegendLook).
    ChartPainter(const Plot& pipeline, QSize size, std::vector<const KelChartDecimatedView*> views,
                 bool listsHidden = false);

    const ChartLayout& layout() const { return m_layout; }

    // The locale the axes' labels, offsets and factors are drawn in (see
    // LocaleText); the C locale, as the model writes them, by default. The
    // pipeline fits its ticks to the same locale (TickRoom::locale).
    void setLocale(const QLocale& locale) { m_locale = locale; }
    QLocale locale() const { return m_locale; }

    // Interactive frames, drawn while the user drags, draw lines wider than a
    // pixel without joins, as flat segments, which is cheapest; settled ones
    // (the default) draw the full picture.
    void setInteractive(bool on) { m_interactive = on; }
    bool interactive() const { return m_interactive; }

    // Paints the whole chart in the layout's size from the painter's origin.
    void paint(QPainter& painter) const;

    // The chart on white at `ratio` device pixels per logical pixel: an image
    // of the layout's size times the ratio (rounded) whose devicePixelRatio is
    // `ratio`. A ratio that is not a positive finite number counts as 1.
    QImage image(qreal ratio = 1.0) const;

    // The pixel ratio of the PNG files `write` makes (1 by default; see
    // `image`); SVG and PDF files do not depend on it.
    void setPixelRatio(qreal ratio) { m_pixelRatio = ratio; }
    qreal pixelRatio() const { return m_pixelRatio; }

    enum class Format { Png, Svg, Pdf };
    // The format a file name's suffix names (case ignored), or none.
    static std::optional<Format> formatOf(const QString& path);
    // Writes the chart in the format its suffix names; false with `error`
    // set when the suffix names none or the file cannot be written.
    bool write(const QString& path, QString* error = nullptr) const;
    bool write(const QString& path, Format format, QString* error = nullptr) const;

private:
    void makeOwnViews();
    bool writePng(QIODevice& device) const;
    bool writeSvg(QIODevice& device) const;
    bool writePdf(QIODevice& device) const;
    void paintTitle(QPainter& painter) const;
    void paintLegend(QPainter& painter) const;
    void paintLegendBox(QPainter& painter) const;
    void paintLegendText(QPainter& painter, const QRectF& box, const QString& text) const;
    void paintLegendEntry(QPainter& painter, const KelChartVariable& variable, const QRectF& cell) const;

    const Plot& m_pipeline;
    ChartLayout m_layout;
    // One per variable, kept so that the PNG and the SVG share their summaries;
    // `m_views` points to these or to the host's.
    std::vector<std::unique_ptr<KelChartDecimatedView>> m_ownViews;
    std::vector<const KelChartDecimatedView*> m_views;
    QLocale m_locale = QLocale::c();
    bool m_interactive = false;
    qreal m_pixelRatio = 1.0;
};

} // namespace Orv::Chart
