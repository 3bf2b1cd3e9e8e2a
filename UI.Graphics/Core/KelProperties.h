#pragma once
// A named, typed node of the property tree, with ordered children and a
// string store of its properties.
//
// Children and ownership:
// - `insert(child, true)` adds a member child: an object that lives inside its
//   parent (a data member) and is destroyed with it. The tree never frees it.
// - `insert(child, false)` adds an owned child: the tree frees it when the child
//   is removed or when the parent dies. Children made by `child(name, type)`
//   through `makeChild` are owned.
// - A child that is destroyed while in a tree leaves its parent's list first,
//   through the parent's virtual `remove`, so parents that keep pointers to
//   children hear about it.
// - `remove(child)` takes a direct child out of the list (an owned child is
//   freed); `erase(child)` finds the child anywhere below this node and removes
//   it from its own parent.
// Sibling names need not be unique; a lookup by name gives the first.
//
// Copying: the copy constructor copies the name, type and store, not the
// parent nor the children; assignment copies the type and the store and keeps
// the node's own name, parent and children.

#include "OrvCoreExport.h"
#include "KelModified.h"
#include "KelPropertiesString.h"
#include "view_ptr.h"

#include <QString>

#include <ostream>
#include <vector>

class ORV_CORE_EXPORT KelProperties : public KelModified, public kel::Observable {
public:
    explicit KelProperties(KelModifiedGroup& group);
    KelProperties(const KelProperties& other);
    KelProperties& operator=(const KelProperties& other);

    // Virtual operations, in this slot order.
    ~KelProperties() override;
    virtual bool insert(KelProperties* child, bool member);
    virtual bool remove(KelProperties* child);
    virtual bool erase(KelProperties* child);
    virtual bool rename(const QString& name);
    // Told by a child that it was renamed; the base does nothing.
    virtual void onDependentRename(const QString& oldName, const QString& newName);
    virtual QString getValue(const QString& name, QString& value, const QString& defaultValue) const;
    virtual QString setValue(const QString& name, const QString& value);

protected:
    // Makes a new, named node in this node's group for `child(name, type)`.
    // The base makes a plain node of that type, so that unknown children keep
    // their data; classes override it to make their own element classes, and
    // may give null to refuse a type.
    virtual KelProperties* makeChild(const QString& name, const QString& type);

public:
    const QString& name() const { return m_name; }
    const QString& type() const { return m_type; }
    void setType(const QString& type);
    KelProperties* parent() const { return m_parent; }

    KelPropertiesString& string() { return m_string; }
    const KelPropertiesString& string() const { return m_string; }

    unsigned size() const { return static_cast<unsigned>(m_children.size()); }
    KelProperties* operator[](unsigned index);
    const KelProperties* operator[](unsigned index) const;
    KelProperties* operator[](const QString& name);
    const KelProperties* operator[](const QString& name) const;
    KelProperties* at(unsigned index) { return (*this)[index]; }
    const KelProperties* at(unsigned index) const { return (*this)[index]; }
    KelProperties* at(const QString& name) { return (*this)[name]; }
    const KelProperties* at(const QString& name) const { return (*this)[name]; }
    KelProperties* front();
    const KelProperties* front() const;
    KelProperties* back();
    const KelProperties* back() const;

    // The first child of that name; a missing one is made through `makeChild`
    // and inserted as owned. When `makeChild` refuses, the failure is reported
    // through `ensure` and a plain node of that name and type is inserted instead.
    KelProperties& child(const QString& name, const QString& type);
    const KelProperties& child(const QString& name, const QString& type) const;

    bool isMember(const KelProperties* child) const;
    int indexOf(const KelProperties* child) const;

private:
    struct Child {
        KelProperties* node;
        bool member;
    };
    // Takes a direct child out of the list without freeing it.
    void detach(KelProperties* child);
    // The node whose direct child `node` is, searching this subtree.
    KelProperties* holderOf(const KelProperties* node);

    QString m_name;
    QString m_type;
    KelPropertiesString m_string;
    KelProperties* m_parent = nullptr;
    std::vector<Child> m_children;
    // Set while this node is destroyed or moved to another parent: the old
    // parent's `remove` then lets it go instead of freeing it.
    bool m_dying = false;
    bool m_moving = false;
};

// Writes a QString to a standard stream as UTF-8.
ORV_CORE_EXPORT std::ostream& operator<<(std::ostream& os, const QString& text);
