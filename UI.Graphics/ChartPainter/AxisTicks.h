#pragma once
// The drawable ticks of one axis, read from its computed scale: the major
// ticks and, on a logarithmic axis, the minor ticks between them, each with
// its value, label, relative position and whether its label is drawn. A view
// draws and reports these rather than reaching into the scale.

#include "OrvChartPainterExport.h"

#include <QString>

#include <vector>

class KelChartAxisScale;

namespace Orv::Chart {

struct Tick {
    // In the axis's coordinates: log10 of the real value on a logarithmic axis.
    double value = 0;
    // In the C locale, as the model writes it; relative to the axis's offset
    // where it has one. A view draws it in its locale (see LocaleText).
    QString label;
    // Relative position along the axis, 0 at its start, 1 at its end.
    double position = 0;
    // Whether the view draws the label: where labels would overlap, only every k-th is.
    bool labelled = true;
};

class ORV_CHARTPAINTER_EXPORT AxisTicks {
public:
    AxisTicks() = default;
    // Labels every `stride`-th major tick; `minorLabels` holds one flag per
    // minor tick of the scale (shorter: the rest are not labelled).
    // `majorLabels`, where given, are the texts of the major ticks instead of
    // the scale's (labels relative to an offset, see LabelOffset).
    AxisTicks(const KelChartAxisScale& scale, unsigned stride, const std::vector<bool>& minorLabels,
              const std::vector<QString>& majorLabels = {});

    const std::vector<Tick>& major() const noexcept { return m_major; }
    const std::vector<Tick>& minor() const noexcept { return m_minor; }
    // Positions are log10 of the values; labels show the values themselves.
    bool logarithmic() const noexcept { return m_logarithmic; }

private:
    std::vector<Tick> m_major;
    std::vector<Tick> m_minor;
    bool m_logarithmic = false;
};

} // namespace Orv::Chart
