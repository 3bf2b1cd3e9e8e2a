#include "KelUnitSystem.h"

#include <gtest/gtest.h>

TEST(UnitSystem, StartsDisabledWithSiUnitsAndSharesItsConverterUntilTheUnitsChange)
{
    KelModifiedGroup group;
    KelUnitSystem system(group);
    EXPECT_FALSE(system.enabled.get());
    const auto first = system.GetConverter();
    EXPECT_EQ(first->preferredUnit("km/h"), "m/s");
    EXPECT_EQ(first->preferredUnit("g/cm3"), "kg m-3");
    EXPECT_EQ(system.GetConverter(), first);
    EXPECT_EQ(system.setValue("preferredUnits", "km, h, degC"), QString());
    const auto second = system.GetConverter();
    EXPECT_NE(second, first);
    EXPECT_EQ(second->preferredUnit("K"), "degC");
    EXPECT_EQ(first->preferredUnit("K"), "K");
}

TEST(UnitSystem, CopiesAndAssignmentCarryTheSettings)
{
    KelModifiedGroup group;
    KelUnitSystem system(group);
    system.enabled.set(true);
    system.preferredUnits.set({"mm", "min"});
    const KelUnitSystem copy(system);
    KelUnitSystem target(group);
    target = system;
    system.preferredUnits.set({"km"});
    EXPECT_TRUE(copy.enabled.get());
    EXPECT_EQ(copy.GetConverter()->preferredUnit("km"), "mm");
    EXPECT_TRUE(target.enabled.get());
    EXPECT_EQ(target.GetConverter()->preferredUnit("h"), "min");
}
