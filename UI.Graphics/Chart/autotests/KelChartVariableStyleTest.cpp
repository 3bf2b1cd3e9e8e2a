#include "KelChart.h"
#include "KelChartVariableStyle.h"

#include <gtest/gtest.h>

#include <memory>
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

// The dump holds 23 of the 26 stored defaults; none has a unit.
TEST_F(KelChartVariableStyleTest, NewStyleIsUnnamedAndDumpsItsStoredTexts)
{
    EXPECT_EQ(style.type(), QStringLiteral("chart.variable.style"));
    EXPECT_TRUE(style.name().isEmpty());
    EXPECT_EQ(dump(style), defaultDump);
    QString sortAxis;
    style.getValue(QStringLiteral("componentSortAxis"), sortAxis, QString());
    EXPECT_EQ(sortAxis, QStringLiteral("-1"));
    EXPECT_EQ(style.bands.get(), 256u);
    EXPECT_FALSE(style.showLinearInterpolationOfLines.get());
    const QStringList names = style.string().names();
    EXPECT_EQ(names.size(), 26);
    for (const QString& name : names)
        EXPECT_TRUE(style.string().getUnit(name, QString()).isEmpty()) << name.toStdString();
}

TEST_F(KelChartVariableStyleTest, CopyAndAssignmentTakeValuesAndUnitsAndStayIndependent)
{
    style.rename(QStringLiteral("style"));
    style.fill.set({KelChart::fillGradient, KelChart::fillCross});
    style.string().setUnit(QStringLiteral("lineWidth"), QStringLiteral("mm"));
    std::unique_ptr<KelProperties> owned(new KelChartVariableStyle(style));
    auto& copy = static_cast<KelChartVariableStyle&>(*owned);
    KelChartVariableStyle assigned(group);
    assigned.rename(QStringLiteral("assigned"));
    assigned = style;
    assigned = static_cast<const KelChartVariableStyle&>(assigned);
    EXPECT_EQ(copy.name(), QStringLiteral("style"));
    EXPECT_EQ(assigned.name(), QStringLiteral("assigned"));
    EXPECT_EQ(dump(copy), dump(style));
    EXPECT_EQ(dump(assigned), dump(style));
    EXPECT_EQ(copy.lineWidth.getUnit(), QStringLiteral("mm"));
    style.barWidth.set({0.5});
    EXPECT_EQ(copy.barWidth.get(), std::vector<double>{1.0});
    EXPECT_EQ(assigned.barWidth.get(), std::vector<double>{1.0});
}
