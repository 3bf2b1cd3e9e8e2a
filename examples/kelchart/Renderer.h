#pragma once
// Draws a chart from the results of its pipeline with Qt's painter: title,
// grid, series, axes and legend, onto a PNG image or an SVG drawing. All
// positions come from the pipeline's scales and matrices through the layout.

#include "ChartLayout.h"
#include "Pipeline.h"

#include "KelChartDecimatedView.h"

#include <QPainter>
#include <QSize>
#include <QString>

#include <memory>
#include <vector>

namespace kelchart {

class Renderer {
public:
    Renderer(const Pipeline& pipeline, QSize size);
    // Draws through the host's decimated views, one per variable of the
    // pipeline's caches in their order, kept across frames so that each
    // summary is built once; they must outlive the renderer.
    Renderer(const Pipeline& pipeline, QSize size, std::vector<const KelChartDecimatedView*> views);

    const ChartLayout& layout() const { return m_layout; }

    void paint(QPainter& painter) const;
    void writePng(const QString& path) const;
    void writeSvg(const QString& path) const;

private:
    void paintTitle(QPainter& painter) const;
    void paintLegend(QPainter& painter) const;
    void paintLegendBox(QPainter& painter) const;
    void paintLegendText(QPainter& painter, const QRectF& box, const QString& text) const;
    void paintLegendEntry(QPainter& painter, const KelChartVariable& variable, const QRectF& cell) const;

    const Pipeline& m_pipeline;
    ChartLayout m_layout;
    // One per variable, kept so that the PNG and the SVG share their summaries;
    // `m_views` points to these or to the host's.
    std::vector<std::unique_ptr<KelChartDecimatedView>> m_ownViews;
    std::vector<const KelChartDecimatedView*> m_views;
};

} // namespace kelchart
