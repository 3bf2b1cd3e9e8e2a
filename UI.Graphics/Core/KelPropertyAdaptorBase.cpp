#include "KelPropertyAdaptorBase.h"

KelPropertyAdaptorBase::KelPropertyAdaptorBase(KelProperties& owner, const QString& name)
    : m_owner(&owner)
    , m_name(name)
{
}

QString KelPropertyAdaptorBase::getUnit() const
{
    const KelProperties* node = m_owner.get();
    return node ? node->string().getUnit(m_name, QString()) : QString();
}

void KelPropertyAdaptorBase::setUnit(const QString& unit)
{
    if (KelProperties* node = m_owner.get()) {
        node->string().setUnit(m_name, unit);
        node->setModified();
    }
}

QString KelPropertyAdaptorBase::getString() const
{
    const KelProperties* node = m_owner.get();
    return node ? node->string().getString(m_name) : QString();
}

bool KelPropertyAdaptorBase::modified() const
{
    const KelProperties* node = m_owner.get();
    return node && node->string().revision() != m_seenRevision;
}

bool KelPropertyAdaptorBase::cachable() const
{
    return true;
}

void KelPropertyAdaptorBase::reset() const
{
    if (const KelProperties* node = m_owner.get())
        m_seenRevision = node->string().revision();
}
