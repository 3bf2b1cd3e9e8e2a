#pragma once
// Modification groups: every property node is built in one and keeps it.
// A group collects the modified state of its nodes and can be locked while a
// host edits many nodes at once; typed accessors then read the store every time.

#include "OrvCoreExport.h"

class ORV_CORE_EXPORT KelModifiedGroup {
public:
    KelModifiedGroup() = default;
    KelModifiedGroup(const KelModifiedGroup&) = delete;
    KelModifiedGroup& operator=(const KelModifiedGroup&) = delete;

    bool locked() const { return m_locked; }
    void setLocked(bool locked) { m_locked = locked; }

    // True once any node of the group changed since the last `setModified(false)`.
    bool modified() const { return m_modified; }
    void setModified(bool modified) { m_modified = modified; }

private:
    bool m_locked = false;
    bool m_modified = false;
};

class ORV_CORE_EXPORT KelModified {
public:
    explicit KelModified(KelModifiedGroup& group) : m_group(&group) {}
    KelModified(const KelModified& other) = default;
    // A node keeps its own group when assigned, so self-assignment is a no-op too.
    KelModified& operator=(const KelModified&) { return *this; } // NOLINT(bugprone-unhandled-self-assignment)
    virtual ~KelModified() = default;

    KelModifiedGroup& group() const { return *m_group; }
    void setModified() { m_group->setModified(true); }

private:
    KelModifiedGroup* m_group;
};
