#pragma once
// KelPropertiesList<T>: a property node whose children are all of one element
// class T. It gives typed access to them, names unnamed children as they are
// inserted, and makes a T for every child the framework asks it to make.

#include "KelProperties.h"
#include "OrvDiagnostics.h"

#include <QString>

template <class T>
class KelPropertiesList : public KelProperties {
public:
    KelPropertiesList(KelModifiedGroup& group, const QString& defaultChildName)
        : KelProperties(group)
        , m_defaultChildName(defaultChildName)
    {
    }

    KelPropertiesList(const KelPropertiesList& other)
        : KelProperties(other)
        , m_defaultChildName(other.m_defaultChildName)
    {
    }

    KelPropertiesList& operator=(const KelPropertiesList& other)
    {
        KelProperties::operator=(other);
        m_defaultChildName = other.m_defaultChildName;
        return *this;
    }

    ~KelPropertiesList() override = default;

    const QString& defaultChildName() const { return m_defaultChildName; }

    T* at(unsigned index) { return dynamic_cast<T*>(KelProperties::at(index)); }
    const T* at(unsigned index) const { return dynamic_cast<const T*>(KelProperties::at(index)); }
    T* operator[](unsigned index) { return at(index); }
    const T* operator[](unsigned index) const { return at(index); }

    T* at(const QString& name) { return dynamic_cast<T*>(KelProperties::at(name)); }
    const T* at(const QString& name) const { return dynamic_cast<const T*>(KelProperties::at(name)); }
    T* operator[](const QString& name) { return at(name); }
    const T* operator[](const QString& name) const { return at(name); }

    T* front() { return dynamic_cast<T*>(KelProperties::front()); }
    const T* front() const { return dynamic_cast<const T*>(KelProperties::front()); }
    T* back() { return dynamic_cast<T*>(KelProperties::back()); }
    const T* back() const { return dynamic_cast<const T*>(KelProperties::back()); }

    // The child of that name as a T. When the first child of that name is of
    // another class, that is reported and a new T of that name is made and
    // appended, so the caller always gets a real T that lives in the tree.
    T& child(const QString& name, const QString& type)
    {
        KelProperties& found = KelProperties::child(name, type);
        if (T* typed = dynamic_cast<T*>(&found))
            return *typed;
        ORV_ENSURE(dynamic_cast<T*>(&found) != nullptr);
        T* made = new T(group());
        made->rename(name);
        KelProperties::insert(made, false);
        return *made;
    }
    const T& child(const QString& name, const QString& type) const
    {
        return const_cast<KelPropertiesList*>(this)->child(name, type);
    }

    // Names an unnamed child after the default child name, then inserts it.
    bool insert(T* child, bool member)
    {
        if (child == nullptr)
            return false;
        if (child->name().isEmpty())
            child->rename(m_defaultChildName);
        return KelProperties::insert(child, member);
    }

protected:
    // Makes a T in this list's group whatever type is asked for; not inserted here.
    KelProperties* makeChild(const QString& name, const QString& type) override
    {
        (void)type;
        T* made = new T(group());
        made->rename(name);
        return made;
    }

private:
    QString m_defaultChildName;
};
