#include "KelChartUpdateVariableUnits.h"

#include "KelChartAxisContinuous.h"
#include "OrvDebug.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <tuple>
#include <vector>

namespace {

using Variables = std::vector<const KelChartVariable*>;

class KelChartUpdateVariableUnitsTest : public ::testing::Test {
protected:
    KelChartUpdateVariableUnitsTest()
    {
        xPair.rename("axis.x");
        yPair.rename("axis.y");
        const QString type = KelChartAxisContinuous::typeString;
        bottom = dynamic_cast<KelChartAxisContinuous*>(&xPair.createFirst("bottom", type));
        left = dynamic_cast<KelChartAxisContinuous*>(&yPair.createFirst("left", type));
        right = dynamic_cast<KelChartAxisContinuous*>(&yPair.createSecond("right", type));
    }

    // The variable `name` (made or reset) on the bottom and left axes, with points (1, 1) and (2, 2).
    KelChartVariable& variable(const QString& name, int order, const QString& xUnit, const QString& yUnit)
    {
        KelChartVariable& var = list.child(name, KelChartVariable::typeString);
        var.order.set(order);
        var.xAxis.set("axis.x.bottom");
        var.yAxis.set("axis.y.left");
        var.variableiter.setVector2Data({1, 2}, {1, 2}, {}, {}, xUnit, yUnit);
        return var;
    }
    Variables update() { return KelChartUpdateVariableUnits(units, xPair, yPair, zPair, list)(); }
    static std::array<QString, 3> unitsOf(KelChartVariable& var)
    {
        std::array<QString, 3> result;
        var.variableiter.units(result[0], result[1], result[2]);
        return result;
    }

    KelModifiedGroup group;
    KelUnitSystem units{group};
    KelChartAxisPair xPair{group};
    KelChartAxisPair yPair{group};
    KelChartAxisPair zPair{group};
    KelChartVariableList list{group, "variable.1"};
    KelChartAxisContinuous* bottom = nullptr;
    KelChartAxisContinuous* left = nullptr;
    KelChartAxisContinuous* right = nullptr;
    orvdebug::ScopedCapture capture{kel::debug_logger::debuglogger()};
};

} // namespace

// Two variables share the axes, one in mm and s, one in m and min: the first in order names the axes' units
// and both deliver their values in them. A variable without units comes first, claims nothing and, having
// no unit to convert from, is left out. Labels set before are replaced, by nothing where no variable has a unit.
TEST_F(KelChartUpdateVariableUnitsTest, FirstVariableInOrderWithAUnitNamesTheAxisUnit)
{
    // Equal orders keep list order.
    const std::tuple<int, int, const char*> orders[] = {{0, 1, "mm"}, {1, 0, "m"}, {3, 3, "mm"}};
    for (const auto& [mmOrder, mOrder, label] : orders) {
        SCOPED_TRACE(std::to_string(mmOrder) + " " + std::to_string(mOrder));
        right->unitLabel.set("km");
        KelChartVariable& plain = variable("plain", -1, "", "");
        KelChartVariable& mm = variable("mm", mmOrder, "mm", "s");
        KelChartVariable& m = variable("m", mOrder, "m", "min");
        const bool mmFirst = mmOrder <= mOrder;
        EXPECT_EQ(update(), (mmFirst ? Variables{&mm, &m} : Variables{&m, &mm}));
        EXPECT_EQ(bottom->unitLabel.get(), QString(label));
        EXPECT_EQ(left->unitLabel.get(), QString(mmFirst ? "s" : "min"));
        EXPECT_EQ(right->unitLabel.get(), "");
        EXPECT_EQ(unitsOf(plain)[0], "");
        EXPECT_EQ(unitsOf(m)[0], QString(label));
        // m's first x, 1 [m], comes in the axis's unit.
        Orv::Math::Vector2 point;
        m.variableiter.reset();
        m.variableiter.next();
        m.variableiter.vector2Value(point);
        EXPECT_FLOAT_EQ(point.x(), mmFirst ? 1000 : 1);
        EXPECT_EQ(unitsOf(mm)[1], QString(mmFirst ? "s" : "min"));
        for (KelChartVariable* var : {&plain, &mm, &m})
            list.erase(var); // a variable keeps the units chosen for it
    }
}

// Variables take their axes' logarithmic settings; units they cannot be delivered in are warned about.
TEST_F(KelChartUpdateVariableUnitsTest, LogarithmicAxesAreFollowedAndRefusedUnitsAreWarnedAndLeftOut)
{
    left->logarithmic.set(true);
    KelChartVariable& temperature = variable("temperature", 0, "", "degC");
    KelChartVariable& length = variable("length", 1, "", "m");
    KelChartVariable& other = variable("other", 2, "", "K");
    EXPECT_EQ(update(), (Variables{&temperature, &other}));
    EXPECT_EQ(unitsOf(length)[1], "m");
    bool x = true, y = false, z = true;
    temperature.variableiter.logarithmic(x, y, z);
    EXPECT_TRUE(!x && y && !z);
    EXPECT_EQ(capture.texts(orvdebug::Stream::Err),
              std::vector<std::string>{"WARNING: false && \"setting preferred units on a variable iter failed!\" - "
                                       "KelChartUpdateVariableUnits::KelChartUpdateVariableUnits(const KelUnitSystem&, "
                                       "const KelChartAxisPair&, const KelChartAxisPair&, const KelChartAxisPair&, "
                                       "KelChartVariableList&)"});
}

// With the unit system on, each variable is delivered in the preferred SI units; the axes are not asked.
TEST_F(KelChartUpdateVariableUnitsTest, ListOnlyFormConvertsEveryVariable)
{
    units.enabled.set(true);
    KelChartVariable& a = variable("a", 0, "km", "degC");
    static_cast<KelProperties&>(list).insert(new KelProperties(group), false);
    EXPECT_TRUE(KelChartUpdateVariableUnits(units, list)().empty());
    EXPECT_EQ(unitsOf(a), (std::array<QString, 3>{"m", "K", ""}));
    EXPECT_EQ(bottom->unitLabel.get(), "");
    EXPECT_EQ(capture.texts(orvdebug::Stream::Ensure),
              std::vector<std::string>{"\"var\" - KelChartUpdateVariableUnits::KelChartUpdateVariableUnits("
                                       "const KelUnitSystem&, KelChartVariableList&)"});
}
