#pragma once
// The region of the view a chart draws into, as fractions of the view, and
// how the content is aligned inside it.

#include "OrvCoreExport.h"
#include "KelProperties.h"
#include "KelStoredValue.h"

class ORV_CORE_EXPORT KelViewport : public KelProperties {
public:
    explicit KelViewport(KelModifiedGroup& group);
    KelViewport(const KelViewport& other);
    KelViewport& operator=(const KelViewport& other);
    ~KelViewport() override;

    // A Qt::Alignment value.
    KelStoredValue<int> alignment;
    // Left and top edges and size, as fractions of the view (0 to 1).
    KelStoredValue<double> x;
    KelStoredValue<double> y;
    KelStoredValue<double> width;
    KelStoredValue<double> height;
};
