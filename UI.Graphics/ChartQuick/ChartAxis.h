#pragma once
// One axis of a chart item as QML sees it (`chart.xAxis.min`): the first axis
// of its pair (x: the bottom one, y: the left one, as the chart names them).
// It belongs to its item and lives as long as it; the axis it stands for
// changes whenever the item shows another chart, and without one (or on an
// axis of no such kind) it reads as NaN, false and an empty kind, and writes
// are ignored.
//
// Writing `min` or `max` fixes the range as written ("autoScale" off,
// "tightRange" on), as a zoom does; `autoScale` true gives the range back to
// the data. Each write is a view of the item's history. `min` and `max` are
// numbers in the axis's unit, its real values on a logarithmic axis, and
// apply to continuous and time axes; a discrete axis has none. A discrete
// axis that follows a continuous one along the same edge keeps its view
// window: a zoom or a pan moves it along, a written range does not.

#include "OrvChartQuickExport.h"

#include <QObject>
#include <QString>

#include <functional>

class KelChartAxis;
class KelChartAxisContinuous;

namespace Orv::Chart {

class ORV_CHARTQUICK_EXPORT ChartAxis : public QObject {
    Q_OBJECT
    Q_PROPERTY(double min READ min WRITE setMin NOTIFY changed)
    Q_PROPERTY(double max READ max WRITE setMax NOTIFY changed)
    Q_PROPERTY(bool autoScale READ autoScale WRITE setAutoScale NOTIFY changed)
    Q_PROPERTY(bool logarithmic READ logarithmic WRITE setLogarithmic NOTIFY changed)
    Q_PROPERTY(QString title READ title WRITE setTitle NOTIFY changed)
    // "continuous", "time" or "discrete"; empty without an axis.
    Q_PROPERTY(QString kind READ kind NOTIFY changed)
public:
    // How the axis is reached: the axis now shown (or null), the range it is
    // drawn with (false when not drawn), and what follows a write.
    struct Access {
        std::function<KelChartAxis*()> find;
        std::function<bool(double& min, double& max)> shown;
        std::function<void()> edited;
    };
    ChartAxis(Access access, QObject* parent);

    // The range as drawn (the data's while autoScale is on), else as the axis holds it.

    double min() const;
    double max() const;
    bool autoScale() const;
    bool logarithmic() const;
    QString title() const;
    QString kind() const;

    void setMin(double value);
    void setMax(double value);
    void setAutoScale(bool on);
    void setLogarithmic(bool on);
    void setTitle(const QString& title);

Q_SIGNALS:
    // Any of the properties may have changed.
    void changed();

private:
    KelChartAxisContinuous* continuous() const;
    void fix(double min, double max);

    Access m_access;
};

} // namespace Orv::Chart
