#pragma once
// Up to two axes of one direction: a first and a second axis, for example one
// at each side of the plot. The pair remembers which child is which, creates
// them on request, finds them by name and forgets one that is removed.
//
// Failures:
// - `createFirst`/`createSecond` with a type string other than the continuous
//   and discrete axis types, or when a child of the built name exists that is
//   no axis, report through `ensure`, leave the tree and the pair as they are
//   (an existing first or second axis is still removed first) and return a
//   detached, disabled continuous axis that belongs to the pair but is never a
//   child of it, so writes to it cannot reach the tree.
// Assignment makes the pair's own axes mirror the source's: the first and second
// axes are the pair's own children of the source axes' names and types (made
// when missing) and take the source axes' values. A chart that is assigned thus
// owns what it shows and never points into the chart it was assigned from.

#include "OrvChartExport.h"
#include "KelChartAxis.h"

#include <memory>

class ORV_CHART_EXPORT KelChartAxisPair : public KelProperties {
public:
    static const QString typeString;

    explicit KelChartAxisPair(KelModifiedGroup& group);
    KelChartAxisPair(const KelChartAxisPair&) = delete;
    KelChartAxisPair& operator=(const KelChartAxisPair& other);
    ~KelChartAxisPair() override;

    KelChartAxis* first() const { return _first; }
    KelChartAxis* second() const { return _second; }
    // The first, else the second axis bearing that name; null when neither does.
    KelChartAxis* find(const QString& name) const;

    // Makes (or takes the existing) child "<pair name>.<name>" of the type, enables
    // it and makes it the first (second) axis, after removing the previous one.
    KelChartAxis& createFirst(const QString& name, const QString& type);
    KelChartAxis& createSecond(const QString& name, const QString& type);

private:
    bool remove(KelProperties* child) override;
    KelProperties* makeChild(const QString& name, const QString& type) override;

    KelChartAxis& create(KelChartAxis*& slot, const QString& name, const QString& type,
                         const std::string& removeFailure, const std::string& signature);
    KelChartAxis& refuse(const std::string& condition, const std::string& signature);
    KelChartAxis* mirror(const KelChartAxis* source, const KelChartAxis* taken);

    KelChartAxis* _first = nullptr;
    KelChartAxis* _second = nullptr;
    std::unique_ptr<KelChartAxis> _refused;
};
