#include "KelChart.h"
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

QStringList childNames(const KelProperties& node)
{
    QStringList names;
    for (unsigned i = 0; i < node.size(); ++i)
        names << node[i]->name();
    return names;
}

// Every stored property of a node as "name=value [unit]" lines.
QString storeText(const KelProperties& node)
{
    QString text;
    for (const QString& name : node.string().names())
        text += name + '=' + node.string().getString(name) + " [" + node.string().getUnit(name, QString()) + "]\n";
    return text;
}

std::string styleDump(const KelChartVariableStyle& style)
{
    std::ostringstream os;
    os << style;
    return os.str();
}

std::vector<double> scalars(KelVariableIter& iter)
{
    std::vector<double> values;
    iter.reset();
    while (iter.next())
        values.push_back(iter.scalarValue());
    return values;
}

orvdebug::logger& logger() { return kel::debug_logger::debuglogger(); }

const QStringList standardChildNames{QStringLiteral("style"),     QStringLiteral("variableiter"),
                                     QStringLiteral("min"),       QStringLiteral("max"),
                                     QStringLiteral("filterMin"), QStringLiteral("filterMax")};

class KelChartVariableTest : public ::testing::Test {
protected:
    // The variable's children must be the members themselves, in insertion order.
    static void expectMemberChildren(const KelChartVariable& v)
    {
        EXPECT_EQ(childNames(v), standardChildNames);
        const std::vector<const KelProperties*> members{&v.style, &v.variableiter, &v.min,
                                                        &v.max,   &v.filterMin,    &v.filterMax};
        ASSERT_EQ(v.size(), members.size());
        for (unsigned i = 0; i < v.size(); ++i) {
            EXPECT_EQ(v[i], members[i]) << i;
            EXPECT_TRUE(v.isMember(members[i])) << i;
        }
    }

    // Gives the source values that differ from every default.
    static void customise(KelChartVariable& v)
    {
        v.rename(QStringLiteral("series"));
        v.enabled.set(false);
        v.title.set(QStringLiteral("Temperature"));
        v.legend.set(false);
        v.xAxis.set(QStringLiteral("axis.x"));
        v.yAxis.set(QStringLiteral("axis.y"));
        v.zAxis.set(QStringLiteral("axis.z"));
        v.label.set({QStringLiteral("a"), QStringLiteral("b")});
        v.autoRange.set(false);
        v.enableFilters.set(true);
        v.order.set(4);
        v.tesselate.set(false);
        v.style.componentSortAxis.set(0);
        v.variableiter.setScalarData({3.0, 1.0, 2.0}, {}, QStringLiteral("km"));
        v.max.reset(Vector3(5, 6, 7), QStringLiteral("m"), QString(), QString());
        v.min.reset(Vector3(-1, -2, -3), QStringLiteral("m"), QString(), QString());
        v.filterMax.reset(Vector3(9, 9, 9), QString(), QString(), QString());
        v.filterMin.reset(Vector3(2, 2, 2), QString(), QString(), QString());
    }

    static void expectSameContent(const KelChartVariable& actual, const KelChartVariable& expected)
    {
        EXPECT_EQ(storeText(actual), storeText(expected));
        EXPECT_EQ(actual.enabled.get(), expected.enabled.get());
        EXPECT_EQ(actual.title.get(), expected.title.get());
        EXPECT_EQ(actual.label.get(), expected.label.get());
        EXPECT_EQ(actual.order.get(), expected.order.get());
        EXPECT_EQ(actual.tesselate.get(), expected.tesselate.get());
        EXPECT_EQ(styleDump(actual.style), styleDump(expected.style));
        EXPECT_EQ(actual.style.componentSortAxis.get(), expected.style.componentSortAxis.get());
        EXPECT_EQ(actual.max.text(), expected.max.text());
        EXPECT_EQ(actual.min.text(), expected.min.text());
        EXPECT_EQ(actual.filterMax.text(), expected.filterMax.text());
        EXPECT_EQ(actual.filterMin.text(), expected.filterMin.text());
        auto& actualIter = const_cast<KelVariableIter&>(actual.variableiter);
        auto& expectedIter = const_cast<KelVariableIter&>(expected.variableiter);
        EXPECT_EQ(scalars(actualIter), scalars(expectedIter));
    }

    KelModifiedGroup group;
    KelChartVariable variable{group};
};

} // namespace

TEST_F(KelChartVariableTest, NewVariableIsNamedTypedAndHoldsItsChildren)
{
    EXPECT_EQ(variable.type(), QStringLiteral("chart.variable"));
    EXPECT_EQ(variable.type(), KelChartVariable::typeString);
    EXPECT_EQ(variable.name(), QStringLiteral("variable.1"));
    expectMemberChildren(variable);
    EXPECT_EQ(variable.style.type(), KelChartVariableStyle::typeString);
    EXPECT_EQ(&variable.style.group(), &group);
    EXPECT_EQ(&variable.variableiter.group(), &group);
    EXPECT_EQ(&variable.filterMin.group(), &group);
}

TEST_F(KelChartVariableTest, NewVariableHoldsTheDefaults)
{
    EXPECT_TRUE(variable.enabled.get());
    EXPECT_TRUE(variable.title.get().isEmpty());
    EXPECT_TRUE(variable.legend.get());
    EXPECT_TRUE(variable.xAxis.get().isEmpty());
    EXPECT_TRUE(variable.yAxis.get().isEmpty());
    EXPECT_TRUE(variable.zAxis.get().isEmpty());
    EXPECT_TRUE(variable.label.get().isEmpty());
    EXPECT_TRUE(variable.autoRange.get());
    EXPECT_FALSE(variable.enableFilters.get());
    EXPECT_EQ(variable.order.get(), 0);
    EXPECT_TRUE(variable.tesselate.get());
    EXPECT_EQ(variable.style.componentSortAxis.get(), -1);

    // The same through the text interface; the filter range is 1..0 without units.
    EXPECT_EQ(byName(variable, QStringLiteral("enabled")), QStringLiteral("true"));
    EXPECT_EQ(byName(variable, QStringLiteral("enableFilters")), QStringLiteral("false"));
    EXPECT_EQ(byName(variable, QStringLiteral("order")), QStringLiteral("0"));
    EXPECT_EQ(byName(variable, QStringLiteral("title")), QString());
    EXPECT_EQ(byName(variable, QStringLiteral("filterMin")), QStringLiteral("1, 1, 1"));
    EXPECT_EQ(byName(variable, QStringLiteral("filterMax")), QStringLiteral("0, 0, 0"));
    EXPECT_EQ(variable.filterMin.vector(), Orv::Math::Vector1);
    EXPECT_EQ(variable.filterMax.vector(), Orv::Math::Vector0);

    const QStringList names = variable.string().names();
    EXPECT_EQ(names.size(), 11);
    for (const QString& name : names)
        EXPECT_TRUE(variable.string().getUnit(name, QString()).isEmpty()) << name.toStdString();
}

TEST_F(KelChartVariableTest, QuantityNamesAreAnsweredByTheChildrenAndOtherNamesByTheStore)
{
    orvdebug::ScopedCapture capture(logger());
    variable.min.reset(Vector3(1, 2, 3), QStringLiteral("m"), QString(), QString());
    EXPECT_EQ(byName(variable, QStringLiteral("min")), QStringLiteral("1 [m], 2, 3"));

    EXPECT_TRUE(variable.setValue(QStringLiteral("max"), QStringLiteral("4 [s], 5, 6")).isEmpty());
    EXPECT_EQ(variable.max.x.value.get(), 4.0);
    EXPECT_EQ(variable.max.x.unit(), QStringLiteral("s"));
    EXPECT_FALSE(variable.string().defined(QStringLiteral("max")));

    EXPECT_TRUE(variable.setValue(QStringLiteral("title"), QStringLiteral("Pressure")).isEmpty());
    EXPECT_EQ(variable.title.get(), QStringLiteral("Pressure"));
    EXPECT_TRUE(variable.setValue(QStringLiteral("order"), QStringLiteral("-2")).isEmpty());
    EXPECT_EQ(variable.order.get(), -2);
    EXPECT_TRUE(capture.messages().empty());
}

TEST_F(KelChartVariableTest, RenamedQuantityIsReachedByItsNewNameOnly)
{
    orvdebug::ScopedCapture capture(logger());
    ASSERT_TRUE(variable.max.rename(QStringLiteral("upper")));
    variable.max.reset(Vector3(7, 8, 9), QString(), QString(), QString());

    EXPECT_EQ(byName(variable, QStringLiteral("upper")), QStringLiteral("7, 8, 9"));
    EXPECT_EQ(byName(variable, QStringLiteral("max")), undefinedText);
    EXPECT_TRUE(variable.setValue(QStringLiteral("max"), QStringLiteral("kept here")).isEmpty());
    EXPECT_EQ(variable.string().getString(QStringLiteral("max")), QStringLiteral("kept here"));
    EXPECT_EQ(variable.max.text(), QStringLiteral("7, 8, 9"));
    EXPECT_TRUE(capture.messages().empty());
}

TEST_F(KelChartVariableTest, RemovedQuantityWarnsOncePerRequestAndFallsBackOnTheStore)
{
    ASSERT_TRUE(variable.remove(&variable.min));
    orvdebug::ScopedCapture capture(logger());

    const std::string getSignature =
        "virtual QString KelChartVariable::getValue(const QString&, QString&, const QString&) const";
    const std::string setSignature = "virtual QString KelChartVariable::setValue(const QString&, const QString&)";
    const std::string getWarning = R"(WARNING: false && "KelChartVariable::getValue: failed to find a child of )"
                                   R"(KelQuantityTriple type!" - )" + getSignature + " @line ";
    const std::string setWarning = R"(WARNING: false && "KelChartVariable::setValue: failed to find a child of )"
                                   R"(KelQuantityTriple type!" - )" + setSignature + " @line ";

    EXPECT_EQ(byName(variable, QStringLiteral("min")), undefinedText);
    EXPECT_TRUE(variable.setValue(QStringLiteral("min"), QStringLiteral("7, 8, 9")).isEmpty());
    EXPECT_EQ(byName(variable, QStringLiteral("min")), QStringLiteral("7, 8, 9"));
    EXPECT_EQ(variable.min.text(), QStringLiteral("0, 0, 0"));

    const std::vector<orvdebug::Message>& messages = capture.messages();
    ASSERT_EQ(messages.size(), 3u);
    const std::string expectedPrefixes[] = {getWarning, setWarning, getWarning};
    for (std::size_t i = 0; i < messages.size(); ++i) {
        EXPECT_EQ(messages[i].stream, orvdebug::Stream::Err);
        EXPECT_EQ(messages[i].tag, std::string());
        const std::string& text = messages[i].text;
        const std::string& prefix = expectedPrefixes[i];
        ASSERT_EQ(text.substr(0, prefix.size()), prefix);
        const std::string line = text.substr(prefix.size());
        EXPECT_FALSE(line.empty());
        EXPECT_EQ(line.find_first_not_of("0123456789"), std::string::npos) << text;
    }
    EXPECT_EQ(messages[0].text, messages[2].text);
}

TEST_F(KelChartVariableTest, CopyTakesEverythingButTheName)
{
    customise(variable);
    const KelChartVariable copy(variable);
    EXPECT_EQ(copy.name(), QStringLiteral("variable.1"));
    EXPECT_EQ(copy.type(), KelChartVariable::typeString);
    expectMemberChildren(copy);
    expectSameContent(copy, variable);
    EXPECT_EQ(copy.filterMin.text(), QStringLiteral("2, 2, 2"));
    EXPECT_EQ(scalars(const_cast<KelVariableIter&>(copy.variableiter)), (std::vector<double>{3.0, 1.0, 2.0}));
}

TEST_F(KelChartVariableTest, CopyRestoresStandardChildNames)
{
    variable.max.rename(QStringLiteral("upper"));
    variable.remove(&variable.filterMin);
    const KelChartVariable copy(variable);
    expectMemberChildren(copy);
}

TEST_F(KelChartVariableTest, CopyIsIndependentOfItsSource)
{
    customise(variable);
    KelChartVariable copy(variable);
    copy.title.set(QStringLiteral("Copy"));
    copy.style.fill.set({KelChart::fillCross});
    copy.variableiter.setScalarData({8.0});
    variable.max.reset(Orv::Math::Vector1, QString(), QString(), QString());
    variable.order.set(1);

    EXPECT_EQ(variable.title.get(), QStringLiteral("Temperature"));
    EXPECT_EQ(variable.style.fill.get(), QStringList{KelChart::fillNone});
    EXPECT_EQ(scalars(variable.variableiter), (std::vector<double>{3.0, 1.0, 2.0}));
    EXPECT_EQ(copy.max.text(), QStringLiteral("5 [m], 6, 7"));
    EXPECT_EQ(copy.order.get(), 4);
}

TEST_F(KelChartVariableTest, AssignmentCopiesContentIntoTheExistingChildren)
{
    customise(variable);
    KelChartVariable target(group);
    target.rename(QStringLiteral("target"));

    target = variable;
    EXPECT_EQ(target.name(), QStringLiteral("target"));
    expectMemberChildren(target);
    expectSameContent(target, variable);

    const KelChartVariable before(target);
    KelChartVariable& self = target;
    target = self;
    expectSameContent(target, before);
}

class KelChartVariableUnitsTest : public KelChartVariableTest, public ::testing::WithParamInterface<bool> {};

// With the unit system's flag the iterator delivers kilometres as metres; without it, as kilometres.
TEST_P(KelChartVariableUnitsTest, QuantitiesFollowTheUnitsTheIteratorReports)
{
    const bool preferred = GetParam();
    KelUnitSystem units(group);
    units.enabled.set(preferred);
    variable.variableiter.setScalarData({1.5}, {}, QStringLiteral("km"));
    variable.min.reset(Vector3(2000, 1, 1), QStringLiteral("m"), QString(), QString());
    variable.max.reset(Vector3(3, 1, 1), QStringLiteral("km"), QString(), QString());
    const QString propertiesBefore = storeText(variable);
    const std::string styleBefore = styleDump(variable.style);

    variable.SetUnitsConversion(units);

    const QString unit = preferred ? QStringLiteral("m") : QStringLiteral("km");
    const double factor = preferred ? 1000.0 : 1.0;
    QString first, second, third;
    variable.variableiter.units(first, second, third);
    EXPECT_EQ(first, unit);
    EXPECT_EQ(scalars(variable.variableiter), std::vector<double>{1.5 * factor});
    EXPECT_EQ(variable.min.x.unit(), unit);
    EXPECT_DOUBLE_EQ(variable.min.x.value.get(), 2.0 * factor);
    EXPECT_EQ(variable.max.x.unit(), unit);
    EXPECT_DOUBLE_EQ(variable.max.x.value.get(), 3.0 * factor);
    // Bare numbers of the filter range are read as being in the delivered unit.
    EXPECT_EQ(variable.filterMin.text(), QStringLiteral("1 [%1], 1, 1").arg(unit));
    EXPECT_EQ(variable.filterMax.text(), QStringLiteral("0 [%1], 0, 0").arg(unit));
    EXPECT_EQ(variable.min.y.unit(), QString());

    EXPECT_EQ(storeText(variable), propertiesBefore);
    EXPECT_EQ(styleDump(variable.style), styleBefore);
}

INSTANTIATE_TEST_SUITE_P(UnitSystemFlag, KelChartVariableUnitsTest, ::testing::Bool());

TEST_F(KelChartVariableTest, QuantitiesAreConvertedMinMaxFilterMinFilterMax)
{
    KelUnitSystem units(group);
    units.enabled.set(true);
    variable.variableiter.setScalarData({1.0}, {}, QStringLiteral("cm"));
    variable.SetUnitsConversion(units);

    // Store revisions come from one process-wide counter, so they give the order of the writes.
    EXPECT_LT(variable.min.x.string().revision(), variable.max.x.string().revision());
    EXPECT_LT(variable.max.x.string().revision(), variable.filterMin.x.string().revision());
    EXPECT_LT(variable.filterMin.x.string().revision(), variable.filterMax.x.string().revision());
    EXPECT_EQ(variable.filterMax.x.unit(), QStringLiteral("m"));
}

TEST(KelChartVariableLifetime, VariablesDieCleanlyInAnyOrder)
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
