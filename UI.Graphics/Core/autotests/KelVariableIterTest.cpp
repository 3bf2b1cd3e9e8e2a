#include "KelVariableIter.h"

#include "KelUnitsConverter.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstring>
#include <string>
#include <vector>

namespace {

// Walks all items the way a chart does (flags cleared by the caller) and writes
// them as "x, x, ..." or "x/y, x/y, ...", each undefined component marked "?".
std::string walk(KelVariableIterInterface& iter)
{
    QStringList items;
    iter.reset();
    while (iter.next()) {
        Orv::Math::Vector2 value;
        iter.vector2Value(value);
        bool x = false, y = false, z = false;
        iter.undefinedFlags(x, y, z);
        EXPECT_FALSE(z);
        QString item = QString::number(value.x()) + (x ? "?" : "");
        if (iter.hasDimension(2))
            item += '/' + QString::number(value.y()) + (y ? "?" : "");
        items << item;
    }
    return items.join(", ").toStdString();
}

// The delivered units, as "x|y|z".
std::string units(KelVariableIterInterface& iter)
{
    QString x, y, z;
    iter.units(x, y, z);
    return (x + '|' + y + '|' + z).toStdString();
}

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

TEST_F(VariableIter, WalksItemsWithTheHostsFlagsOnly)
{
    EXPECT_EQ(walk(scalars), "1, 2?, 3"); // flags shorter than the data: the rest defined
    EXPECT_FALSE(scalars.next());
    scalars.reset();
    ASSERT_TRUE(scalars.next());
    EXPECT_EQ(scalars.scalarValue(), 1.0);
    EXPECT_EQ(walk(planar), "1500/100, 2/-1?");
    planar.setVector2Data({NAN, 1.0f}, {INFINITY, 2.0f}, {false, true});
    EXPECT_EQ(walk(planar), "nan/inf, 1?/2");

    planar.clear();
    EXPECT_FALSE(planar.hasDimension(2) || planar.hasDimension(1));
    EXPECT_EQ(walk(planar), "");
    EXPECT_TRUE(std::isnan(planar.scalarValue()));
}

TEST_F(VariableIter, SetUnitsConvertsOrRefusesAllTogether)
{
    ASSERT_TRUE(scalars.setUnits("m", "", ""));
    scalars.setScalarData({2.0}, {}, "h"); // the choice no longer fits: native units until it does again
    EXPECT_EQ(units(scalars), "h||");
    scalars.setScalarData({2.0}, {}, "km");
    EXPECT_EQ(walk(scalars), "2000");

    // A chosen unit changes what is delivered, not the data's units reported.
    EXPECT_TRUE(planar.setUnits("m", "K", ""));
    EXPECT_EQ(units(planar), "mm|degC|");
    EXPECT_EQ(walk(planar), "1.5/373.15, 0.002/272.15?");
    for (const auto& [x, y, z] :
         std::vector<std::array<const char*, 3>>{{"s", "K", ""}, {"m", "blorp", ""}, {"m", "K", "m"}}) {
        EXPECT_FALSE(planar.setUnits(x, y, z));
        EXPECT_EQ(walk(planar), "1.5/373.15, 0.002/272.15?");
    }
    EXPECT_TRUE(planar.setUnits("", "degF", ""));
    EXPECT_EQ(walk(planar), "1500/212, 2/30.2?");

    planar.setConverter(nullptr); // only the native units remain
    EXPECT_EQ(units(planar), "mm|degC|");
    EXPECT_TRUE(planar.setUnits("mm", "degC", ""));
    EXPECT_FALSE(planar.setUnits("m", "degC", ""));
    scalars.setScalarData({1.0}); // a bare number takes no unit
    EXPECT_FALSE(scalars.setUnits("m", "", ""));
}

TEST_F(VariableIter, UnitSystemFlagDeliversPreferredUnitsWhereNoneWasChosen)
{
    planar.setUnitSystemFlag(true);
    EXPECT_EQ(units(planar), "m|K|");
    EXPECT_TRUE(planar.setUnits("km", "", ""));
    EXPECT_EQ(units(planar), "m|K|");
    EXPECT_EQ(walk(planar), "0.0015/373.15, 2e-06/272.15?");
    planar.setUnitSystemFlag(false);
    EXPECT_EQ(units(planar), "mm|degC|");
    EXPECT_EQ(walk(planar), "0.0015/100, 2e-06/-1?");
}

TEST_F(VariableIter, LogarithmicComponentsDeliverLog10AndNoValueForNonPositives)
{
    scalars.setScalarData({100.0, 0.0, -1.0, 0.001, 10.0}, {false, false, false, false, true});
    scalars.setLogarithmic(true, false, false);
    EXPECT_EQ(walk(scalars), "2, nan?, nan?, -3, 1?");
    scalars.setLogarithmic(false, false, false);
    EXPECT_EQ(walk(scalars), "100, 0, -1, 0.001, 10?");

    planar.setLogarithmic(false, true, false);
    EXPECT_TRUE(planar.setUnits("m", "K", "")); // the log of the converted value
    EXPECT_EQ(walk(planar), "1.5/2.57188, 0.002/2.43481?");
}

TEST_F(VariableIter, CopiesAndAssignmentCarryDataUnitsAndSettings)
{
    planar.setUnits("m", "", "");
    planar.setLogarithmic(false, true, false);
    const std::string expected = walk(planar);
    KelVariableIter copy(planar);
    planar.setVector2Data({7.0f}, {8.0f});
    EXPECT_EQ(units(copy), "mm|degC|");
    EXPECT_EQ(walk(copy), expected);
    scalars = copy;
    EXPECT_EQ(walk(scalars), expected);
}

// The delivered arrays hold exactly what iteration gives item by item, under
// converted units and logarithmic components too, and do not move the position.
TEST_F(VariableIter, DeliveredArraysHoldWhatIterationGives)
{
    scalars.setScalarData({100.0, 0.0, -1.0, NAN, INFINITY}, {false, false, true}, "km");
    planar.setVector2Data({1500.0f, 0.0f, -2.0f, NAN}, {100.0f, -1.0f, 5.0f, INFINITY}, {true}, {false, false, true},
                          "mm", "degC");
    ASSERT_TRUE(planar.setUnits("m", "K", ""));
    for (const std::array<bool, 2>& logarithmic : {std::array<bool, 2>{false, false}, {true, true}}) {
        for (KelVariableIter* iter : {&scalars, &planar}) {
            iter->setLogarithmic(logarithmic[0], logarithmic[1], false);
            const bool planarItems = iter->dimension() == 2;
            const KelVariableIter::Delivered items = iter->delivered();
            ASSERT_EQ(items.size, iter->size());
            ASSERT_EQ(items.scalars == nullptr, planarItems);
            iter->reset();
            for (std::size_t i = 0; iter->next(); ++i) {
                SCOPED_TRACE(testing::Message() << "item " << i << (planarItems ? " planar" : " scalar")
                                                << (logarithmic[0] ? " logarithmic" : ""));
                iter->delivered(); // leaves the current item current
                bool x = false, y = false, z = false;
                iter->undefinedFlags(x, y, z);
                EXPECT_EQ((*items.xUndefined)[i], x);
                Orv::Math::Vector2 value;
                iter->vector2Value(value);
                if (planarItems) {
                    EXPECT_EQ((*items.yUndefined)[i], y);
                    EXPECT_EQ(std::memcmp(&items.x[i], &value[0], sizeof(float)), 0);
                    EXPECT_EQ(std::memcmp(&items.y[i], &value[1], sizeof(float)), 0);
                } else {
                    const double scalar = iter->scalarValue();
                    EXPECT_EQ(std::memcmp(&items.scalars[i], &scalar, sizeof(double)), 0);
                }
            }
        }
    }
    planar.clear();
    EXPECT_EQ(planar.delivered().size, 0u);
}

// x values a float cannot tell apart (0.1 s steps a year after the origin) are delivered in full
// beside the float items, converted and logged as they are.
TEST_F(VariableIter, PreciseXIsDeliveredBesideTheFloatItems)
{
    const std::vector<double> x = {31622410.0, 31622410.1, 31622410.2};
    planar.setPreciseVector2Data(x, {1.0f, 2.0f, 3.0f}, {}, {}, "s", "m");
    KelVariableIter::Delivered items = planar.delivered();
    ASSERT_NE(items.exactX, nullptr);
    EXPECT_EQ(std::vector<double>(items.exactX, items.exactX + 3), x);
    EXPECT_EQ(items.x[1], static_cast<float>(x[1])); // the float items, as iteration gives them
    ASSERT_TRUE(planar.setUnits("min", "m", ""));
    items = planar.delivered();
    EXPECT_DOUBLE_EQ(items.exactX[1], x[1] / 60.0);
    EXPECT_NE(items.exactX[1], items.exactX[2]);
    planar.setLogarithmic(true, false, false);
    items = planar.delivered();
    EXPECT_DOUBLE_EQ(items.exactX[0], std::log10(x[0] / 60.0));
    EXPECT_EQ(planar.valuesWithoutLogarithm(), 0u);
    // Float data replace the precise ones.
    planar.setVector2Data({1.0f}, {2.0f});
    EXPECT_EQ(planar.delivered().exactX, nullptr);
}
