#include "KelChartPropertyChoices.h"

#include "KelChart.h"
#include "KelChartLegend.h"
#include "KelChartVariableStyle.h"
#include "KelProperties.h"

namespace {

struct Vocabulary {
    const QStringList* offered;
    // Single words the library defines beside the published list (a stored
    // "gradient" line or "dtriangle" symbol is valid even though the lists
    // leave them out or spell them differently).
    QStringList alsoAccepted;
    bool list;
    const char* what;
};

const Vocabulary* vocabularyOf(const KelProperties& node, const QString& name)
{
    static const Vocabulary plotStyle{&KelChart::styles, {}, false, "plot style"};
    static const Vocabulary line{&KelChart::lines, {KelChart::lineDashDashDot, KelChart::lineGradient}, true,
                                 "line pattern"};
    static const Vocabulary fill{&KelChart::fills, {}, true, "fill pattern"};
    static const Vocabulary symbol{&KelChart::symbols,
                                   {KelChart::symbolDTriangle, KelChart::symbolUTriangle, KelChart::symbolLTriangle,
                                    KelChart::symbolRTriangle},
                                   true, "symbol"};
    static const Vocabulary legend{&KelChart::legends, {}, false, "legend orientation"};

    if (node.type() == KelChartLegend::typeString)
        return name == QLatin1String("style") ? &legend : nullptr;
    if (node.type() != KelChartVariableStyle::typeString)
        return nullptr;
    if (name == QLatin1String("style"))
        return &plotStyle;
    if (name == QLatin1String("line"))
        return &line;
    if (name == QLatin1String("fill") || name == QLatin1String("symbolFill"))
        return &fill;
    if (name == QLatin1String("symbol"))
        return &symbol;
    return nullptr;
}

// The entries of a list text, read with the store's own list syntax; false
// when the text is no valid list.
bool splitList(const QString& text, QStringList& entries)
{
    KelPropertiesString scratch;
    const QString name = QStringLiteral("entries");
    scratch.setValue(name, QStringList());
    if (!scratch.setValue(name, text).isEmpty())
        return false;
    return scratch.getValue(name, entries, QStringList()).isEmpty();
}

} // namespace

QStringList KelChartPropertyChoices::words(const KelProperties& node, const QString& name)
{
    const Vocabulary* vocabulary = vocabularyOf(node, name);
    return vocabulary ? *vocabulary->offered : QStringList();
}

bool KelChartPropertyChoices::isList(const KelProperties& node, const QString& name)
{
    const Vocabulary* vocabulary = vocabularyOf(node, name);
    return vocabulary && vocabulary->list;
}

QString KelChartPropertyChoices::check(const KelProperties& node, const QString& name, const QString& text)
{
    const Vocabulary* vocabulary = vocabularyOf(node, name);
    if (!vocabulary)
        return {};
    QStringList entries;
    if (!vocabulary->list)
        entries.append(text);
    else if (!splitList(text, entries))
        return QStringLiteral("cannot read \"%1\" as a list of words for \"%2\"").arg(text, name);
    for (const QString& entry : entries) {
        if (!vocabulary->offered->contains(entry) && !vocabulary->alsoAccepted.contains(entry))
            return QStringLiteral("\"%1\" is not a %2 for \"%3\"; expected one of: %4")
                .arg(entry, QLatin1String(vocabulary->what), name, vocabulary->offered->join(QStringLiteral(", ")));
    }
    return {};
}
