#include "ElementClasses.h"

#include "KelChart2D.h"
#include "KelChart3D.h"
#include "KelChartAxisKinds.h"
#include "KelChartCorrelation.h"
#include "KelChartLegend.h"
#include "KelChartMultiAxis.h"
#include "KelChartPie.h"
#include "KelChartVariableList.h"
#include "KelLabelIter.h"
#include "KelQuantityTriple.h"
#include "KelUnitSystem.h"
#include "KelVariableIter.h"
#include "KelViewport.h"

#include <functional>
#include <typeindex>
#include <typeinfo>
#include <vector>

namespace Orv::Chart {

namespace {

// A type string is set by the most derived constructor, so a node is an
// instance of its type's class exactly when its dynamic type is that class.
struct ElementClass {
    QString type;
    std::function<std::unique_ptr<KelProperties>(KelModifiedGroup&)> make;
    std::type_index klass;
};

template <class T>
ElementClass entry(const QString& type)
{
    return {type, [](KelModifiedGroup& group) { return std::unique_ptr<KelProperties>(new T(group)); }, typeid(T)};
}

// The axes with a range come from the chart library's own table of axis kinds.
ElementClass axisEntry(const QString& type)
{
    const auto make = [type](KelModifiedGroup& group) {
        return std::unique_ptr<KelProperties>(KelChartAxisKinds::make(group, type, QStringLiteral("axis.1")));
    };
    KelModifiedGroup group;
    const std::unique_ptr<KelProperties> probe = make(group);
    const KelProperties& node = *probe;
    return {type, make, typeid(node)};
}

// Built on first use: the library's type strings are set up when it loads.
const std::vector<ElementClass>& table()
{
    static const std::vector<ElementClass> classes = [] {
        std::vector<ElementClass> table = {
        entry<KelChart>(KelChart::typeString),
        entry<KelChart2D>(KelChart2D::typeString),
        entry<KelChart3D>(KelChart3D::typeString),
        entry<KelChartCorrelation>(KelChartCorrelation::typeString),
        entry<KelChartMultiAxis>(KelChartMultiAxis::typeString),
        entry<KelChartPie>(KelChartPie::typeString),
        entry<KelChartLegend>(KelChartLegend::typeString),
        entry<KelChartAxis>(KelChartAxis::typeString),
        entry<KelChartAxisPair>(KelChartAxisPair::typeString),
        entry<KelChartVariable>(KelChartVariable::typeString),
        {KelChartVariableList::typeString,
         [](KelModifiedGroup& group) {
             return std::unique_ptr<KelProperties>(new KelChartVariableList(group, QStringLiteral("variable.1")));
         },
         typeid(KelChartVariableList)},
        entry<KelChartVariableStyle>(KelChartVariableStyle::typeString),
        entry<KelUnitSystem>(QStringLiteral("units.system")),
        entry<KelVariableIter>(QStringLiteral("variable.iter")),
        entry<KelLabelIter>(QStringLiteral("labels")),
        entry<KelViewport>(QStringLiteral("viewport")),
        entry<KelQuantityTriple>(QStringLiteral("quantity.triple")),
        {QStringLiteral("quantity.component"),
         [](KelModifiedGroup& group) {
             return std::unique_ptr<KelProperties>(new KelQuantityComponent(group, QStringLiteral("x")));
         },
         typeid(KelQuantityComponent)},
        };
        for (const QString& type : KelChartAxisKinds::rangedTypes())
            table.push_back(axisEntry(type));
        return table;
    }();
    return classes;
}

const ElementClass* find(const QString& type)
{
    for (const ElementClass& element : table())
        if (element.type == type)
            return &element;
    return nullptr;
}

} // namespace

QStringList ElementClasses::types()
{
    QStringList list;
    for (const ElementClass& element : table())
        list << element.type;
    return list;
}

bool ElementClasses::known(const QString& type)
{
    return find(type) != nullptr;
}

std::unique_ptr<KelProperties> ElementClasses::make(const QString& type, KelModifiedGroup& group)
{
    const ElementClass* element = find(type);
    return element ? element->make(group) : nullptr;
}

bool ElementClasses::isInstance(const KelProperties& node)
{
    const ElementClass* element = find(node.type());
    return element && std::type_index(typeid(node)) == element->klass;
}

KelChartAxis* AxisPairs::find(const QString& name) const
{
    for (const KelChartAxisPair* pair : {x, y, z})
        if (KelChartAxis* axis = pair ? pair->find(name) : nullptr)
            return axis;
    return nullptr;
}

AxisPairs axisPairsOf(KelProperties& node)
{
    if (auto* chart = dynamic_cast<KelChart2D*>(&node))
        return {&chart->axisX, &chart->axisY, &chart->axisZ};
    if (auto* chart = dynamic_cast<KelChart3D*>(&node))
        return {&chart->axisX, &chart->axisY, &chart->axisZ};
    return {};
}

} // namespace Orv::Chart
