#include "KelChartAxisKinds.h"

#include "KelChartAxisContinuous.h"
#include "KelChartAxisDiscrete.h"
#include "KelChartAxisTime.h"

#include <array>

namespace {

struct AxisKind {
    const QString& type;
    KelChartAxis* (*make)(KelModifiedGroup& group);
    // Assigns as this kind when both axes are of it (or derive from it).
    bool (*assign)(KelChartAxis& target, const KelChartAxis& source);
};

template <class Axis>
KelChartAxis* makeAxis(KelModifiedGroup& group)
{
    return new Axis(group);
}

template <class Axis>
bool assignAs(KelChartAxis& target, const KelChartAxis& source)
{
    auto* to = dynamic_cast<Axis*>(&target);
    const auto* from = dynamic_cast<const Axis*>(&source);
    if (to == nullptr || from == nullptr)
        return false;
    *to = *from;
    return true;
}

template <class Axis>
AxisKind kind()
{
    return {Axis::typeString, &makeAxis<Axis>, &assignAs<Axis>};
}

// Most derived first, so that `assign` finds the most derived class both share.
const std::array<AxisKind, 3>& kinds()
{
    static const std::array<AxisKind, 3> table = {
        kind<KelChartAxisTime>(), kind<KelChartAxisContinuous>(), kind<KelChartAxisDiscrete>()};
    return table;
}

} // namespace

QStringList KelChartAxisKinds::rangedTypes()
{
    QStringList types;
    for (const AxisKind& kind : kinds())
        types << kind.type;
    return types;
}

bool KelChartAxisKinds::isRangedType(const QString& type)
{
    for (const AxisKind& kind : kinds()) {
        if (kind.type == type)
            return true;
    }
    return false;
}

KelChartAxis* KelChartAxisKinds::make(KelModifiedGroup& group, const QString& type, const QString& name)
{
    for (const AxisKind& kind : kinds()) {
        if (kind.type == type) {
            KelChartAxis* axis = kind.make(group);
            axis->rename(name);
            return axis;
        }
    }
    return nullptr;
}

void KelChartAxisKinds::assign(KelChartAxis& target, const KelChartAxis& source)
{
    for (const AxisKind& kind : kinds()) {
        if (kind.assign(target, source))
            return;
    }
    target = source;
}
