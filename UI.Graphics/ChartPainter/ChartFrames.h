#pragma once
// The frames of an interactive view of one chart. The unit update and the
// data caches are made once per change of the chart (`reload`); panning and
// zooming only rerun the scales over them (`rescale`). One decimated view per
// variable lives as long as the caches, so that each summary is built once
// and a frame of millions of points costs what one of thousands does.

#include "OrvChartPainterExport.h"
#include "ChartLayout.h"
#include "ElementClasses.h"
#include "Plot.h"
#include "ChartPainter.h"

#include "KelChart.h"
#include "KelChartDecimatedView.h"
#include "KelChartLiveSeries.h"
#include "KelChartPipeline.h"

#include <QLocale>
#include <QPainter>
#include <QSize>

#include <memory>
#include <vector>

namespace Orv::Chart {

class ORV_CHARTPAINTER_EXPORT ChartFrames {
public:
    // The chart and its axis pairs must outlive the frames.
    ChartFrames(KelChart& chart, const Orv::Chart::AxisPairs& pairs);
    ~ChartFrames();
    ChartFrames(const ChartFrames&) = delete;
    ChartFrames& operator=(const ChartFrames&) = delete;

    // New caches after a change of data, units or anything else, and a new frame.
    void reload();
    // A new frame over the kept caches: ranges or size changed. The size is
    // raised to the smallest one the layout takes.
    void rescale(QSize size);

    KelChart& chart() const { return m_chart; }
    const Orv::Chart::AxisPairs& pairs() const { return m_pairs; }
    const Orv::Chart::Plot& pipeline() const { return *m_pipeline; }
    const Orv::Chart::ChartLayout& layout() const { return m_renderer->layout(); }
    const KelChartDecimatedView& view(std::size_t i) const { return *m_views[i]; }
    QSize size() const { return m_size; }

    void paint(QPainter& painter) const;
    // What draws the current frame, for a host that writes it to a file or
    // wants it at another pixel ratio; valid until the next new frame.
    const Orv::Chart::ChartPainter& painter() const { return *m_renderer; }

    // Draws these live series, one per variable of the chart in the variable
    // list's order, in place of the variables' own items: every frame reads
    // the points they hold at that time. None: back to caching the variables.
    // The series must outlive the frames or be replaced first.
    void showLive(std::vector<const KelChartLiveSeries*> series);
    bool live() const { return !m_live.empty(); }
    // A new frame after items were appended to the live series: their bounds
    // and validity are taken again; nothing is cached.
    void liveAppended();

    // The locale the labels are drawn in (see ChartPainter::setLocale): a new
    // frame, fitted to it, and every later one.
    void setLocale(const QLocale& locale);

    // Whether the frames are drawn while the user drags (see
    // ChartPainter::setInteractive); kept across rescales and reloads.
    void setInteractive(bool on);
    bool interactive() const { return m_interactive; }

private:
    void clear();
    void takeLiveSeries();
    const KelChartVariableListCache& caches() const;

    KelChart& m_chart;
    Orv::Chart::AxisPairs m_pairs;
    QSize m_size;
    QLocale m_locale = QLocale::c();
    bool m_interactive = false;
    // Destroyed in reverse: renderer, pipeline, views, then the caches they read.
    std::unique_ptr<KelChartPipeline> m_data;
    std::vector<const KelChartLiveSeries*> m_live;
    KelChartVariableListCache m_liveCaches;
    std::vector<std::unique_ptr<KelChartDecimatedView>> m_views;
    std::unique_ptr<Orv::Chart::Plot> m_pipeline;
    std::unique_ptr<Orv::Chart::ChartPainter> m_renderer;
};

} // namespace Orv::Chart
