#include "KelChartVariable.h"
#include "KelUnitSystem.h"
#include "OrvDebug.h"

#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <string>
#include <vector>

using Orv::Math::Vector3;

namespace {

const QString undefinedText = QStringLiteral("<undefined>");

QString byName(const KelProperties& node, const QString& name)
{
    QString value;
    node.getValue(name, value, undefinedText);
    return value;
}

// The variable's own properties and its style, as text.
std::string properties(const KelChartVariable& v)
{
    std::ostringstream os;
    for (const QString& name : v.string().names())
        os << name << '=' << v.string().getString(name) << " [" << v.string().getUnit(name, QString()) << "]\n";
    os << v.style;
    return os.str();
}

// Everything a variable holds, as text: properties, style, children, quantities and iterator data.
std::string content(const KelChartVariable& v)
{
    std::ostringstream os;
    os << properties(v);
    for (unsigned i = 0; i < v.size(); ++i)
        os << v[i]->name() << ' ';
    os << '\n' << v.max.text() << '|' << v.min.text() << '|' << v.filterMax.text() << '|' << v.filterMin.text();
    auto& iter = const_cast<KelVariableIter&>(v.variableiter);
    for (iter.reset(); iter.next();)
        os << ' ' << iter.scalarValue();
    return os.str();
}

class KelChartVariableTest : public ::testing::Test {
protected:
    // The children are the members themselves, in insertion order.
    static void expectMemberChildren(const KelChartVariable& v)
    {
        const std::vector<const KelProperties*> members{&v.style, &v.variableiter, &v.min,
                                                        &v.max,   &v.filterMin,    &v.filterMax};
        const char* names[] = {"style", "variableiter", "min", "max", "filterMin", "filterMax"};
        ASSERT_EQ(v.size(), members.size());
        for (unsigned i = 0; i < v.size(); ++i) {
            EXPECT_EQ(v[i], members[i]) << names[i];
            EXPECT_EQ(v[i]->name(), QString::fromLatin1(names[i]));
            EXPECT_TRUE(v.isMember(members[i])) << names[i];
        }
    }

    // Gives `v` values that differ from every default.
    static void customise(KelChartVariable& v)
    {
        v.rename(QStringLiteral("series"));
        v.enabled.set(false);
        v.title.set(QStringLiteral("Temperature"));
        v.xAxis.set(QStringLiteral("axis.x"));
        v.label.set({QStringLiteral("a"), QStringLiteral("b")});
        v.autoRange.set(false);
        v.order.set(4);
        v.tesselate.set(false);
        v.style.componentSortAxis.set(0);
        v.variableiter.setScalarData({3.0, 1.0, 2.0}, {}, QStringLiteral("km"));
        v.max.reset(Vector3(5, 6, 7), QStringLiteral("m"), QString(), QString());
        v.filterMin.reset(Vector3(2, 2, 2), QString(), QString(), QString());
    }

    KelModifiedGroup group;
    KelChartVariable variable{group};
};

} // namespace

TEST_F(KelChartVariableTest, NewVariableHoldsItsChildrenAndDefaults)
{
    EXPECT_EQ(variable.type(), QStringLiteral("chart.variable"));
    EXPECT_EQ(variable.name(), QStringLiteral("variable.1"));
    expectMemberChildren(variable);
    EXPECT_EQ(variable.style.type(), KelChartVariableStyle::typeString);
    EXPECT_EQ(&variable.filterMin.group(), &group);

    EXPECT_TRUE(variable.enabled.get() && variable.legend.get() && variable.autoRange.get());
    EXPECT_TRUE(variable.tesselate.get());
    EXPECT_FALSE(variable.enableFilters.get());
    EXPECT_EQ(variable.order.get(), 0);
    EXPECT_TRUE(variable.title.get().isEmpty() && variable.xAxis.get().isEmpty() && variable.zAxis.get().isEmpty());
    EXPECT_TRUE(variable.label.get().isEmpty());

    // By name too; the filter range is 1..0 without units.
    EXPECT_EQ(byName(variable, QStringLiteral("legend")), QStringLiteral("true"));
    EXPECT_EQ(byName(variable, QStringLiteral("order")), QStringLiteral("0"));
    EXPECT_EQ(byName(variable, QStringLiteral("yAxis")), QString());
    EXPECT_EQ(byName(variable, QStringLiteral("filterMin")), QStringLiteral("1, 1, 1"));
    EXPECT_EQ(byName(variable, QStringLiteral("filterMax")), QStringLiteral("0, 0, 0"));
    const QStringList names = variable.string().names();
    EXPECT_EQ(names.size(), 11);
    for (const QString& name : names)
        EXPECT_TRUE(variable.string().getUnit(name, QString()).isEmpty()) << name.toStdString();
}

TEST_F(KelChartVariableTest, QuantityNamesReachTheChildrenByTheirCurrentName)
{
    orvdebug::ScopedCapture capture(kel::debug_logger::debuglogger());
    variable.min.reset(Vector3(1, 2, 3), QStringLiteral("m"), QString(), QString());
    EXPECT_EQ(byName(variable, QStringLiteral("min")), QStringLiteral("1 [m], 2, 3"));
    EXPECT_TRUE(variable.setValue(QStringLiteral("filterMax"), QStringLiteral("4 [s], 5, 6")).isEmpty());
    EXPECT_EQ(variable.filterMax.x.unit(), QStringLiteral("s"));
    EXPECT_TRUE(variable.setValue(QStringLiteral("order"), QStringLiteral("-2")).isEmpty());
    EXPECT_EQ(variable.order.get(), -2);

    ASSERT_TRUE(variable.max.rename(QStringLiteral("upper")));
    EXPECT_TRUE(variable.setValue(QStringLiteral("upper"), QStringLiteral("7, 8, 9")).isEmpty());
    EXPECT_EQ(variable.max.text(), QStringLiteral("7, 8, 9"));
    EXPECT_EQ(byName(variable, QStringLiteral("max")), undefinedText);
    EXPECT_TRUE(variable.setValue(QStringLiteral("max"), QStringLiteral("kept here")).isEmpty());
    EXPECT_EQ(variable.string().getString(QStringLiteral("max")), QStringLiteral("kept here"));
    EXPECT_EQ(variable.max.text(), QStringLiteral("7, 8, 9"));
    EXPECT_TRUE(capture.messages().empty());
}

TEST_F(KelChartVariableTest, RemovedQuantityWarnsOncePerRequestAndFallsBackOnTheStore)
{
    ASSERT_TRUE(variable.remove(&variable.min));
    orvdebug::ScopedCapture capture(kel::debug_logger::debuglogger());

    EXPECT_EQ(byName(variable, QStringLiteral("min")), undefinedText);
    EXPECT_TRUE(variable.setValue(QStringLiteral("min"), QStringLiteral("7, 8, 9")).isEmpty());
    EXPECT_EQ(byName(variable, QStringLiteral("min")), QStringLiteral("7, 8, 9"));
    EXPECT_EQ(variable.min.text(), QStringLiteral("0, 0, 0"));

    const std::string condition = R"(false && "KelChartVariable::%1: failed to find a child of KelQuantityTriple type!")";
    const std::string getWarning =
        "WARNING: " + QString::fromStdString(condition).arg("getValue").toStdString() +
        " - virtual QString KelChartVariable::getValue(const QString&, QString&, const QString&) const @line ";
    const std::string setWarning = "WARNING: " + QString::fromStdString(condition).arg("setValue").toStdString() +
                                   " - virtual QString KelChartVariable::setValue(const QString&, const QString&) @line ";
    const std::vector<orvdebug::Message>& messages = capture.messages();
    ASSERT_EQ(messages.size(), 3u);
    const std::string expectedStarts[] = {getWarning, setWarning, getWarning};
    for (std::size_t i = 0; i < messages.size(); ++i) {
        EXPECT_EQ(messages[i].stream, orvdebug::Stream::Err);
        EXPECT_TRUE(messages[i].tag.empty());
        const std::string& start = expectedStarts[i];
        ASSERT_EQ(messages[i].text.substr(0, start.size()), start);
        const std::string line = messages[i].text.substr(start.size());
        EXPECT_TRUE(!line.empty() && line.find_first_not_of("0123456789") == std::string::npos) << line;
    }
    EXPECT_EQ(messages[0].text, messages[2].text);
}

TEST_F(KelChartVariableTest, CopyTakesEverythingButTheNameAndStaysIndependent)
{
    customise(variable);
    variable.min.rename(QStringLiteral("lower"));
    KelChartVariable copy(variable);
    variable.min.rename(QStringLiteral("min"));

    EXPECT_EQ(copy.name(), QStringLiteral("variable.1"));
    EXPECT_EQ(copy.type(), KelChartVariable::typeString);
    expectMemberChildren(copy);
    EXPECT_EQ(content(copy), content(variable));
    EXPECT_EQ(copy.filterMin.text(), QStringLiteral("2, 2, 2"));

    const std::string copied = content(copy);
    variable.style.fill.set({QStringLiteral("cross")});
    variable.variableiter.setScalarData({8.0});
    variable.max.reset(Orv::Math::Vector1, QString(), QString(), QString());
    variable.order.set(1);
    EXPECT_EQ(content(copy), copied);
    copy.title.set(QStringLiteral("Copy"));
    EXPECT_EQ(variable.title.get(), QStringLiteral("Temperature"));
}

TEST_F(KelChartVariableTest, AssignmentFillsTheExistingChildrenAndKeepsTheName)
{
    customise(variable);
    KelChartVariable target(group);
    target.rename(QStringLiteral("target"));
    target = variable;
    EXPECT_EQ(target.name(), QStringLiteral("target"));
    expectMemberChildren(target);
    EXPECT_EQ(content(target), content(variable));

    const std::string before = content(target);
    const KelChartVariable& self = target;
    target = self;
    EXPECT_EQ(content(target), before);
}

class KelChartVariableUnitsTest : public KelChartVariableTest, public ::testing::WithParamInterface<bool> {};

// With the unit system's flag the iterator delivers kilometres as metres, else as kilometres; every
// quantity follows.
TEST_P(KelChartVariableUnitsTest, QuantitiesFollowTheUnitsTheIteratorReports)
{
    const bool preferred = GetParam();
    KelUnitSystem units(group);
    units.enabled.set(preferred);
    variable.variableiter.setScalarData({1.5}, {}, QStringLiteral("km"));
    variable.min.reset(Vector3(2, 1, 1), QString(), QString(), QString());
    variable.max.reset(Vector3(300000, 1, 1), QStringLiteral("cm"), QString(), QString());
    const std::string before = properties(variable);

    variable.SetUnitsConversion(units);

    const QString unit = preferred ? QStringLiteral("m") : QStringLiteral("km");
    EXPECT_DOUBLE_EQ(variable.max.x.value.get(), preferred ? 3000.0 : 3.0);
    EXPECT_EQ(variable.max.x.unit(), unit);
    // Bare numbers are read as being in the delivered unit.
    EXPECT_EQ(variable.min.text(), QStringLiteral("2 [%1], 1, 1").arg(unit));
    EXPECT_EQ(variable.filterMin.text(), QStringLiteral("1 [%1], 1, 1").arg(unit));
    EXPECT_EQ(variable.filterMax.text(), QStringLiteral("0 [%1], 0, 0").arg(unit));
    EXPECT_EQ(properties(variable), before);

    // Store revisions come from one process-wide counter, so they give the order of the writes.
    EXPECT_LT(variable.min.x.string().revision(), variable.max.x.string().revision());
    EXPECT_LT(variable.max.x.string().revision(), variable.filterMin.x.string().revision());
    EXPECT_LT(variable.filterMin.x.string().revision(), variable.filterMax.x.string().revision());
}

INSTANTIATE_TEST_SUITE_P(UnitSystemFlag, KelChartVariableUnitsTest, ::testing::Bool());

TEST(KelChartVariableLifetime, VariablesDieWholeInAnyOrder)
{
    KelModifiedGroup group;
    KelProperties parent(group);
    auto* owned = new KelChartVariable(group);
    ASSERT_TRUE(parent.insert(owned, false));
    std::unique_ptr<KelProperties> copy(new KelChartVariable(*owned));
    auto* assigned = new KelChartVariable(group);
    *assigned = *owned;
    ASSERT_TRUE(parent.insert(assigned, false));
    owned->remove(&owned->style);
    EXPECT_TRUE(parent.remove(owned));
    copy.reset();
    EXPECT_EQ(parent.size(), 1u);
}
