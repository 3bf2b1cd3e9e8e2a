#include "KelQuantityTriple.h"

#include "KelUnitsConverter.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

using Orv::Math::Vector3;

namespace {

class QuantityTriple : public testing::Test {
protected:
    // As std::string, which the test framework prints readably.
    std::string text() const
    {
        QString value;
        EXPECT_TRUE(triple.getValue(triple.name(), value, QString()).isEmpty());
        return value.toStdString();
    }

    KelModifiedGroup group;
    KelQuantityTriple triple{group};
    boost::shared_ptr<IUnitsConverter> converter{new KelUnitsConverter};
};

} // namespace

TEST_F(QuantityTriple, HasThreeMemberComponentsHoldingValueAndUnit)
{
    EXPECT_EQ(triple.type(), "quantity.triple");
    EXPECT_EQ(triple.name(), "quantity.1");
    ASSERT_EQ(triple.size(), 3u);
    EXPECT_EQ(triple[0u], &triple.x);
    EXPECT_EQ(triple["z"], &triple.z);
    EXPECT_TRUE(triple.isMember(&triple.y));
    EXPECT_EQ(triple.y.type(), "quantity.component");

    triple.reset(Vector3(1.5f, 2.0f, -3.0f), "mm", "s", "");
    EXPECT_EQ(triple.vector(), Vector3(1.5f, 2.0f, -3.0f));
    EXPECT_EQ(triple.y.string().getString("value"), "2");
    EXPECT_EQ(triple.y.string().getUnit("value", QString()), "s");
    EXPECT_EQ(triple.component(Vector3::Comp::X).unit(), "mm");
    EXPECT_EQ(text(), "1.5 [mm], 2 [s], -3");
}

TEST_F(QuantityTriple, TextRoundTripIsExact)
{
    const std::string written = "0.1 [m], -1e+20 [kg m-3], nan";
    EXPECT_EQ(triple.setValue(triple.name(), QString::fromStdString(written)), QString());
    EXPECT_EQ(triple.x.value.get(), 0.1);
    EXPECT_EQ(triple.y.unit(), "kg m-3");
    EXPECT_TRUE(std::isnan(triple.z.value.get()));
    EXPECT_EQ(text(), written);

    EXPECT_EQ(triple.setValue(triple.name(), " 1 [degC],2,  3.25e-7[] "), QString());
    EXPECT_EQ(text(), "1 [degC], 2, 3.25e-07");
    const double third = 1.0 / 3.0;
    triple.z.value.set(third);
    EXPECT_EQ(triple.setValue(triple.name(), QString::fromStdString(text())), QString());
    EXPECT_EQ(triple.z.value.get(), third);
}

TEST_F(QuantityTriple, MalformedTextIsRefusedAndChangesNothing)
{
    triple.reset(Vector3(1.0f, 2.0f, 3.0f), "m", "m", "m");
    const std::string before = text();
    for (const char* bad : {"", "1, 2", "1, 2, 3, 4", "1 [m], x [m], 3", "1 [m, 2, 3", "1 m, 2, 3", "1 [m]], 2, 3",
                            "1 [a,b], 2, 3"}) {
        EXPECT_FALSE(triple.setValue(triple.name(), bad).isEmpty()) << bad;
        EXPECT_EQ(text(), before) << bad;
    }
}

TEST_F(QuantityTriple, OtherNamesGoToTheStore)
{
    EXPECT_EQ(triple.setValue("label", "height"), QString());
    QString value;
    EXPECT_EQ(triple.getValue("label", value, QString()), QString());
    EXPECT_EQ(value, "height");
    triple.rename("size");
    EXPECT_EQ(triple.setValue("size", "1, 2, 3"), QString());
    EXPECT_EQ(triple.vector(), Vector3(1.0f, 2.0f, 3.0f));
    EXPECT_FALSE(triple.string().defined("size"));
}

TEST_F(QuantityTriple, ConvertUnitConvertsEachComponentThatCan)
{
    triple.setValue(triple.name(), "1500 [mm], 100 [degC], 5");
    EXPECT_TRUE(triple.convertUnit(converter, "m", "degF", "km"));
    EXPECT_EQ(triple.x.value.get(), 1.5);
    EXPECT_NEAR(triple.y.value.get(), 212.0, 1e-12);
    EXPECT_EQ(triple.y.unit(), "degF");
    EXPECT_EQ(triple.z.value.get(), 5.0);
    EXPECT_EQ(triple.z.unit(), "km");

    EXPECT_FALSE(triple.convertUnit(converter, "s", "K", ""));
    EXPECT_EQ(triple.x.unit(), "m");
    EXPECT_EQ(triple.x.value.get(), 1.5);
    EXPECT_EQ(triple.y.unit(), "K");
    EXPECT_NEAR(triple.y.value.get(), 373.15, 1e-12);
    EXPECT_EQ(triple.z.unit(), "km");

    const std::string before = text();
    EXPECT_FALSE(triple.convertUnit(nullptr, "mm", "degC", "m"));
    EXPECT_EQ(text(), before);
}

TEST_F(QuantityTriple, CopiesAndAssignmentCarryValuesAndUnits)
{
    triple.reset(Vector3(1.0f, 2.0f, 3.0f), "m", "s", "");
    const KelQuantityTriple copy(triple);
    ASSERT_EQ(copy.size(), 3u);
    EXPECT_EQ(copy[0u], &copy.x);
    EXPECT_EQ(copy.x.parent(), &copy);
    EXPECT_EQ(copy.name(), triple.name());
    EXPECT_EQ(copy.text().toStdString(), "1 [m], 2 [s], 3");

    KelQuantityTriple target(group);
    target.rename("target");
    target = triple;
    triple.reset(Vector3(), "", "", "");
    EXPECT_EQ(target.name(), "target");
    EXPECT_EQ(target.text().toStdString(), "1 [m], 2 [s], 3");
    EXPECT_EQ(target.x.name(), "x");
    EXPECT_EQ(copy.text().toStdString(), "1 [m], 2 [s], 3");
}
