#include "KelChartVariable.h"

#include "KelUnitSystem.h"
#include "OrvDiagnostics.h"
#include "Vector.h"

#include <boost/shared_ptr.hpp>

#include <initializer_list>

namespace {

// Names a member child and makes it a child of `parent` that the tree never frees.
void adopt(KelProperties& parent, KelProperties& child, const QString& name)
{
    child.rename(name);
    parent.insert(&child, true);
}

} // namespace

const QString KelChartVariable::typeString = QStringLiteral("chart.variable");

KelChartVariable::KelChartVariable(KelModifiedGroup& group)
    : KelProperties(group)
    , enabled(*this, QStringLiteral("enabled"), true, QString())
    , title(*this, QStringLiteral("title"), QString(), QString())
    , legend(*this, QStringLiteral("legend"), true, QString())
    , xAxis(*this, QStringLiteral("xAxis"), QString(), QString())
    , yAxis(*this, QStringLiteral("yAxis"), QString(), QString())
    , zAxis(*this, QStringLiteral("zAxis"), QString(), QString())
    , label(*this, QStringLiteral("label"), QStringList(), QString())
    , variableiter(group)
    , style(group)
    , autoRange(*this, QStringLiteral("autoRange"), true, QString())
    , max(group)
    , min(group)
    , enableFilters(*this, QStringLiteral("enableFilters"), false, QString())
    , filterMax(group)
    , filterMin(group)
    , order(*this, QStringLiteral("order"), 0, QString())
    , tesselate(*this, QStringLiteral("tesselate"), true, QString())
{
    setType(typeString);
    rename(QStringLiteral("variable.1"));
    adopt(*this, style, QStringLiteral("style"));
    adopt(*this, variableiter, QStringLiteral("variableiter"));
    adopt(*this, min, QStringLiteral("min"));
    adopt(*this, max, QStringLiteral("max"));
    // A new filter range is deliberately empty: 1 to 0 in every component.
    adopt(*this, filterMin, QStringLiteral("filterMin"));
    filterMin.reset(Orv::Math::Vector1, QString(), QString(), QString());
    adopt(*this, filterMax, QStringLiteral("filterMax"));
    filterMax.reset(Orv::Math::Vector0, QString(), QString(), QString());
}

KelChartVariable::KelChartVariable(const KelChartVariable& other)
    : KelProperties(other)
    , enabled(*this, other.enabled)
    , title(*this, other.title)
    , legend(*this, other.legend)
    , xAxis(*this, other.xAxis)
    , yAxis(*this, other.yAxis)
    , zAxis(*this, other.zAxis)
    , label(*this, other.label)
    , variableiter(other.group())
    , style(other.style)
    , autoRange(*this, QStringLiteral("autoRange"), other.autoRange.get(), QString())
    , max(other.max)
    , min(other.min)
    , enableFilters(*this, QStringLiteral("enableFilters"), other.enableFilters.get(), QString())
    , filterMax(other.filterMax)
    , filterMin(other.filterMin)
    , order(*this, QStringLiteral("order"), other.order.get(), QString())
    , tesselate(*this, QStringLiteral("tesselate"), other.tesselate.get(), QString())
{
    setType(typeString);
    rename(QStringLiteral("variable.1"));
    adopt(*this, style, QStringLiteral("style"));
    // The iterator cannot be copy-constructed; it takes other's state by assignment.
    variableiter.rename(QStringLiteral("variableiter"));
    variableiter = other.variableiter;
    insert(&variableiter, true);
    adopt(*this, min, QStringLiteral("min"));
    adopt(*this, max, QStringLiteral("max"));
    adopt(*this, filterMin, QStringLiteral("filterMin"));
    adopt(*this, filterMax, QStringLiteral("filterMax"));
}

KelChartVariable& KelChartVariable::operator=(const KelChartVariable& other) = default;

KelChartVariable::~KelChartVariable() = default;

QString KelChartVariable::getValue(const QString& name, QString& value, const QString& defaultValue) const
{
    if (!isQuantityName(name))
        return KelProperties::getValue(name, value, defaultValue);
    if (const KelProperties* quantity = KelProperties::operator[](name))
        return quantity->getValue(name, value, defaultValue);
    warnMissingQuantity(R"(false && "KelChartVariable::getValue: failed to find a child of KelQuantityTriple type!")",
                        __PRETTY_FUNCTION__, __LINE__);
    return KelProperties::getValue(name, value, defaultValue);
}

QString KelChartVariable::setValue(const QString& name, const QString& value)
{
    if (!isQuantityName(name))
        return KelProperties::setValue(name, value);
    if (KelProperties* quantity = KelProperties::operator[](name))
        return quantity->setValue(name, value);
    warnMissingQuantity(R"(false && "KelChartVariable::setValue: failed to find a child of KelQuantityTriple type!")",
                        __PRETTY_FUNCTION__, __LINE__);
    return KelProperties::setValue(name, value);
}

void KelChartVariable::SetUnitsConversion(const KelUnitSystem& unitSystem)
{
    boost::shared_ptr<IUnitsConverter> converter = unitSystem.GetConverter();
    variableiter.setUnitSystemFlag(unitSystem.enabled.get());
    variableiter.setConverter(converter);
    QString first;
    QString second;
    QString third;
    variableiter.units(first, second, third);
    for (KelQuantityTriple* quantity : {&min, &max, &filterMin, &filterMax})
        quantity->convertUnit(converter, first, second, third);
}

bool KelChartVariable::isQuantityName(const QString& name) const
{
    for (const KelQuantityTriple* quantity : {&min, &max, &filterMin, &filterMax})
        if (quantity->name() == name)
            return true;
    return false;
}

void KelChartVariable::warnMissingQuantity(const char* condition, const char* signature, int line)
{
    orvdebug::warnFailed(condition, signature, " @line " + std::to_string(line));
}
