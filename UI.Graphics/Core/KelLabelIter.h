#pragma once
// A property node holding a list of labels and iterating over them. The
// labels live in the node's store ("labels"), so copies and persistence carry
// them; the iteration position is not stored and starts over in a copy.

#include "OrvCoreExport.h"
#include "KelLabelIterInterface.h"
#include "KelProperties.h"
#include "KelStoredValue.h"

#include <QStringList>

#include <cstdint>

class ORV_CORE_EXPORT KelLabelIter : public KelProperties, public KelLabelIterInterface {
public:
    explicit KelLabelIter(KelModifiedGroup& group);
    KelLabelIter(const KelLabelIter& other);
    KelLabelIter& operator=(const KelLabelIter& other);
    ~KelLabelIter() override;

    QStringList labels() const;
    // Sets the labels and starts the iteration over.
    void setLabels(const QStringList& labels);

    bool next() override;
    void reset() override;
    QString currentLabel() const override;

private:
    // The stored list, parsed again only when the store changed.
    const QStringList& cachedLabels() const;

    KelStoredValue<QStringList> m_labels;
    int m_position = -1;
    mutable QStringList m_cache;
    mutable std::uint64_t m_cacheRevision = 0;
};
