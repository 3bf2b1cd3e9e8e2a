#include "ChartWithData.h"

#include "KelChartAxisKinds.h"
#include "KelChartAxisList.h"
#include "KelChartAxisTime.h"

#include <memory>

namespace {

// Whether `axis` is of the class made for `type`.
bool isOfClass(const KelChartAxis* axis, const QString& type)
{
    if (type == KelChartAxisTime::typeString)
        return dynamic_cast<const KelChartAxisTime*>(axis) != nullptr;
    if (type == KelChartAxisContinuous::typeString)
        return dynamic_cast<const KelChartAxisContinuous*>(axis) && !dynamic_cast<const KelChartAxisTime*>(axis);
    return dynamic_cast<const KelChartAxisDiscrete*>(axis) != nullptr;
}

class KelChartAxisKindsTest : public ChartWithData, public ::testing::WithParamInterface<QString> {};

} // namespace

// Pairs, lists and the table itself make the same class for a type string, of that type and name.
TEST_P(KelChartAxisKindsTest, EveryWayOfMakingAnAxisGivesItsClass)
{
    const QString& type = GetParam();
    EXPECT_TRUE(KelChartAxisKinds::isRangedType(type));
    const std::unique_ptr<KelChartAxis> made(KelChartAxisKinds::make(group, type, "axis.made"));
    KelChartAxis& paired = chart.axisX.createFirst("bottom", type);
    KelChartAxisList list(group, "axis.1");
    auto& listed = dynamic_cast<KelChartAxis&>(list.child("axis.listed", type));
    for (const KelChartAxis* axis : {made.get(), &paired, &listed}) {
        EXPECT_TRUE(isOfClass(axis, type));
        EXPECT_EQ(axis->type(), type);
    }
    EXPECT_EQ(made->name(), "axis.made");
    EXPECT_EQ(listed.name(), "axis.listed");
    EXPECT_TRUE(ensures().empty());
}

INSTANTIATE_TEST_SUITE_P(RangedTypes, KelChartAxisKindsTest, ::testing::ValuesIn(KelChartAxisKinds::rangedTypes()),
                         [](const auto& info) { return info.param.mid(info.param.lastIndexOf('.') + 1).toStdString(); });

// Copies of a list keep its default child name.
TEST(KelChartAxisKinds, OtherTypesAreNotMadeAndListsFallBackToAPlainAxis)
{
    KelModifiedGroup group;
    for (const QString& type : {QString("chart.axis"), QString("chart.axis.polar"), QString()}) {
        EXPECT_FALSE(KelChartAxisKinds::isRangedType(type));
        EXPECT_EQ(KelChartAxisKinds::make(group, type, "a"), nullptr);
    }
    KelChartAxisList list(group, "axis.1");
    KelProperties& plain = list.child("axis.p", "chart.axis.polar");
    EXPECT_EQ(plain.type(), KelChartAxis::typeString);
    KelChartAxisList other(group, "other");
    other = list;
    EXPECT_EQ(other.defaultChildName(), "axis.1");
    EXPECT_EQ(KelChartAxisList(list).defaultChildName(), "axis.1");
}

// Assignment goes through the most derived class both axes share: a time axis takes the zone too, and a pair
// assigned from one holding a time axis holds a time axis of its own with the same zone.
TEST(KelChartAxisKinds, AssignmentGoesThroughTheMostDerivedSharedClass)
{
    KelModifiedGroup group;
    KelChartAxisTime time(group);
    time.timeZone.set("Asia/Kathmandu");
    time.max.set(5);
    KelChartAxisTime otherTime(group);
    KelChartAxisContinuous continuous(group);
    KelChartAxisKinds::assign(otherTime, time);
    EXPECT_EQ(otherTime.timeZone.get(), "Asia/Kathmandu");
    EXPECT_EQ(otherTime.max.get(), 5);
    KelChartAxisKinds::assign(continuous, time);
    EXPECT_EQ(continuous.max.get(), 5);

    KelChartAxisPair source(group);
    source.rename("axis.x");
    dynamic_cast<KelChartAxisTime&>(source.createFirst("bottom", KelChartAxisTime::typeString))
        .timeZone.set("Europe/Berlin");
    KelChartAxisPair target(group);
    target.rename("axis.x");
    target = source;
    const auto* mirrored = dynamic_cast<const KelChartAxisTime*>(target.first());
    ASSERT_NE(mirrored, nullptr);
    EXPECT_EQ(mirrored->timeZone.get(), "Europe/Berlin");
    EXPECT_NE(mirrored, source.first());
}
