#include "PropertyPath.h"
#include "SampleChart.h"

#include <gtest/gtest.h>

#include <cctype>
#include <utility>
#include <string>

namespace PropertyPath = Orv::Chart::PropertyPath;

namespace {

class PropertyPathTest : public ::testing::Test {
protected:
    PropertyPathTest()
        : m_chart(Orv::Chart::SampleChart::build(m_group))
    {
    }

    // The stored text after writing `value`, read back through the text interface.
    QString written(const QString& path, const QString& value)
    {
        PropertyPath::set(*m_chart, path, value);
        const PropertyPath::Target target = PropertyPath::resolve(*m_chart, path);
        QString text;
        target.node->getValue(target.property, text, QString());
        return text;
    }

    QString failure(const QString& assignment)
    {
        Orv::Chart::IoError error;
        EXPECT_FALSE(PropertyPath::assign(*m_chart, assignment, &error));
        return error.message;
    }

    KelModifiedGroup m_group;
    std::unique_ptr<KelChart2D> m_chart;
};

struct ValueCase {
    const char* path;
    const char* value;
    const char* stored;
};

void PrintTo(const ValueCase& c, std::ostream* os)
{
    *os << c.path << '=' << c.value;
}

class PropertyPathValueTypes : public PropertyPathTest, public ::testing::WithParamInterface<ValueCase> {};

} // namespace

// One property of every value type, written by path as a property editor would.
TEST_P(PropertyPathValueTypes, WritesThroughTheTextInterface)
{
    const ValueCase& c = GetParam();
    EXPECT_EQ(written(QString::fromUtf8(c.path), QString::fromUtf8(c.value)), QString::fromUtf8(c.stored));
}

INSTANTIATE_TEST_SUITE_P(
    EveryValueType, PropertyPathValueTypes,
    ::testing::Values(ValueCase{"title", "Day two", "Day two"},
                      ValueCase{"axis.y/axis.y.left/autoScale", "false", "false"},
                      ValueCase{"axis.y/axis.y.left/min", " -12.5 ", "-12.5"},
                      ValueCase{"axis.x/axis.x.top/max", "3", "3"},
                      ValueCase{"variable/T1/style/bands", "12", "12"},
                      ValueCase{"textColor", "red", "#ff0000"},
                      ValueCase{"variable/T1/style/lineColor", "blue, #80ff0000", "#0000ff, #80ff0000"},
                      ValueCase{"variable/T1/style/symbol", "star, \"x, y\"", "star, \"x, y\""},
                      ValueCase{"variable/T1/style/symbolSize", "3,4", "3, 4"},
                      ValueCase{"variable/T1/style/lineWidth", "2.5", "2.5"},
                      ValueCase{"variable/T1/style/symbolOutline", "false, 1", "false, true"},
                      ValueCase{"variable/p/min", "101 [kPa], 0, 0", "101 [kPa], 0, 0"},
                      ValueCase{"axis.x/axis.x.top/labels/labels", "a, b", "a, b"}),
    [](const ::testing::TestParamInfo<ValueCase>& info) {
        std::string name = info.param.path;
        for (char& c : name)
            c = std::isalnum(static_cast<unsigned char>(c)) ? c : '_';
        return name;
    });

// A value may hold equals signs: the path ends at the first.
TEST_F(PropertyPathTest, WrittenValuesReachTheTypedMembers)
{
    PropertyPath::assign(*m_chart, QStringLiteral("variable/T1/style/lineWidth=4, 5"));
    PropertyPath::assign(*m_chart, QStringLiteral("variable/T1/order=-3"));
    PropertyPath::assign(*m_chart, QStringLiteral("title=a=b"));
    const KelChartVariable& t1 = *m_chart->variables[QStringLiteral("T1")];
    EXPECT_EQ(t1.style.lineWidth.get(), (std::vector<double>{4.0, 5.0}));
    EXPECT_EQ(t1.order.get(), -3);
    EXPECT_EQ(m_chart->title.get(), QStringLiteral("a=b"));
}

TEST_F(PropertyPathTest, FaultsNameThePathAndLeaveTheValue)
{
    const std::pair<const char*, const char*> cases[] = {
        {"nochild/title=x", "nochild/title: the chart has no child \"nochild\""},
        {"axis.y/axis.y.middle/min=1", "axis.y/axis.y.middle/min: \"axis.y\" has no child \"axis.y.middle\""},
        {"variable/T1/colour=red", "variable/T1/colour: chart.variable \"T1\" has no property \"colour\""},
        {"variable/T1/=red", "variable/T1/: chart.variable \"T1\" has no property \"\""},
        {"axis.y/axis.y.left/min=low", "axis.y/axis.y.left/min: cannot read \"low\" as double for \"min\""},
    };
    for (const auto& [assignment, message] : cases)
        EXPECT_EQ(failure(QString::fromUtf8(assignment)), QString::fromUtf8(message));
    EXPECT_TRUE(failure(QStringLiteral("variable/p/max=1 [kPa]")).startsWith(QStringLiteral("variable/p/max: ")));
    EXPECT_TRUE(failure(QStringLiteral("no equals sign")).contains(QStringLiteral("expected PATH=VALUE")));
    EXPECT_EQ(m_chart->axisY.first()->string().getString(QStringLiteral("min")), QStringLiteral("0"));
}
