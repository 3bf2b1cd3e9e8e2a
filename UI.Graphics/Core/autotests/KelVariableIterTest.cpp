#include "KelVariableIter.h"

#include "KelUnitsConverter.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

using Orv::Math::Vector2;

namespace {

struct Item {
    float x;
    float y;
    bool xUndefined;
    bool yUndefined;
};

// Walks all items the way a chart does: flags cleared by the caller.
std::vector<Item> walk(KelVariableIterInterface& iter)
{
    std::vector<Item> items;
    iter.reset();
    while (iter.next()) {
        Vector2 value;
        iter.vector2Value(value);
        bool x = false, y = false, z = false;
        iter.undefinedFlags(x, y, z);
        EXPECT_FALSE(z);
        items.push_back({value.x(), value.y(), x, y});
    }
    return items;
}

std::vector<float> xs(const std::vector<Item>& items)
{
    std::vector<float> values;
    for (const Item& item : items)
        values.push_back(item.x);
    return values;
}

std::vector<bool> xUndefined(const std::vector<Item>& items)
{
    std::vector<bool> flags;
    for (const Item& item : items)
        flags.push_back(item.xUndefined);
    return flags;
}

std::vector<std::string> units(KelVariableIterInterface& iter)
{
    QString x, y, z;
    iter.units(x, y, z);
    return {x.toStdString(), y.toStdString(), z.toStdString()};
}

using Units = std::vector<std::string>;

class VariableIter : public testing::Test {
protected:
    VariableIter()
    {
        scalars.setScalarData({1.0, 2.0, 3.0}, {false, true}, "km");
        planar.setVector2Data({1500.0f, 2.0f}, {100.0f, -1.0f}, {}, {false, true}, "mm", "degC");
        scalars.setConverter(converter);
        planar.setConverter(converter);
    }

    KelModifiedGroup group;
    boost::shared_ptr<IUnitsConverter> converter{new KelUnitsConverter({"m", "K"})};
    KelVariableIter scalars{group};
    KelVariableIter planar{group};
};

} // namespace

TEST_F(VariableIter, WalksScalarItemsWithTheirFlags)
{
    EXPECT_EQ(scalars.type(), "variable.iter");
    EXPECT_EQ(scalars.name(), "variableiter.1");
    EXPECT_TRUE(scalars.hasDimension(1));
    EXPECT_FALSE(scalars.hasDimension(2));
    EXPECT_EQ(scalars.size(), 3u);
    EXPECT_EQ(units(scalars), (Units{"km", "", ""}));

    const auto items = walk(scalars);
    EXPECT_EQ(xs(items), (std::vector<float>{1.0f, 2.0f, 3.0f}));
    EXPECT_EQ(xUndefined(items), (std::vector<bool>{false, true, false}));
    EXPECT_FALSE(scalars.next());
    scalars.reset();
    ASSERT_TRUE(scalars.next());
    EXPECT_EQ(scalars.scalarValue(), 1.0);
}

TEST_F(VariableIter, WalksPlanarItemsWithFlagsPerComponent)
{
    EXPECT_TRUE(planar.hasDimension(2));
    EXPECT_FALSE(planar.hasDimension(1));
    EXPECT_FALSE(planar.hasDimension(3));
    const auto items = walk(planar);
    ASSERT_EQ(items.size(), 2u);
    EXPECT_EQ(items[0].x, 1500.0f);
    EXPECT_EQ(items[0].y, 100.0f);
    EXPECT_FALSE(items[0].xUndefined || items[0].yUndefined);
    EXPECT_FALSE(items[1].xUndefined);
    EXPECT_TRUE(items[1].yUndefined);
}

TEST_F(VariableIter, OnlyFlagsMakeItemsUndefined)
{
    planar.setVector2Data({NAN, 1.0f}, {INFINITY, 2.0f}, {false, true});
    const auto items = walk(planar);
    EXPECT_TRUE(std::isnan(items[0].x));
    EXPECT_FALSE(items[0].xUndefined || items[0].yUndefined);
    EXPECT_TRUE(items[1].xUndefined);
    EXPECT_FALSE(items[1].yUndefined);

    planar.clear();
    EXPECT_EQ(planar.size(), 0u);
    EXPECT_FALSE(planar.hasDimension(2));
    EXPECT_TRUE(walk(planar).empty());
    EXPECT_TRUE(std::isnan(planar.scalarValue()));
}

TEST_F(VariableIter, SetUnitsConvertsOrRefusesAllTogether)
{
    EXPECT_TRUE(planar.setUnits("m", "K", ""));
    EXPECT_EQ(units(planar), (Units{"m", "K", ""}));
    auto items = walk(planar);
    EXPECT_FLOAT_EQ(items[0].x, 1.5f);
    EXPECT_FLOAT_EQ(items[0].y, 373.15f);

    for (const auto& refused : std::vector<Units>{{"s", "K", ""}, {"m", "blorp", ""}, {"m", "K", "m"}}) {
        EXPECT_FALSE(planar.setUnits(QString::fromStdString(refused[0]), QString::fromStdString(refused[1]),
                                     QString::fromStdString(refused[2])));
        EXPECT_EQ(units(planar), (Units{"m", "K", ""}));
    }
    EXPECT_TRUE(planar.setUnits("", "degF", ""));
    EXPECT_EQ(units(planar), (Units{"mm", "degF", ""}));
    items = walk(planar);
    EXPECT_FLOAT_EQ(items[0].x, 1500.0f);
    EXPECT_FLOAT_EQ(items[0].y, 212.0f);
}

TEST_F(VariableIter, WithoutConverterOnlyNativeUnitsAreAccepted)
{
    planar.setConverter(nullptr);
    EXPECT_TRUE(planar.setUnits("mm", "degC", ""));
    EXPECT_FALSE(planar.setUnits("m", "degC", ""));

    scalars.setScalarData({1.0});
    EXPECT_FALSE(scalars.setUnits("m", "", ""));
    EXPECT_TRUE(scalars.setUnits("", "", ""));
}

TEST_F(VariableIter, UnitSystemFlagDeliversPreferredUnits)
{
    planar.setUnitSystemFlag(true);
    EXPECT_EQ(units(planar), (Units{"m", "K", ""}));
    EXPECT_FLOAT_EQ(walk(planar)[0].x, 1.5f);

    EXPECT_TRUE(planar.setUnits("km", "", ""));
    EXPECT_EQ(units(planar), (Units{"km", "K", ""}));
    EXPECT_FLOAT_EQ(walk(planar)[0].x, 0.0015f);

    planar.setUnitSystemFlag(false);
    EXPECT_EQ(units(planar), (Units{"km", "degC", ""}));
    planar.setConverter(nullptr);
    EXPECT_EQ(units(planar), (Units{"mm", "degC", ""}));
}

TEST_F(VariableIter, LogarithmicComponentsDeliverLog10)
{
    scalars.setScalarData({100.0, 0.0, -1.0, 0.001, 10.0}, {false, false, false, false, true});
    scalars.setLogarithmic(true, false, true);
    bool x = false, y = true, z = false;
    scalars.logarithmic(x, y, z);
    EXPECT_TRUE(x && !y && z);

    const auto items = walk(scalars);
    EXPECT_EQ(xUndefined(items), (std::vector<bool>{false, true, true, false, true}));
    EXPECT_FLOAT_EQ(items[0].x, 2.0f);
    EXPECT_FLOAT_EQ(items[3].x, -3.0f);
    scalars.setLogarithmic(false, false, false);
    EXPECT_EQ(xUndefined(walk(scalars)), (std::vector<bool>{false, false, false, false, true}));

    planar.setLogarithmic(true, false, false);
    EXPECT_TRUE(planar.setUnits("m", "", ""));
    EXPECT_NEAR(walk(planar)[0].x, std::log10(1.5f), 1e-6);
}

TEST_F(VariableIter, CopiesCarryDataUnitsAndSettings)
{
    planar.setUnits("m", "", "");
    planar.setLogarithmic(false, false, true);
    const auto expected = walk(planar);

    KelVariableIter copy(planar);
    planar.setVector2Data({7.0f}, {8.0f});
    EXPECT_EQ(units(copy), (Units{"m", "degC", ""}));
    const auto items = walk(copy);
    ASSERT_EQ(items.size(), expected.size());
    EXPECT_EQ(items[1].x, expected[1].x);
    EXPECT_TRUE(items[1].yUndefined);
    bool x = false, y = false, z = false;
    copy.logarithmic(x, y, z);
    EXPECT_TRUE(z);

    scalars = copy;
    EXPECT_EQ(scalars.name(), "variableiter.1");
    EXPECT_TRUE(scalars.hasDimension(2));
    EXPECT_EQ(walk(scalars)[0].x, expected[0].x);
}

TEST_F(VariableIter, ReplacedDataFallBackToNativeUnitsWhenTheChoiceNoLongerFits)
{
    ASSERT_TRUE(scalars.setUnits("m", "", ""));
    scalars.setScalarData({2.0}, {}, "h");
    EXPECT_EQ(units(scalars), (Units{"h", "", ""}));
    EXPECT_EQ(walk(scalars)[0].x, 2.0f);
    scalars.setScalarData({2.0}, {}, "km");
    EXPECT_EQ(walk(scalars)[0].x, 2000.0f);
}
