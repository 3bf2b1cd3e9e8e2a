#include "KelProperties.h"

#include "OrvDiagnostics.h"

#include <QByteArray>

#include <algorithm>

KelProperties::KelProperties(KelModifiedGroup& group)
    : KelModified(group)
{
}

KelProperties::KelProperties(const KelProperties& other)
    : KelModified(other)
    , kel::Observable(other)
    , m_name(other.m_name)
    , m_type(other.m_type)
    , m_string(other.m_string)
{
}

KelProperties& KelProperties::operator=(const KelProperties& other)
{
    if (this == &other)
        return *this;
    KelModified::operator=(other);
    m_type = other.m_type;
    m_string = other.m_string;
    setModified();
    return *this;
}

// Member children of a derived class are gone by now (each left the list on
// its own). What remains is freed when owned and let go when a member of some
// other object. The list is taken first so that dying children cannot reach it.
KelProperties::~KelProperties()
{
    m_dying = true;
    if (m_parent)
        m_parent->remove(this);
    std::vector<Child> children;
    children.swap(m_children);
    for (const Child& child : children) {
        child.node->m_parent = nullptr;
        if (!child.member)
            delete child.node;
    }
}

bool KelProperties::insert(KelProperties* child, bool member)
{
    if (!child)
        return false;
    for (const KelProperties* node = this; node; node = node->m_parent) {
        if (node == child)
            return false; // the node itself or one of its ancestors: a cycle
    }
    if (KelProperties* oldParent = child->m_parent) {
        child->m_moving = true;
        oldParent->remove(child);
        child->m_moving = false;
        // An overriding `remove` may have kept the child; take it anyway.
        if (child->m_parent)
            child->m_parent->detach(child);
    }
    child->m_parent = this;
    m_children.push_back(Child{child, member});
    setModified();
    return true;
}

bool KelProperties::remove(KelProperties* child)
{
    const int index = indexOf(child);
    if (index < 0)
        return false;
    const bool owned = !m_children[static_cast<unsigned>(index)].member;
    detach(child);
    setModified();
    if (owned && !child->m_dying && !child->m_moving)
        delete child;
    return true;
}

bool KelProperties::erase(KelProperties* child)
{
    if (KelProperties* holder = holderOf(child))
        return holder->remove(child);
    return false;
}

bool KelProperties::rename(const QString& name)
{
    if (name == m_name)
        return true;
    const QString oldName = m_name;
    m_name = name;
    setModified();
    if (m_parent)
        m_parent->onDependentRename(oldName, name);
    return true;
}

void KelProperties::onDependentRename(const QString&, const QString&) {}

QString KelProperties::getValue(const QString& name, QString& value, const QString& defaultValue) const
{
    return m_string.getValue(name, value, defaultValue);
}

QString KelProperties::setValue(const QString& name, const QString& value)
{
    QString diagnostic = m_string.setValue(name, value);
    if (diagnostic.isEmpty())
        setModified();
    return diagnostic;
}

KelProperties* KelProperties::makeChild(const QString& name, const QString& type)
{
    auto* node = new KelProperties(group());
    node->setType(type);
    node->rename(name);
    return node;
}

void KelProperties::setType(const QString& type)
{
    m_type = type;
    setModified();
}

KelProperties* KelProperties::operator[](unsigned index)
{
    return index < m_children.size() ? m_children[index].node : nullptr;
}

const KelProperties* KelProperties::operator[](unsigned index) const
{
    return index < m_children.size() ? m_children[index].node : nullptr;
}

KelProperties* KelProperties::operator[](const QString& name)
{
    const auto it = std::find_if(m_children.begin(), m_children.end(),
                                 [&name](const Child& child) { return child.node->name() == name; });
    return it == m_children.end() ? nullptr : it->node;
}

const KelProperties* KelProperties::operator[](const QString& name) const
{
    return const_cast<KelProperties&>(*this)[name];
}

KelProperties* KelProperties::front()
{
    return m_children.empty() ? nullptr : m_children.front().node;
}

const KelProperties* KelProperties::front() const
{
    return m_children.empty() ? nullptr : m_children.front().node;
}

KelProperties* KelProperties::back()
{
    return m_children.empty() ? nullptr : m_children.back().node;
}

const KelProperties* KelProperties::back() const
{
    return m_children.empty() ? nullptr : m_children.back().node;
}

KelProperties& KelProperties::child(const QString& name, const QString& type)
{
    if (KelProperties* found = (*this)[name])
        return *found;
    KelProperties* made = makeChild(name, type);
    ORV_ENSURE(made != nullptr);
    if (!made)
        made = KelProperties::makeChild(name, type);
    // A fresh node cannot close a cycle, so only an overriding `insert` refuses.
    const bool inserted = insert(made, false);
    ORV_ENSURE(inserted);
    if (!inserted)
        KelProperties::insert(made, false);
    return *made;
}

// Reading a missing child makes it, as the non-const lookup does: the tree is
// filled lazily and a const reader sees the same tree a writer would.
const KelProperties& KelProperties::child(const QString& name, const QString& type) const
{
    return const_cast<KelProperties*>(this)->child(name, type);
}

bool KelProperties::isMember(const KelProperties* child) const
{
    const int index = indexOf(child);
    return index >= 0 && m_children[static_cast<unsigned>(index)].member;
}

int KelProperties::indexOf(const KelProperties* child) const
{
    const auto it = std::find_if(m_children.begin(), m_children.end(),
                                 [child](const Child& entry) { return entry.node == child; });
    return it == m_children.end() ? -1 : static_cast<int>(it - m_children.begin());
}

void KelProperties::detach(KelProperties* child)
{
    const int index = indexOf(child);
    if (index < 0)
        return;
    m_children.erase(m_children.begin() + index);
    child->m_parent = nullptr;
}

// Searches downwards and compares addresses only, so a pointer that is not in
// the subtree is never followed.
KelProperties* KelProperties::holderOf(const KelProperties* node)
{
    if (!node)
        return nullptr;
    if (indexOf(node) >= 0)
        return this;
    for (const Child& child : m_children) {
        if (KelProperties* holder = child.node->holderOf(node))
            return holder;
    }
    return nullptr;
}

std::ostream& operator<<(std::ostream& os, const QString& text)
{
    const QByteArray utf8 = text.toUtf8();
    return os.write(utf8.constData(), utf8.size());
}
