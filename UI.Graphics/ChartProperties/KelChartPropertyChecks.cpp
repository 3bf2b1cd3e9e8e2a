#include "KelChartPropertyChecks.h"

#include "KelChartAxisContinuous.h"
#include "KelChartAxisDiscrete.h"
#include "KelChartAxisTime.h"
#include "KelChartVariableStyle.h"
#include "KelProperties.h"
#include "KelQuantityTriple.h"

#include <QColor>
#include <QStringList>

#include <cmath>
#include <vector>

namespace {

QString scratchName()
{
    return QStringLiteral("entry");
}

// Defines the scratch entry with a store type, so that text is read exactly as
// the store reads it; false for a type the store does not check (free text).
bool defineTyped(KelPropertiesString& store, const QString& type)
{
    const QString name = scratchName();
    if (type == QLatin1String("bool"))
        store.setValue(name, false);
    else if (type == QLatin1String("int"))
        store.setValue(name, 0);
    else if (type == QLatin1String("unsigned"))
        store.setValue(name, 0u);
    else if (type == QLatin1String("double"))
        store.setValue(name, 0.0);
    else if (type == QLatin1String("color"))
        store.setValue(name, QColor());
    else if (type == QLatin1String("stringlist"))
        store.setValue(name, QStringList());
    else if (type == QLatin1String("colorlist"))
        store.setValue(name, QList<QColor>());
    else if (type == QLatin1String("intlist"))
        store.setValue(name, std::vector<int>());
    else if (type == QLatin1String("doublelist"))
        store.setValue(name, std::vector<double>());
    else if (type == QLatin1String("boollist"))
        store.setValue(name, std::vector<bool>());
    else
        return false;
    return true;
}

bool readsAs(const QString& type, const QString& text)
{
    KelPropertiesString store;
    return !defineTyped(store, type) || store.setValue(scratchName(), text).isEmpty();
}

template <class T>
bool readValue(const QString& text, T& value)
{
    KelPropertiesString store;
    store.setValue(scratchName(), T{});
    return store.setValue(scratchName(), text).isEmpty() && store.getValue(scratchName(), value, T{}).isEmpty();
}

// What a single value of the type looks like, said to someone who never saw the store's type names.
QString notA(const QString& type, const QString& text)
{
    if (type == QLatin1String("bool"))
        return QStringLiteral("\"%1\" is not true or false").arg(text);
    if (type == QLatin1String("int"))
        return QStringLiteral("\"%1\" is not a whole number: write it like 3 or -12").arg(text);
    if (type == QLatin1String("unsigned"))
        return QStringLiteral("\"%1\" is not a whole number of 0 or more: write it like 0 or 12").arg(text);
    if (type == QLatin1String("double"))
        return QStringLiteral("\"%1\" is not a number: write it like 2.5 or 1e-3").arg(text);
    if (type == QLatin1String("color"))
        return QStringLiteral("\"%1\" is not a colour: use a name like red or a code like #3060c0").arg(text);
    return QStringLiteral("\"%1\" cannot be read here").arg(text);
}

QString notAList(const QString& text)
{
    return QStringLiteral("\"%1\" is not a list: separate the entries with commas, and put an entry that "
                          "holds a comma or a quote in double quotes")
        .arg(text);
}

// Why a list text does not read: the first entry that does not, or the list syntax.
QString listProblem(const QString& listType, const QString& text)
{
    QStringList entries;
    if (!readValue(text, entries))
        return notAList(text);
    const QString entryType = listType.chopped(4);
    for (const QString& entry : entries) {
        if (!readsAs(entryType, entry))
            return notA(entryType, entry.trimmed());
    }
    return notAList(text);
}

QString endProblem(const QString& name, double value)
{
    if (std::isfinite(value))
        return {};
    return QStringLiteral("%1 must be a finite number, not %2").arg(name, QString::number(value));
}

QString endProblem(const QString& name, int value)
{
    if (value >= 0)
        return {};
    return QStringLiteral("%1 must be 0 or more: categories count from 0").arg(name);
}

// An axis uses its fixed range only when the lower end lies below the upper
// one; otherwise it scales itself from the data, which looks like the edit
// did nothing.
template <class T>
QString rangeProblem(const KelProperties& node, const QString& name, const QString& text)
{
    T value{};
    if (!readValue(text, value))
        return {};
    if (QString problem = endProblem(name, value); !problem.isEmpty())
        return problem;
    const bool isMin = name == QLatin1String("min");
    const QString otherName = isMin ? QStringLiteral("max") : QStringLiteral("min");
    T other{};
    if (!node.string().getValue(otherName, other, T{}).isEmpty() || (isMin ? value < other : value > other))
        return {};
    const QString now = node.string().getString(otherName);
    return isMin ? QStringLiteral("min must be below max (now %1)").arg(now)
                 : QStringLiteral("max must be above min (now %1)").arg(now);
}

bool isSize(const QString& name)
{
    static const QStringList sizes{QStringLiteral("lineWidth"), QStringLiteral("barWidth"),
                                   QStringLiteral("barTopSize"), QStringLiteral("symbolSize")};
    return sizes.contains(name);
}

// A negative width or size draws nothing, an infinite one nothing sensible.
QString sizeProblem(const QString& name, const QString& text)
{
    std::vector<double> sizes;
    if (!readValue(text, sizes))
        return {};
    for (const double size : sizes) {
        if (!std::isfinite(size))
            return QStringLiteral("%1 must be a finite number, not %2").arg(name, QString::number(size));
        if (size < 0)
            return QStringLiteral("%1 must be 0 or more, not %2").arg(name, QString::number(size));
    }
    return {};
}

// A quantity of three components parses its own text: it is tried on a scratch triple in a group
// of its own, so that the check marks nothing in the tree as changed.
QString tripleProblem(const QString& name, const QString& text)
{
    KelModifiedGroup scratchGroup;
    KelQuantityTriple scratch(scratchGroup);
    scratch.rename(name);
    return scratch.setText(text);
}

} // namespace

QString KelChartPropertyChecks::typeProblem(const QString& valueType, const QString& text)
{
    if (readsAs(valueType, text))
        return {};
    if (valueType.endsWith(QLatin1String("list")))
        return listProblem(valueType, text);
    return notA(valueType, text);
}

QString KelChartPropertyChecks::valueProblem(const KelProperties& node, const QString& name, const QString& text)
{
    if (dynamic_cast<const KelQuantityTriple*>(node.at(name)))
        return tripleProblem(name, text);
    const QString& type = node.type();
    const bool rangeEnd = name == QLatin1String("min") || name == QLatin1String("max");
    if (rangeEnd && (type == KelChartAxisContinuous::typeString || type == KelChartAxisTime::typeString))
        return rangeProblem<double>(node, name, text);
    if (rangeEnd && type == KelChartAxisDiscrete::typeString)
        return rangeProblem<int>(node, name, text);
    if (type == KelChartVariableStyle::typeString && isSize(name))
        return sizeProblem(name, text);
    return {};
}
