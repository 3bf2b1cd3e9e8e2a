#pragma once
// What a chart's view (ChartNavigator, for a widget or a Qt Quick item) keeps
// between events so that it redoes work only when its inputs change: the picture of the chart under the overlays
// (KeptFrame), and a record of what the data caches were built from
// (CacheInputs), which tells an edit of the look from one of the data.

#include <QImage>
#include <QSize>
#include <QStringList>

#include <functional>

class KelChart;
class QPainter;

namespace Orv::Chart {

// A picture drawn again only after `invalidate()`, or when it is asked for
// at another size or pixel ratio.
class KeptFrame {
public:
    using Draw = std::function<void(QPainter&)>;

    void invalidate() { m_current = false; }
    // The picture of `size` logical pixels at `ratio` device pixels each, on
    // white; `draw` paints it when it is stale.
    const QImage& image(QSize size, qreal ratio, const Draw& draw);
    // The picture as last drawn; null before the first.
    const QImage& image() const { return m_image; }

private:
    QImage m_image;
    bool m_current = false;
};

// Everything of a chart that its data caches and units depend on: the shape
// of its tree, each property except those that only change how the chart
// looks, and each variable's items (count, native units and a hash of the
// values as delivered). Equal records let a view keep its caches and draw
// a new frame over them.
class CacheInputs {
public:
    CacheInputs() = default;
    // Delivering the items may prepare an iterator's arrays, hence not const.
    explicit CacheInputs(KelChart& chart);

    bool operator==(const CacheInputs& other) const { return m_entries == other.m_entries; }
    bool operator!=(const CacheInputs& other) const { return !(*this == other); }

private:
    QStringList m_entries;
};

} // namespace Orv::Chart
