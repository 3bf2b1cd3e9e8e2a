#pragma once
// Converts values between units given as text ("degC", "km/h", "kg m-3") and
// knows the preferred unit of each dimension of a unit system. Handed out as
// `boost::shared_ptr<IUnitsConverter>`; implementations are immutable after
// construction, so one converter may be shared freely.
//
// An empty `from` or `to`, or equal texts, mean "no conversion": the call
// succeeds and the values stay as they are. Units of different dimensions and
// texts that are not units are refused: the call gives false and the values
// stay as they are. Nothing is ever guessed.

#include "OrvCoreExport.h"

#include <QString>

#include <algorithm>
#include <cstddef>

class ORV_CORE_EXPORT IUnitsConverter {
public:
    virtual ~IUnitsConverter() = default;

    virtual bool convertible(const QString& from, const QString& to) const = 0;
    virtual bool convert(double& value, const QString& from, const QString& to) const = 0;
    // Converts `count` values in place in one call.
    virtual bool convert(double* values, std::size_t count, const QString& from, const QString& to) const = 0;
    // The same for float arrays. The default goes through the double overload
    // in small chunks; implementations with a native float path override it.
    virtual bool convert(float* values, std::size_t count, const QString& from, const QString& to) const;
    // The unit system's preferred unit of the same dimension as `unit`, or
    // `unit` itself when the system has none for it.
    virtual QString preferredUnit(const QString& unit) const = 0;

protected:
    IUnitsConverter() = default;
    IUnitsConverter(const IUnitsConverter&) = default;
    IUnitsConverter& operator=(const IUnitsConverter&) = default;
};

inline bool IUnitsConverter::convert(float* values, std::size_t count, const QString& from,
                                     const QString& to) const
{
    if (!convertible(from, to))
        return false;
    constexpr std::size_t chunkSize = 512;
    double chunk[chunkSize];
    for (std::size_t start = 0; start < count; start += chunkSize) {
        const std::size_t n = std::min(chunkSize, count - start);
        std::copy(values + start, values + start + n, chunk);
        if (!convert(chunk, n, from, to))
            return false;
        std::transform(chunk, chunk + n, values + start, [](double v) { return static_cast<float>(v); });
    }
    return true;
}

// Whether a conversion between the two texts is the identity without asking
// any converter.
inline bool isIdentityConversion(const QString& from, const QString& to)
{
    return from.isEmpty() || to.isEmpty() || from == to;
}
