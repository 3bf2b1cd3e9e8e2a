#include "KelChartAxis.h"
#include "KelPropertiesList.h"
#include "OrvDebug.h"

#include <gtest/gtest.h>

// Unnamed children get the default name; children are given out only as T, through const access too.
TEST(KelPropertiesList, InsertNamesUnnamedChildrenAndAccessIsTyped)
{
    KelModifiedGroup group;
    KelPropertiesList<KelChartAxis> list{group, "axis.default"};
    const KelPropertiesList<KelChartAxis>& constList = list;
    EXPECT_TRUE(list.front() == nullptr && constList.back() == nullptr);
    auto* unnamed = new KelChartAxis(group);
    unnamed->rename(QString());
    EXPECT_TRUE(list.insert(unnamed, false));
    EXPECT_FALSE(list.insert(nullptr, false));
    KelChartAxis& made = list.child("x", "no.such.type");
    EXPECT_EQ(made.type(), KelChartAxis::typeString);
    EXPECT_EQ(&constList.child("x", "other"), &made);
    EXPECT_EQ(list.at(0u)->name(), "axis.default");
    EXPECT_TRUE(list["x"] == &made && list[5u] == nullptr && constList.front() == unnamed);

    // A child of another class is not given out; asking for its name reports it and appends a T.
    auto* foreign = new KelProperties(group);
    foreign->rename("y");
    static_cast<KelProperties&>(list).insert(foreign, false);
    EXPECT_TRUE(list["y"] == nullptr && list.back() == nullptr && constList.back() == nullptr);
    orvdebug::ScopedCapture capture(kel::debug_logger::debuglogger());
    KelChartAxis& appended = list.child("y", KelChartAxis::typeString);
    EXPECT_EQ(capture.texts(orvdebug::Stream::Ensure).size(), 1u);
    EXPECT_EQ(list.size(), 4u);
    EXPECT_EQ(list.back(), &appended);
}
