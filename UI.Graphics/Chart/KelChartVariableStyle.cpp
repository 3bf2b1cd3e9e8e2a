#include "KelChartVariableStyle.h"

#include "KelChart.h"

#include <iterator>
#include <utility>

namespace {

QList<QColor> oneColor(Qt::GlobalColor color)
{
    return QList<QColor>{QColor(color)};
}

QList<QColor> rainbow()
{
    return QList<QColor>{QColor(Qt::blue), QColor(Qt::cyan), QColor(Qt::green), QColor(Qt::yellow),
                         QColor(Qt::red)};
}

} // namespace

const QString KelChartVariableStyle::typeString = QStringLiteral("chart.variable.style");

KelChartVariableStyle::KelChartVariableStyle(KelModifiedGroup& group)
    : KelProperties(group)
    , style(*this, QStringLiteral("style"), KelChart::styleNone, QString())
    , line(*this, QStringLiteral("line"), QStringList{KelChart::lineSolid}, QString())
    , lineColor(*this, QStringLiteral("lineColor"), oneColor(Qt::black), QString())
    , lineBackgroundColor(*this, QStringLiteral("lineBackgroundColor"), oneColor(Qt::transparent), QString())
    , lineGradient(*this, QStringLiteral("lineGradient"), rainbow(), QString())
    , lineWidth(*this, QStringLiteral("lineWidth"), std::vector<double>{1.0}, QString())
    , lineSmooth(*this, QStringLiteral("lineSmooth"), std::vector<bool>{true}, QString())
    , fill(*this, QStringLiteral("fill"), QStringList{KelChart::fillNone}, QString())
    , fillColor(*this, QStringLiteral("fillColor"), oneColor(Qt::black), QString())
    , fillBackgroundColor(*this, QStringLiteral("fillBackgroundColor"), oneColor(Qt::transparent), QString())
    , fillGradient(*this, QStringLiteral("fillGradient"), rainbow(), QString())
    , bands(*this, QStringLiteral("bands"), 256u, QString())
    , labelColor(*this, QStringLiteral("labelColor"), oneColor(Qt::black), QString())
    , labelShadowColor(*this, QStringLiteral("labelShadowColor"), oneColor(Qt::transparent), QString())
    , barWidth(*this, QStringLiteral("barWidth"), std::vector<double>{1.0}, QString())
    , barOffset(*this, QStringLiteral("barOffset"), std::vector<double>{0.0}, QString())
    , barTopSize(*this, QStringLiteral("barTopSize"), std::vector<double>{0.0}, QString())
    , barTopColor(*this, QStringLiteral("barTopColor"), oneColor(Qt::black), QString())
    , symbol(*this, QStringLiteral("symbol"), QStringList{KelChart::symbolNone}, QString())
    , symbolSize(*this, QStringLiteral("symbolSize"), std::vector<int>{7}, QString())
    , symbolOutline(*this, QStringLiteral("symbolOutline"), std::vector<bool>{true}, QString())
    , symbolOutlineColor(*this, QStringLiteral("symbolOutlineColor"), oneColor(Qt::black), QString())
    , symbolFill(*this, QStringLiteral("symbolFill"), QStringList{KelChart::fillSolid}, QString())
    , symbolFillColor(*this, QStringLiteral("symbolFillColor"), oneColor(Qt::black), QString())
    , componentSortAxis(*this, QStringLiteral("componentSortAxis"), -1, QString())
    , showLinearInterpolationOfLines(*this, QStringLiteral("showLinearInterpolationOfLines"), false, QString())
{
    setType(typeString);
}

KelChartVariableStyle::KelChartVariableStyle(const KelChartVariableStyle& other)
    : KelProperties(other)
    , style(*this, other.style)
    , line(*this, other.line)
    , lineColor(*this, other.lineColor)
    , lineBackgroundColor(*this, other.lineBackgroundColor)
    , lineGradient(*this, other.lineGradient)
    , lineWidth(*this, other.lineWidth)
    , lineSmooth(*this, other.lineSmooth)
    , fill(*this, other.fill)
    , fillColor(*this, other.fillColor)
    , fillBackgroundColor(*this, other.fillBackgroundColor)
    , fillGradient(*this, other.fillGradient)
    , bands(*this, other.bands)
    , labelColor(*this, other.labelColor)
    , labelShadowColor(*this, other.labelShadowColor)
    , barWidth(*this, other.barWidth)
    , barOffset(*this, other.barOffset)
    , barTopSize(*this, other.barTopSize)
    , barTopColor(*this, other.barTopColor)
    , symbol(*this, other.symbol)
    , symbolSize(*this, other.symbolSize)
    , symbolOutline(*this, other.symbolOutline)
    , symbolOutlineColor(*this, other.symbolOutlineColor)
    , symbolFill(*this, other.symbolFill)
    , symbolFillColor(*this, other.symbolFillColor)
    , componentSortAxis(*this, other.componentSortAxis)
    , showLinearInterpolationOfLines(*this, other.showLinearInterpolationOfLines)
{
    setType(typeString);
}

KelChartVariableStyle& KelChartVariableStyle::operator=(const KelChartVariableStyle& other) = default;

KelChartVariableStyle::~KelChartVariableStyle() = default;

std::ostream& operator<<(std::ostream& os, const KelChartVariableStyle& style)
{
    // The labels line the colons up in one column, except the first, which is
    // one blank shorter: the dump keeps its established layout.
    const std::pair<const char*, const KelPropertyAdaptorBase*> lines[] = {
        {"\tstyle             : ", &style.style},
        {"\tline               : ", &style.line},
        {"\tlineColor          : ", &style.lineColor},
        {"\tlineBackgroundColor: ", &style.lineBackgroundColor},
        {"\tlineGradient       : ", &style.lineGradient},
        {"\tlineWidth          : ", &style.lineWidth},
        {"\tlineSmooth         : ", &style.lineSmooth},
        {"\tfill               : ", &style.fill},
        {"\tfillColor          : ", &style.fillColor},
        {"\tfillBackgroundColor: ", &style.fillBackgroundColor},
        {"\tfillGradient       : ", &style.fillGradient},
        {"\tlabelColor         : ", &style.labelColor},
        {"\tlabelShadowColor   : ", &style.labelShadowColor},
        {"\tbarWidth           : ", &style.barWidth},
        {"\tbarOffset          : ", &style.barOffset},
        {"\tbarTopSize         : ", &style.barTopSize},
        {"\tbarTopColor        : ", &style.barTopColor},
        {"\tsymbol             : ", &style.symbol},
        {"\tsymbolSize         : ", &style.symbolSize},
        {"\tsymbolOutline      : ", &style.symbolOutline},
        {"\tsymbolOutlineColor : ", &style.symbolOutlineColor},
        {"\tsymbolFill         : ", &style.symbolFill},
        {"\tsymbolFillColor    : ", &style.symbolFillColor},
    };
    const auto last = std::prev(std::end(lines));
    for (auto entry = std::begin(lines); entry != last; ++entry)
        os << entry->first << entry->second->getString() << "\n";
    os << last->first << last->second->getString() << std::endl;
    return os;
}
