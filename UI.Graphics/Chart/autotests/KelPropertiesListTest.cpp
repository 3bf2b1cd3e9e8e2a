#include "KelChartAxis.h"
#include "KelChartAxisList.h"
#include "OrvDebug.h"

#include <gtest/gtest.h>

namespace {

class KelPropertiesListTest : public ::testing::Test {
protected:
    KelModifiedGroup group;
    KelPropertiesList<KelChartAxis> list{group, "axis.default"};
};

} // namespace

TEST_F(KelPropertiesListTest, InsertNamesUnnamedChildrenOnly)
{
    auto* unnamed = new KelChartAxis(group);
    unnamed->rename(QString());
    auto* named = new KelChartAxis(group);
    named->rename("kept");
    EXPECT_TRUE(list.insert(unnamed, false));
    EXPECT_TRUE(list.insert(named, false));
    EXPECT_FALSE(list.insert(nullptr, false));
    EXPECT_EQ(list.at(0u)->name(), "axis.default");
    EXPECT_EQ(list["kept"], named);
    EXPECT_EQ(list.front(), unnamed);
    EXPECT_EQ(list.back(), named);
    EXPECT_EQ(list[5u], nullptr);
}

TEST_F(KelPropertiesListTest, AccessorsGiveNullForChildrenOfAnotherClass)
{
    auto* foreign = new KelProperties(group);
    foreign->rename("foreign");
    static_cast<KelProperties&>(list).insert(foreign, false);
    EXPECT_EQ(list["foreign"], nullptr);
    EXPECT_EQ(list.at(0u), nullptr);
    EXPECT_EQ(list.size(), 1u);
}

TEST_F(KelPropertiesListTest, ChildMakesATWhateverTheType)
{
    KelChartAxis& made = list.child("x", "no.such.type");
    EXPECT_EQ(made.name(), "x");
    EXPECT_EQ(made.type(), KelChartAxis::typeString);
    EXPECT_EQ(&made.group(), &group);
    EXPECT_EQ(&list.child("x", "other"), &made);
}

TEST_F(KelPropertiesListTest, ChildOfAnotherClassIsReportedAndATIsAppended)
{
    auto* foreign = new KelProperties(group);
    foreign->rename("x");
    static_cast<KelProperties&>(list).insert(foreign, false);
    orvdebug::ScopedCapture capture(kel::debug_logger::debuglogger());
    KelChartAxis& made = list.child("x", KelChartAxis::typeString);
    EXPECT_EQ(capture.texts(orvdebug::Stream::Ensure).size(), 1u);
    EXPECT_EQ(made.name(), "x");
    EXPECT_EQ(list.size(), 2u);
    EXPECT_EQ(list.back(), &made);
}

TEST_F(KelPropertiesListTest, CopyAndAssignmentKeepTheDefaultChildName)
{
    KelChartAxisList axes(group, "axis.9");
    KelChartAxisList copy(axes);
    EXPECT_EQ(copy.defaultChildName(), "axis.9");
    KelChartAxisList other(group, "other");
    other = axes;
    EXPECT_EQ(other.defaultChildName(), "axis.9");
}
