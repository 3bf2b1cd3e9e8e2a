#include "KelChartAxisContinuous.h"
#include "KelChartAxisDiscrete.h"
#include "KelChartAxisList.h"
#include "OrvDebug.h"

#include <gtest/gtest.h>

TEST(KelPropertiesList, InsertNamesUnnamedChildrenAndAccessIsTyped)
{
    KelModifiedGroup group;
    KelPropertiesList<KelChartAxis> list{group, "axis.default"};
    auto* unnamed = new KelChartAxis(group);
    unnamed->rename(QString());
    EXPECT_TRUE(list.insert(unnamed, false));
    EXPECT_FALSE(list.insert(nullptr, false));
    KelChartAxis& made = list.child("x", "no.such.type");
    EXPECT_EQ(made.type(), KelChartAxis::typeString);
    EXPECT_EQ(&list.child("x", "other"), &made);
    EXPECT_EQ(list.at(0u)->name(), "axis.default");
    EXPECT_EQ(list["x"], &made);
    EXPECT_EQ(list[5u], nullptr);

    // A child of another class is not given out; asking for its name reports it and appends a T.
    auto* foreign = new KelProperties(group);
    foreign->rename("y");
    static_cast<KelProperties&>(list).insert(foreign, false);
    EXPECT_EQ(list["y"], nullptr);
    orvdebug::ScopedCapture capture(kel::debug_logger::debuglogger());
    KelChartAxis& appended = list.child("y", KelChartAxis::typeString);
    EXPECT_EQ(capture.texts(orvdebug::Stream::Ensure).size(), 1u);
    EXPECT_EQ(list.size(), 4u);
    EXPECT_EQ(list.back(), &appended);
}

// The ends are given out only as T, through const access too; an empty list has none.
TEST(KelPropertiesList, FrontAndBackAreTypedAndNullWhenEmptyOrForeign)
{
    KelModifiedGroup group;
    KelPropertiesList<KelChartAxis> list{group, "axis.1"};
    const KelPropertiesList<KelChartAxis>& constList = list;
    EXPECT_EQ(list.front(), nullptr);
    EXPECT_EQ(constList.back(), nullptr);
    KelChartAxis& first = list.child("a", KelChartAxis::typeString);
    auto* foreign = new KelProperties(group);
    foreign->rename("f");
    static_cast<KelProperties&>(list).insert(foreign, false);
    EXPECT_EQ(list.front(), &first);
    EXPECT_EQ(constList.front(), &first);
    EXPECT_EQ(list.back(), nullptr);
    EXPECT_EQ(constList.back(), nullptr);
    EXPECT_EQ(&constList.child("a", KelChartAxis::typeString), &first);
}

TEST(KelChartAxisList, MakesTheAxisClassOfTheTypeAndCopiesKeepTheDefaultName)
{
    KelModifiedGroup group;
    KelChartAxisList axes(group, "axis.9");
    EXPECT_EQ(axes.child("d", KelChartAxisDiscrete::typeString).type(), KelChartAxisDiscrete::typeString);
    EXPECT_EQ(axes.child("c", KelChartAxisContinuous::typeString).type(), KelChartAxisContinuous::typeString);
    EXPECT_EQ(axes.child("p", "chart.whatever").type(), KelChartAxis::typeString);
    EXPECT_NE(dynamic_cast<KelChartAxisDiscrete*>(axes["d"]), nullptr);
    KelChartAxisList other(group, "other");
    other = axes;
    EXPECT_EQ(other.defaultChildName(), "axis.9");
    EXPECT_EQ(KelChartAxisList(axes).defaultChildName(), "axis.9");
}
