#include "KelChart2D.h"
#include "KelChart3D.h"
#include "KelChartAxisContinuous.h"
#include "KelChartAxisDiscrete.h"
#include "KelChartAxisTime.h"
#include "KelChartCorrelation.h"
#include "KelChartLegend.h"
#include "KelChartMultiAxis.h"
#include "KelChartPie.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <functional>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

namespace {

// (property, default text, text and unit set on a copy's source or null); "child/property" reaches into a child.
using Rows = std::vector<std::array<const char*, 4>>;

// One element class: how to make, copy and assign it, and what a new one holds.
struct ElementCase {
    QString type;
    std::function<std::unique_ptr<KelProperties>(KelModifiedGroup&)> make;
    std::function<std::unique_ptr<KelProperties>(const KelProperties&)> copy;
    std::function<void(KelProperties&, const KelProperties&)> assign;
    const char* name;     // of a new element
    const char* copyName; // null: a copy keeps its source's name
    const char* children; // the children's names, each followed by a blank
    Rows rows;
};
void PrintTo(const ElementCase& c, std::ostream* os) { *os << c.type.toStdString(); }

// A copy is named like a new element unless `copyName` says otherwise.
template <class T>
ElementCase element(const char* name, const char* children, Rows rows, const char* copyName = "")
{
    return {T::typeString,
            [](KelModifiedGroup& group) { return std::make_unique<T>(group); },
            [](const KelProperties& p) { return std::make_unique<T>(static_cast<const T&>(p)); },
            [](KelProperties& target, const KelProperties& source) {
                static_cast<T&>(target) = static_cast<const T&>(source);
            },
            name,
            copyName && !*copyName ? name : copyName,
            children,
            std::move(rows)};
}

// The node holding the property at the end of `path`; `path` is left with the property's name.
KelProperties* reach(KelProperties& node, QString& path)
{
    const int slash = path.indexOf('/');
    if (slash < 0)
        return &node;
    KelProperties* child = node[path.left(slash)];
    path = path.mid(slash + 1);
    return child ? reach(*child, path) : nullptr;
}

// The node's type, stored texts with their units and children, recursively; names only below the top.
std::string content(const KelProperties& node, const KelProperties* parent = nullptr)
{
    std::ostringstream os;
    if (parent)
        os << node.name() << (node.parent() == parent ? "" : " (held elsewhere)");
    os << " <" << node.type() << ">\n";
    for (const QString& name : node.string().names())
        os << name << '=' << node.string().getString(name) << " [" << node.string().getUnit(name, QString()) << "]\n";
    for (unsigned i = 0; i < node.size(); ++i)
        os << content(*node[i], &node);
    return os.str();
}

class KelChartElementTest : public ::testing::TestWithParam<ElementCase> {
protected:
    KelModifiedGroup group;
};

} // namespace

// Every default is read through the string interface; no stored property has a unit.
TEST_P(KelChartElementTest, NewElementHasItsTypeNameChildrenAndDefaults)
{
    const ElementCase& c = GetParam();
    const std::unique_ptr<KelProperties> node = c.make(group);
    EXPECT_EQ(node->type(), c.type);
    EXPECT_EQ(node->name(), c.name);
    std::string children;
    for (unsigned i = 0; i < node->size(); ++i)
        children += node->at(i)->name().toStdString() + ' ';
    EXPECT_EQ(children, c.children);
    for (const auto& [property, expected, edit, unit] : c.rows) {
        QString name = property, value;
        const KelProperties* holder = reach(*node, name);
        ASSERT_NE(holder, nullptr) << property;
        holder->getValue(name, value, "<undefined>");
        EXPECT_EQ(value.toStdString(), expected) << property;
    }
    for (const QString& name : node->string().names())
        EXPECT_EQ(node->string().getUnit(name, QString()), "") << name.toStdString();
}

// A copy takes the values, units and children of its source (as its own children) and the name its class
// gives copies; assignment keeps the target's name. Both stay apart from the source afterwards.
TEST_P(KelChartElementTest, CopyAndAssignmentCarryValuesUnitsAndChildren)
{
    const ElementCase& c = GetParam();
    const std::unique_ptr<KelProperties> source = c.make(group);
    source->rename("source");
    for (const auto& [property, expected, edit, unit] : c.rows) {
        QString name = property;
        KelProperties* holder = reach(*source, name);
        if (edit) {
            EXPECT_EQ(holder->setValue(name, edit), "") << property;
        }
        if (unit)
            holder->string().setUnit(name, unit);
    }
    const std::string original = content(*source);
    const std::unique_ptr<KelProperties> copy = c.copy(*source);
    const std::unique_ptr<KelProperties> assigned = c.make(group);
    assigned->rename("target");
    c.assign(*assigned, *source);
    c.assign(*assigned, *assigned);
    EXPECT_EQ(copy->name(), c.copyName ? c.copyName : "source");
    EXPECT_EQ(assigned->name(), "target");
    EXPECT_EQ(content(*copy), original);
    EXPECT_EQ(content(*assigned), original);

    c.assign(*source, *c.make(group));
    EXPECT_NE(content(*source), original);
    EXPECT_EQ(content(*copy), original);
    EXPECT_EQ(content(*assigned), original);
}

const char* const chartChildren = "unitsystem variable style ";
const char* const pairChartChildren = "unitsystem variable style axis.x axis.y axis.z ";
const char* const labelChartChildren = "unitsystem variable style labels ";

INSTANTIATE_TEST_SUITE_P(Classes, KelChartElementTest, ::testing::Values(
    element<KelChart>("chart.1", chartChildren,
                      {{"title", "", "Line chart", "-"}, {"textColor", "#000000", "#ff0000"},
                       {"textShadowColor", "#00000000", nullptr}, {"style/style", "none", "line"}}),
    element<KelChart2D>("chart.1", pairChartChildren, {{"draw3d", "false", "true"}}),
    element<KelChart3D>("chart.1", pairChartChildren, {{"cube", "true", "false"}}),
    element<KelChartCorrelation>("chart.correlation", chartChildren,
                                 {{"legendLabel", "-1, -0.5, 0, 0.5, 1", "0, 1"}, {"displayValues", "false", "true"}}),
    element<KelChartPie>("chart.pie", labelChartChildren,
                         {{"showPercentages", "true", "false"}, {"labels/labels", "", "a, b"}}),
    element<KelChartMultiAxis>("chart.multi.axis", labelChartChildren,
                               {{"firstAxis", "", "axis.y.left"}, {"labels/labels", "", "p, q"}}),
    element<KelChartAxis>("axis.1", "", {{"enabled", "false", "true"}, {"title", "", "Temperature"},
                                         {"inverted", "false", nullptr}, {"tickColor", "#000000", nullptr},
                                         {"gridColor", "#c0c0c0", "#ff0000"}, {"labelColor", "#000000", nullptr},
                                         {"labelShadowColor", "#00000000", nullptr}}),
    element<KelChartAxisContinuous>("axis.1", "",
                                    {{"enabled", "false", nullptr}, {"autoScale", "true", "false"}, {"min", "0", "-5"},
                                     {"max", "0", "40", "degC"}, {"unitLabel", "", "T"},
                                     {"symmetric", "false", nullptr}, {"logarithmic", "false", "true"},
                                     {"usability", "false", nullptr}, {"tightRange", "false", "true"}}),
    element<KelChartAxisDiscrete>("axis.1", "labels ", {{"autoScale", "true", nullptr}, {"min", "0", "1"},
                                                        {"max", "0", "3"}, {"labelOffset", "0.5", "0.25", "cm"},
                                                        {"stacked", "false", "true"}, {"labels/labels", "", "a, b"}}),
    element<KelChartAxisTime>("axis.1", "", {{"autoScale", "true", "false"}, {"tightRange", "false", "true"},
                                             {"unitLabel", "", "s since 2012-01-01"},
                                             {"timeZone", "UTC", "Europe/Berlin"}, {"labelFormat", "", "%Y-%m"}}),
    element<KelChartLegend>("legend.1", "viewport ",
                            {{"enabled", "true", "false"}, {"style", "vertical", "horizontal"},
                             {"border", "#00000000", nullptr}, {"chart", "", "chart.1"},
                             {"expandVariable", "chart.legend.expandTheFirstEntryByDefault", "temperature"},
                             {"viewport/alignment", "34", "129", "-"}}),
    element<KelChartVariable>("variable.1", "style variableiter min max filterMin filterMax ",
                              {{"enabled", "true", nullptr}, {"legend", "true", "false"}, {"order", "0", "3"},
                               {"yAxis", "", "axis.y.left"}, {"autoRange", "true", nullptr},
                               {"tesselate", "true", nullptr}, {"enableFilters", "false", nullptr},
                               {"min", "0, 0, 0", nullptr}, {"max", "0, 0, 0", "5 [m], 6, 7"},
                               {"filterMin", "1, 1, 1", nullptr}, {"filterMax", "0, 0, 0", nullptr},
                               {"style/fill", "none", "cross"}}),
    // The style's drawing properties are checked with its dump.
    element<KelChartVariableStyle>("", "", {{"bands", "256", "16", "1/mm"}, {"componentSortAxis", "-1", "0"},
                                            {"showLinearInterpolationOfLines", "false", "true"}}, nullptr)),
    [](const auto& info) {
        std::string name = info.param.type.toStdString();
        std::replace_if(name.begin(), name.end(), [](char ch) { return !std::isalnum(ch); }, '_');
        return name;
    });
