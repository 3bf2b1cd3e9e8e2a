#pragma once
// The unit system of a chart: whether values are shown in preferred units and
// which units those are. Iterators that receive the `enabled` flag report and
// deliver their values in the preferred unit of each value's dimension.
//
// `preferredUnits` is tried in order; the first unit of the same dimension as
// a value's unit wins. The default is the SI base units followed by a few
// derived ones (see `defaultPreferredUnits`).

#include "OrvCoreExport.h"
#include "IUnitsConverter.h"
#include "KelProperties.h"
#include "KelStoredValue.h"

#include <QStringList>

#include <boost/shared_ptr.hpp>

class ORV_CORE_EXPORT KelUnitSystem : public KelProperties {
public:
    explicit KelUnitSystem(KelModifiedGroup& group);
    KelUnitSystem(const KelUnitSystem& other);
    KelUnitSystem& operator=(const KelUnitSystem& other);
    ~KelUnitSystem() override;

    KelStoredValue<bool> enabled;
    KelStoredValue<QStringList> preferredUnits;

    // A converter that knows the current preferred units. It is shared between
    // calls until the preferred units change.
    boost::shared_ptr<IUnitsConverter> GetConverter() const;

    static QStringList defaultPreferredUnits();

private:
    mutable boost::shared_ptr<IUnitsConverter> m_converter;
    mutable QStringList m_converterUnits;
};
