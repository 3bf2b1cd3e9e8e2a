#pragma once
// Checks a property editor makes before it writes a text, with reasons in
// plain words. The store reads a text only as its value type and says so in
// its own terms; and it takes values the chart then ignores without a word:
// an axis range whose lower end is not below its upper end makes the axis
// scale itself, a negative line width or symbol size draws nothing. A host
// refuses such texts and tells the user why.

#include "OrvChartPropertiesExport.h"

#include <QString>

class KelProperties;

class ORV_CHART_PROPERTIES_EXPORT KelChartPropertyChecks {
public:
    // Empty when `text` reads as `valueType` (a store type such as "double" or
    // "colorlist"; an empty type takes any text), else why not, naming the
    // first entry of a list that does not read.
    static QString typeProblem(const QString& valueType, const QString& text);
    // Empty when the value `text` gives the property `name` of `node` suits the
    // node's other values, else why not. A text that does not read as the
    // property's type passes here: `typeProblem` answers for it. A child that
    // holds a quantity of three components answers whether the text reads as one.
    static QString valueProblem(const KelProperties& node, const QString& name, const QString& text);
};
