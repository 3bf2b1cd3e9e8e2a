#include "KelChart.h"
#include "KelChartVariableStyle.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

namespace {

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

// A string stream that counts its flushes.
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

std::string dump(const KelChartVariableStyle& style)
{
    std::ostringstream os;
    os << style;
    return os.str();
}

class KelChartVariableStyleTest : public ::testing::Test {
protected:
    KelModifiedGroup group;
    KelChartVariableStyle style{group};
};

} // namespace

TEST_F(KelChartVariableStyleTest, NewStyleIsUnnamedAndStoresEveryDefaultWithoutUnit)
{
    EXPECT_EQ(style.type(), QStringLiteral("chart.variable.style"));
    EXPECT_TRUE(style.name().isEmpty());

    const QList<QColor> rainbow{QColor(Qt::blue), QColor(Qt::cyan), QColor(Qt::green), QColor(Qt::yellow),
                                QColor(Qt::red)};
    EXPECT_EQ(style.fillGradient.get(), rainbow);
    EXPECT_EQ(style.lineBackgroundColor.get(), QList<QColor>{QColor(Qt::transparent)});
    EXPECT_EQ(style.symbolSize.get(), std::vector<int>{7});
    EXPECT_EQ(style.bands.get(), 256u);
    EXPECT_EQ(style.componentSortAxis.get(), -1);
    EXPECT_FALSE(style.showLinearInterpolationOfLines.get());

    QString sortAxis;
    style.getValue(QStringLiteral("componentSortAxis"), sortAxis, QString());
    EXPECT_EQ(sortAxis, QStringLiteral("-1"));
    const QStringList names = style.string().names();
    EXPECT_EQ(names.size(), 26);
    for (const QString& name : names)
        EXPECT_TRUE(style.string().getUnit(name, QString()).isEmpty()) << name.toStdString();
}

TEST_F(KelChartVariableStyleTest, DumpWritesTheStoredTextsAndFlushesOnceAtTheEnd)
{
    FlushCountingBuffer buffer;
    std::ostream os(&buffer);
    os << style;
    EXPECT_EQ(buffer.str(), defaultDump);
    EXPECT_EQ(buffer.flushes, 1);

    style.style.set(QStringLiteral("two\nlines"));
    EXPECT_EQ(dump(style).rfind("\tstyle             : two\nlines\n\tline ", 0), 0u);
}

TEST_F(KelChartVariableStyleTest, CopyAndAssignmentTakeValuesAndStayIndependent)
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

    KelChartVariableStyle assigned(group);
    assigned.rename(QStringLiteral("assigned"));
    assigned = style;
    EXPECT_EQ(assigned.name(), QStringLiteral("assigned"));
    EXPECT_EQ(dump(assigned), dump(style));

    copy.bands.set(16);
    assigned.symbol.set({KelChart::symbolStar});
    style.barWidth.set({0.5});
    EXPECT_EQ(style.bands.get(), 256u);
    EXPECT_EQ(style.symbol.get(), QStringList{KelChart::symbolNone});
    EXPECT_EQ(copy.barWidth.get(), std::vector<double>{1.0});
    EXPECT_EQ(assigned.barWidth.get(), std::vector<double>{1.0});

    const std::string before = dump(style);
    const KelChartVariableStyle& self = style;
    style = self;
    EXPECT_EQ(dump(style), before);
}

TEST_F(KelChartVariableStyleTest, StylesDieWholeThroughTheBaseAndInsideTrees)
{
    KelProperties parent(group);
    auto* owned = new KelChartVariableStyle(group);
    ASSERT_TRUE(parent.insert(owned, false));
    delete static_cast<KelProperties*>(new KelChartVariableStyle(*owned));
    auto* member = new KelChartVariableStyle(group);
    ASSERT_TRUE(parent.insert(member, true));
    delete member;
    EXPECT_EQ(parent.size(), 1u);
}
