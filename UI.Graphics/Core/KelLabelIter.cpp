#include "KelLabelIter.h"

KelLabelIter::KelLabelIter(KelModifiedGroup& group)
    : KelProperties(group)
    , m_labels(*this, QStringLiteral("labels"), QStringList())
{
    setType(QStringLiteral("labels"));
    rename(QStringLiteral("labels.1"));
}

KelLabelIter::KelLabelIter(const KelLabelIter& other)
    : KelProperties(other)
    , KelLabelIterInterface(other)
    , m_labels(*this, QStringLiteral("labels"), QStringList())
{
}

KelLabelIter& KelLabelIter::operator=(const KelLabelIter& other)
{
    KelProperties::operator=(other);
    reset();
    return *this;
}

KelLabelIter::~KelLabelIter() = default;

QStringList KelLabelIter::labels() const
{
    return cachedLabels();
}

void KelLabelIter::setLabels(const QStringList& labels)
{
    m_labels.set(labels);
    setModified();
    reset();
}

bool KelLabelIter::next()
{
    if (m_position + 1 >= cachedLabels().size()) {
        m_position = cachedLabels().size();
        return false;
    }
    ++m_position;
    return true;
}

void KelLabelIter::reset()
{
    m_position = -1;
}

QString KelLabelIter::currentLabel() const
{
    const QStringList& labels = cachedLabels();
    return m_position >= 0 && m_position < labels.size() ? labels[m_position] : QString();
}

const QStringList& KelLabelIter::cachedLabels() const
{
    if (m_cacheRevision != string().revision()) {
        m_cache = m_labels.get();
        m_cacheRevision = string().revision();
    }
    return m_cache;
}
