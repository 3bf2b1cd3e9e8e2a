#include "KelUnitSystem.h"

#include <gtest/gtest.h>

TEST(UnitSystem, StartsDisabledWithSiUnits)
{
    KelModifiedGroup group;
    const KelUnitSystem system(group);
    EXPECT_EQ(system.type(), "units.system");
    EXPECT_EQ(system.name(), "unitsystem.1");
    EXPECT_FALSE(system.enabled.get());
    EXPECT_EQ(system.preferredUnits.get(), KelUnitSystem::defaultPreferredUnits());
    EXPECT_EQ(system.string().names(), (QStringList{"enabled", "preferredUnits"}));

    const auto converter = system.GetConverter();
    ASSERT_TRUE(converter);
    EXPECT_EQ(converter->preferredUnit("km/h"), "m/s");
    EXPECT_EQ(converter->preferredUnit("degC"), "K");
    EXPECT_EQ(converter->preferredUnit("g/cm3"), "kg m-3");
    EXPECT_EQ(converter->preferredUnit("psi"), "Pa");
}

TEST(UnitSystem, ConverterFollowsThePreferredUnits)
{
    KelModifiedGroup group;
    KelUnitSystem system(group);
    const auto first = system.GetConverter();
    EXPECT_EQ(system.GetConverter(), first);

    EXPECT_EQ(system.setValue("preferredUnits", "km, h, degC"), QString());
    const auto second = system.GetConverter();
    EXPECT_NE(second, first);
    EXPECT_EQ(second->preferredUnit("m"), "km");
    EXPECT_EQ(second->preferredUnit("K"), "degC");
    EXPECT_EQ(first->preferredUnit("m"), "m");
    double value = 36.0;
    EXPECT_TRUE(second->convert(value, "km/h", "m/s"));
    EXPECT_DOUBLE_EQ(value, 10.0);
}

TEST(UnitSystem, CopiesAndAssignmentCarryTheSettings)
{
    KelModifiedGroup group;
    KelUnitSystem system(group);
    system.enabled.set(true);
    system.preferredUnits.set({"mm", "min"});

    const KelUnitSystem copy(system);
    EXPECT_TRUE(copy.enabled.get());
    EXPECT_EQ(copy.GetConverter()->preferredUnit("km"), "mm");

    KelUnitSystem target(group);
    target.rename("other");
    target = system;
    EXPECT_EQ(target.name(), "other");
    EXPECT_TRUE(target.enabled.get());
    EXPECT_EQ(target.GetConverter()->preferredUnit("h"), "min");
    system.enabled.set(false);
    EXPECT_TRUE(target.enabled.get());
}
