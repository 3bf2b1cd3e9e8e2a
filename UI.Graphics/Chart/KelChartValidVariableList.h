#pragma once
// A list of variables, each with its own value range. The host appends a
// variable with a range of its own choosing, or from its cache: then the range
// is the variable's manual range when it has a usable one, else the range of
// its y data rounded outward to nice values. Ranges are read back by position
// (bounds-checked: std::out_of_range past the end) or found by variable name.
//
// The list does not own the variables; they must outlive it.

#include "OrvChartExport.h"
#include "KelChartVariable.h"
#include "KelChartVariableCache.h"

#include "Vector.h"

#include <QString>

#include <cstddef>
#include <vector>

class ORV_CHART_EXPORT KelChartValidVariableList {
public:
    KelChartValidVariableList() = default;
    KelChartValidVariableList(const KelChartValidVariableList& other) = default;
    KelChartValidVariableList(KelChartValidVariableList&& other) noexcept = default;
    KelChartValidVariableList& operator=(const KelChartValidVariableList& other) = default;
    KelChartValidVariableList& operator=(KelChartValidVariableList&& other) noexcept = default;
    ~KelChartValidVariableList() = default;

    // Appends the variable with `minmax` as (low, high). A disabled variable is
    // reported, and appended all the same.
    void push_back(const KelChartVariable& p_variable, const Orv::Math::Vector2& minmax);
    // Appends the cache's variable with its manual or rounded data range.
    void push_back(const KelChartVariableCache& cache);

    size_t size() const;
    // Position of the first variable named `name`, or -1.
    int findIndexByName(const QString& name) const;

    const KelChartVariable& variable(size_t i) const;
    const Orv::Math::Vector2& minmax(size_t i) const;
    // 0 brought into the range of variable i: where an area fill starts.
    double fillBaseLine(size_t i) const;

    void clear();

private:
    static Orv::Math::Vector2 manualOrDataRange(const KelChartVariableCache& cache);
    static Orv::Math::Vector2 dataRange(const KelChartVariableCache& cache);
    static Orv::Math::Vector2 niceRange(double lo, double hi);

    std::vector<const KelChartVariable*> _variables;
    std::vector<Orv::Math::Vector2> _minmax;
};
