#pragma once
// Walks the items of a chart variable. After `reset()`, every `next()` that
// gives true makes the following item current; false means there is none.
// An item is one number or a 2-D vector, with one undefined flag per
// component. Values are delivered in the units chosen through `setUnits`, else
// in the units that `units` reports: those the data have, under the unit system.
//
// The per-item calls (`next`, `scalarValue`, `vector2Value`,
// `undefinedFlags`) run over millions of items and must stay cheap.

#include "OrvCoreExport.h"
#include "IUnitsConverter.h"
#include "Vector.h"

#include <QString>

#include <boost/shared_ptr.hpp>

class ORV_CORE_EXPORT KelVariableIterInterface {
public:
    // Virtual operations, in this slot order.
    virtual bool next() = 0;
    virtual void reset() = 0;
    virtual double scalarValue() = 0;
    virtual void vector2Value(Orv::Math::Vector2& value) = 0;
    virtual void vector3Value(Orv::Math::Vector3& value) = 0;
    // Sets the flag of each undefined component of the current item and leaves
    // the others alone: the caller clears them first.
    virtual void undefinedFlags(bool& x, bool& y, bool& z) = 0;
    // Whether items have `n` components (1 or 2).
    virtual bool hasDimension(int n) = 0;
    virtual void setConverter(const boost::shared_ptr<IUnitsConverter>& converter) = 0;
    // When set, components without a unit chosen through `setUnits` are
    // delivered in the unit system's preferred unit of their dimension.
    virtual void setUnitSystemFlag(bool on) = 0;
    // The units of the data, with the unit system applied. Units chosen through
    // `setUnits` change what is delivered, not what is reported, so whoever
    // chooses units reads the data's own, whatever was chosen before.
    virtual void units(QString& x, QString& y, QString& z) = 0;
    // Chooses the units to deliver; all or nothing.
    virtual bool setUnits(const QString& x, const QString& y, const QString& z) = 0;
    virtual void logarithmic(bool& x, bool& y, bool& z) const = 0;
    virtual void setLogarithmic(bool x, bool y, bool z) = 0;

protected:
    KelVariableIterInterface() = default;
    KelVariableIterInterface(const KelVariableIterInterface&) = default;
    KelVariableIterInterface& operator=(const KelVariableIterInterface&) = default;
    ~KelVariableIterInterface() = default;
};
