#include "KelChartVariableList.h"

#include <gtest/gtest.h>

#include <memory>
#include <utility>

namespace {

// Opens the child factory to the tests.
class OpenVariableList : public KelChartVariableList {
public:
    using KelChartVariableList::KelChartVariableList;
    using KelChartVariableList::makeChild;
};

} // namespace

TEST(KelChartVariableList, MakesVariablesWhateverTheTypeAndGivesOutOnlyVariables)
{
    KelModifiedGroup group;
    OpenVariableList list(group, QStringLiteral("variable.1"));
    EXPECT_EQ(list.type(), QStringLiteral("chart.variable_list"));
    std::unique_ptr<KelProperties> made(list.makeChild(QStringLiteral("speed"), QStringLiteral("chart.axis")));
    EXPECT_EQ(made->type(), KelChartVariable::typeString);
    EXPECT_EQ(made->name(), QStringLiteral("speed"));
    EXPECT_EQ(made->parent(), nullptr);

    KelChartVariable& pressure = list.child(QStringLiteral("pressure"), QString());
    EXPECT_EQ(&list.child(QStringLiteral("pressure"), QStringLiteral("chart.axis")), &pressure);
    auto* plain = new KelProperties(group);
    plain->rename(QStringLiteral("plain"));
    ASSERT_TRUE(list.KelProperties::insert(plain, false));
    auto* unnamed = new KelChartVariable(group);
    unnamed->rename(QString());
    ASSERT_TRUE(list.insert(unnamed, false));
    unnamed->remove(&unnamed->max);
    ASSERT_EQ(list.size(), 3u);
    EXPECT_EQ(list[QStringLiteral("pressure")], &pressure);
    EXPECT_EQ(list[QStringLiteral("plain")], nullptr);
    EXPECT_EQ(list[1u], nullptr);
    EXPECT_EQ(list.back()->name(), QStringLiteral("variable.1"));
}

TEST(KelChartVariableList, CopiesAndMovesKeepValuesAndDefaultChildNameButNotTheTargetsName)
{
    KelModifiedGroup group;
    KelChartVariableList list(group, QStringLiteral("variable.1"));
    list.rename(QStringLiteral("variable"));
    list.setValue(QStringLiteral("note"), QStringLiteral("kept"));
    const KelChartVariableList copied(list);
    // A move copies: the list moved from keeps its values and stays usable.
    const KelChartVariableList moveConstructed(std::move(list));
    KelChartVariableList moveTarget(group, QStringLiteral("other.1"));
    moveTarget.rename(QStringLiteral("target"));
    moveTarget = std::move(list);
    EXPECT_EQ(copied.name(), QStringLiteral("variable"));
    EXPECT_EQ(moveConstructed.name(), QStringLiteral("variable"));
    EXPECT_EQ(moveTarget.name(), QStringLiteral("target"));
    for (const KelChartVariableList* node :
         {&copied, &moveConstructed, static_cast<const KelChartVariableList*>(&moveTarget)}) {
        QString note;
        node->getValue(QStringLiteral("note"), note, QString());
        EXPECT_EQ(note, QStringLiteral("kept"));
        EXPECT_EQ(node->defaultChildName(), QStringLiteral("variable.1"));
    }
}
