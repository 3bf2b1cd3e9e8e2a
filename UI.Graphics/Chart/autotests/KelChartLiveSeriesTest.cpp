#include "KelChartLiveSeries.h"

#include "OrvDebug.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <memory>
#include <random>

namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

// One item of a stream, as an iterator would give it.
struct Item {
    float x;
    float y;
    bool xUndefined;
    bool yUndefined;
};

// How a stream looks: its size, the limit of the series it feeds, the
// blocks it arrives in, and how often its values are not plain numbers.
struct Stream {
    const char* name;
    std::size_t items;
    std::size_t limit;
    std::size_t largestBlock;
    double oddShare;
    bool descending = false;
};

std::ostream& operator<<(std::ostream& out, const Stream& s)
{
    return out << s.name;
}

bool sameBits(const double* a, const double* b, std::size_t n)
{
    return n == 0 || std::memcmp(a, b, n * sizeof(double)) == 0;
}

bool sameBits(const Orv::Math::BoundingBox& a, const Orv::Math::BoundingBox& b)
{
    const Orv::Math::Vector3 values[] = {a.min(), a.max(), b.min(), b.max()};
    return std::memcmp(&values[0], &values[2], 2 * sizeof(Orv::Math::Vector3)) == 0;
}

class LiveSeriesTest : public ::testing::TestWithParam<Stream> {
protected:
    // A random walk in time with gaps, NaN values, infinities and undefined
    // components at the stream's rate.
    std::vector<Item> makeItems(std::size_t count)
    {
        std::mt19937 random(11);
        std::normal_distribution<float> step;
        std::uniform_real_distribution<double> chance(0.0, 1.0);
        std::vector<Item> items;
        float x = 1000.0f, y = 0.0f;
        for (std::size_t k = 0; k < count; ++k) {
            x += GetParam().descending && chance(random) < 0.01 ? -5.0f : 0.25f;
            y += step(random);
            Item item{x, y, false, false};
            if (chance(random) < GetParam().oddShare)
                odden(item, std::uniform_int_distribution<int>(0, 6)(random));
            items.push_back(item);
        }
        return items;
    }
    // Kinds 0 to 6: y undefined, x undefined, y NaN, x NaN, y -inf, y +inf, both undefined.
    static void odden(Item& item, int kind)
    {
        const float odd[] = {float(nan), float(nan), -float(infinity), float(infinity)};
        item.yUndefined = kind == 0 || kind == 6;
        item.xUndefined = kind == 1 || kind == 6;
        if (kind >= 2 && kind <= 5)
            (kind == 3 ? item.x : item.y) = odd[kind - 2];
    }
    void feed(KelChartLiveSeries& live, const std::vector<Item>& items, std::size_t from, std::size_t to)
    {
        std::mt19937 random(from);
        std::uniform_int_distribution<std::size_t> size(1, GetParam().largestBlock);
        for (std::size_t k = from; k < to;) {
            const std::size_t end = std::min(to, k + size(random));
            std::vector<double> x, y;
            for (; k < end; ++k) {
                x.push_back(items[k].xUndefined ? infinity : items[k].x);
                y.push_back(items[k].yUndefined ? infinity : items[k].y);
            }
            if (x.size() == 1)
                live.append(x[0], y[0], items[end - 1].xUndefined, items[end - 1].yUndefined);
            else
                live.append(x.data(), y.data(), x.size());
        }
    }
    // The cache of the items in [from, to), built from scratch.
    std::unique_ptr<KelChartVariableCache> scratch(const std::vector<Item>& items, std::size_t from, std::size_t to)
    {
        std::vector<float> x, y;
        std::vector<bool> xUndefined, yUndefined;
        for (std::size_t k = from; k < to; ++k) {
            x.push_back(items[k].x);
            y.push_back(items[k].y);
            xUndefined.push_back(items[k].xUndefined);
            yUndefined.push_back(items[k].yUndefined);
        }
        scratchVariable.variableiter.setVector2Data(x, y, xUndefined, yUndefined);
        return std::make_unique<KelChartVariableCache>(scratchVariable, false, QStringList());
    }
    void expectSame(const KelChartLiveSeries& live, const KelChartVariableCache& cache)
    {
        const KelChartDecimatedView::Data data = live.data();
        ASSERT_EQ(data.size, cache.x().size());
        EXPECT_TRUE(sameBits(data.x, cache.x().data(), data.size));
        EXPECT_TRUE(sameBits(data.y, cache.y().data(), data.size));
        ASSERT_EQ(data.yUndefCount, cache.yUndef().size());
        EXPECT_TRUE(sameBits(data.yUndef, cache.yUndef().data(), data.yUndefCount));
        ASSERT_EQ(data.xUndefCount, cache.xUndef().size());
        EXPECT_TRUE(sameBits(data.xUndef, cache.xUndef().data(), data.xUndefCount));
        EXPECT_EQ(live.valid(), cache.valid());
        EXPECT_TRUE(sameBits(live.bounds(), cache.bounds()));
        EXPECT_TRUE(sameBits(live.cache().bounds(), cache.bounds()));
        expectSameViews(KelChartDecimatedView(live), KelChartDecimatedView(cache), cache);
    }
    // Decimated lines and points over several windows of the data, and what
    // the painter reads besides.
    static void expectSameViews(const KelChartDecimatedView& live, const KelChartDecimatedView& built,
                                const KelChartVariableCache& cache)
    {
        EXPECT_EQ(live.ordered(), built.ordered());
        EXPECT_EQ(live.halfNaN(), built.halfNaN());
        EXPECT_EQ(std::memcmp(&live.numberSpan(), &built.numberSpan(), sizeof(KelChartDecimatedView::Span)), 0);
        if (!cache.bounds().defined())
            return;
        const double x0 = cache.bounds().min().x();
        const double x1 = cache.bounds().max().x();
        for (const double from : {0.0, 0.3, 0.9})
            for (const long columns : {7L, 640L})
                EXPECT_EQ(live.lines(x0 + from * (x1 - x0), x1, columns),
                          built.lines(x0 + from * (x1 - x0), x1, columns))
                    << from << " " << columns;
        KelChartDecimatedView::Placement placement;
        placement.matrix =
            Orv::Math::DoubleMatrix::ortho(x0, x1, cache.bounds().min().y(), cache.bounds().max().y(), -1, 1);
        placement.width = 300;
        placement.height = 200;
        placement.bottom = 200;
        EXPECT_EQ(live.lines(placement), built.lines(placement));
        EXPECT_EQ(live.points(placement), built.points(placement));
    }

    KelModifiedGroup group;
    KelChartVariable variable{group};
    KelChartVariable scratchVariable{group};
};

TEST_P(LiveSeriesTest, HoldsWhatACacheOfTheKeptItemsHolds)
{
    orvdebug::ScopedCapture capture(kel::debug_logger::debuglogger());
    const Stream& stream = GetParam();
    const std::vector<Item> items = makeItems(stream.items);
    KelChartLiveSeries live(variable, stream.limit);
    std::size_t fed = 0;
    for (const double share : {0.01, 0.2, 0.55, 1.0}) {
        const auto to = static_cast<std::size_t>(share * double(stream.items));
        feed(live, items, fed, to);
        fed = to;
        const std::size_t from = stream.limit > 0 && fed > stream.limit ? fed - stream.limit : 0;
        SCOPED_TRACE(fed);
        EXPECT_EQ(live.items(), fed - from);
        expectSame(live, *scratch(items, from, fed));
    }
}

INSTANTIATE_TEST_SUITE_P(
    Streams, LiveSeriesTest,
    ::testing::Values(Stream{"plain_unbounded", 20000, 0, 100, 0.0}, Stream{"plain_rolling", 60000, 5000, 300, 0.0},
                      Stream{"odd_rolling", 60000, 7000, 50, 0.02}, Stream{"odd_one_by_one", 9000, 1500, 1, 0.05},
                      Stream{"mostly_odd", 8000, 3000, 20, 0.6}, Stream{"out_of_order", 30000, 4000, 64, 0.0, true},
                      Stream{"large_blocks", 200000, 40000, 10000, 0.001}),
    [](const auto& info) { return std::string(info.param.name); });

class LiveSeriesMemoryTest : public ::testing::Test {
protected:
    KelModifiedGroup group;
    KelChartVariable variable{group};
};

// Fed far more than it keeps, a rolling series holds what its limit needs.
TEST_F(LiveSeriesMemoryTest, ARollingWindowHoldsWhatItsLimitNeeds)
{
    constexpr std::size_t limit = 100000;
    KelChartLiveSeries live(variable, limit);
    std::vector<double> x(1000), y(1000);
    std::size_t most = 0;
    for (std::size_t block = 0; block < 3000; ++block) {
        for (std::size_t k = 0; k < x.size(); ++k) {
            x[k] = double(block * x.size() + k);
            y[k] = std::sin(x[k] / 100.0);
        }
        live.append(x.data(), y.data(), x.size());
        most = std::max(most, live.memoryBytes());
    }
    EXPECT_EQ(live.items(), limit);
    EXPECT_EQ(live.data().x[0], double(3000 * 1000 - limit));
    // A cache of `limit` points holds x, y and the items' positions.
    const double cacheBytes = double(limit) * (2 * sizeof(double) + sizeof(std::size_t));
    EXPECT_LE(double(most), 1.5 * cacheBytes);
    EXPECT_LE(double(most), 1.25 * double(limit) * 2 * sizeof(double) + 0.25 * cacheBytes);
}

TEST_F(LiveSeriesMemoryTest, ClearAndNewLimitsStartAfresh)
{
    KelChartLiveSeries live(variable, 10);
    for (int k = 0; k < 25; ++k)
        live.append(k, k * 2.0);
    EXPECT_EQ(live.items(), 10u);
    EXPECT_EQ(live.data().x[0], 15.0);
    live.setLimit(4);
    EXPECT_EQ(live.items(), 4u);
    EXPECT_EQ(live.data().x[0], 21.0);
    EXPECT_EQ(live.bounds().min().x(), 21.0f);
    live.clear();
    EXPECT_EQ(live.items(), 0u);
    EXPECT_FALSE(live.valid());
    EXPECT_FALSE(live.bounds().defined());
    live.append(1.0, nan);
    EXPECT_TRUE(live.valid());
}

} // namespace
