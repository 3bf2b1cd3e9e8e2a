#include "ChartWithData.h"

namespace {

// The chart's pair "axis.x".
class KelChartAxisPairTest : public ChartWithData {
protected:
    KelChartAxisPair& pair = chart.axisX;
};

} // namespace

TEST_F(KelChartAxisPairTest, CreateFindAndRemoveCycle)
{
    KelChartAxis& left = axis('x', "left");
    EXPECT_EQ(left.name(), "axis.x.left");
    EXPECT_TRUE(left.enabled.get());
    EXPECT_EQ(pair.find("axis.x.left"), &left);
    EXPECT_EQ(pair.find("left"), nullptr);

    // Creating again replaces only that slot's axis; the first one is found first.
    KelChartAxis& right = axis<KelChartAxisDiscrete>('x', "right", false);
    KelChartAxis& b = axis<KelChartAxisDiscrete>('x', "b");
    EXPECT_TRUE(pair.first() == &b && pair.second() == &right && pair.size() == 2u);
    right.rename(b.name());
    EXPECT_EQ(pair.find("axis.x.b"), &b);

    // Removal, erasure from above and a move to another parent all forget the axis.
    EXPECT_TRUE(static_cast<KelProperties&>(pair).remove(&right));
    EXPECT_EQ(pair.second(), nullptr);
    EXPECT_TRUE(chart.erase(&b));
    EXPECT_EQ(pair.first(), nullptr);
    KelChartAxis& moved = axis('x', "left");
    KelProperties elsewhere(group);
    elsewhere.insert(&moved, false);
    EXPECT_EQ(pair.first(), nullptr);
    EXPECT_NE(&axis('x', "left"), &moved);
    EXPECT_EQ(pair.first()->parent(), &pair);
    EXPECT_TRUE(ensures().empty());
}

TEST_F(KelChartAxisPairTest, UnknownTypeOrAForeignNamesakeIsRefusedWithoutTouchingTheTree)
{
    KelChartAxis& refused = pair.createFirst("left", "chart.axis");
    EXPECT_EQ(pair.size(), 0u);
    EXPECT_EQ(refused.parent(), nullptr);
    refused.title.set("harmless");

    auto* foreign = new KelProperties(group);
    foreign->rename("axis.x.right");
    static_cast<KelProperties&>(pair).insert(foreign, false);
    EXPECT_EQ(pair.createSecond("right", KelChartAxisContinuous::typeString).parent(), nullptr);
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

// The pair's own axes take the source axes' names, classes and values (labels too); a second assignment
// updates them in place, an axis the source lacks goes, and self-assignment changes nothing.
TEST_F(KelChartAxisPairTest, AssignmentMirrorsTheSourceAxesIntoOwnChildren)
{
    KelChartAxisPair source(group);
    source.rename("axis.x");
    auto& sourceLeft =
        dynamic_cast<KelChartAxisContinuous&>(source.createFirst("left", KelChartAxisContinuous::typeString));
    auto& categories =
        dynamic_cast<KelChartAxisDiscrete&>(source.createSecond("top", KelChartAxisDiscrete::typeString));
    categories.labels.setLabels({"a", "b"});
    axis<KelChartAxisDiscrete>('x', "old");

    for (const double max : {42.0, 7.0}) {
        sourceLeft.max.set(max);
        KelChartAxis* const before = pair.first();
        pair = source;
        auto* left = dynamic_cast<KelChartAxisContinuous*>(pair.first());
        auto* top = dynamic_cast<KelChartAxisDiscrete*>(pair.second());
        ASSERT_TRUE(left && top);
        EXPECT_TRUE(left->parent() == &pair && top->parent() == &pair && pair.size() == 2u);
        EXPECT_EQ(left->name(), "axis.x.left");
        EXPECT_EQ(left->max.get(), max);
        EXPECT_EQ(top->labels.labels(), (QStringList{"a", "b"}));
        EXPECT_EQ(top->labels.parent(), top);
        EXPECT_TRUE(max == 42.0 || left == before);
    }
    const KelChartAxis* const top = pair.second();
    pair = static_cast<const KelChartAxisPair&>(pair);
    EXPECT_TRUE(pair.second() == top && pair.size() == 2u);
    EXPECT_TRUE(ensures().empty());
}
