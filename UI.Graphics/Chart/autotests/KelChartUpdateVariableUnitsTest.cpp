#include "KelChartUpdateVariableUnits.h"

#include "ChartWithData.h"

#include <array>
#include <tuple>

namespace {

using Variables = std::vector<const KelChartVariable*>;

// Continuous axes "bottom" on x, "left" and "right" on y.
class KelChartUpdateVariableUnitsTest : public ChartWithData {
protected:
    // A variable on the bottom and left axes, with points (1, 1) and (2, 2) in the units given.
    KelChartVariable& variable(const QString& name, int order, const QString& xUnit, const QString& yUnit)
    {
        return addVariable(name, {1, 2}, {1, 2}, {"axis.x.bottom", "axis.y.left"}, order, xUnit, yUnit);
    }
    Variables update()
    {
        return KelChartUpdateVariableUnits(chart.unitSystem, chart.axisX, chart.axisY, chart.axisZ, chart.variables)();
    }
    static Orv::Math::Vector2 firstPoint(KelChartVariable& var)
    {
        Orv::Math::Vector2 point;
        var.variableiter.reset();
        var.variableiter.next();
        var.variableiter.vector2Value(point);
        return point;
    }
    static std::array<QString, 3> unitsOf(KelChartVariable& var)
    {
        std::array<QString, 3> result;
        var.variableiter.units(result[0], result[1], result[2]);
        return result;
    }

    KelChartAxisContinuous& bottom = axis('x', "bottom");
    KelChartAxisContinuous& left = axis('y', "left");
    KelChartAxisContinuous& right = axis('y', "right", false);
};

} // namespace

// Two variables share the axes, one in mm and s, one in m and min: the first in order names the axes' units
// and both deliver their values in them. A variable without units comes first, claims nothing and, having
// no unit to convert from, is left out. Labels set before are replaced, by nothing where no variable has a unit.
// Each row re-runs the update on the same variables in a new order: a run depends on nothing an earlier one chose.
TEST_F(KelChartUpdateVariableUnitsTest, FirstVariableInOrderWithAUnitNamesTheAxisUnit)
{
    KelChartVariable& plain = variable("plain", -1, "", "");
    KelChartVariable& mm = variable("mm", 0, "mm", "s");
    KelChartVariable& m = variable("m", 0, "m", "min");
    // Equal orders keep list order.
    const std::tuple<int, int, const char*> orders[] = {{0, 1, "mm"}, {1, 0, "m"}, {3, 3, "mm"}};
    for (const auto& [mmOrder, mOrder, label] : orders) {
        SCOPED_TRACE(std::to_string(mmOrder) + " " + std::to_string(mOrder));
        right.unitLabel.set("km");
        mm.order.set(mmOrder);
        m.order.set(mOrder);
        const bool mmFirst = mmOrder <= mOrder;
        EXPECT_EQ(update(), (mmFirst ? Variables{&mm, &m} : Variables{&m, &mm}));
        EXPECT_EQ(bottom.unitLabel.get(), QString(label));
        EXPECT_EQ(left.unitLabel.get(), QString(mmFirst ? "s" : "min"));
        EXPECT_EQ(right.unitLabel.get(), "");
        EXPECT_EQ(unitsOf(plain)[0], "");
        // The iterators report their data's own units and deliver the axes': m's first x, 1 [m], and mm's
        // first y, 1 [s], come in the axes' units.
        EXPECT_EQ(unitsOf(m)[0], "m");
        EXPECT_FLOAT_EQ(firstPoint(m).x(), mmFirst ? 1000 : 1);
        EXPECT_FLOAT_EQ(firstPoint(mm).y(), mmFirst ? 1 : 1 / 60.0f);
    }
}

// Variables take their axes' logarithmic settings; units they cannot be delivered in are warned about.
TEST_F(KelChartUpdateVariableUnitsTest, LogarithmicAxesAreFollowedAndRefusedUnitsAreWarnedAndLeftOut)
{
    left.logarithmic.set(true);
    KelChartVariable& temperature = variable("temperature", 0, "", "degC");
    KelChartVariable& length = variable("length", 1, "", "m");
    KelChartVariable& other = variable("other", 2, "", "K");
    EXPECT_EQ(update(), (Variables{&temperature, &other}));
    EXPECT_EQ(unitsOf(length)[1], "m");
    bool x = true, y = false, z = true;
    temperature.variableiter.logarithmic(x, y, z);
    EXPECT_TRUE(!x && y && !z);
    // other's kelvins, delivered in degrees Celsius, fall below zero: no logarithm, one warning for both.
    EXPECT_EQ(errors(),
              (std::vector<std::string>{"WARNING: false && \"setting preferred units on a variable iter failed!\" - "
                                        "KelChartUpdateVariableUnits::KelChartUpdateVariableUnits(const KelUnitSystem&, "
                                        "const KelChartAxisPair&, const KelChartAxisPair&, const KelChartAxisPair&, "
                                        "KelChartVariableList&)",
                                        "WARNING: variable \"other\": 2 values at or below zero have no logarithm on a "
                                        "logarithmic axis and are not drawn"}));
}

// With the unit system on, each variable is delivered in the preferred SI units; the axes are not asked.
TEST_F(KelChartUpdateVariableUnitsTest, ListOnlyFormConvertsEveryVariable)
{
    chart.unitSystem.enabled.set(true);
    KelChartVariable& a = variable("a", 0, "km", "degC");
    static_cast<KelProperties&>(chart.variables).insert(new KelProperties(group), false);
    EXPECT_TRUE(KelChartUpdateVariableUnits(chart.unitSystem, chart.variables)().empty());
    EXPECT_EQ(unitsOf(a), (std::array<QString, 3>{"m", "K", ""}));
    EXPECT_EQ(bottom.unitLabel.get(), "");
    EXPECT_EQ(ensures(),
              std::vector<std::string>{"\"var\" - KelChartUpdateVariableUnits::KelChartUpdateVariableUnits("
                                       "const KelUnitSystem&, KelChartVariableList&)"});
}
