#include "KelChartAxisContinuous.h"
#include "KelChartAxisDiscrete.h"
#include "KelChartAxisPair.h"
#include "OrvDebug.h"

#include <gtest/gtest.h>

namespace {

class KelChartAxisPairTest : public ::testing::Test {
protected:
    KelChartAxisPairTest() { pair.rename("axis.x"); }

    KelChartAxis& create(bool first, const QString& name, const QString& type = KelChartAxisContinuous::typeString)
    {
        return first ? pair.createFirst(name, type) : pair.createSecond(name, type);
    }
    std::vector<std::string> ensures() const { return capture.texts(orvdebug::Stream::Ensure); }

    KelModifiedGroup group;
    KelChartAxisPair pair{group};
    orvdebug::ScopedCapture capture{kel::debug_logger::debuglogger()};
};

} // namespace

TEST_F(KelChartAxisPairTest, CreateFindAndRemoveCycle)
{
    EXPECT_EQ(pair.type(), "chart.axis_pair");
    EXPECT_EQ(pair.find("axis.x.left"), nullptr);
    KelChartAxis& left = create(true, "left");
    EXPECT_EQ(left.name(), "axis.x.left");
    EXPECT_EQ(left.type(), "chart.axis.continuous");
    EXPECT_TRUE(left.enabled.get());
    EXPECT_EQ(pair.find("axis.x.left"), &left);
    EXPECT_EQ(pair.find("left"), nullptr);

    // Creating again replaces only that slot's axis.
    KelChartAxis& right = create(false, "right", KelChartAxisDiscrete::typeString);
    KelChartAxis& b = create(true, "b", KelChartAxisDiscrete::typeString);
    EXPECT_EQ(pair.first(), &b);
    EXPECT_EQ(pair.second(), &right);
    EXPECT_EQ(pair.size(), 2u);
    right.rename(b.name());
    EXPECT_EQ(pair.find("axis.x.b"), &b);

    // Removal, erasure from above and a move to another parent all forget the axis.
    EXPECT_TRUE(static_cast<KelProperties&>(pair).remove(&right));
    EXPECT_EQ(pair.second(), nullptr);
    KelProperties root(group);
    root.insert(&pair, true);
    EXPECT_TRUE(root.erase(&b));
    EXPECT_EQ(pair.first(), nullptr);
    root.remove(&pair);
    KelChartAxis& moved = create(true, "left");
    KelProperties elsewhere(group);
    elsewhere.insert(&moved, false);
    EXPECT_EQ(pair.first(), nullptr);
    EXPECT_NE(&create(true, "left"), &moved);
    EXPECT_EQ(pair.first()->parent(), &pair);
    EXPECT_TRUE(ensures().empty());
}

TEST_F(KelChartAxisPairTest, UnknownTypeOrAForeignNamesakeIsRefusedWithoutTouchingTheTree)
{
    KelChartAxis& refused = create(true, "left", "chart.axis");
    EXPECT_EQ(pair.size(), 0u);
    EXPECT_EQ(refused.parent(), nullptr);
    refused.title.set("harmless");

    auto* foreign = new KelProperties(group);
    foreign->rename("axis.x.right");
    static_cast<KelProperties&>(pair).insert(foreign, false);
    EXPECT_EQ(create(false, "right").parent(), nullptr);
    EXPECT_EQ(pair.second(), nullptr);
    EXPECT_EQ(pair.size(), 1u);
    const std::string first = " - KelChartAxis& KelChartAxisPair::createFirst(const QString&, const QString&)";
    const std::string second = " - KelChartAxis& KelChartAxisPair::createSecond(const QString&, const QString&)";
    EXPECT_EQ(ensures(), (std::vector<std::string>{"\"isAxisType(type)\"" + first,
                                                   "\"dynamic_cast<KelChartAxis*>(existing)\"" + second}));
}

// Children the framework makes (as when reading a tree) stay disabled; the factory traces its line.
TEST_F(KelChartAxisPairTest, MakeChildGivesADisabledAxisAndTraces)
{
    EXPECT_FALSE(dynamic_cast<KelChartAxis&>(pair.child("axis.x.c", KelChartAxisContinuous::typeString)).enabled.get());
    const std::string trace = capture.texts(orvdebug::Stream::Log).at(0);
    EXPECT_NE(trace.find("KelChartAxisPair::makeChild"), std::string::npos);
    EXPECT_EQ(trace.substr(trace.size() - 9), " @line 78");
}

TEST_F(KelChartAxisPairTest, AssignmentMirrorsTheSourceAxesIntoOwnChildren)
{
    KelChartAxisPair source(group);
    source.rename("axis.x");
    auto& sourceLeft = dynamic_cast<KelChartAxisContinuous&>(
        source.createFirst("left", KelChartAxisContinuous::typeString));
    sourceLeft.max.set(42.0);
    create(false, "old", KelChartAxisDiscrete::typeString);

    pair = source;
    ASSERT_NE(pair.first(), nullptr);
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

TEST_F(KelChartAxisPairTest, AssignmentCarriesDiscreteLabelsAndSelfAssignmentKeepsTheAxes)
{
    KelChartAxisPair source(group);
    source.rename("axis.x");
    auto& categories = dynamic_cast<KelChartAxisDiscrete&>(source.createSecond("top", KelChartAxisDiscrete::typeString));
    categories.labels.setLabels({"a", "b"});
    pair = source;
    auto* own = dynamic_cast<KelChartAxisDiscrete*>(pair.second());
    ASSERT_NE(own, nullptr);
    EXPECT_NE(own, &categories);
    EXPECT_EQ(own->labels.labels(), (QStringList{"a", "b"}));
    EXPECT_EQ(own->labels.parent(), own);

    // The second assignment updates the axis made by the first.
    categories.labels.setLabels({"c"});
    pair = source;
    EXPECT_EQ(pair.second(), own);
    EXPECT_EQ(own->labels.labels(), QStringList{"c"});

    const KelChartAxisPair& self = pair;
    pair = self;
    EXPECT_EQ(pair.second(), own);
    EXPECT_EQ(pair.size(), 1u);
    EXPECT_TRUE(ensures().empty());
}
