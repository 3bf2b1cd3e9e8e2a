#include "ChartFile.h"
#include "ElementClasses.h"
#include "SampleChart.h"
#include "QtPrinters.h"

#include "KelChart2D.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

#include <typeinfo>

namespace ChartFile = Orv::Chart::ChartFile;
namespace ElementClasses = Orv::Chart::ElementClasses;

namespace {

// A value text of the entry's type that differs from every default.
QString editedValue(const QString& valueType)
{
    static const QHash<QString, QString> values = {
        {QStringLiteral("bool"), QStringLiteral("true")},
        {QStringLiteral("int"), QStringLiteral("7")},
        {QStringLiteral("unsigned"), QStringLiteral("3")},
        {QStringLiteral("double"), QStringLiteral("-2.5e-7")},
        {QStringLiteral("color"), QStringLiteral("#80102030")},
        {QStringLiteral("stringlist"), QStringLiteral("a, \"b, c\"")},
        {QStringLiteral("colorlist"), QStringLiteral("#ff0000, \"\", #4000ff00")},
        {QStringLiteral("intlist"), QStringLiteral("1, -2")},
        {QStringLiteral("doublelist"), QStringLiteral("0.5, nan, -1e+20")},
        {QStringLiteral("boollist"), QStringLiteral("false, true")},
    };
    return values.value(valueType, QStringLiteral("edited \"text\"\n"));
}

// Writes every property of the tree by name, and a unit on each number.
void editEverything(KelProperties& node)
{
    for (const QString& name : node.string().names()) {
        const QString type = node.string().valueType(name);
        EXPECT_TRUE(node.setValue(name, editedValue(type)).isEmpty()) << name.toStdString();
        if (type == QLatin1String("double"))
            node.string().setUnit(name, QStringLiteral("mm"));
    }
    for (unsigned i = 0; i < node.size(); ++i)
        editEverything(*node[i]);
}

void expectSameTree(const KelProperties& a, const KelProperties& b)
{
    EXPECT_EQ(typeid(a), typeid(b)) << a.name().toStdString();
    EXPECT_EQ(a.type(), b.type());
    EXPECT_EQ(a.name(), b.name());
    const QStringList names = a.string().names();
    EXPECT_EQ(names, b.string().names()) << a.name().toStdString();
    for (const QString& name : names) {
        EXPECT_EQ(a.string().getString(name), b.string().getString(name)) << name.toStdString();
        EXPECT_EQ(a.string().getUnit(name, QString()), b.string().getUnit(name, QString())) << name.toStdString();
    }
    ASSERT_EQ(a.size(), b.size()) << a.name().toStdString();
    for (unsigned i = 0; i < a.size(); ++i)
        expectSameTree(*a[i], *b[i]);
}

void expectRoundTrip(const KelProperties& original)
{
    KelModifiedGroup group;
    const QByteArray saved = ChartFile::toJson(original);
    const std::unique_ptr<KelProperties> loaded = ChartFile::fromJson(saved, QStringLiteral("saved"), group);
    ASSERT_TRUE(loaded);
    EXPECT_EQ(ChartFile::toJson(*loaded), saved);
    expectSameTree(original, *loaded);
}

QString loadFailure(const QJsonObject& root, int version = 1)
{
    const QJsonObject file{{QStringLiteral("format"), QStringLiteral("kelchart chart")},
                           {QStringLiteral("version"), version},
                           {QStringLiteral("root"), root}};
    KelModifiedGroup group;
    Orv::Chart::IoError error;
    EXPECT_FALSE(ChartFile::fromJson(QJsonDocument(file).toJson(), QStringLiteral("f.json"), group, &error));
    return error.message;
}

QJsonObject node(const QString& type, const QString& name, const QJsonArray& children = {},
                 const QJsonArray& properties = {})
{
    return {{QStringLiteral("type"), type},
            {QStringLiteral("name"), name},
            {QStringLiteral("properties"), properties},
            {QStringLiteral("children"), children}};
}

QJsonObject property(const QString& name, const QString& value)
{
    return {{QStringLiteral("name"), name}, {QStringLiteral("value"), value}, {QStringLiteral("unit"), QString()}};
}

class ChartFileRoundTrip : public ::testing::TestWithParam<QString> {};

} // namespace

TEST_P(ChartFileRoundTrip, EditedElementSavesLoadsAndSavesTheSame)
{
    KelModifiedGroup group;
    const std::unique_ptr<KelProperties> element = ElementClasses::make(GetParam(), group);
    ASSERT_TRUE(element);
    editEverything(*element);
    element->rename(QStringLiteral("edited"));
    expectRoundTrip(*element);
}

INSTANTIATE_TEST_SUITE_P(EveryElementClass, ChartFileRoundTrip, ::testing::ValuesIn(ElementClasses::types()),
                         [](const ::testing::TestParamInfo<QString>& info) { return QString(info.param).replace(QLatin1Char('.'), QLatin1Char('_')).toStdString();
                         });

TEST(ChartFileTest, SampleChartKeepsItsAxesVariablesAndLabels)
{
    KelModifiedGroup group;
    const std::unique_ptr<KelChart2D> sample = Orv::Chart::SampleChart::build(group);
    expectRoundTrip(*sample);
    const std::unique_ptr<KelProperties> loaded =
        ChartFile::fromJson(ChartFile::toJson(*sample), QStringLiteral("sample"), group);
    const auto& chart = dynamic_cast<const KelChart2D&>(*loaded);
    ASSERT_TRUE(chart.axisY.first() && chart.axisY.second());
    EXPECT_EQ(chart.axisY.first()->name(), QStringLiteral("axis.y.left"));
    EXPECT_EQ(chart.axisY.second()->name(), QStringLiteral("axis.y.right"));
    EXPECT_EQ(chart.axisX.second()->type(), QStringLiteral("chart.axis.discrete"));
    EXPECT_FALSE(chart.axisZ.first());
    ASSERT_TRUE(chart.variables[QStringLiteral("T2")]);
    EXPECT_EQ(chart.variables[QStringLiteral("T2")]->yAxis.get(), QStringLiteral("axis.y.left"));
}

TEST(ChartFileTest, AxisDisabledInTheFileStaysDisabled)
{
    KelModifiedGroup group;
    KelChart2D chart(group);
    chart.axisX.createFirst(QStringLiteral("bottom"), QStringLiteral("chart.axis.continuous")).enabled.set(false);
    const std::unique_ptr<KelProperties> loaded =
        ChartFile::fromJson(ChartFile::toJson(chart), QStringLiteral("chart"), group);
    EXPECT_FALSE(dynamic_cast<const KelChart2D&>(*loaded).axisX.first()->enabled.get());
}

TEST(ChartFileTest, FaultsNameFileAndNode)
{
    const QString pair = "chart.axis_pair", continuous = "chart.axis.continuous";
    struct Case {
        QJsonObject root;
        const char* message;
    };
    const Case cases[] = {
        {QJsonObject{}, "f.json: root: \"type\" is missing or not a string"},
        {node("chart.what", "c"), "root: unknown type string \"chart.what\""},
        {node("chart.2d", "c", {node("what", "w")}), "node \"c/w\": unknown type string \"what\""},
        {node("chart.2d", "c", {node(pair, "variable")}),
         "node \"c/variable\": the file says \"chart.axis_pair\", but the parent holds or makes a "
         "\"chart.variable_list\""},
        {node("chart.variable_list", "l", {node(continuous, "v")}),
         "node \"l/v\": the file says \"chart.axis.continuous\""},
        {node("chart.2d", "c", {}, {property("draw3d", "maybe")}),
         "node \"c\": property \"draw3d\": cannot read \"maybe\" as bool"},
        {node(pair, "p", {node("chart.axis", "p.a")}),
         "node \"p/p.a\": an axis pair holds continuous, discrete and time axes only"},
        {node(pair, "p", {node(continuous, "left")}),
         "node \"p/left\": an axis of the pair \"p\" must be named \"p.<name>\""},
        {node(pair, "p", {node(continuous, "p.a"), node(continuous, "p.b"), node(continuous, "p.c")}),
         "node \"p/p.c\": an axis pair holds at most two axes"},
        {node("chart.variable_list", "l", {node("chart.variable", "v"), node("chart.variable", "v")}),
         "node \"l/v\": a sibling of the same name came before"},
        {node("chart", "c", {QJsonValue(3)}), "node \"c\": a child is not a JSON object"},
    };
    for (const Case& c : cases) {
        const QString message = loadFailure(c.root);
        EXPECT_TRUE(message.contains(QLatin1String(c.message))) << "got: " << message.toStdString();
    }
    EXPECT_TRUE(loadFailure(node("chart", "c"), 2).contains(QLatin1String("version 2")));
}

TEST(ChartFileTest, MalformedAndTruncatedFilesNameTheLine)
{
    KelModifiedGroup group;
    KelChart2D chart(group);
    const QByteArray saved = ChartFile::toJson(chart);
    const QByteArray truncated = saved.left(saved.size() / 2);
    const int lastLine = truncated.count('\n') + 1;
    Orv::Chart::IoError error;
    EXPECT_FALSE(ChartFile::fromJson(truncated, QStringLiteral("t.json"), group, &error));
    EXPECT_EQ(error.kind, Orv::Chart::IoError::BadInput);
    EXPECT_TRUE(error.message.startsWith(QStringLiteral("t.json:%1: malformed chart file").arg(lastLine)))
        << error.message.toStdString();
    EXPECT_FALSE(ChartFile::fromJson("[1, 2]", QStringLiteral("a.json"), group, &error));
    EXPECT_FALSE(ChartFile::fromJson("{\"format\": \"other\"}", QStringLiteral("b.json"), group, &error));
    EXPECT_TRUE(error.message.startsWith(QStringLiteral("b.json: not a kelchart chart file")));
}
