#pragma once
// Chart data as the host holds them before handing them to the variables'
// iterators: one x and one y column per series, each with its unit and one
// undefined flag per value. Data are not part of the chart's persisted form.

#include "TimeText.h"

#include <QString>
#include <QStringList>

#include <cstddef>
#include <vector>

namespace Orv::Chart {

struct DataColumn {
    QString name;
    QString unit;
    std::vector<float> values;
    std::vector<bool> undefined;

    void append(float value, bool isUndefined)
    {
        values.push_back(value);
        undefined.push_back(isUndefined);
    }
    std::size_t size() const { return values.size(); }
};

// A series is named after its y column; the variable of that name receives it.
struct DataSeries {
    DataColumn x;
    DataColumn y;
    // The rows of the file this series holds, as indices into DataSet::xTimes;
    // empty when it holds all of them.
    std::vector<std::size_t> rows;
    // The column the values come from ("price"), where the series is named
    // after its group ("ALFA"); empty otherwise.
    QString valueName = {};
};

// How the series are drawn: lines over continuous x, bars over categories,
// points (symbols only) where x is neither ordered nor unique.
enum class SeriesShape { Lines, Bars, Points };

struct DataSet {
    std::vector<DataSeries> series;
    // The x values are category indices 0, 1, 2, ... with these labels.
    bool discreteX = false;
    QStringList categories;
    // The x values are instants, one per row, given here; binding turns them
    // into numbers in a timestamp unit once the x axis's time zone is known.
    bool timeX = false;
    std::vector<ParsedTime> xTimes;
    SeriesShape shape = SeriesShape::Lines;
    // Remarks for the user about what was left out, one line each.
    QStringList notes;
};

} // namespace Orv::Chart
