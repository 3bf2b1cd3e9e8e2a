#include "KelChartVariable.h"
#include "KelUnitSystem.h"
#include "OrvDebug.h"

#include <gtest/gtest.h>

#include <cctype>
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

// What the generic element checks do not see: the quantities and the iterator's data.
std::string content(const KelChartVariable& v)
{
    std::ostringstream os;
    os << v.max.text() << '|' << v.min.text() << '|' << v.filterMax.text() << '|' << v.filterMin.text();
    auto& iter = const_cast<KelVariableIter&>(v.variableiter);
    for (iter.reset(); iter.next();)
        os << ' ' << iter.scalarValue();
    return os.str();
}

class KelChartVariableTest : public ::testing::Test {
protected:
    // The children are the members themselves, in insertion order, under their fixed names.
    static void expectMemberChildren(const KelChartVariable& v)
    {
        const std::vector<const KelProperties*> members{&v.style, &v.variableiter, &v.min,
                                                        &v.max,   &v.filterMin,    &v.filterMax};
        ASSERT_EQ(v.size(), members.size());
        for (unsigned i = 0; i < v.size(); ++i)
            EXPECT_TRUE(v[i] == members[i] && v.isMember(members[i])) << i;
        EXPECT_EQ(v.min.name(), QStringLiteral("min"));
    }

    KelModifiedGroup group;
    KelChartVariable variable{group};
};

} // namespace

TEST_F(KelChartVariableTest, QuantityNamesReachTheChildrenByTheirCurrentName)
{
    orvdebug::ScopedCapture capture(kel::debug_logger::debuglogger());
    variable.min.reset(Vector3(1, 2, 3), QStringLiteral("m"), QString(), QString());
    EXPECT_EQ(byName(variable, QStringLiteral("min")), QStringLiteral("1 [m], 2, 3"));
    EXPECT_TRUE(variable.setValue(QStringLiteral("filterMax"), QStringLiteral("4 [s], 5, 6")).isEmpty());
    EXPECT_EQ(variable.filterMax.x.unit(), QStringLiteral("s"));

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

    // Each request warns once, naming the function and its line.
    const QString warning = "WARNING: false && \"KelChartVariable::%1: failed to find a child of KelQuantityTriple "
                            "type!\" - virtual QString KelChartVariable::%1(const QString&, %2 @line ";
    const std::string get = warning.arg("getValue", "QString&, const QString&) const").toStdString();
    const std::string set = warning.arg("setValue", "const QString&)").toStdString();
    std::vector<std::string> texts;
    for (const std::string& text : capture.texts(orvdebug::Stream::Err)) {
        texts.push_back(text.substr(0, text.find_last_not_of("0123456789") + 1));
        EXPECT_TRUE(std::isdigit(text.back())) << text;
    }
    EXPECT_EQ(texts, (std::vector<std::string>{get, set, get}));
    EXPECT_EQ(capture.messages().size(), 3u);
}

// The copy is made while "min" is renamed: it takes the data and values but its own children keep
// their fixed names, as members.
TEST_F(KelChartVariableTest, CopyAndAssignmentTakeIteratorDataAndQuantitiesIntoOwnMembers)
{
    variable.style.componentSortAxis.set(0);
    variable.variableiter.setScalarData({3.0, 1.0, 2.0}, {}, QStringLiteral("km"));
    variable.max.reset(Vector3(5, 6, 7), QStringLiteral("m"), QString(), QString());
    variable.min.rename(QStringLiteral("lower"));
    const KelChartVariable copy(variable);
    variable.min.rename(QStringLiteral("min"));
    KelChartVariable assigned(group);
    assigned = variable;
    const std::string original = content(variable);
    for (const KelChartVariable* v : {&copy, static_cast<const KelChartVariable*>(&assigned)}) {
        expectMemberChildren(*v);
        EXPECT_EQ(content(*v), original);
    }
    variable.variableiter.setScalarData({8.0});
    variable.max.reset(Orv::Math::Vector1, QString(), QString(), QString());
    EXPECT_EQ(content(copy), original);
    EXPECT_EQ(content(assigned), original);
}

class KelChartVariableUnitsTest : public KelChartVariableTest, public ::testing::WithParamInterface<bool> {};

// With the unit system's flag the iterator delivers kilometres as metres, else as kilometres; every
// quantity follows, and bare numbers are read as being in the delivered unit.
TEST_P(KelChartVariableUnitsTest, QuantitiesFollowTheUnitsTheIteratorReports)
{
    const bool preferred = GetParam();
    KelUnitSystem units(group);
    units.enabled.set(preferred);
    variable.variableiter.setScalarData({1.5}, {}, QStringLiteral("km"));
    variable.min.reset(Vector3(2, 1, 1), QString(), QString(), QString());
    variable.max.reset(Vector3(300000, 1, 1), QStringLiteral("cm"), QString(), QString());
    variable.SetUnitsConversion(units);

    const QString unit = preferred ? QStringLiteral("m") : QStringLiteral("km");
    EXPECT_DOUBLE_EQ(variable.max.x.value.get(), preferred ? 3000.0 : 3.0);
    EXPECT_EQ(variable.max.x.unit(), unit);
    EXPECT_EQ(variable.min.text(), QStringLiteral("2 [%1], 1, 1").arg(unit));
    EXPECT_EQ(variable.filterMin.text(), QStringLiteral("1 [%1], 1, 1").arg(unit));
    EXPECT_EQ(variable.filterMax.text(), QStringLiteral("0 [%1], 0, 0").arg(unit));
}

INSTANTIATE_TEST_SUITE_P(UnitSystemFlag, KelChartVariableUnitsTest, ::testing::Bool());
