#include "OrvDiagnostics.h"

namespace orvdebug {

std::string ensureText(std::string_view condition, std::string_view signature)
{
    std::string text;
    text.reserve(condition.size() + signature.size() + 5);
    text.append("\"").append(condition).append("\" - ").append(signature);
    return text;
}

void ensureFailed(std::string_view condition, std::string_view signature)
{
    kel::debug_logger::debuglogger().ensure(false, ensureText(condition, signature));
}

void warnFailed(std::string_view condition, std::string_view signature, std::string_view where)
{
    warning(condition, " - ", signature, where);
}

TraceLines::TraceLines()
    : m_stream(kel::debug_logger::debuglogger().dlog())
{
}

} // namespace orvdebug
