#include "KelChartAxisPair.h"
#include "KelChartAxisContinuous.h"
#include "KelChartAxisKinds.h"

#include "KelChartTraceTexts.h"

#include "OrvDiagnostics.h"

const QString KelChartAxisPair::typeString = QStringLiteral("chart.axis_pair");

KelChartAxisPair::KelChartAxisPair(KelModifiedGroup& group)
    : KelProperties(group)
{
    setType(typeString);
}

KelChartAxisPair& KelChartAxisPair::operator=(const KelChartAxisPair& other)
{
    KelProperties::operator=(other);
    if (&other == this)
        return *this;
    KelChartAxis* first = mirror(other._first, nullptr);
    KelChartAxis* second = mirror(other._second, first);
    for (KelChartAxis* previous : {_first, _second})
        if (previous && previous != first && previous != second && indexOf(previous) >= 0)
            remove(previous);
    _first = first;
    _second = second;
    return *this;
}

KelChartAxisPair::~KelChartAxisPair() = default;

KelChartAxis* KelChartAxisPair::find(const QString& name) const
{
    if (_first && _first->name() == name)
        return _first;
    if (_second && _second->name() == name)
        return _second;
    return nullptr;
}

KelChartAxis& KelChartAxisPair::createFirst(const QString& name, const QString& type)
{
    return create(_first, name, type, "this->remove(_first)", ORV_FUNCTION_SIGNATURE);
}

KelChartAxis& KelChartAxisPair::createSecond(const QString& name, const QString& type)
{
    return create(_second, name, type, "this->remove(_second)", ORV_FUNCTION_SIGNATURE);
}

KelChartAxis& KelChartAxisPair::create(KelChartAxis*& slot, const QString& name, const QString& type,
                                       const std::string& removeFailure, const std::string& signature)
{
    if (slot && !remove(slot))
        orvdebug::ensureFailed(removeFailure, signature);
    const QString childName = this->name() + QLatin1Char('.') + name;
    if (!KelChartAxisKinds::isRangedType(type))
        return refuse("isAxisType(type)", signature);
    const KelProperties* existing = (*this)[childName];
    if (existing && !dynamic_cast<const KelChartAxis*>(existing))
        return refuse("dynamic_cast<KelChartAxis*>(existing)", signature);

    auto& axis = dynamic_cast<KelChartAxis&>(child(childName, type));
    axis.enabled.set(true);
    slot = &axis;
    return axis;
}

KelChartAxis& KelChartAxisPair::refuse(const std::string& condition, const std::string& signature)
{
    orvdebug::ensureFailed(condition, signature);
    _refused = std::make_unique<KelChartAxisContinuous>(group());
    return *_refused;
}

// The pair's own child of `source`'s name and type other than `taken`, made when
// missing, with `source`'s values.
KelChartAxis* KelChartAxisPair::mirror(const KelChartAxis* source, const KelChartAxis* taken)
{
    if (source == nullptr)
        return nullptr;
    KelChartAxis* own = nullptr;
    for (unsigned i = 0; i < size() && !own; ++i) {
        auto* axis = dynamic_cast<KelChartAxis*>((*this)[i]);
        if (axis && axis != taken && axis->name() == source->name() && axis->type() == source->type())
            own = axis;
    }
    if (own == nullptr) {
        own = KelChartAxisKinds::make(group(), source->type(), source->name());
        if (own == nullptr)
            return nullptr;
        KelProperties::insert(own, false);
    }
    if (own != source)
        KelChartAxisKinds::assign(*own, *source);
    return own;
}

bool KelChartAxisPair::remove(KelProperties* child)
{
    if (_first == child)
        _first = nullptr;
    if (_second == child)
        _second = nullptr;
    return KelProperties::remove(child);
}

KelProperties* KelChartAxisPair::makeChild(const QString& name, const QString& type)
{
    orvdebug::trace scope(kel::debug_logger::debuglogger(), ORV_FUNCTION_SIGNATURE,
                          KelChartTraceTexts::axisPairMakeChild);
    return KelChartAxisKinds::make(group(), type, name);
}
