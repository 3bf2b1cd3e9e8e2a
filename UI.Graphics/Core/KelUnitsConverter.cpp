#include "KelUnitsConverter.h"

#include "OrvDiagnostics.h"

#include <udunits2.h>

#include <map>
#include <mutex>
#include <utility>

namespace {

struct SystemDeleter {
    void operator()(ut_system* system) const { ut_free_system(system); }
};
struct UnitDeleter {
    void operator()(ut_unit* unit) const { ut_free(unit); }
};
struct ConverterDeleter {
    void operator()(cv_converter* converter) const { cv_free(converter); }
};

using SystemPtr = std::unique_ptr<ut_system, SystemDeleter>;
using UnitPtr = std::unique_ptr<ut_unit, UnitDeleter>;
using ConverterPtr = std::unique_ptr<cv_converter, ConverterDeleter>;

// Unit texts come from data files and settings, so there are few of them; the
// bound only keeps a pathological caller from growing the caches forever.
constexpr std::size_t maxCachedEntries = 1024;

} // namespace

// The process's unit database and the cache of what was parsed from it. The
// library keeps global parser state, so every call into it holds the lock.
class KelUnitsConverter::Database {
public:
    static std::shared_ptr<Database> instance()
    {
        static const std::shared_ptr<Database> database(new Database);
        return database;
    }

    bool available() const { return m_system != nullptr; }

    bool isUnit(const QString& text)
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        boundCaches();
        return unit(text) != nullptr;
    }

    // Calls `work` with the converter from `from` to `to` while holding the
    // lock; false without calling it when the conversion is refused.
    template <class Work>
    bool withConverter(const QString& from, const QString& to, Work work)
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        boundCaches();
        const cv_converter* found = converter(from, to);
        if (!found)
            return false;
        work(found);
        return true;
    }

private:
    Database()
    {
        // The library prints its complaints to stderr by default; a refused
        // text is an ordinary answer here, not an error to print.
        ut_set_error_message_handler(ut_ignore);
        m_system.reset(ut_read_xml(nullptr));
        if (!m_system) {
            orvdebug::message(orvdebug::Stream::Err, "Units", "WARNING: the UDUNITS-2 unit database could not be "
                              "loaded (status ", ut_get_status(), "); only identity conversions are possible");
        }
    }

    // Empties a cache that grew too big; only between lookups, as a lookup
    // hands out pointers into the caches.
    void boundCaches()
    {
        if (m_units.size() >= maxCachedEntries)
            m_units.clear();
        if (m_converters.size() >= maxCachedEntries)
            m_converters.clear();
    }

    // A parsed unit, null when the text is not one. Caches refusals too.
    ut_unit* unit(const QString& text)
    {
        auto found = m_units.find(text);
        if (found != m_units.end())
            return found->second.get();
        UnitPtr parsed;
        const QByteArray utf8 = text.trimmed().toUtf8();
        if (m_system && !utf8.isEmpty())
            parsed.reset(ut_parse(m_system.get(), utf8.constData(), UT_UTF8));
        return m_units.emplace(text, std::move(parsed)).first->second.get();
    }

    const cv_converter* converter(const QString& from, const QString& to)
    {
        const auto key = std::make_pair(from, to);
        auto found = m_converters.find(key);
        if (found != m_converters.end())
            return found->second.get();
        ConverterPtr made;
        ut_unit* fromUnit = unit(from);
        ut_unit* toUnit = unit(to);
        if (fromUnit && toUnit && ut_are_convertible(fromUnit, toUnit))
            made.reset(ut_get_converter(fromUnit, toUnit));
        return m_converters.emplace(key, std::move(made)).first->second.get();
    }

    std::mutex m_mutex;
    SystemPtr m_system;
    std::map<QString, UnitPtr> m_units;
    std::map<std::pair<QString, QString>, ConverterPtr> m_converters;
};

KelUnitsConverter::KelUnitsConverter(const QStringList& preferredUnits)
    : m_database(Database::instance())
    , m_preferredUnits(preferredUnits)
{
}

KelUnitsConverter::~KelUnitsConverter() = default;

bool KelUnitsConverter::databaseAvailable()
{
    return Database::instance()->available();
}

bool KelUnitsConverter::isUnit(const QString& text) const
{
    return m_database->isUnit(text);
}

bool KelUnitsConverter::convertible(const QString& from, const QString& to) const
{
    return isIdentityConversion(from, to) || m_database->withConverter(from, to, [](const cv_converter*) {});
}

bool KelUnitsConverter::convert(double& value, const QString& from, const QString& to) const
{
    if (isIdentityConversion(from, to))
        return true;
    return m_database->withConverter(
        from, to, [&value](const cv_converter* converter) { value = cv_convert_double(converter, value); });
}

bool KelUnitsConverter::convert(double* values, std::size_t count, const QString& from, const QString& to) const
{
    if (isIdentityConversion(from, to))
        return true;
    return m_database->withConverter(from, to, [values, count](const cv_converter* converter) {
        if (count > 0)
            cv_convert_doubles(converter, values, count, values);
    });
}

bool KelUnitsConverter::convert(float* values, std::size_t count, const QString& from, const QString& to) const
{
    if (isIdentityConversion(from, to))
        return true;
    return m_database->withConverter(from, to, [values, count](const cv_converter* converter) {
        if (count > 0)
            cv_convert_floats(converter, values, count, values);
    });
}

QString KelUnitsConverter::preferredUnit(const QString& unit) const
{
    if (unit.isEmpty())
        return unit;
    for (const QString& preferred : m_preferredUnits) {
        if (!preferred.isEmpty() && convertible(unit, preferred))
            return preferred;
    }
    return unit;
}
