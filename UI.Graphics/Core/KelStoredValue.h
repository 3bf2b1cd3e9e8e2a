#pragma once
// A typed property of a framework node, read from and written to the node's
// string store on every access (no cache). The framework's own nodes (unit
// system, viewport, quantity components) declare their properties with it.

#include "KelPropertyAdaptorBase.h"

template <class T>
class KelStoredValue : public KelPropertyAdaptorBase {
public:
    // Writes the default when the store does not define the name yet, and the
    // unit when the store holds none.
    KelStoredValue(KelProperties& owner, const QString& name, const T& defaultValue,
                   const QString& unit = QString())
        : KelPropertyAdaptorBase(owner, name)
        , m_default(defaultValue)
    {
        if (!owner.string().defined(name))
            set(defaultValue);
        if (!unit.isEmpty() && getUnit().isEmpty())
            setUnit(unit);
    }

    T get() const
    {
        T value = m_default;
        if (const KelProperties* node = owner().get())
            node->string().getValue(name(), value, m_default);
        return value;
    }

    void set(const T& value)
    {
        if (KelProperties* node = owner().get())
            node->string().setValue(name(), value);
    }

private:
    T m_default;
};
