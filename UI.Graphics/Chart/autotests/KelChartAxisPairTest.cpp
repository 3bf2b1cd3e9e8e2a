#include "KelChartAxisContinuous.h"
#include "KelChartAxisDiscrete.h"
#include "KelChartAxisList.h"
#include "KelChartAxisPair.h"
#include "OrvDebug.h"

#include <gtest/gtest.h>

namespace {

class KelChartAxisPairTest : public ::testing::Test {
protected:
    KelChartAxisPairTest() { pair.rename("axis.x"); }

    std::vector<std::string> ensures() const { return capture.texts(orvdebug::Stream::Ensure); }

    KelModifiedGroup group;
    KelChartAxisPair pair{group};
    orvdebug::ScopedCapture capture{kel::debug_logger::debuglogger()};
};

const std::string createFirstSignature =
    "KelChartAxis& KelChartAxisPair::createFirst(const QString&, const QString&)";

} // namespace

TEST_F(KelChartAxisPairTest, NewPairIsEmpty)
{
    EXPECT_EQ(pair.type(), "chart.axis_pair");
    EXPECT_EQ(pair.first(), nullptr);
    EXPECT_EQ(pair.second(), nullptr);
    EXPECT_EQ(pair.find("axis.x.left"), nullptr);
    EXPECT_EQ(pair.size(), 0u);
}

TEST_F(KelChartAxisPairTest, CreateFirstMakesAnEnabledChildNamedAfterThePair)
{
    KelChartAxis& left = pair.createFirst("left", KelChartAxisContinuous::typeString);
    EXPECT_EQ(left.name(), "axis.x.left");
    EXPECT_EQ(left.type(), "chart.axis.continuous");
    EXPECT_TRUE(left.enabled.get());
    EXPECT_EQ(pair.first(), &left);
    EXPECT_EQ(pair.find("axis.x.left"), &left);
    EXPECT_EQ(pair.find("left"), nullptr);
    EXPECT_EQ(pair[0u], &left);
    EXPECT_TRUE(ensures().empty());
}

TEST_F(KelChartAxisPairTest, CreateAgainReplacesOnlyThatSlot)
{
    KelChartAxis& right = pair.createSecond("right", KelChartAxisDiscrete::typeString);
    pair.createFirst("a", KelChartAxisContinuous::typeString);
    KelChartAxis& b = pair.createFirst("b", KelChartAxisDiscrete::typeString);
    EXPECT_EQ(pair.first(), &b);
    EXPECT_EQ(pair.second(), &right);
    EXPECT_EQ(pair.size(), 2u);
    EXPECT_EQ(pair["axis.x.a"], nullptr);
    EXPECT_NE(dynamic_cast<KelChartAxisDiscrete*>(&b), nullptr);
}

TEST_F(KelChartAxisPairTest, RemoveAndEraseForgetTheAxis)
{
    KelChartAxis& left = pair.createFirst("left", KelChartAxisContinuous::typeString);
    KelChartAxis& right = pair.createSecond("right", KelChartAxisContinuous::typeString);
    KelProperties& asNode = pair;
    EXPECT_TRUE(asNode.remove(&right));
    EXPECT_EQ(pair.second(), nullptr);
    EXPECT_EQ(pair.first(), &left);
    KelProperties root(group);
    root.insert(&pair, true);
    EXPECT_TRUE(root.erase(&left));
    EXPECT_EQ(pair.first(), nullptr);
    root.remove(&pair);
}

TEST_F(KelChartAxisPairTest, SameNameGivesTheFirst)
{
    KelChartAxis& a = pair.createFirst("same", KelChartAxisContinuous::typeString);
    KelChartAxis& b = pair.createSecond("other", KelChartAxisContinuous::typeString);
    b.rename(a.name());
    EXPECT_EQ(pair.find("axis.x.same"), &a);
}

TEST_F(KelChartAxisPairTest, UnknownTypeIsRefusedWithoutTouchingTheTree)
{
    KelChartAxis& refused = pair.createFirst("left", "chart.axis");
    EXPECT_EQ(pair.size(), 0u);
    EXPECT_EQ(pair.first(), nullptr);
    EXPECT_EQ(refused.parent(), nullptr);
    refused.title.set("harmless");
    EXPECT_EQ(ensures(), std::vector<std::string>{"\"isAxisType(type)\" - " + createFirstSignature});
}

TEST_F(KelChartAxisPairTest, ExistingChildThatIsNoAxisIsRefused)
{
    auto* foreign = new KelProperties(group);
    foreign->rename("axis.x.left");
    static_cast<KelProperties&>(pair).insert(foreign, false);
    KelChartAxis& refused = pair.createFirst("left", KelChartAxisContinuous::typeString);
    EXPECT_EQ(pair.first(), nullptr);
    EXPECT_EQ(pair.size(), 1u);
    EXPECT_EQ(refused.parent(), nullptr);
    EXPECT_EQ(ensures().size(), 1u);
}

TEST_F(KelChartAxisPairTest, AxisMovedToAnotherParentIsForgotten)
{
    KelChartAxis& left = pair.createFirst("left", KelChartAxisContinuous::typeString);
    KelProperties elsewhere(group);
    elsewhere.insert(&left, false);
    EXPECT_EQ(pair.first(), nullptr);
    KelChartAxis& again = pair.createFirst("left", KelChartAxisContinuous::typeString);
    EXPECT_NE(&again, &left);
    EXPECT_EQ(again.parent(), &pair);
    EXPECT_TRUE(ensures().empty());
}

TEST_F(KelChartAxisPairTest, MakeChildRefusesOtherTypesAndTraces)
{
    KelProperties& made = pair.child("axis.x.c", KelChartAxisContinuous::typeString);
    EXPECT_EQ(made.type(), KelChartAxisContinuous::typeString);
    EXPECT_FALSE(dynamic_cast<KelChartAxis&>(made).enabled.get());
    const auto traces = capture.texts(orvdebug::Stream::Log);
    ASSERT_FALSE(traces.empty());
    EXPECT_NE(traces.front().find("KelChartAxisPair::makeChild"), std::string::npos);
    EXPECT_EQ(traces.front().substr(traces.front().size() - 9), " @line 78");
}

TEST_F(KelChartAxisPairTest, AssignmentMirrorsTheSourceAxesIntoOwnChildren)
{
    KelChartAxisPair source(group);
    source.rename("axis.x");
    auto& sourceLeft = dynamic_cast<KelChartAxisContinuous&>(
        source.createFirst("left", KelChartAxisContinuous::typeString));
    sourceLeft.max.set(42.0);
    KelChartAxis& stale = pair.createSecond("old", KelChartAxisDiscrete::typeString);
    (void)stale;

    pair = source;
    ASSERT_NE(pair.first(), nullptr);
    EXPECT_NE(pair.first(), &sourceLeft);
    EXPECT_EQ(pair.first()->parent(), &pair);
    EXPECT_EQ(pair.first()->name(), "axis.x.left");
    EXPECT_EQ(dynamic_cast<KelChartAxisContinuous*>(pair.first())->max.get(), 42.0);
    EXPECT_EQ(pair.second(), nullptr);
    EXPECT_EQ(pair.size(), 1u);

    KelChartAxis* own = pair.first();
    sourceLeft.max.set(7.0);
    pair = source;
    EXPECT_EQ(pair.first(), own);
    EXPECT_EQ(dynamic_cast<KelChartAxisContinuous*>(own)->max.get(), 7.0);
}

TEST(KelChartAxisList, MakesTheAxisClassOfTheTypeString)
{
    KelModifiedGroup group;
    KelChartAxisList list(group, "axis.1");
    EXPECT_EQ(list.child("d", KelChartAxisDiscrete::typeString).type(), KelChartAxisDiscrete::typeString);
    EXPECT_EQ(list.child("c", KelChartAxisContinuous::typeString).type(), KelChartAxisContinuous::typeString);
    EXPECT_EQ(list.child("p", "chart.whatever").type(), KelChartAxis::typeString);
    EXPECT_EQ(list.size(), 3u);
    EXPECT_NE(dynamic_cast<KelChartAxisDiscrete*>(list["d"]), nullptr);
}
