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

QString byName(const KelProperties& node, const QString& name)
{
    QString value;
    node.getValue(name, value, QString());
    return value;
}

class KelChartVariableListTest : public ::testing::Test {
protected:
    KelModifiedGroup group;
    OpenVariableList list{group, QStringLiteral("variable.1")};
};

} // namespace

TEST_F(KelChartVariableListTest, NewListIsTypedEmptyAndUnnamed)
{
    EXPECT_EQ(list.type(), QStringLiteral("chart.variable_list"));
    EXPECT_EQ(list.type(), KelChartVariableList::typeString);
    EXPECT_TRUE(list.name().isEmpty());
    EXPECT_EQ(list.size(), 0u);
    EXPECT_EQ(list.defaultChildName(), QStringLiteral("variable.1"));
    EXPECT_EQ(list.front(), nullptr);
}

TEST_F(KelChartVariableListTest, MakeChildGivesANamedVariableWhateverTheTypeAndDoesNotInsertIt)
{
    for (const QString& type : {QStringLiteral("chart.axis"), QStringLiteral("chart.variable"), QString()}) {
        std::unique_ptr<KelProperties> made(list.makeChild(QStringLiteral("speed"), type));
        auto* variable = dynamic_cast<KelChartVariable*>(made.get());
        ASSERT_NE(variable, nullptr) << type.toStdString();
        EXPECT_EQ(variable->name(), QStringLiteral("speed"));
        EXPECT_EQ(variable->type(), KelChartVariable::typeString);
        EXPECT_EQ(&variable->group(), &group);
        EXPECT_EQ(variable->size(), 6u);
        EXPECT_TRUE(variable->enabled.get());
        EXPECT_EQ(variable->filterMin.text(), QStringLiteral("1, 1, 1"));
        EXPECT_EQ(variable->parent(), nullptr);
        EXPECT_EQ(list.size(), 0u);
    }
}

TEST_F(KelChartVariableListTest, ChildByNameMakesAndOwnsAVariable)
{
    KelChartVariable& made = list.child(QStringLiteral("pressure"), QStringLiteral("chart.axis"));
    KelChartVariable& again = list.child(QStringLiteral("pressure"), QStringLiteral("chart.variable"));
    EXPECT_EQ(&made, &again);
    ASSERT_EQ(list.size(), 1u);
    EXPECT_EQ(list[0u], &made);
    EXPECT_EQ(list[QStringLiteral("pressure")], &made);
    EXPECT_FALSE(list.isMember(&made));
    EXPECT_EQ(list[list.size()], nullptr);
}

TEST_F(KelChartVariableListTest, TypedLookupsSkipNodesThatAreNotVariables)
{
    auto* plain = new KelProperties(group);
    plain->rename(QStringLiteral("plain"));
    ASSERT_TRUE(list.KelProperties::insert(plain, false));
    EXPECT_EQ(list.size(), 1u);
    EXPECT_EQ(list[QStringLiteral("plain")], nullptr);
    EXPECT_EQ(list.back(), nullptr);
}

TEST_F(KelChartVariableListTest, VariablesKeepTheirOwnNameWhenInserted)
{
    auto* variable = new KelChartVariable(group);
    ASSERT_TRUE(list.insert(variable, false));
    EXPECT_EQ(list.front(), variable);
    EXPECT_EQ(variable->name(), QStringLiteral("variable.1"));
    EXPECT_FALSE(list.insert(nullptr, false));
}

TEST_F(KelChartVariableListTest, CopyAndMoveBothCopyTheNodeAndLeaveTheSourceAlone)
{
    list.rename(QStringLiteral("variable"));
    list.setValue(QStringLiteral("note"), QStringLiteral("kept"));

    const KelChartVariableList copied(list);
    const KelChartVariableList moved(std::move(list));
    const KelChartVariableList& source = list;
    for (const KelChartVariableList* node : {&copied, &moved, &source}) {
        EXPECT_EQ(node->type(), KelChartVariableList::typeString);
        EXPECT_EQ(node->name(), QStringLiteral("variable"));
        EXPECT_EQ(node->defaultChildName(), QStringLiteral("variable.1"));
        EXPECT_EQ(byName(*node, QStringLiteral("note")), QStringLiteral("kept"));
    }
}

TEST_F(KelChartVariableListTest, CopyAndMoveAssignmentKeepTheTargetName)
{
    list.setValue(QStringLiteral("note"), QStringLiteral("kept"));
    KelChartVariableList copyTarget(group, QStringLiteral("other.1"));
    KelChartVariableList moveTarget(group, QStringLiteral("other.1"));
    copyTarget.rename(QStringLiteral("copyTarget"));
    moveTarget.rename(QStringLiteral("moveTarget"));

    copyTarget = list;
    moveTarget = std::move(list);
    EXPECT_EQ(copyTarget.name(), QStringLiteral("copyTarget"));
    EXPECT_EQ(moveTarget.name(), QStringLiteral("moveTarget"));
    const KelChartVariableList& source = list;
    for (const KelChartVariableList* node : {&std::as_const(copyTarget), &std::as_const(moveTarget), &source}) {
        EXPECT_EQ(node->defaultChildName(), QStringLiteral("variable.1"));
        EXPECT_EQ(byName(*node, QStringLiteral("note")), QStringLiteral("kept"));
    }
}

TEST(KelChartVariableListLifetime, ListFreesTheVariablesItOwns)
{
    KelModifiedGroup group;
    auto* list = new KelChartVariableList(group, QStringLiteral("variable.1"));
    list->child(QStringLiteral("a"), QString()).title.set(QStringLiteral("A"));
    auto* b = new KelChartVariable(group);
    list->insert(b, false);
    b->remove(&b->max);
    std::unique_ptr<KelProperties> asNode(list);
    EXPECT_EQ(list->size(), 2u);
}
