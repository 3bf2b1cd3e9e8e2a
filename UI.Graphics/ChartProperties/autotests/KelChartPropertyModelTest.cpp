#include "KelChartPropertyModel.h"

#include "KelChart.h"
#include "KelChart2D.h"
#include "KelChartAxisContinuous.h"
#include "KelChartAxisDiscrete.h"
#include "KelChartAxisTime.h"
#include "KelChartLegend.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>

#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace {

using Model = KelChartPropertyModel;

// A 2-D chart with two series, watched by Qt's model consistency checker,
// which aborts on the first broken rule.
class PropertyModelTest : public ::testing::Test {
protected:
    PropertyModelTest()
    {
        chart.variables.child(QStringLiteral("T1"), KelChartVariable::typeString);
        chart.variables.child(QStringLiteral("p"), KelChartVariable::typeString);
        // A host keeps its legend beside the chart's own children; the tree frees it.
        chart.insert(new KelChartLegend(group), false);
        model.setRoot(&chart);
    }

    KelChartLegend& legend() { return dynamic_cast<KelChartLegend&>(*chart.at(QStringLiteral("legend.1"))); }
    KelChartVariable& series(const char* name) { return *chart.variables.at(QString::fromLatin1(name)); }

    // The value cell at a "/"-separated path of row names.
    QModelIndex at(const QString& path) const
    {
        QModelIndex parent;
        QModelIndex found;
        for (const QString& part : path.split(QLatin1Char('/'))) {
            const QModelIndexList hits = model.match(model.index(0, Model::NameColumn, parent), Qt::DisplayRole, part, 1,
                                                     Qt::MatchExactly | Qt::MatchCaseSensitive);
            if (hits.isEmpty())
                return QModelIndex();
            found = hits.front();
            parent = found;
        }
        return found.siblingAtColumn(Model::ValueColumn);
    }

    // Rows must list the node's properties in store order, then its children.
    void expectMirrors(const QModelIndex& parent, const KelProperties& node) const
    {
        const QStringList properties = node.string().names();
        ASSERT_EQ(model.rowCount(parent), properties.size() + static_cast<int>(node.size())) << node.name();
        for (int row = 0; row < model.rowCount(parent); ++row) {
            const QModelIndex name = model.index(row, Model::NameColumn, parent);
            if (row < properties.size()) {
                EXPECT_EQ(name.data().toString(), properties[row]);
                EXPECT_EQ(model.rowCount(name), 0);
                continue;
            }
            const KelProperties* child = node.at(static_cast<unsigned>(row - properties.size()));
            EXPECT_EQ(model.node(name), child);
            expectMirrors(name, *child);
        }
    }

    KelModifiedGroup group;
    KelChart2D chart{group};
    Model model;
    QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

TEST_F(PropertyModelTest, RowsMirrorTheTree)
{
    expectMirrors(QModelIndex(), chart);
    EXPECT_EQ(at(QStringLiteral("variable/T1/style/style")).data(Model::PathRole).toString(),
              QStringLiteral("variable/T1/style/style"));
}

// Each edit is read back through the library's typed member, and the view hears of it.
TEST_F(PropertyModelTest, AcceptedEditsReachTheTypedMembers)
{
    KelChartVariable& t1 = series("T1");
    const struct {
        const char* path;
        const char* text;
        std::function<bool()> holds;
    } edits[] = {
        {"title", "Weather", [&] { return chart.title.get() == QStringLiteral("Weather"); }},
        {"textColor", "red", [&] { return chart.textColor.get() == QColor(Qt::red); }},
        {"variable/T1/enabled", "false", [&] { return !t1.enabled.get(); }},
        {"variable/T1/order", "-3", [&] { return t1.order.get() == -3; }},
        {"variable/T1/style/style", "stick", [&] { return t1.style.style.get() == QStringLiteral("stick"); }},
        {"legend.1/style", "horizontal", [&] { return legend().style.get() == KelChart::legendHorizontal; }},
        // The library's own single word, though the published list spells it "dTriangle".
        {"variable/T1/style/symbol", "dtriangle, star",
         [&] { return t1.style.symbol.get() == QStringList{KelChart::symbolDTriangle, KelChart::symbolStar}; }},
        {"variable/T1/style/lineWidth", "2.5, 1", [&] { return t1.style.lineWidth.get() == std::vector<double>{2.5, 1}; }},
        {"variable/T1/min", "1, 2 [degC], 3", [&] { return t1.min.y.value.get() == 2.0 && t1.min.y.unit() == "degC"; }},
    };
    for (const auto& edit : edits) {
        SCOPED_TRACE(edit.path);
        const QModelIndex cell = at(QString::fromLatin1(edit.path));
        QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
        ASSERT_TRUE(model.setData(cell, QString::fromUtf8(edit.text)));
        EXPECT_TRUE(edit.holds());
        EXPECT_TRUE(model.lastError().isEmpty());
        EXPECT_GE(changed.count(), 1);
    }
    // The range's text and its component's value row both show the new numbers.
    EXPECT_EQ(at(QStringLiteral("variable/T1/min")).data().toString(), QStringLiteral("1, 2 [degC], 3"));
    EXPECT_EQ(at(QStringLiteral("variable/T1/min/y/value")).data().toString(), QStringLiteral("2"));
    EXPECT_EQ(at(QStringLiteral("variable/T1/min/y/value")).siblingAtColumn(Model::UnitColumn).data().toString(),
              QStringLiteral("degC"));
    EXPECT_EQ(at(QStringLiteral("textColor")).data().toString(), QStringLiteral("#ff0000"));
}

TEST_F(PropertyModelTest, RefusedEditsChangeNothingAndSayWhy)
{
    const char* const refused[][2] = {
        {"variable/T1/enabled", "maybe"},
        {"textColor", "not a colour"},
        {"variable/T1/style/style", "Bar"},
        {"variable/T1/style/symbol", "none, blob"},
        {"variable/T1/style/fill", "\"solid"},
        {"legend.1/style", "diagonal"},
        {"variable/T1/style/lineWidth", "wide"},
        {"variable/T1/order", "1.5"},
        {"variable/T1/min", "a, b"},
    };
    for (const auto& edit : refused) {
        const QString path = QString::fromLatin1(edit[0]);
        SCOPED_TRACE(edit[0]);
        const QModelIndex cell = at(path);
        ASSERT_TRUE(cell.isValid());
        const QString before = cell.data().toString();
        const bool modifiedBefore = group.modified();
        group.setModified(false);
        QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
        QSignalSpy refusals(&model, &Model::editRefused);
        EXPECT_FALSE(model.setData(cell, QString::fromUtf8(edit[1])));
        EXPECT_EQ(cell.data().toString(), before);
        EXPECT_FALSE(group.modified());
        EXPECT_EQ(changed.count(), 0);
        ASSERT_EQ(refusals.count(), 1);
        EXPECT_EQ(refusals.front().at(1).toString(), model.lastError());
        EXPECT_TRUE(model.lastError().startsWith(path + QLatin1String(": "))) << model.lastError().toStdString();
        group.setModified(modifiedBefore);
    }
}

// Values the store would take but the chart would quietly ignore, and texts
// the store cannot read, are refused in plain words; sensible ones pass.
struct CheckCase {
    const char* path;
    const char* text;
    // The reason after "<path>: ", or null when the text is taken.
    const char* reason;
};

class ValueCheck : public PropertyModelTest, public ::testing::WithParamInterface<CheckCase> {
protected:
    ValueCheck()
    {
        chart.axisY.createFirst(QStringLiteral("left"), KelChartAxisContinuous::typeString)
            .setValue(QStringLiteral("max"), QStringLiteral("10"));
        chart.axisX.createFirst(QStringLiteral("bottom"), KelChartAxisTime::typeString)
            .setValue(QStringLiteral("max"), QStringLiteral("3600"));
        KelChartAxis& top = chart.axisX.createSecond(QStringLiteral("top"), KelChartAxisDiscrete::typeString);
        top.setValue(QStringLiteral("min"), QStringLiteral("1"));
        top.setValue(QStringLiteral("max"), QStringLiteral("3"));
        model.refresh();
    }
};

TEST_P(ValueCheck, RefusesWithAPlainReasonOrTakesTheText)
{
    const QString path = QString::fromLatin1(GetParam().path);
    const QString text = QString::fromLatin1(GetParam().text);
    const QModelIndex cell = at(path);
    ASSERT_TRUE(cell.isValid());
    const QString before = cell.data().toString();
    const QString expected = GetParam().reason ? QString::fromUtf8(GetParam().reason) : QString();
    EXPECT_EQ(model.problem(cell, text), expected) << "asked before writing";
    EXPECT_EQ(model.setData(cell, text), expected.isEmpty());
    if (expected.isEmpty())
        return;
    EXPECT_EQ(model.lastError(), path + QStringLiteral(": ") + expected);
    EXPECT_EQ(cell.data().toString(), before);
}

INSTANTIATE_TEST_SUITE_P(
    Checks, ValueCheck,
    ::testing::Values(
        CheckCase{"axis.y/axis.y.left/min", "25", "min must be below max (now 10)"},
        CheckCase{"axis.y/axis.y.left/min", "10", "min must be below max (now 10)"},
        CheckCase{"axis.y/axis.y.left/min", "-5", nullptr},
        CheckCase{"axis.y/axis.y.left/max", "-1", "max must be above min (now 0)"},
        CheckCase{"axis.y/axis.y.left/max", "inf", "max must be a finite number, not inf"},
        CheckCase{"axis.x/axis.x.bottom/min", "7200", "min must be below max (now 3600)"},
        CheckCase{"axis.x/axis.x.bottom/max", "60", nullptr},
        CheckCase{"axis.x/axis.x.top/max", "1", "max must be above min (now 1)"},
        CheckCase{"axis.x/axis.x.top/min", "-1", "min must be 0 or more: categories count from 0"},
        CheckCase{"axis.x/axis.x.top/min", "0", nullptr},
        CheckCase{"variable/T1/style/lineWidth", "2, -3", "lineWidth must be 0 or more, not -3"},
        CheckCase{"variable/T1/style/barWidth", "nan", "barWidth must be a finite number, not nan"},
        CheckCase{"variable/T1/style/symbolSize", "-1", "symbolSize must be 0 or more, not -1"},
        CheckCase{"variable/T1/style/lineWidth", "0, 2.5", nullptr},
        CheckCase{"variable/T1/style/barOffset", "-0.5", nullptr},
        CheckCase{"variable/T1/style/lineColor", "red, blurple",
                  "\"blurple\" is not a colour: use a name like red or a code like #3060c0"},
        CheckCase{"variable/T1/style/lineWidth", "1, wide", "\"wide\" is not a number: write it like 2.5 or 1e-3"},
        CheckCase{"variable/T1/style/lineColor", "\"red",
                  "\"\"red\" is not a list: separate the entries with commas, and put an entry that holds a comma "
                  "or a quote in double quotes"},
        CheckCase{"variable/T1/order", "1.5", "\"1.5\" is not a whole number: write it like 3 or -12"},
        CheckCase{"variable/T1/style/bands", "-2",
                  "\"-2\" is not a whole number of 0 or more: write it like 0 or 12"},
        CheckCase{"variable/T1/enabled", "maybe", "\"maybe\" is not true or false"},
        CheckCase{"variable/T1/min", "a, b",
                  "min: expected three components \"number [unit]\" separated by commas, got \"a, b\""},
        CheckCase{"variable/T1/min", "1 [s], 2, 3", nullptr}));

TEST_F(PropertyModelTest, EditorHintsFollowTheValueType)
{
    const struct {
        const char* path;
        Model::Kind kind;
    } hints[] = {
        {"title", Model::Text},
        {"textColor", Model::Colour},
        {"variable/T1/enabled", Model::Bool},
        {"variable/T1/order", Model::Integer},
        {"variable/T1/min/x/value", Model::Number},
        {"variable/T1/style/style", Model::Choice},
        {"variable/T1/style/line", Model::ChoiceList},
        {"variable/T1/style/lineWidth", Model::Text},
        {"variable/T1/min", Model::Text},
        {"variable/T1/style", Model::NoValue},
    };
    for (const auto& hint : hints) {
        SCOPED_TRACE(hint.path);
        EXPECT_EQ(at(QString::fromLatin1(hint.path)).data(Model::KindRole).toInt(), hint.kind);
    }
    EXPECT_EQ(at(QStringLiteral("variable/T1/style/style")).data(Model::ChoicesRole).toStringList(), KelChart::styles);
    EXPECT_EQ(at(QStringLiteral("variable/T1/style/symbolFill")).data(Model::ChoicesRole).toStringList(), KelChart::fills);
    EXPECT_EQ(at(QStringLiteral("legend.1/style")).data(Model::ChoicesRole).toStringList(), KelChart::legends);
    EXPECT_EQ(at(QStringLiteral("textColor")).data(Qt::DecorationRole).value<QColor>(), QColor(Qt::black));
    EXPECT_FALSE(model.flags(at(QStringLiteral("variable/T1/style"))).testFlag(Qt::ItemIsEditable));
}

TEST_F(PropertyModelTest, CheckBoxesWriteBools)
{
    const QModelIndex enabled = at(QStringLiteral("variable/p/enabled"));
    EXPECT_TRUE(model.flags(enabled).testFlag(Qt::ItemIsUserCheckable));
    EXPECT_EQ(enabled.data(Qt::CheckStateRole).toInt(), Qt::Checked);
    ASSERT_TRUE(model.setData(enabled, Qt::Unchecked, Qt::CheckStateRole));
    EXPECT_FALSE(series("p").enabled.get());
    EXPECT_EQ(enabled.data(Qt::CheckStateRole).toInt(), Qt::Unchecked);
}

TEST_F(PropertyModelTest, RowsFollowChildrenAddedRemovedAndRenamed)
{
    const QPersistentModelIndex pTitle = at(QStringLiteral("variable/p/title"));
    chart.variables.remove(&series("T1"));
    chart.variables.child(QStringLiteral("wind"), KelChartVariable::typeString);
    chart.axisY.createSecond(QStringLiteral("right"), KelChartAxisContinuous::typeString);
    series("p").rename(QStringLiteral("pressure"));
    chart.setValue(QStringLiteral("note"), QStringLiteral("new property"));
    model.refresh();

    expectMirrors(QModelIndex(), chart);
    ASSERT_TRUE(pTitle.isValid());
    EXPECT_EQ(pTitle.data(Model::PathRole).toString(), QStringLiteral("variable/pressure/title"));
    EXPECT_TRUE(at(QStringLiteral("axis.y/axis.y.right")).isValid());
    EXPECT_FALSE(at(QStringLiteral("variable/T1")).isValid());
}

// A node that dies before the host refreshes leaves rows that read safely and refuse edits.
TEST_F(PropertyModelTest, RowsOfADeadNodeRefuseEditsUntilRefreshed)
{
    const QPersistentModelIndex title = at(QStringLiteral("variable/T1/title"));
    chart.variables.remove(&series("T1"));
    EXPECT_EQ(model.holder(title), nullptr);
    EXPECT_FALSE(model.setData(title, QStringLiteral("gone")));
    EXPECT_FALSE(model.lastError().isEmpty());
    model.refresh();
    EXPECT_FALSE(title.isValid());
    expectMirrors(QModelIndex(), chart);
}

// A root that dies leaves an empty model, not rows pointing into freed nodes.
TEST_F(PropertyModelTest, ADeadRootEmptiesTheModel)
{
    model.setRoot(nullptr);
    EXPECT_EQ(model.rowCount(), 0);
    auto scratch = std::make_unique<KelProperties>(group);
    scratch->setValue(QStringLiteral("a"), QStringLiteral("1"));
    model.setRoot(scratch.get());
    EXPECT_EQ(model.rowCount(), 1);
    scratch.reset();
    model.refresh();
    EXPECT_EQ(model.rowCount(), 0);
}

} // namespace
