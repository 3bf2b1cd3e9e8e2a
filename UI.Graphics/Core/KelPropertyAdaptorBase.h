#pragma once
// Base of the typed accessors of one named property of one node. It observes
// its owner (the pointer reads null once the owner is gone) and keeps the
// store revision it last read, so that a write by name through the text
// interface is seen at the next typed read.

#include "OrvCoreExport.h"
#include "KelProperties.h"

#include <cstdint>

class ORV_CORE_EXPORT KelPropertyAdaptorBase {
public:
    KelPropertyAdaptorBase(KelProperties& owner, const QString& name);
    KelPropertyAdaptorBase(const KelPropertyAdaptorBase&) = delete;
    KelPropertyAdaptorBase& operator=(const KelPropertyAdaptorBase&) = delete;
    ~KelPropertyAdaptorBase() = default;

    const QString& name() const { return m_name; }
    // The stored unit of the property, empty without an owner.
    QString getUnit() const;
    void setUnit(const QString& unit);
    // The stored value text, empty without an owner.
    QString getString() const;

protected:
    const kel::view_ptr<KelProperties>& owner() const { return m_owner; }
    // True when the store changed since the last `reset()`.
    bool modified() const;
    // Whether a cached value may be served at all; always true here.
    bool cachable() const;
    // Marks the current store state as read. Const: typed reads through const
    // owners refresh their cache, which is bookkeeping, not a change of value.
    void reset() const;

private:
    kel::view_ptr<KelProperties> m_owner;
    QString m_name;
    mutable std::uint64_t m_seenRevision = 0;
};
