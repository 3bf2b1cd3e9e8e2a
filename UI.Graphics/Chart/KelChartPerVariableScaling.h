#pragma once
// The transformation of each cached variable into the chart's normalised
// drawing space, and what a renderer asks about a variable's axes: whether an
// axis is discrete, where its base line lies and how far a colour gradient
// along it must reach.
//
// Each variable finds its x, y and (optionally) z axis by name in the pair
// scales given at construction; position i of every per-variable operation is
// position i of the list cache. A variable whose axes were all found and valid
// at construction is valid; its matrix maps the axis ranges onto the cube,
// with inverted axes turned round. The matrix is built on first request and
// kept, even through const access; copies share the matrices built before the
// copy was made.
//
// Build a scaling after the pair scales were updated; it does not follow later
// changes. The pair scales are not owned and must outlive the scaling.

#include "OrvChartExport.h"
#include "KelChartVariableListCache.h"

#include "DoubleMatrix.h"
#include "Matrix.h"
#include "Vector.h"

#include <boost/shared_ptr.hpp>

#include <cstddef>
#include <vector>

class KelChartAxisPairScale;
class KelChartAxisScale;

class ORV_CHART_EXPORT KelChartPerVariableScaling {
public:
    // Two-dimensional: z is not scaled and runs from -1 to 1.
    KelChartPerVariableScaling(const KelChartAxisPairScale& xPair, const KelChartAxisPairScale& yPair,
                               const KelChartVariableListCache& cache);
    KelChartPerVariableScaling(const KelChartAxisPairScale& xPair, const KelChartAxisPairScale& yPair,
                               const KelChartAxisPairScale& zPair, const KelChartVariableListCache& cache);
    KelChartPerVariableScaling(const KelChartPerVariableScaling& other);
    KelChartPerVariableScaling(KelChartPerVariableScaling&& other) noexcept;
    KelChartPerVariableScaling& operator=(const KelChartPerVariableScaling& other);
    KelChartPerVariableScaling& operator=(KelChartPerVariableScaling&& other) noexcept;
    ~KelChartPerVariableScaling();

    // The number of variables. In the operations below i stays below it.
    size_t size() const { return _listCache.size(); }
    const KelChartVariableCache& variable(size_t i) const { return _listCache.cache(i); }
    // Whether all axes of variable i were found and valid at construction.
    bool valid(size_t i) const { return _validFlags[i]; }

    // The map of variable i's data into the cube; the identity when it is not valid.
    const Orv::Math::Matrix& matrix(size_t i) const;
    // The same map in double precision from the axes' double ranges, for drawing: data a float
    // cannot tell apart (0.1 s samples years after the first row) keep their places.
    Orv::Math::DoubleMatrix preciseMatrix(size_t i) const;
    // The base line of variable i's axis along comp; 0 when there is none.
    double baseLine(size_t i, Orv::Math::Vector3::Comp comp) const;
    // The data extent of variable i along comp, widened to reach its base line.
    void gradientExtents(size_t i, Orv::Math::Vector3::Comp comp, Orv::Math::Vector2& extents,
                         double& baseLine) const;
    // Whether variable i's axis along comp is discrete. A missing axis is reported, and gives false.
    bool isAxisDiscrete(Orv::Math::Vector3::Comp comp, size_t i) const;

private:
    // The pair scale searched along comp and the variable's axis name for it;
    // a null pair when comp has none.
    struct AxisLookup {
        const KelChartAxisPairScale* pair;
        QString name;
    };
    AxisLookup lookup(Orv::Math::Vector3::Comp comp, size_t i) const;
    void flagVariables();
    // The scale of variable i's axis along comp, or null.
    const KelChartAxisScale* findAxis(Orv::Math::Vector3::Comp comp, size_t i) const;
    bool axesFoundAndValid(size_t i) const;

    static bool processAxes(const KelChartAxisScale& x, const KelChartAxisScale& y, const KelChartAxisScale& z,
                            Orv::Math::Matrix& out);
    static bool processAxes(const KelChartAxisScale& x, const KelChartAxisScale& y, Orv::Math::Matrix& out);

    KelChartVariableListCache _listCache;
    std::vector<bool> _validFlags;
    mutable std::vector<boost::shared_ptr<Orv::Math::Matrix>> _matrices;
    const KelChartAxisPairScale* _xPair;
    const KelChartAxisPairScale* _yPair;
    const KelChartAxisPairScale* _zPair;
};
