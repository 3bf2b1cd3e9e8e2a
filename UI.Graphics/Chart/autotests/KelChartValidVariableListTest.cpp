#include "KelChartValidVariableList.h"

#include "ChartWithData.h"
#include "KelChartVariableCache.h"

#include <limits>
#include <ostream>
#include <stdexcept>

namespace {

using Orv::Math::Vector2;
using Orv::Math::Vector3;

class KelChartValidVariableListTest : public ChartWithData {
protected:
    // A variable whose y data are `ys`, all at x = 0.
    KelChartVariable& variable(const QString& name, const std::vector<float>& ys)
    {
        return addVariable(name, std::vector<float>(ys.size()), ys);
    }

    KelChartValidVariableList list;
};

constexpr float infinity = std::numeric_limits<float>::infinity();

struct RangeCase {
    const char* what;
    std::vector<float> ys;
    Vector2 expected;
    bool autoRange = true;
    float manualMin = 0, manualMax = 0; // the x of the variable's min and max
};
std::ostream& operator<<(std::ostream& os, const RangeCase& c) { return os << c.what; }

class KelChartValidVariableListRangeTest : public KelChartValidVariableListTest,
                                           public ::testing::WithParamInterface<RangeCase> {};

} // namespace

TEST_P(KelChartValidVariableListRangeTest, RangeFromTheCacheIsTheManualOneOrTheRoundedData)
{
    const RangeCase& c = GetParam();
    KelChartVariable& var = variable("v", c.ys);
    var.autoRange.set(c.autoRange);
    var.min.reset(Vector3(c.manualMin, 7, 7), "", "", "");
    var.max.reset(Vector3(c.manualMax, -7, -7), "", "", "");
    list.push_back(KelChartVariableCache(var, false, QStringList()));
    const Vector2 range = list.minmax(0);
    EXPECT_EQ(range, c.expected) << "(" << range[0] << ", " << range[1] << ")";
    EXPECT_TRUE(ensures().empty());
}

// Data from lo to hi are widened to lo * 0.99999 (lo * 1.00001 when negative) and
// hi * 1.00001 (hi * 0.99999 when negative); the nice values inside that, 11
// intervals wanted, are found, and each end goes one interval beyond the
// outermost value inside. For 0.3 .. 9.7: [0.299997, 9.700097] holds 1 .. 9 in
// steps of 1, so the range is (0, 10).
INSTANTIATE_TEST_SUITE_P(Data, KelChartValidVariableListRangeTest, ::testing::Values(
    RangeCase{"0.3 to 9.7", {0.3f, 5.0f, 9.7f}, Vector2(0, 10)},
    RangeCase{"-9.7 to -0.3", {-0.3f, -9.7f}, Vector2(-10, 0)},
    RangeCase{"1 to 10, nice ends", {10, 1}, Vector2(0, 11)},
    RangeCase{"across zero", {-0.35f, 0.75f}, Vector2(-0.4f, 0.8f)},
    RangeCase{"all 3", {3, 3, 3}, Vector2(0, 6)},
    RangeCase{"all -2", {-2, -2}, Vector2(-4, 0)},
    RangeCase{"all 0", {0, 0}, Vector2(-1, 1)},
    RangeCase{"no points", {}, Vector2(0, 1)},
    // No nice values to find: the range runs from twice the low end to 0 (or 0 to twice the high end).
    RangeCase{"infinite end", {-infinity, 1}, Vector2(-infinity, 0)},
    RangeCase{"manual", {3, 4}, Vector2(0, 10), false, 0, 10},
    RangeCase{"empty manual is ignored", {3, 3}, Vector2(0, 6), false, 5, 5},
    RangeCase{"manual unused with autoRange", {3, 3}, Vector2(0, 6), true, 0, 10}));

TEST_F(KelChartValidVariableListTest, GivenRangesAreKeptFoundByExactNameAndCleared)
{
    list.push_back(variable("a", {}), Vector2(-8, -2));
    list.push_back(variable("twin", {}), Vector2(-3, 5));
    list.push_back(variable("twin", {}), Vector2(2, 8));
    EXPECT_EQ(list.minmax(0), Vector2(-8, -2));
    EXPECT_EQ(std::vector<double>({list.fillBaseLine(0), list.fillBaseLine(1), list.fillBaseLine(2)}),
              std::vector<double>({-2, 0, 2}));
    EXPECT_EQ(std::vector<int>({list.findIndexByName("twin"), list.findIndexByName("tw")}), std::vector<int>({1, -1}));
    EXPECT_THROW(list.minmax(3), std::out_of_range);
    list.clear();
    EXPECT_EQ(list.size(), 0u);
    EXPECT_EQ(list.findIndexByName("a"), -1);
    EXPECT_THROW(list.variable(0), std::out_of_range);
    EXPECT_TRUE(ensures().empty());
}

TEST_F(KelChartValidVariableListTest, DisabledVariablesAreReportedAndKept)
{
    KelChartVariable& var = variable("off", {1, 2});
    var.enabled.set(false);
    list.push_back(var, Vector2(0, 1));
    list.push_back(KelChartVariableCache(var, false, QStringList()));
    // A disabled variable's cache is empty, so its range is (0, 1).
    EXPECT_EQ(list.minmax(1), Vector2(0, 1));
    EXPECT_EQ(ensures(), (std::vector<std::string>{
        "\"p_variable.enabled()\" - void KelChartValidVariableList::push_back(const KelChartVariable&, "
        "const Orv::Math::Vector2&)",
        "\"var.enabled()\" - void KelChartValidVariableList::push_back(const KelChartVariableCache&)"}));
}
