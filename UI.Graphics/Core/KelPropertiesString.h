#pragma once
// The string store of a property node: one value text and one unit text per
// property name, kept in the order the names were first written.
//
// Typed overloads format values into text and parse them back. The store
// remembers the value type of every entry written through a typed overload;
// a later text write by name must parse as that type or it is refused (the
// value stays, and the returned text says why, e.g.
// `cannot read "abc" as double for "lineWidth"`); accepted text is stored in
// the type's own format ("red" becomes "#ff0000"). Untyped entries take any
// text. Readers ignore blanks around a scalar.
//
// Text formats (every value survives a round trip exactly):
//   bool      "true" / "false" (reading also accepts "1" / "0")
//   int, unsigned  decimal, without a plus sign; out of range does not parse
//   double    shortest text that reads back bit for bit ("-0" included);
//             "nan", "-nan", "inf", "-inf" (a NaN keeps its sign, not its payload)
//   QColor    "#rrggbb" when opaque, "#aarrggbb" otherwise, "#aaaarrrrggggbbbb"
//             when a channel is not a whole 8-bit value; "" is the invalid colour;
//             reading also accepts Qt's colour names ("red"); a colour in
//             another colour model (HSV, CMYK) reads back as its RGB equivalent
//   lists     entries joined by ", "; an entry is written in double quotes, with
//             \" \\ \n \r \t escapes, when it is empty or holds a comma, quote,
//             backslash, control character or outer blank. "" is the empty list,
//             "\"\"" the list of one empty string. An unquoted entry is read
//             without its outer blanks and may be neither empty nor hold a quote.
//             Scalar lists (int, double, bool, colour) use the same syntax,
//             every entry in its scalar format; an invalid colour is "\"\"".
// Every getValue/setValue returns an empty text on success, else a diagnostic.
// Text that does not parse, and a name that is not defined, read back as the
// given default (with a diagnostic).

#include "OrvCoreExport.h"

#include <QColor>
#include <QList>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <vector>

class ORV_CORE_EXPORT KelPropertiesString {
public:
    KelPropertiesString();
    KelPropertiesString(const KelPropertiesString& other);
    KelPropertiesString& operator=(const KelPropertiesString& other);
    ~KelPropertiesString();

    bool defined(const QString& name) const;
    QStringList names() const;
    bool remove(const QString& name);

    // The stored unit, or `defaultUnit` when none (or an empty one) is stored.
    QString getUnit(const QString& name, const QString& defaultUnit) const;
    // Defines the name (with an empty value) when it is not defined yet.
    QString setUnit(const QString& name, const QString& unit);

    // The stored value text, empty when the name is not defined.
    QString getString(const QString& name) const;
    // The value type of a typed entry ("bool", "int", "unsigned", "double",
    // "color", "stringlist", "colorlist", "intlist", "doublelist",
    // "boollist"), empty for untyped or undefined names. QString values are
    // untyped: every text is a valid string.
    QString valueType(const QString& name) const;

    QString getValue(const QString& name, QString& value, const QString& defaultValue) const;
    QString getValue(const QString& name, bool& value, bool defaultValue) const;
    QString getValue(const QString& name, int& value, int defaultValue) const;
    QString getValue(const QString& name, unsigned& value, unsigned defaultValue) const;
    QString getValue(const QString& name, double& value, double defaultValue) const;
    QString getValue(const QString& name, QColor& value, const QColor& defaultValue) const;
    QString getValue(const QString& name, QStringList& value, const QStringList& defaultValue) const;
    QString getValue(const QString& name, QList<QColor>& value, const QList<QColor>& defaultValue) const;
    QString getValue(const QString& name, std::vector<int>& value, const std::vector<int>& defaultValue) const;
    QString getValue(const QString& name, std::vector<double>& value, const std::vector<double>& defaultValue) const;
    QString getValue(const QString& name, std::vector<bool>& value, const std::vector<bool>& defaultValue) const;

    // Text by name: validated against the entry's value type when it has one.
    QString setValue(const QString& name, const QString& value);
    QString setValue(const QString& name, const char* value) { return setValue(name, QString::fromUtf8(value)); }
    QString setValue(const QString& name, bool value);
    QString setValue(const QString& name, int value);
    QString setValue(const QString& name, unsigned value);
    QString setValue(const QString& name, double value);
    QString setValue(const QString& name, const QColor& value);
    QString setValue(const QString& name, const QStringList& value);
    QString setValue(const QString& name, const QList<QColor>& value);
    QString setValue(const QString& name, const std::vector<int>& value);
    QString setValue(const QString& name, const std::vector<double>& value);
    QString setValue(const QString& name, const std::vector<bool>& value);

    // Changes whenever a value or unit changes or the store is assigned; never
    // repeats, not even across stores, so a reader can tell that it is stale.
    std::uint64_t revision() const { return m_revision; }

private:
    // Stores of a few dozen names: a linear search over a vector kept in
    // insertion order beats a hash map and gives `names()` for free.
    struct Entry {
        QString name;
        QString value;
        QString unit;
        QString type;
    };
    const Entry* find(const QString& name) const;
    Entry* find(const QString& name);
    Entry& findOrAppend(const QString& name);
    void touch();

    template <class T>
    QString getTyped(const QString& name, T& value, const T& defaultValue) const;
    template <class T>
    QString setTyped(const QString& name, const T& value);

    std::vector<Entry> m_entries;
    std::uint64_t m_revision;
};
