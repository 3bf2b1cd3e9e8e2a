#include "NumberText.h"

#include <charconv>
#include <cmath>

namespace Orv::Chart {

namespace {

// Plain decimals for the magnitudes of everyday data, exponents beyond them.
template <class T>
QString shortest(T value)
{
    const T magnitude = std::fabs(value);
    const bool plain = magnitude == T(0) || (magnitude >= T(1e-5) && magnitude < T(1e16));
    char text[400];
    const std::to_chars_result result = std::to_chars(
        text, text + sizeof text, value, plain ? std::chars_format::fixed : std::chars_format::scientific);
    return QString::fromLatin1(text, static_cast<int>(result.ptr - text));
}

} // namespace

QString numberText(double value)
{
    return shortest(value);
}

QString numberText(float value)
{
    return shortest(value);
}

} // namespace Orv::Chart
