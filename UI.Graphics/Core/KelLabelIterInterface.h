#pragma once
// Walks a sequence of labels: after `reset()`, every `next()` that gives true
// makes the following label current; false means there is none left.

#include "OrvCoreExport.h"

#include <QString>

class ORV_CORE_EXPORT KelLabelIterInterface {
public:
    virtual bool next() = 0;
    virtual void reset() = 0;
    // The current label; empty before the first `next()` and past the end.
    virtual QString currentLabel() const = 0;

protected:
    KelLabelIterInterface() = default;
    KelLabelIterInterface(const KelLabelIterInterface&) = default;
    KelLabelIterInterface& operator=(const KelLabelIterInterface&) = default;
    ~KelLabelIterInterface() = default;
};
