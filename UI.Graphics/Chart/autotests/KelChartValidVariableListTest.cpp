#include "KelChartValidVariableList.h"

#include "KelChartVariableCache.h"
#include "OrvDebug.h"

#include <gtest/gtest.h>

#include <cmath>
#include <deque>
#include <limits>
#include <ostream>
#include <stdexcept>
#include <vector>

namespace {

using Orv::Math::Vector2;

class KelChartValidVariableListTest : public ::testing::Test {
protected:
    // A variable whose y data are `ys`, at x = 0, 1, 2, ...
    KelChartVariable& variable(const QString& name, const std::vector<float>& ys)
    {
        variables.emplace_back(group);
        KelChartVariable& var = variables.back();
        var.rename(name);
        std::vector<float> xs;
        for (size_t i = 0; i < ys.size(); ++i)
            xs.push_back(float(i));
        var.variableiter.setVector2Data(xs, ys);
        return var;
    }

    // The range the list gives the variable from its cache.
    Vector2 rangeFromCache(const KelChartVariable& var)
    {
        list.push_back(KelChartVariableCache(var, false, QStringList()));
        return list.minmax(list.size() - 1);
    }

    std::vector<std::string> ensures() const { return capture.texts(orvdebug::Stream::Ensure); }

    KelModifiedGroup group;
    std::deque<KelChartVariable> variables;
    KelChartValidVariableList list;
    orvdebug::ScopedCapture capture{kel::debug_logger::debuglogger()};
};

struct DataRangeCase {
    const char* what;
    std::vector<float> ys;
    Vector2 expected;
};
void PrintTo(const DataRangeCase& c, std::ostream* os)
{
    *os << c.what;
}

class KelChartValidVariableListDataRangeTest : public KelChartValidVariableListTest,
                                               public ::testing::WithParamInterface<DataRangeCase> {};

TEST_P(KelChartValidVariableListDataRangeTest, RoundsTheDataRange)
{
    const DataRangeCase& c = GetParam();
    const Vector2 range = rangeFromCache(variable("v", c.ys));
    EXPECT_EQ(range, c.expected) << "(" << range[0] << ", " << range[1] << ")";
    EXPECT_TRUE(ensures().empty());
}

// Data from lo to hi are widened to lo * 0.99999 (lo * 1.00001 when negative) and
// hi * 1.00001 (hi * 0.99999 when negative); the nice values inside that, 11
// intervals wanted, are found, and each end goes one interval beyond the
// outermost value inside. For 0.3 .. 9.7: [0.299997, 9.700097] holds 1 .. 9 in
// steps of 1, so the range is (0, 10).
INSTANTIATE_TEST_SUITE_P(Data, KelChartValidVariableListDataRangeTest, ::testing::Values(
    DataRangeCase{"0.3 to 9.7", {0.3f, 5.0f, 9.7f}, Vector2(0, 10)},
    DataRangeCase{"-9.7 to -0.3", {-0.3f, -9.7f}, Vector2(-10, 0)},
    // The ends are nice values themselves: 1 .. 10 lie inside, and the range goes beyond both.
    DataRangeCase{"1 to 10", {10, 1}, Vector2(0, 11)},
    DataRangeCase{"across zero", {-0.35f, 0.75f}, Vector2(-0.4f, 0.8f)},
    DataRangeCase{"all 3", {3, 3, 3}, Vector2(0, 6)},
    DataRangeCase{"all -2", {-2, -2}, Vector2(-4, 0)},
    DataRangeCase{"all 0", {0, 0}, Vector2(-1, 1)},
    DataRangeCase{"no points", {}, Vector2(0, 1)}));

TEST_F(KelChartValidVariableListTest, DataWithoutNiceValuesGetTwiceTheirEnd)
{
    // An infinite end leaves no nice values to find; the range then runs from
    // twice the low end to 0 (or from 0 to twice the high end).
    const float infinity = std::numeric_limits<float>::infinity();
    EXPECT_EQ(rangeFromCache(variable("v", {-infinity, 1})), Vector2(-infinity, 0));
}

TEST_F(KelChartValidVariableListTest, ManualRangeWinsWhenItIsNotEmpty)
{
    KelChartVariable& var = variable("v", {3, 4});
    var.autoRange.set(false);
    var.min.reset(Orv::Math::Vector3(0, 7, 7), "", "", "");
    var.max.reset(Orv::Math::Vector3(10, -7, -7), "", "", "");
    EXPECT_EQ(rangeFromCache(var), Vector2(0, 10));

    // An empty manual range is ignored: all 3 gives (0, 6) from the data.
    KelChartVariable& flat = variable("flat", {3, 3});
    flat.autoRange.set(false);
    flat.min.reset(Orv::Math::Vector3(5, 0, 0), "", "", "");
    flat.max.reset(Orv::Math::Vector3(5, 0, 0), "", "", "");
    EXPECT_EQ(rangeFromCache(flat), Vector2(0, 6));

    // With autoRange on, the manual range is not looked at.
    KelChartVariable& automatic = variable("auto", {3, 3});
    automatic.min.reset(Orv::Math::Vector3(0, 0, 0), "", "", "");
    automatic.max.reset(Orv::Math::Vector3(10, 0, 0), "", "", "");
    EXPECT_EQ(rangeFromCache(automatic), Vector2(0, 6));
}

TEST_F(KelChartValidVariableListTest, GivenRangesAreKeptAsTheyAre)
{
    list.push_back(variable("a", {}), Vector2(2, 8));
    list.push_back(variable("b", {}), Vector2(-8, -2));
    list.push_back(variable("c", {}), Vector2(-3, 5));
    ASSERT_EQ(list.size(), 3u);
    EXPECT_EQ(&list.variable(1), &variables[1]);
    EXPECT_EQ(list.minmax(1), Vector2(-8, -2));
    EXPECT_EQ(list.fillBaseLine(0), 2.0);
    EXPECT_EQ(list.fillBaseLine(1), -2.0);
    EXPECT_EQ(list.fillBaseLine(2), 0.0);
    EXPECT_TRUE(ensures().empty());
}

TEST_F(KelChartValidVariableListTest, AccessPastTheEndThrows)
{
    list.push_back(variable("a", {}), Vector2(0, 1));
    EXPECT_THROW(list.minmax(list.size()), std::out_of_range);
    EXPECT_THROW(list.variable(1), std::out_of_range);
    EXPECT_THROW(list.fillBaseLine(1), std::out_of_range);
    list.clear();
    EXPECT_EQ(list.size(), 0u);
    EXPECT_THROW(list.minmax(0), std::out_of_range);
}

TEST_F(KelChartValidVariableListTest, FindIndexByNameGivesTheFirstExactMatch)
{
    EXPECT_EQ(list.findIndexByName("a"), -1);
    list.push_back(variable("a", {}), Vector2(0, 1));
    list.push_back(variable("twin", {}), Vector2(0, 1));
    list.push_back(variable("twin", {}), Vector2(0, 1));
    EXPECT_EQ(list.findIndexByName("twin"), 1);
    EXPECT_EQ(list.findIndexByName("a"), 0);
    EXPECT_EQ(list.findIndexByName("A"), -1);
    EXPECT_EQ(list.findIndexByName("tw"), -1);
}

TEST_F(KelChartValidVariableListTest, DisabledVariablesAreReportedAndKept)
{
    KelChartVariable& var = variable("off", {1, 2});
    var.enabled.set(false);
    list.push_back(var, Vector2(0, 1));
    // A disabled variable's cache is empty, so its range is (0, 1).
    EXPECT_EQ(rangeFromCache(var), Vector2(0, 1));
    EXPECT_EQ(list.size(), 2u);
    EXPECT_EQ(ensures(), (std::vector<std::string>{
        "\"p_variable.enabled()\" - void KelChartValidVariableList::push_back(const KelChartVariable&, "
        "const Orv::Math::Vector2&)",
        "\"var.enabled()\" - void KelChartValidVariableList::push_back(const KelChartVariableCache&)"}));
}

} // namespace
