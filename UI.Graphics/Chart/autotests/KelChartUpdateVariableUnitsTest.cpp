#include "KelChartUpdateVariableUnits.h"

#include "KelChartAxisContinuous.h"
#include "KelChartAxisDiscrete.h"
#include "OrvDebug.h"

#include <gtest/gtest.h>

#include <array>
#include <ostream>
#include <string>
#include <vector>

namespace {

using Variables = std::vector<const KelChartVariable*>;

class KelChartUpdateVariableUnitsTest : public ::testing::Test {
protected:
    KelChartUpdateVariableUnitsTest()
    {
        xPair.rename("axis.x");
        yPair.rename("axis.y");
        zPair.rename("axis.z");
        bottom = &continuous(xPair.createFirst("bottom", KelChartAxisContinuous::typeString));
        xPair.createSecond("category", KelChartAxisDiscrete::typeString);
        left = &continuous(yPair.createFirst("left", KelChartAxisContinuous::typeString));
        right = &continuous(yPair.createSecond("right", KelChartAxisContinuous::typeString));
    }

    static KelChartAxisContinuous& continuous(KelChartAxis& axis)
    {
        return dynamic_cast<KelChartAxisContinuous&>(axis);
    }

    KelChartVariable& addVariable(const QString& name, int order, const QString& xAxis, const QString& xUnit,
                                  const QString& yAxis, const QString& yUnit)
    {
        KelChartVariable& var = list.child(name, KelChartVariable::typeString);
        var.order.set(order);
        var.xAxis.set(xAxis);
        var.yAxis.set(yAxis);
        var.variableiter.setVector2Data({1, 2}, {1, 2}, {}, {}, xUnit, yUnit);
        return var;
    }

    Variables updateWithAxes()
    {
        return KelChartUpdateVariableUnits(units, xPair, yPair, zPair, list)();
    }

    static std::array<QString, 3> unitsOf(KelChartVariable& var)
    {
        std::array<QString, 3> result;
        var.variableiter.units(result[0], result[1], result[2]);
        return result;
    }

    static Orv::Math::Vector2 firstPoint(KelChartVariable& var)
    {
        Orv::Math::Vector2 point;
        var.variableiter.reset();
        var.variableiter.next();
        var.variableiter.vector2Value(point);
        return point;
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

const std::string fiveArgumentSignature =
    "KelChartUpdateVariableUnits::KelChartUpdateVariableUnits(const KelUnitSystem&, const KelChartAxisPair&, "
    "const KelChartAxisPair&, const KelChartAxisPair&, KelChartVariableList&)";

struct OrderCase {
    int millimetresOrder, metresOrder;
    const char* label;
};
void PrintTo(const OrderCase& c, std::ostream* os)
{
    *os << "mm " << c.millimetresOrder << ", m " << c.metresOrder;
}

class KelChartUpdateVariableUnitsOrderTest : public KelChartUpdateVariableUnitsTest,
                                             public ::testing::WithParamInterface<OrderCase> {};

// Two variables share the x axis, one in millimetres and one in metres.
TEST_P(KelChartUpdateVariableUnitsOrderTest, FirstVariableInOrderNamesTheAxisUnit)
{
    const OrderCase& c = GetParam();
    KelChartVariable& mm = addVariable("mm", c.millimetresOrder, "axis.x.bottom", "mm", "", "");
    KelChartVariable& m = addVariable("m", c.metresOrder, "axis.x.bottom", "m", "", "");
    const Variables updated = updateWithAxes();

    EXPECT_EQ(bottom->unitLabel.get(), c.label);
    EXPECT_EQ(unitsOf(mm)[0], c.label);
    EXPECT_EQ(unitsOf(m)[0], c.label);
    // Both deliver x = 1 [m] = 1000 [mm] in the axis's unit.
    const float one = QString(c.label) == "mm" ? 1000 : 1;
    EXPECT_FLOAT_EQ(firstPoint(mm).x(), one / 1000);
    EXPECT_FLOAT_EQ(firstPoint(m).x(), one);
    // The result follows the order too.
    const bool millimetresFirst = c.millimetresOrder <= c.metresOrder;
    EXPECT_EQ(updated, (millimetresFirst ? Variables{&mm, &m} : Variables{&m, &mm}));
}

INSTANTIATE_TEST_SUITE_P(Orders, KelChartUpdateVariableUnitsOrderTest, ::testing::Values(
    OrderCase{0, 1, "mm"},
    OrderCase{1, 0, "m"},
    OrderCase{3, 3, "mm"})); // equal orders keep list order

TEST_F(KelChartUpdateVariableUnitsTest, LabelsSetBeforeAreReplaced)
{
    bottom->unitLabel.set("km");
    right->unitLabel.set("km");
    addVariable("a", 0, "axis.x.bottom", "", "axis.y.left", "s");
    addVariable("b", 1, "axis.x.bottom", "mm", "axis.y.left", "min");
    updateWithAxes();
    // No variable has a unit on the right axis; the first with an x unit is the second one.
    EXPECT_EQ(bottom->unitLabel.get(), "mm");
    EXPECT_EQ(left->unitLabel.get(), "s");
    EXPECT_EQ(right->unitLabel.get(), "");
}

TEST_F(KelChartUpdateVariableUnitsTest, DiscreteAxesTakeNoPart)
{
    left->logarithmic.set(true);
    bottom->logarithmic.set(true);
    KelChartVariable& var = addVariable("v", 0, "axis.x.category", "s", "axis.y.left", "degC");
    EXPECT_EQ(updateWithAxes(), Variables{&var});

    // x keeps its native unit and gets no logarithm; y takes the left axis's settings.
    EXPECT_EQ(unitsOf(var), (std::array<QString, 3>{"s", "degC", ""}));
    bool x = true, y = false, z = true;
    var.variableiter.logarithmic(x, y, z);
    EXPECT_FALSE(x);
    EXPECT_TRUE(y);
    EXPECT_FALSE(z);
    EXPECT_EQ(bottom->unitLabel.get(), "");
}

TEST_F(KelChartUpdateVariableUnitsTest, RefusedUnitsAreWarnedAndLeftOut)
{
    KelChartVariable& temperature = addVariable("temperature", 0, "axis.x.bottom", "", "axis.y.left", "degC");
    KelChartVariable& length = addVariable("length", 1, "axis.x.bottom", "", "axis.y.left", "m");
    KelChartVariable& other = addVariable("other", 2, "axis.x.bottom", "", "axis.y.left", "K");

    // Metres cannot be delivered in degrees Celsius.
    EXPECT_EQ(updateWithAxes(), (Variables{&temperature, &other}));
    EXPECT_EQ(unitsOf(length)[1], "m");
    std::vector<orvdebug::Message> warnings;
    for (const orvdebug::Message& message : capture.messages())
        if (message.stream == orvdebug::Stream::Err)
            warnings.push_back(message);
    EXPECT_EQ(warnings, (std::vector<orvdebug::Message>{
        {orvdebug::Stream::Err, "",
         "WARNING: false && \"setting preferred units on a variable iter failed!\" - " + fiveArgumentSignature}}));
}

TEST_F(KelChartUpdateVariableUnitsTest, ListOnlyFormConvertsEveryVariable)
{
    units.enabled.set(true);
    KelChartVariable& a = addVariable("a", 0, "axis.x.bottom", "km", "", "degC");
    KelProperties* odd = new KelProperties(group);
    odd->rename("odd");
    static_cast<KelProperties&>(list).insert(odd, false);
    KelChartVariable& b = addVariable("b", 0, "", "", "", "hPa");

    EXPECT_TRUE(KelChartUpdateVariableUnits(units, list)().empty());
    // With the unit system on, each variable is delivered in the preferred SI units.
    EXPECT_EQ(unitsOf(a), (std::array<QString, 3>{"m", "K", ""}));
    EXPECT_EQ(unitsOf(b)[1], "Pa");
    EXPECT_EQ(bottom->unitLabel.get(), "");
    EXPECT_EQ(capture.texts(orvdebug::Stream::Ensure),
              std::vector<std::string>{"\"var\" - KelChartUpdateVariableUnits::KelChartUpdateVariableUnits("
                                       "const KelUnitSystem&, KelChartVariableList&)"});
}

} // namespace
