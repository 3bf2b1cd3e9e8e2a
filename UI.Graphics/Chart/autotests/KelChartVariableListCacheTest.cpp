#include "ChartWithData.h"

namespace {

class KelChartVariableListCacheTest : public ChartWithData {
protected:
    QStringList cachedNames()
    {
        QStringList result;
        for (size_t i = 0; i < cacheVariables().size(); ++i)
            result << cache.cache(i).variable().name();
        return result;
    }
};

} // namespace

TEST_F(KelChartVariableListCacheTest, CachesAreStableSortedByOrderAndSkipInvalidOnes)
{
    addVariable("c", {1}, {1}, {}, 3);
    addVariable("a", {3, 1, 2}, {1, 1, 1}, {}, 1).style.componentSortAxis.set(0);
    addVariable("b1", {3, 1, 2}, {1, 1, 1}, {}, 2);
    addVariable("b2", {1}, {1}, {}, 2);
    addVariable("off", {1}, {1}).enabled.set(false);
    addVariable("empty", {}, {});
    EXPECT_EQ(cachedNames(), (QStringList{"a", "b1", "b2", "c"}));
    // Component sort axis 0 sorts by x.
    EXPECT_EQ(cache.cache(0).x(), (std::vector<double>{1, 2, 3}));
    EXPECT_EQ(cache.cache(1).x(), (std::vector<double>{3, 1, 2}));
    // The vector form skips nulls.
    EXPECT_EQ(KelChartVariableListCache({nullptr, chart.variables[0u]}, {}).size(), 1u);
}

TEST_F(KelChartVariableListCacheTest, AggregatesAreComputedOnceCopiedAndCleared)
{
    addVariable("a", {0, 0.5, 1}, {-1, 2, 3});
    addVariable("b", {0, 2, 4, 6, 8, 10, 12}, {5, 6, 7, 8, 9, 10, 11}, {}, 1);
    cacheVariables();
    EXPECT_EQ(cache.minXDelta(), 0.5);
    EXPECT_EQ(cache.maxScalarLen(), 7);
    EXPECT_EQ(cache.bounds().min(), Orv::Math::Vector3(0, -1, 0));
    EXPECT_EQ(cache.bounds().max(), Orv::Math::Vector3(12, 11, 0));
    EXPECT_EQ(cache.fillBaseLine(), 0.0);
    EXPECT_EQ(KelChartVariableListCache(cache).minXDelta(), 0.5);

    // A cleared cache and an empty one hold the markers of "not computed".
    cache.clear();
    for (const KelChartVariableListCache& empty : {cache, KelChartVariableListCache()}) {
        EXPECT_EQ(empty.size(), 0u);
        EXPECT_FALSE(empty.bounds().defined());
        EXPECT_EQ(empty.maxScalarLen(), 0);
        EXPECT_EQ(empty.minXDelta(), -1.0);
        EXPECT_EQ(empty.fillBaseLine(), 0.0);
    }
}
