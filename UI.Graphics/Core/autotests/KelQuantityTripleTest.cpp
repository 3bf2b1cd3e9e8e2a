#include "KelQuantityTriple.h"

#include "KelUnitsConverter.h"

#include <gtest/gtest.h>

#include <string>

using Orv::Math::Vector3;

namespace {

class QuantityTriple : public testing::Test {
protected:
    // Through the text interface, as std::string, which the test framework prints readably.
    std::string text() const
    {
        QString value;
        EXPECT_TRUE(triple.getValue(triple.name(), value, QString()).isEmpty());
        return value.toStdString();
    }
    QString setText(const std::string& text) { return triple.setValue(triple.name(), QString::fromStdString(text)); }

    KelModifiedGroup group;
    KelQuantityTriple triple{group};
};

} // namespace

TEST_F(QuantityTriple, TextRoundTripIsExact)
{
    EXPECT_EQ(setText("0.1 [m], -1e+20 [kg m-3], nan"), QString());
    EXPECT_EQ(triple.y.string().getUnit("value", QString()), "kg m-3"); // the unit of the value property
    EXPECT_EQ(text(), "0.1 [m], -1e+20 [kg m-3], nan");
    triple.z.value.set(1.0 / 3.0);
    EXPECT_EQ(setText(text()), QString());
    EXPECT_EQ(triple.z.value.get(), 1.0 / 3.0);
    EXPECT_EQ(setText(" 1 [degC],2,  3.25e-7[] "), QString());
    EXPECT_EQ(text(), "1 [degC], 2, 3.25e-07");

    triple.rename("size"); // its own name follows a rename; other names go to the store
    EXPECT_EQ(triple.setValue("size", "1, 2, 3"), QString());
    EXPECT_EQ(triple.vector(), Vector3(1.0f, 2.0f, 3.0f));
    EXPECT_EQ(triple.setValue("label", "height"), QString());
    EXPECT_EQ(triple.string().names(), QStringList{"label"});
}

TEST_F(QuantityTriple, MalformedTextIsRefusedAndChangesNothing)
{
    triple.reset(Vector3(1.0f, 2.0f, 3.0f), "m", "m", "m");
    for (const char* bad : {"", "1, 2", "1, 2, 3, 4", "1 [m], x [m], 3", "1 [m, 2, 3", "1 m, 2, 3", "1 [m]], 2, 3",
                            "1 [a,b], 2, 3"}) {
        EXPECT_FALSE(setText(bad).isEmpty()) << bad;
        EXPECT_EQ(text(), "1 [m], 2 [m], 3 [m]") << bad;
    }
}

TEST_F(QuantityTriple, ConvertUnitConvertsEachComponentThatCan)
{
    const boost::shared_ptr<IUnitsConverter> converter(new KelUnitsConverter);
    setText("1500 [mm], 100 [degC], 5");
    EXPECT_TRUE(triple.convertUnit(converter, "m", "degF", "km"));
    EXPECT_NEAR(triple.y.value.get(), 212.0, 1e-12);
    EXPECT_EQ(triple.y.unit(), "degF");
    EXPECT_EQ(triple.z.text(), "5 [km]"); // a bare number is read as being in the target unit

    EXPECT_FALSE(triple.convertUnit(converter, "s", "K", ""));
    EXPECT_EQ(triple.x.text(), "1.5 [m]");
    EXPECT_NEAR(triple.y.value.get(), 373.15, 1e-12);
    EXPECT_EQ(triple.y.unit(), "K");

    const std::string before = text();
    EXPECT_FALSE(triple.convertUnit(nullptr, "mm", "degC", "m"));
    EXPECT_EQ(text(), before);
}

TEST_F(QuantityTriple, CopiesAndAssignmentCarryValuesAndUnitsIntoTheirOwnComponents)
{
    triple.reset(Vector3(1.0f, 2.0f, 3.0f), "m", "s", "");
    const KelQuantityTriple copy(triple);
    KelQuantityTriple target(group);
    target = triple;
    triple.reset(Vector3(), "", "", "");
    ASSERT_EQ(copy.size(), 3u);
    EXPECT_TRUE(copy.isMember(&copy.x) && copy["z"] == &copy.z);
    EXPECT_EQ(copy.text().toStdString(), "1 [m], 2 [s], 3");
    EXPECT_EQ(target.text().toStdString(), "1 [m], 2 [s], 3");
}
