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

class KelChartVariableListTest : public ::testing::Test {
protected:
    // The node state a copy must carry.
    static void expectSameNode(const KelChartVariableList& node, const QString& name)
    {
        QString note;
        node.getValue(QStringLiteral("note"), note, QString());
        EXPECT_EQ(note, QStringLiteral("kept"));
        EXPECT_EQ(node.name(), name);
        EXPECT_EQ(node.type(), KelChartVariableList::typeString);
        EXPECT_EQ(node.defaultChildName(), QStringLiteral("variable.1"));
    }

    KelModifiedGroup group;
    OpenVariableList list{group, QStringLiteral("variable.1")};
};

} // namespace

TEST_F(KelChartVariableListTest, NewListIsTypedEmptyAndUnnamed)
{
    EXPECT_EQ(list.type(), QStringLiteral("chart.variable_list"));
    EXPECT_TRUE(list.name().isEmpty());
    EXPECT_EQ(list.size(), 0u);
    EXPECT_EQ(list.defaultChildName(), QStringLiteral("variable.1"));
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
        EXPECT_EQ(variable->filterMin.text(), QStringLiteral("1, 1, 1"));
        EXPECT_EQ(variable->parent(), nullptr);
        EXPECT_EQ(list.size(), 0u);
    }
}

TEST_F(KelChartVariableListTest, TypedAccessGivesVariablesAndNullForAnythingElse)
{
    KelChartVariable& made = list.child(QStringLiteral("pressure"), QStringLiteral("chart.axis"));
    EXPECT_EQ(&list.child(QStringLiteral("pressure"), QString()), &made);
    auto* plain = new KelProperties(group);
    plain->rename(QStringLiteral("plain"));
    ASSERT_TRUE(list.KelProperties::insert(plain, false));

    ASSERT_EQ(list.size(), 2u);
    EXPECT_EQ(list[0u], &made);
    EXPECT_EQ(list[QStringLiteral("pressure")], &made);
    EXPECT_FALSE(list.isMember(&made));
    EXPECT_EQ(list[QStringLiteral("plain")], nullptr);
    EXPECT_EQ(list.back(), nullptr);
    EXPECT_EQ(list[list.size()], nullptr);
}

TEST_F(KelChartVariableListTest, MovesCopyAndLeaveTheSourceAlone)
{
    list.rename(QStringLiteral("variable"));
    list.setValue(QStringLiteral("note"), QStringLiteral("kept"));

    const KelChartVariableList copied(list);
    const KelChartVariableList moved(std::move(list));
    KelChartVariableList copyTarget(group, QStringLiteral("other.1"));
    KelChartVariableList moveTarget(group, QStringLiteral("other.1"));
    copyTarget.rename(QStringLiteral("copyTarget"));
    moveTarget.rename(QStringLiteral("moveTarget"));
    copyTarget = list;
    moveTarget = std::move(list);

    expectSameNode(copied, QStringLiteral("variable"));
    expectSameNode(moved, QStringLiteral("variable"));
    expectSameNode(list, QStringLiteral("variable"));
    expectSameNode(copyTarget, QStringLiteral("copyTarget"));
    expectSameNode(moveTarget, QStringLiteral("moveTarget"));
}

TEST(KelChartVariableListLifetime, ListFreesTheVariablesItOwns)
{
    KelModifiedGroup group;
    std::unique_ptr<KelProperties> node(new KelChartVariableList(group, QStringLiteral("variable.1")));
    auto& list = static_cast<KelChartVariableList&>(*node);
    list.child(QStringLiteral("a"), QString()).title.set(QStringLiteral("A"));
    auto* b = new KelChartVariable(group);
    ASSERT_TRUE(list.insert(b, false));
    b->remove(&b->max);
    EXPECT_EQ(list.size(), 2u);
}
