#include "KelChartVariableCache.h"
#include "KelStableOrder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <numeric>
#include <random>
#include <tuple>

namespace {

constexpr float inf = std::numeric_limits<float>::infinity();

struct Item {
    float x, y;
    bool xUndefined = false, yUndefined = false;
};

struct Expected {
    std::vector<double> x, y;
    std::vector<size_t> index;
    std::vector<double> xUndef, yUndef;
    float boxMinX, boxMinY, boxMaxX, boxMaxY;
};
struct CaseRow {
    const char* name;
    bool scalar, sort, positional;
    std::vector<Item> items;
    Expected expected;
};
std::ostream& operator<<(std::ostream& os, const CaseRow& row)
{
    return os << row.name;
}

class CacheFixture {
protected:
    // The variable "T1", drawn against "axis.x.bottom", holding the items.
    KelChartVariable& makeVariable(const std::vector<Item>& items, bool scalar)
    {
        std::vector<float> xs, ys;
        std::vector<bool> xu, yu;
        for (const Item& item : items) {
            xs.push_back(item.x), ys.push_back(item.y);
            xu.push_back(item.xUndefined), yu.push_back(item.yUndefined);
        }
        if (scalar)
            variable.variableiter.setScalarData(std::vector<double>(ys.begin(), ys.end()), yu);
        else
            variable.variableiter.setVector2Data(xs, ys, xu, yu);
        variable.rename("T1");
        variable.xAxis.set("axis.x.bottom");
        return variable;
    }
    std::vector<std::string> traceOf(const std::vector<Item>& items, bool scalar)
    {
        orvdebug::ScopedCapture capture(kel::debug_logger::debuglogger());
        KelChartVariableCache cache(makeVariable(items, scalar), false, {});
        return capture.texts(orvdebug::Stream::Log);
    }

    KelModifiedGroup group;
    KelChartVariable variable{group};
};

class KelChartVariableCacheCases : public CacheFixture, public ::testing::TestWithParam<CaseRow> {};
class KelChartVariableCacheTest : public CacheFixture, public ::testing::Test {};

} // namespace

TEST_P(KelChartVariableCacheCases, ArraysAndBoundsFollowTheCaseTable)
{
    const CaseRow& row = GetParam();
    const QStringList positionAxes = row.positional ? QStringList{"axis.x.bottom"} : QStringList{"other"};
    KelChartVariableCache cache(makeVariable(row.items, row.scalar), row.sort, positionAxes);
    EXPECT_TRUE(cache.valid());
    EXPECT_EQ(cache.scalar(), row.scalar);
    const Expected& e = row.expected;
    EXPECT_EQ(std::tie(cache.index(), cache.x(), cache.y(), cache.xUndef(), cache.yUndef()),
              std::tie(e.index, e.x, e.y, e.xUndef, e.yUndef));
    EXPECT_EQ(cache.bounds().min(), Orv::Math::Vector3(row.expected.boxMinX, row.expected.boxMinY, 0));
    EXPECT_EQ(cache.bounds().max(), Orv::Math::Vector3(row.expected.boxMaxX, row.expected.boxMaxY, 0));
}

INSTANTIATE_TEST_SUITE_P(
    Table, KelChartVariableCacheCases,
    ::testing::Values(
        CaseRow{"SortedStably", false, true, false, {{3, 30}, {1, 10}, {3, 31}, {-0.0f, 5}, {0, 6}},
                {{0, 0, 1, 3, 3}, {5, 6, 10, 30, 31}, {3, 4, 1, 0, 2}, {}, {}, 0, 5, 3, 31}},
        CaseRow{"YUndefined", false, false, false, {{5, 50}, {7, 0, false, true}, {2, 20}},
                {{5, 2}, {50, 20}, {0, 1, 2}, {}, {7}, 2, 20, 7, 50}},
        CaseRow{"CompletelyUndefinedOnlyInIndex", false, false, false, {{1, 1}, {0, 0, true, true}},
                {{1}, {1}, {0, 1}, {}, {}, 1, 1, 1, 1}},
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

// NaN is kept as a value and left out of the bounds; a completely undefined item is reported once.
TEST_F(KelChartVariableCacheTest, NaNIsAnOrdinaryValueACompletelyUndefinedItemIsReported)
{
    const float nan = std::numeric_limits<float>::quiet_NaN();
    orvdebug::ScopedCapture capture(kel::debug_logger::debuglogger());
    KelChartVariableCache cache(makeVariable({{1, nan}, {nan, 2}, {0, 0, true, true}, {3, 3}}, false), false, {});
    ASSERT_EQ(cache.x().size(), 3u);
    EXPECT_TRUE(std::isnan(cache.y()[0]) && std::isnan(cache.x()[1]));
    EXPECT_TRUE(cache.xUndef().empty() && cache.yUndef().empty());
    EXPECT_EQ(cache.bounds().min(), Orv::Math::Vector3(1, 2, 0));
    EXPECT_EQ(cache.bounds().max(), Orv::Math::Vector3(3, 3, 0));
    const orvdebug::Message expected{orvdebug::Stream::Out, "Err",
                                     "Some value that is completely undefined was found in variable(T1)"};
    EXPECT_EQ(std::count(capture.messages().begin(), capture.messages().end(), expected), 1);
}

TEST_F(KelChartVariableCacheTest, TraceLinesOfVectorAndScalarVariables)
{
    EXPECT_EQ(traceOf({{1.5f, 2}, {0, inf}}, false),
              (std::vector<std::string>{"caching : T1", "\tenabled", "\tvector 2",
                                        "\t\tvalue = {1.5, 2}, undef = {0, 0}, min = {1.5, 2}\n"
                                        "\t\tvalue = {0, inf}, undef = {0, 1}, min = {0, 2}\n"
                                        "\tsize : 2",
                                        "\tvalid = 1"}));
    EXPECT_EQ(traceOf({{0, 4}, {0, 2}}, true), (std::vector<std::string>{"caching : T1", "\tenabled", "\tscalar",
                                                                         "\t\tvalue = 4, undef = 0, minY : 4\n"
                                                                         "\t\tvalue = 2, undef = 0, minY : 2\n"
                                                                         "\tsize : 2",
                                                                         "\tvalid = 1"}));
    EXPECT_EQ(traceOf({}, false).back(), "\tsize : 0");
    variable.enabled.set(false);
    EXPECT_EQ(traceOf({{1, 1}}, false), std::vector<std::string>{"caching : T1"});
    EXPECT_FALSE(KelChartVariableCache(variable, true, {}).valid());
}

TEST_F(KelChartVariableCacheTest, MinXDeltaAndFillBaseLineFollowTheCachedPoints)
{
    const struct {
        std::vector<Item> items;
        double minXDelta, fillBaseLine;
    } rows[] = {{{{1, 2}, {4, 5}, {6, 3}}, 2, 2},
                {{{5, -5}, {7, -2}}, 2, -2},
                {{{5, -1}}, 5, -1}, // one point: its x
                {{{0, -1}, {0.5f, 3}}, 0.5, 0},
                {{}, 0, 0}};
    for (const auto& row : rows) {
        const KelChartVariableCache cache(makeVariable(row.items, false), false, {});
        EXPECT_EQ(cache.minXDelta(), row.minXDelta) << row.items.size() << " points";
        EXPECT_EQ(cache.fillBaseLine(), row.fillBaseLine);
    }
}

TEST_F(KelChartVariableCacheTest, NearestIndexAlongSortedXSkipsNaNAndPrefersTheFirstOfEquals)
{
    const float nan = std::numeric_limits<float>::quiet_NaN();
    // Sorted: 1, 3, 3, 10, NaN.
    const KelChartVariableCache cache(makeVariable({{10, 0}, {3, 1}, {nan, 2}, {1, 3}, {3, 4}}, false), true, {});
    ASSERT_EQ(cache.x().size(), 5u);
    const struct {
        double x;
        size_t expected;
    } rows[] = {{-100, 0}, {1, 0}, {1.9, 0}, {2, 0}, {2.1, 1}, {3, 1}, {6.4, 1}, {6.6, 3}, {1e9, 3}};
    for (const auto& row : rows)
        EXPECT_EQ(cache.nearestIndex(row.x), row.expected) << "x = " << row.x;
    EXPECT_EQ(cache.nearestIndex(std::nan("")), KelChartVariableCache::npos);

    const KelChartVariableCache onlyNaN(makeVariable({{nan, 1}, {nan, 2}}, false), true, {});
    EXPECT_EQ(onlyNaN.nearestIndex(0), KelChartVariableCache::npos);
    EXPECT_EQ(KelChartVariableCache().nearestIndex(0), KelChartVariableCache::npos);
}

TEST_F(KelChartVariableCacheTest, NearestIndexInTwoDimensionsWeighsTheAxesByTheirScales)
{
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const KelChartVariableCache cache(makeVariable({{0, 0}, {10, 1}, {nan, 5}, {5, nan}, {0, 100}}, false), false, {});
    // With equal scales (0, 100) is nearest to (9, 90); with y measured in
    // thousands, x decides and (10, 1) is.
    EXPECT_EQ(cache.nearestIndex(9, 40, 1, 1), 1u);
    EXPECT_EQ(cache.nearestIndex(9, 90, 1, 1), 4u);
    EXPECT_EQ(cache.nearestIndex(9, 90, 1, 1000), 1u);
    // NaN points never count, whatever is asked.
    EXPECT_EQ(cache.nearestIndex(5, 5, 1, 1), 1u);
    EXPECT_EQ(cache.nearestIndex(5, 5, 0, 1), KelChartVariableCache::npos);
    EXPECT_EQ(cache.nearestIndex(std::nan(""), 5, 1, 1), KelChartVariableCache::npos);
}

// Ties, signed zeros, denormals and infinities come out as a comparison stable sort puts them; NaN goes
// last in input order.
TEST(KelStableOrder, EqualsTheComparisonStableSortWithNaNLast)
{
    const double infinity = std::numeric_limits<double>::infinity();
    const double pool[] = {-infinity, -1e300, -2.5, -0.0, 0.0, 1e-310, 3.0, 3.0, 1e300, infinity};
    std::mt19937 random(7);
    std::uniform_int_distribution<int> pick(0, 9);
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

    const double nan = std::numeric_limits<double>::quiet_NaN();
    keys.clear();
    for (double v : {nan, 2.0, infinity, -nan, 1.0})
        keys.push_back(KelStableOrder::key(v));
    EXPECT_EQ(KelStableOrder::byKey<size_t>(keys), (std::vector<size_t>{4, 1, 2, 0, 3}));
}

namespace {

// Forwards only the iteration interface of the variable's own iterator, so
// that a cache reads it item by item.
class ForwardingIter : public KelVariableIterInterface {
public:
    explicit ForwardingIter(KelVariableIter& inner)
        : m_inner(inner)
    {
    }
    bool next() override { return m_inner.next(); }
    void reset() override { m_inner.reset(); }
    double scalarValue() override { return m_inner.scalarValue(); }
    void vector2Value(Orv::Math::Vector2& value) override { m_inner.vector2Value(value); }
    void vector3Value(Orv::Math::Vector3& value) override { m_inner.vector3Value(value); }
    void undefinedFlags(bool& x, bool& y, bool& z) override { m_inner.undefinedFlags(x, y, z); }
    bool hasDimension(int n) override { return m_inner.hasDimension(n); }
    void setConverter(const boost::shared_ptr<IUnitsConverter>& converter) override { m_inner.setConverter(converter); }
    void setUnitSystemFlag(bool on) override { m_inner.setUnitSystemFlag(on); }
    void units(QString& x, QString& y, QString& z) override { m_inner.units(x, y, z); }
    bool setUnits(const QString& x, const QString& y, const QString& z) override { return m_inner.setUnits(x, y, z); }
    void logarithmic(bool& x, bool& y, bool& z) const override { m_inner.logarithmic(x, y, z); }
    void setLogarithmic(bool x, bool y, bool z) override { m_inner.setLogarithmic(x, y, z); }

private:
    KelVariableIter& m_inner;
};

struct PerItemCache : KelChartVariableCache {
    PerItemCache(const KelChartVariable& variable, KelVariableIterInterface& items, bool sort,
                 const QStringList& positionAxes)
        : KelChartVariableCache(variable, items, sort, positionAxes)
    {
    }
};

// Bit patterns, so that NaN compares equal to the same NaN.
std::vector<std::uint64_t> bits(const std::vector<double>& values)
{
    std::vector<std::uint64_t> result;
    for (const double v : values) {
        std::uint64_t b;
        std::memcpy(&b, &v, sizeof b);
        result.push_back(b);
    }
    return result;
}

void expectSameCache(const KelChartVariableCache& a, const KelChartVariableCache& b)
{
    EXPECT_EQ(std::make_tuple(a.valid(), a.scalar(), a.index()), std::make_tuple(b.valid(), b.scalar(), b.index()));
    EXPECT_EQ(bits(a.x()), bits(b.x()));
    EXPECT_EQ(bits(a.y()), bits(b.y()));
    EXPECT_EQ(bits(a.xUndef()), bits(b.xUndef()));
    EXPECT_EQ(bits(a.yUndef()), bits(b.yUndef()));
    ASSERT_EQ(a.bounds().defined(), b.bounds().defined());
    if (a.bounds().defined()) {
        EXPECT_EQ(a.bounds().min(), b.bounds().min());
        EXPECT_EQ(a.bounds().max(), b.bounds().max());
    }
    EXPECT_EQ(bits({a.minXDelta()}), bits({b.minXDelta()}));
}

// scalar, sort, positional, logarithmic
using PathCase = std::tuple<bool, bool, bool, bool>;
class KelChartVariableCachePaths : public CacheFixture, public ::testing::TestWithParam<PathCase> {};

} // namespace

// The in-memory iterator's arrays, read in bulk, give what reading item by
// item gives: arrays, flags, bounds, traces and messages.
TEST_P(KelChartVariableCachePaths, BulkAndPerItemReadsGiveTheSameCache)
{
    const auto [scalar, sort, positional, logarithmic] = GetParam();
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float values[] = {3, -2, 0, nan, inf, -inf, 1e-3f, 7, 3, 250, -0.0f, 5};
    std::vector<Item> items;
    std::mt19937 random(11);
    std::uniform_int_distribution<int> pick(0, 11), flag(0, 5);
    for (int i = 0; i < 400; ++i)
        items.push_back({values[pick(random)], values[pick(random)], flag(random) == 0, flag(random) == 0});
    makeVariable(items, scalar);
    variable.variableiter.setLogarithmic(logarithmic, logarithmic, false);
    const QStringList positionAxes = positional ? QStringList{"axis.x.bottom"} : QStringList{};
    ForwardingIter perItem(variable.variableiter);

    // Untraced and traced: a trace changes how sorting reads.
    orvdebug::ScopedCapture capture(kel::debug_logger::debuglogger());
    kel::debug_logger::debuglogger().setEnabled(orvdebug::Stream::Log, false);
    expectSameCache(KelChartVariableCache(variable, sort, positionAxes),
                    PerItemCache(variable, perItem, sort, positionAxes));
    kel::debug_logger::debuglogger().setEnabled(orvdebug::Stream::Log, true);
    capture.clear();
    const KelChartVariableCache bulk(variable, sort, positionAxes);
    const auto bulkMessages = capture.messages();
    capture.clear();
    expectSameCache(bulk, PerItemCache(variable, perItem, sort, positionAxes));
    EXPECT_EQ(bulkMessages, capture.messages());
}

INSTANTIATE_TEST_SUITE_P(Combinations, KelChartVariableCachePaths,
                         ::testing::Combine(::testing::Bool(), ::testing::Bool(), ::testing::Bool(), ::testing::Bool()));

// Copies share the arrays, which never change; a move (construction or assignment) takes them along.
TEST_F(KelChartVariableCacheTest, CopiesShareTheArrays)
{
    const KelChartVariableCache cache(makeVariable({{3, 30}, {1, 10}, {2, 0, false, true}}, false), true, {});
    KelChartVariableCache copy(cache);
    EXPECT_EQ(&copy.x(), &cache.x());
    EXPECT_EQ(&copy.yUndef(), &cache.yUndef());
    KelChartVariableCache assigned;
    assigned = copy;
    EXPECT_EQ(&assigned.index(), &cache.index());
    KelChartVariableCache moved(std::move(copy));
    EXPECT_EQ(&moved.y(), &cache.y());
    EXPECT_TRUE(copy.x().empty() && copy.yUndef().empty());
    EXPECT_EQ(moved.minXDelta(), 2.0);
    EXPECT_EQ(cache.minXDelta(), 2.0);
    KelChartVariableCache target;
    target = std::move(moved);
    EXPECT_TRUE(target.valid());
    EXPECT_EQ(target.x(), (std::vector<double>{1, 3}));
    EXPECT_EQ(&target.variable(), &variable);
    EXPECT_TRUE(moved.x().empty() && moved.y().empty() && moved.index().empty());
}
