#include "KelChartVariableCache.h"
#include "KelStableOrder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <random>

namespace {

constexpr float inf = std::numeric_limits<float>::infinity();
const float notANumber = std::numeric_limits<float>::quiet_NaN();

struct Item {
    float x;
    float y;
    bool xUndefined = false;
    bool yUndefined = false;
};

struct Expected {
    std::vector<double> x, y;
    std::vector<size_t> index;
    std::vector<double> xUndef, yUndef;
    float boxMinX, boxMinY, boxMaxX, boxMaxY;
};

struct CaseRow {
    const char* name;
    bool scalar;
    bool sort;
    bool positional;
    std::vector<Item> items;
    Expected expected;
};

std::ostream& operator<<(std::ostream& os, const CaseRow& row) { return os << row.name; }

class CacheFixture {
protected:
    KelChartVariable& makeVariable(const std::vector<Item>& items, bool scalar)
    {
        std::vector<float> xs, ys;
        std::vector<bool> xu, yu;
        for (const Item& item : items) {
            xs.push_back(item.x);
            ys.push_back(item.y);
            xu.push_back(item.xUndefined);
            yu.push_back(item.yUndefined);
        }
        if (scalar)
            variable.variableiter.setScalarData(std::vector<double>(ys.begin(), ys.end()), yu);
        else
            variable.variableiter.setVector2Data(xs, ys, xu, yu);
        variable.rename("T1");
        variable.xAxis.set("axis.x.bottom");
        return variable;
    }

    KelModifiedGroup group;
    KelChartVariable variable{group};
};

class KelChartVariableCacheCases : public CacheFixture, public ::testing::TestWithParam<CaseRow> {};

} // namespace

TEST_P(KelChartVariableCacheCases, ArraysAndBoundsFollowTheCaseTable)
{
    const CaseRow& row = GetParam();
    const QStringList positionAxes = row.positional ? QStringList{"axis.x.bottom"} : QStringList{"other"};
    KelChartVariableCache cache(makeVariable(row.items, row.scalar), row.sort, positionAxes);
    EXPECT_TRUE(cache.valid());
    EXPECT_EQ(cache.scalar(), row.scalar);
    EXPECT_EQ(cache.x(), row.expected.x);
    EXPECT_EQ(cache.y(), row.expected.y);
    EXPECT_EQ(&cache.data(), &cache.y());
    EXPECT_EQ(cache.index(), row.expected.index);
    EXPECT_EQ(cache.xUndef(), row.expected.xUndef);
    EXPECT_EQ(cache.yUndef(), row.expected.yUndef);
    EXPECT_EQ(cache.bounds().min(), Orv::Math::Vector3(row.expected.boxMinX, row.expected.boxMinY, 0));
    EXPECT_EQ(cache.bounds().max(), Orv::Math::Vector3(row.expected.boxMaxX, row.expected.boxMaxY, 0));
}

INSTANTIATE_TEST_SUITE_P(
    Table, KelChartVariableCacheCases,
    ::testing::Values(
        CaseRow{"BothDefined", false, false, false, {{3, 30}, {1, 10}, {2, 20}},
                {{3, 1, 2}, {30, 10, 20}, {0, 1, 2}, {}, {}, 1, 10, 3, 30}},
        CaseRow{"SortedStably", false, true, false, {{3, 30}, {1, 10}, {3, 31}, {-0.0f, 5}, {0, 6}},
                {{0, 0, 1, 3, 3}, {5, 6, 10, 30, 31}, {3, 4, 1, 0, 2}, {}, {}, 0, 5, 3, 31}},
        CaseRow{"XUndefined", false, false, false, {{5, 50}, {0, 40, true, false}, {2, 20}},
                {{5, 2}, {50, 20}, {0, 1, 2}, {40}, {}, 2, 20, 5, 50}},
        CaseRow{"YUndefined", false, false, false, {{5, 50}, {7, 0, false, true}, {2, 20}},
                {{5, 2}, {50, 20}, {0, 1, 2}, {}, {7}, 2, 20, 7, 50}},
        CaseRow{"PlusInfinityIsUndefined", false, false, false, {{5, 50}, {inf, 40}, {2, inf}},
                {{5}, {50}, {0, 1, 2}, {40}, {2}, 2, 40, 5, 50}},
        CaseRow{"PositionalWithUndefined", false, false, true, {{9, 50}, {0, 40, true, false}, {8, 0, false, true}},
                {{0, 1, 2}, {50, 40, 0}, {0, 1, 2}, {40}, {2}, 0, 50, 0, 50}},
        CaseRow{"SortedPositional", false, true, true, {{9, 90}, {1, 10}, {5, 50}},
                {{0, 1, 2}, {10, 50, 90}, {1, 2, 0}, {}, {}, 0, 10, 2, 90}},
        CaseRow{"Scalar", true, false, false, {{0, 4}, {0, -1}},
                {{0, 0}, {4, -1}, {0, 1}, {}, {}, 0, -1, 0, 4}},
        CaseRow{"ScalarUndefinedGoesToMinimum", true, false, false, {{0, 4}, {0, 0, false, true}, {0, 2}},
                {{0, 0, 0}, {4, 2, 2}, {0, 1, 2}, {}, {1}, 0, 2, 0, 4}},
        CaseRow{"ScalarAllUndefined", true, false, false, {{0, 4, false, true}, {0, 3, false, true}},
                {{0, 0}, {0, 0}, {0, 1}, {}, {0, 1}, 0, 0, 0, 0}},
        CaseRow{"ScalarPositional", true, false, true, {{0, 4}, {0, 6}},
                {{0, 1}, {4, 6}, {0, 1}, {}, {}, 0, 4, 1, 6}}),
    [](const auto& info) { return std::string(info.param.name); });

namespace {
class KelChartVariableCacheTest : public CacheFixture, public ::testing::Test {};
} // namespace

TEST_F(KelChartVariableCacheTest, NaNIsAnOrdinaryValue)
{
    KelChartVariableCache cache(makeVariable({{1, notANumber}, {notANumber, 2}, {3, 3}}, false), false, {});
    ASSERT_EQ(cache.x().size(), 3u);
    EXPECT_TRUE(std::isnan(cache.y()[0]));
    EXPECT_TRUE(std::isnan(cache.x()[1]));
    EXPECT_TRUE(cache.xUndef().empty() && cache.yUndef().empty());
    EXPECT_EQ(cache.bounds().min(), Orv::Math::Vector3(1, 2, 0));
    EXPECT_EQ(cache.bounds().max(), Orv::Math::Vector3(3, 3, 0));
}

TEST_F(KelChartVariableCacheTest, CompletelyUndefinedItemIsReportedAndKeptOnlyInIndex)
{
    orvdebug::ScopedCapture capture(kel::debug_logger::debuglogger());
    KelChartVariableCache cache(makeVariable({{1, 1}, {0, 0, true, true}}, false), false, {});
    EXPECT_EQ(cache.index(), (std::vector<size_t>{0, 1}));
    EXPECT_EQ(cache.x(), std::vector<double>{1});
    const orvdebug::Message expected{orvdebug::Stream::Out, "Err",
                                     "Some value that is completely undefined was found in variable(T1)"};
    EXPECT_EQ(std::count(capture.messages().begin(), capture.messages().end(), expected), 1);
}

TEST_F(KelChartVariableCacheTest, TraceLinesOfAVectorVariable)
{
    orvdebug::ScopedCapture capture(kel::debug_logger::debuglogger());
    KelChartVariableCache cache(makeVariable({{1.5f, 2}, {0, inf}}, false), false, {});
    EXPECT_EQ(capture.texts(orvdebug::Stream::Log),
              (std::vector<std::string>{"caching : T1", "\tenabled", "\tvector 2",
                                        "\t\tvalue = {1.5, 2}, undef = {0, 0}, min = {1.5, 2}\n"
                                        "\t\tvalue = {0, inf}, undef = {0, 1}, min = {0, 2}\n"
                                        "\tsize : 2",
                                        "\tvalid = 1"}));
}

TEST_F(KelChartVariableCacheTest, TraceLinesOfAScalarVariable)
{
    orvdebug::ScopedCapture capture(kel::debug_logger::debuglogger());
    KelChartVariableCache cache(makeVariable({{0, 4}, {0, 2}}, true), false, {});
    EXPECT_EQ(capture.texts(orvdebug::Stream::Log),
              (std::vector<std::string>{"caching : T1", "\tenabled", "\tscalar",
                                        "\t\tvalue = 4, undef = 0, minY : 4\n"
                                        "\t\tvalue = 2, undef = 0, minY : 2\n"
                                        "\tsize : 2",
                                        "\tvalid = 1"}));
}

TEST_F(KelChartVariableCacheTest, DisabledOrEmptyVariablesGiveAnInvalidEmptyCache)
{
    orvdebug::ScopedCapture capture(kel::debug_logger::debuglogger());
    KelChartVariable& v = makeVariable({{1, 1}}, false);
    v.enabled.set(false);
    KelChartVariableCache disabled(v, true, {});
    EXPECT_FALSE(disabled.valid());
    EXPECT_TRUE(disabled.index().empty());
    EXPECT_EQ(capture.texts(orvdebug::Stream::Log), std::vector<std::string>{"caching : T1"});

    v.enabled.set(true);
    v.variableiter.clear();
    KelChartVariableCache empty(v, true, {});
    EXPECT_FALSE(empty.valid());
    EXPECT_FALSE(empty.bounds().defined());
    EXPECT_EQ(capture.texts(orvdebug::Stream::Log).back(), "\tsize : 0");
}

TEST_F(KelChartVariableCacheTest, MinXDeltaAndFillBaseLine)
{
    KelChartVariableCache spaced(makeVariable({{1, 2}, {4, 5}, {6, 3}}, false), false, {});
    EXPECT_EQ(spaced.minXDelta(), 2.0);
    EXPECT_EQ(spaced.fillBaseLine(), 2.0);
    KelChartVariableCache single(makeVariable({{5, -2}, {5, -5}}, false), false, {});
    EXPECT_EQ(single.fillBaseLine(), -2.0);
    KelChartVariableCache none;
    EXPECT_EQ(none.minXDelta(), 0.0);
    EXPECT_FALSE(none.valid());
    KelChartVariableCache straddling(makeVariable({{5, -1}, {3, 3}}, false), false, {});
    EXPECT_EQ(straddling.fillBaseLine(), 0.0);
    EXPECT_EQ(straddling.minXDelta(), -2.0);
}

TEST_F(KelChartVariableCacheTest, CopiesShareNothingAndMovesEmptyTheSource)
{
    KelChartVariableCache cache(makeVariable({{1, 2}, {4, 5}}, false), false, {});
    KelChartVariableCache copy(cache);
    EXPECT_EQ(copy.x(), cache.x());
    KelChartVariableCache moved(std::move(cache));
    EXPECT_EQ(moved.x(), copy.x());
    EXPECT_TRUE(cache.x().empty()); // NOLINT(bugprone-use-after-move): a move empties the source
    EXPECT_EQ(&moved.variable(), &variable);
}

TEST(KelStableOrder, EqualsTheComparisonStableSortOnTiesAndInfinities)
{
    std::mt19937 random(7);
    std::uniform_int_distribution<int> pick(0, 9);
    const double pool[] = {-std::numeric_limits<double>::infinity(), -1e300, -2.5, -0.0, 0.0, 1e-310, 3.0, 3.0,
                           1e300, std::numeric_limits<double>::infinity()};
    std::vector<double> values(5000);
    for (double& v : values)
        v = pool[pick(random)];
    std::vector<std::uint64_t> keys;
    for (double v : values)
        keys.push_back(KelStableOrder::key(v));
    std::vector<size_t> expected(values.size());
    std::iota(expected.begin(), expected.end(), size_t(0));
    std::stable_sort(expected.begin(), expected.end(), [&](size_t a, size_t b) { return values[a] < values[b]; });
    const auto order = KelStableOrder::byKey<std::uint32_t>(keys);
    EXPECT_TRUE(std::equal(order.begin(), order.end(), expected.begin()));
}

TEST(KelStableOrder, NaNGoesLastInInputOrder)
{
    const double nanValue = std::numeric_limits<double>::quiet_NaN();
    const std::vector<double> values{nanValue, 2, std::numeric_limits<double>::infinity(), -nanValue, 1};
    std::vector<std::uint64_t> keys;
    for (double v : values)
        keys.push_back(KelStableOrder::key(v));
    EXPECT_EQ(KelStableOrder::byKey<size_t>(keys), (std::vector<size_t>{4, 1, 2, 0, 3}));
}
