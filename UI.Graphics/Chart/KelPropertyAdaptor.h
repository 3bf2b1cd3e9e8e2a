#pragma once
// KelPropertyAdaptor<T>: the typed accessor of one named property of one node.
//
// It writes the property's default into the node's store when the node is
// created (only if the store lacks the name), caches the typed value, and reads
// the store again only when the store changed since the last read, when the
// cache may not be served, or while the node's group is locked.

#include "KelConstants.h"
#include "KelPropertyAdaptorBase.h"

#include <QColor>
#include <QList>
#include <QString>
#include <QStringList>

#include <vector>

// The value a typed property holds before anything was read into it.
template <class T>
struct KelPropertyEmptyValue {
    static T get() { return T(); }
};
template <> struct KelPropertyEmptyValue<bool> { static bool get() { return false; } };
template <> struct KelPropertyEmptyValue<int> { static int get() { return 0; } };
template <> struct KelPropertyEmptyValue<unsigned> { static unsigned get() { return 0u; } };
template <> struct KelPropertyEmptyValue<double> { static double get() { return 0.0; } };
template <> struct KelPropertyEmptyValue<QColor> { static const QColor& get() { return QColor0; } };
template <> struct KelPropertyEmptyValue<QList<QColor>> { static const QList<QColor>& get() { return QColorList0; } };
template <> struct KelPropertyEmptyValue<QStringList> { static const QStringList& get() { return QStringList0; } };
template <> struct KelPropertyEmptyValue<std::vector<int>> { static const std::vector<int>& get() { return KelIntList0; } };
template <> struct KelPropertyEmptyValue<std::vector<double>> { static const std::vector<double>& get() { return KelDoubleList0; } };
template <> struct KelPropertyEmptyValue<std::vector<bool>> { static const std::vector<bool>& get() { return KelBoolList0; } };

template <class T>
class KelPropertyAdaptor : public KelPropertyAdaptorBase {
public:
    KelPropertyAdaptor(KelProperties& owner, const QString& name, const T& defaultValue, const QString& unit)
        : KelPropertyAdaptorBase(owner, name)
        , m_value(KelPropertyEmptyValue<T>::get())
    {
        if (!owner.string().defined(name))
            set(defaultValue);
        if (!unit.isEmpty() && getUnit().isEmpty())
            setUnit(unit);
    }

    // Used by copy constructors of owners: takes over `other`'s value and unit
    // unless the new owner's store already holds them.
    KelPropertyAdaptor(KelProperties& owner, const KelPropertyAdaptor& other)
        : KelPropertyAdaptorBase(owner, other.name())
        , m_value(KelPropertyEmptyValue<T>::get())
    {
        if (!owner.string().defined(name()))
            set(other.get());
        const QString otherUnit = other.getUnit();
        if (!otherUnit.isEmpty() && getUnit().isEmpty())
            setUnit(otherUnit);
    }

    KelPropertyAdaptor(const KelPropertyAdaptor&) = delete;

    KelPropertyAdaptor& operator=(const KelPropertyAdaptor& other)
    {
        if (&other == this)
            return *this;
        set(other.get());
        const QString otherUnit = other.getUnit();
        if (!otherUnit.isEmpty())
            setUnit(otherUnit);
        return *this;
    }

    const T& get() const
    {
        const KelProperties* node = owner().get();
        if (node == nullptr || (!modified() && cachable() && !node->group().locked()))
            return m_value;
        node->string().getValue(name(), m_value, KelPropertyEmptyValue<T>::get());
        reset();
        return m_value;
    }

    void set(const T& value)
    {
        KelProperties* node = owner().get();
        if (node == nullptr)
            return;
        m_value = value;
        node->string().setValue(name(), m_value);
        reset();
    }

private:
    mutable T m_value;
};
