#pragma once
// The chart properties whose values are words of the chart style vocabulary:
// a variable style's plot style, line, fill, symbol and symbol fill, and a
// legend's orientation. The store keeps them as plain text or text lists, so
// the framework takes any word; a property editor checks the words here
// before it writes them and offers the published lists as choices.

#include "OrvChartPropertiesExport.h"

#include <QString>
#include <QStringList>

class KelProperties;

class ORV_CHART_PROPERTIES_EXPORT KelChartPropertyChoices {
public:
    // The words a host offers for the property, in the published order;
    // empty when the property takes free text.
    static QStringList words(const KelProperties& node, const QString& name);
    // Whether the property holds a list of words rather than a single one.
    static bool isList(const KelProperties& node, const QString& name);
    // Empty when `text` names only known words for the property (any text for
    // a property without choices), else a diagnostic naming the first bad word.
    static QString check(const KelProperties& node, const QString& name, const QString& text);
};
