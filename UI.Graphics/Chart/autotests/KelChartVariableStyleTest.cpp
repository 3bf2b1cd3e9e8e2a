#include "KelChart.h"
#include "KelChartVariableStyle.h"

#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <string>
#include <vector>

namespace {

const QList<QColor> rainbow{QColor(Qt::blue), QColor(Qt::cyan), QColor(Qt::green), QColor(Qt::yellow),
                            QColor(Qt::red)};

const std::string defaultDump =
    "\tstyle             : none\n"
    "\tline               : solid\n"
    "\tlineColor          : #000000\n"
    "\tlineBackgroundColor: #00000000\n"
    "\tlineGradient       : #0000ff, #00ffff, #00ff00, #ffff00, #ff0000\n"
    "\tlineWidth          : 1\n"
    "\tlineSmooth         : true\n"
    "\tfill               : none\n"
    "\tfillColor          : #000000\n"
    "\tfillBackgroundColor: #00000000\n"
    "\tfillGradient       : #0000ff, #00ffff, #00ff00, #ffff00, #ff0000\n"
    "\tlabelColor         : #000000\n"
    "\tlabelShadowColor   : #00000000\n"
    "\tbarWidth           : 1\n"
    "\tbarOffset          : 0\n"
    "\tbarTopSize         : 0\n"
    "\tbarTopColor        : #000000\n"
    "\tsymbol             : none\n"
    "\tsymbolSize         : 7\n"
    "\tsymbolOutline      : true\n"
    "\tsymbolOutlineColor : #000000\n"
    "\tsymbolFill         : solid\n"
    "\tsymbolFillColor    : #000000\n";

std::string dump(const KelChartVariableStyle& style)
{
    std::ostringstream os;
    os << style;
    return os.str();
}

std::vector<std::string> lines(const std::string& text)
{
    std::vector<std::string> result;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);)
        result.push_back(line);
    return result;
}

QString byName(const KelProperties& node, const QString& name)
{
    QString value;
    node.getValue(name, value, QStringLiteral("<undefined>"));
    return value;
}

// Counts flushes of the stream it backs.
class FlushCountingBuffer : public std::stringbuf {
public:
    int flushes = 0;

protected:
    int sync() override
    {
        ++flushes;
        return std::stringbuf::sync();
    }
};

class KelChartVariableStyleTest : public ::testing::Test {
protected:
    KelModifiedGroup group;
    KelChartVariableStyle style{group};
};

} // namespace

TEST_F(KelChartVariableStyleTest, NewStyleIsUnnamedAndHoldsTheDefaults)
{
    EXPECT_EQ(style.type(), QStringLiteral("chart.variable.style"));
    EXPECT_EQ(style.type(), KelChartVariableStyle::typeString);
    EXPECT_TRUE(style.name().isEmpty());
    EXPECT_EQ(style.size(), 0u);

    EXPECT_EQ(style.style.get(), KelChart::styleNone);
    EXPECT_EQ(style.line.get(), QStringList{KelChart::lineSolid});
    EXPECT_EQ(style.lineColor.get(), QList<QColor>{QColor(Qt::black)});
    EXPECT_EQ(style.lineBackgroundColor.get(), QList<QColor>{QColor(Qt::transparent)});
    EXPECT_EQ(style.lineGradient.get(), rainbow);
    EXPECT_EQ(style.lineWidth.get(), std::vector<double>{1.0});
    EXPECT_EQ(style.lineSmooth.get(), std::vector<bool>{true});
    EXPECT_EQ(style.fill.get(), QStringList{KelChart::fillNone});
    EXPECT_EQ(style.fillColor.get(), QList<QColor>{QColor(Qt::black)});
    EXPECT_EQ(style.fillBackgroundColor.get(), QList<QColor>{QColor(Qt::transparent)});
    EXPECT_EQ(style.fillGradient.get(), rainbow);
    EXPECT_EQ(style.bands.get(), 256u);
    EXPECT_EQ(style.labelColor.get(), QList<QColor>{QColor(Qt::black)});
    EXPECT_EQ(style.labelShadowColor.get(), QList<QColor>{QColor(Qt::transparent)});
    EXPECT_EQ(style.barWidth.get(), std::vector<double>{1.0});
    EXPECT_EQ(style.barOffset.get(), std::vector<double>{0.0});
    EXPECT_EQ(style.barTopSize.get(), std::vector<double>{0.0});
    EXPECT_EQ(style.barTopColor.get(), QList<QColor>{QColor(Qt::black)});
    EXPECT_EQ(style.symbol.get(), QStringList{KelChart::symbolNone});
    EXPECT_EQ(style.symbolSize.get(), std::vector<int>{7});
    EXPECT_EQ(style.symbolOutline.get(), std::vector<bool>{true});
    EXPECT_EQ(style.symbolOutlineColor.get(), QList<QColor>{QColor(Qt::black)});
    EXPECT_EQ(style.symbolFill.get(), QStringList{KelChart::fillSolid});
    EXPECT_EQ(style.symbolFillColor.get(), QList<QColor>{QColor(Qt::black)});
    EXPECT_EQ(style.componentSortAxis.get(), -1);
    EXPECT_FALSE(style.showLinearInterpolationOfLines.get());
}

TEST_F(KelChartVariableStyleTest, EveryPropertyIsStoredUnderItsNameWithoutUnit)
{
    const QStringList names = style.string().names();
    EXPECT_EQ(names.size(), 26);
    for (const QString& name : names)
        EXPECT_TRUE(style.string().getUnit(name, QString()).isEmpty()) << name.toStdString();
    // The three properties the dump leaves out are stored as well.
    EXPECT_EQ(byName(style, QStringLiteral("bands")), QStringLiteral("256"));
    EXPECT_EQ(byName(style, QStringLiteral("componentSortAxis")), QStringLiteral("-1"));
    EXPECT_EQ(byName(style, QStringLiteral("showLinearInterpolationOfLines")), QStringLiteral("false"));
}

TEST_F(KelChartVariableStyleTest, WritesByNameReachTheTypedMembers)
{
    EXPECT_TRUE(style.setValue(QStringLiteral("componentSortAxis"), QStringLiteral("0")).isEmpty());
    EXPECT_TRUE(style.setValue(QStringLiteral("symbolSize"), QStringLiteral("3, 4")).isEmpty());
    EXPECT_TRUE(style.setValue(QStringLiteral("style"), KelChart::styleBar).isEmpty());
    EXPECT_EQ(style.componentSortAxis.get(), 0);
    EXPECT_EQ(style.symbolSize.get(), (std::vector<int>{3, 4}));
    EXPECT_EQ(style.style.get(), KelChart::styleBar);

    style.lineGradient.set({QColor(Qt::white)});
    EXPECT_EQ(byName(style, QStringLiteral("lineGradient")), QStringLiteral("#ffffff"));
}

TEST_F(KelChartVariableStyleTest, DumpOfNewStyleIsExact)
{
    EXPECT_EQ(dump(style), defaultDump);
}

TEST_F(KelChartVariableStyleTest, DumpLinesUpTheColonsExceptOnTheFirstLine)
{
    const std::vector<std::string> dumped = lines(dump(style));
    ASSERT_EQ(dumped.size(), 23u);
    EXPECT_EQ(dumped[0].find(": "), 19u);
    for (std::size_t i = 1; i < dumped.size(); ++i)
        EXPECT_EQ(dumped[i].find(": "), 20u) << dumped[i];
    EXPECT_EQ(dumped[11].rfind("\tlabelColor ", 0), 0u);
}

TEST_F(KelChartVariableStyleTest, DumpShowsStoredTextAsItStandsAndFlushesOnce)
{
    style.style.set(QStringLiteral("two\nlines"));
    style.symbolFill.set({QStringLiteral("a, b"), QString()});

    FlushCountingBuffer buffer;
    std::ostream os(&buffer);
    os << style;
    EXPECT_EQ(buffer.flushes, 1);

    const std::vector<std::string> dumped = lines(buffer.str());
    ASSERT_EQ(dumped.size(), 24u);
    EXPECT_EQ(dumped[0], "\tstyle             : two");
    EXPECT_EQ(dumped[1], "lines");
    EXPECT_EQ(dumped[22], "\tsymbolFill         : " + style.symbolFill.getString().toStdString());
}

TEST_F(KelChartVariableStyleTest, CopyHasSourceValuesAndIsIndependent)
{
    style.rename(QStringLiteral("style"));
    style.componentSortAxis.set(0);
    style.fill.set({KelChart::fillGradient, KelChart::fillCross});
    style.string().setUnit(QStringLiteral("lineWidth"), QStringLiteral("mm"));

    KelChartVariableStyle copy(style);
    EXPECT_EQ(copy.type(), KelChartVariableStyle::typeString);
    EXPECT_EQ(copy.name(), QStringLiteral("style"));
    EXPECT_EQ(dump(copy), dump(style));
    EXPECT_EQ(copy.componentSortAxis.get(), 0);
    EXPECT_EQ(copy.lineWidth.getUnit(), QStringLiteral("mm"));

    copy.bands.set(16);
    style.symbol.set({KelChart::symbolStar});
    EXPECT_EQ(style.bands.get(), 256u);
    EXPECT_EQ(copy.symbol.get(), QStringList{KelChart::symbolNone});
}

TEST_F(KelChartVariableStyleTest, AssignmentCopiesValuesAndKeepsTheName)
{
    KelChartVariableStyle other(group);
    other.rename(QStringLiteral("other"));
    other.showLinearInterpolationOfLines.set(true);
    other.barWidth.set({0.5, 0.25});
    style.rename(QStringLiteral("style"));

    style = other;
    EXPECT_EQ(style.name(), QStringLiteral("style"));
    EXPECT_TRUE(style.showLinearInterpolationOfLines.get());
    EXPECT_EQ(style.barWidth.get(), (std::vector<double>{0.5, 0.25}));
    EXPECT_EQ(dump(style), dump(other));

    other.barWidth.set({2.0});
    EXPECT_EQ(style.barWidth.get(), (std::vector<double>{0.5, 0.25}));
}

TEST_F(KelChartVariableStyleTest, SelfAssignmentChangesNothing)
{
    style.lineColor.set({QColor(Qt::red), QColor(Qt::darkGreen)});
    const std::string before = dump(style);
    KelChartVariableStyle& self = style;
    style = self;
    EXPECT_EQ(dump(style), before);
}

TEST_F(KelChartVariableStyleTest, StylesDieCleanlyThroughTheBaseAndInsideTrees)
{
    KelProperties parent(group);
    auto* owned = new KelChartVariableStyle(group);
    owned->rename(QStringLiteral("style"));
    ASSERT_TRUE(parent.insert(owned, false));
    KelProperties* asNode = new KelChartVariableStyle(*owned);
    delete asNode;
    EXPECT_TRUE(parent.remove(owned));
    EXPECT_EQ(parent.size(), 0u);
}
