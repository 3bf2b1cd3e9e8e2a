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

// The factory makes a variable whatever the type and leaves inserting it to the caller.
TEST(KelChartVariableList, MakesVariablesWhateverTheType)
{
    KelModifiedGroup group;
    OpenVariableList list(group, QStringLiteral("variable.1"));
    std::unique_ptr<KelProperties> made(list.makeChild(QStringLiteral("speed"), QStringLiteral("chart.axis")));
    EXPECT_EQ(made->type(), KelChartVariable::typeString);
    EXPECT_EQ(made->name(), QStringLiteral("speed"));
    EXPECT_EQ(made->parent(), nullptr);
    EXPECT_EQ(list.size(), 0u);
}

// A move copies: the list moved from keeps its values. The target keeps its own name.
TEST(KelChartVariableList, CopiesAndMovesKeepValuesAndDefaultChildNameButNotTheTargetsName)
{
    KelModifiedGroup group;
    KelChartVariableList list(group, QStringLiteral("variable.1"));
    list.rename(QStringLiteral("variable"));
    list.setValue(QStringLiteral("note"), QStringLiteral("kept"));
    const KelChartVariableList copied(list);
    const KelChartVariableList moveConstructed(std::move(list));
    KelChartVariableList moveTarget(group, QStringLiteral("other.1"));
    moveTarget = std::move(list);
    EXPECT_EQ(moveTarget.name(), QString());
    for (const KelChartVariableList* node : {&copied, &moveConstructed, &std::as_const(moveTarget)}) {
        EXPECT_EQ(node->string().getString(QStringLiteral("note")), QStringLiteral("kept"));
        EXPECT_EQ(node->defaultChildName(), QStringLiteral("variable.1"));
    }
    EXPECT_EQ(moveConstructed.name(), QStringLiteral("variable"));
}
