#pragma once
// The units converter of the framework, backed by the UDUNITS-2 library and
// its unit database. The database is loaded once per process, on first use,
// and shared by all converters together with a cache of parsed units and
// converters. Calls into the library are serialised, so converters may be
// used from several threads.
//
// Unit texts are read as UDUNITS-2 expressions in UTF-8 ("m", "km/h",
// "kg m-3", "degC", "°F"); blanks around the text are ignored.

#include "OrvCoreExport.h"
#include "IUnitsConverter.h"

#include <QStringList>

#include <memory>

class ORV_CORE_EXPORT KelUnitsConverter : public IUnitsConverter {
public:
    // `preferredUnits` are tried in order by `preferredUnit`; texts that are
    // not units are skipped.
    explicit KelUnitsConverter(const QStringList& preferredUnits = QStringList());
    ~KelUnitsConverter() override;

    bool convertible(const QString& from, const QString& to) const override;
    bool convert(double& value, const QString& from, const QString& to) const override;
    bool convert(double* values, std::size_t count, const QString& from, const QString& to) const override;
    bool convert(float* values, std::size_t count, const QString& from, const QString& to) const override;
    QString preferredUnit(const QString& unit) const override;

    const QStringList& preferredUnits() const { return m_preferredUnits; }
    // Whether `text` is a unit the database knows.
    bool isUnit(const QString& text) const;
    // False when the unit database could not be loaded; every conversion
    // other than the identity is then refused.
    static bool databaseAvailable();

private:
    class Database;
    std::shared_ptr<Database> m_database;
    QStringList m_preferredUnits;
};
