#pragma once
// The texts of the host's debug output, formatted in one place:
//   - a failed consistency check: `ensure` with "\"condition\" - signature";
//   - a warning: one message on `derr`, "WARNING: " and the text;
//   - a data error: one message on `dout` with the tag "Err";
//   - trace lines: messages on `dlog`, formatted only while that stream is on.
// Every function writes to the process's logger. Parts are written as a
// standard stream writes them (QString through the framework's operator<<).

#include "OrvDebug.h"

#include <string>
#include <string_view>

// Reports "\"cond\" - <signature>" through `ensure` when `cond` is false, then goes on.
#define ORV_ENSURE(cond)                                                                 \
    do {                                                                                 \
        if (!(cond))                                                                     \
            ::orvdebug::ensureFailed(#cond, ORV_FUNCTION_SIGNATURE);                     \
    } while (false)

namespace orvdebug {

// "\"condition\" - signature", the text of a failed consistency check.
ORVDEBUG_EXPORT std::string ensureText(std::string_view condition, std::string_view signature);

// Reports the failed check `condition` of the function `signature` and returns.
ORVDEBUG_EXPORT void ensureFailed(std::string_view condition, std::string_view signature);

// "WARNING: condition - signature" followed by `where` (for example " @line 99").
ORVDEBUG_EXPORT void warnFailed(std::string_view condition, std::string_view signature,
                                std::string_view where = {});

// One message on `stream` with `tag`, made of `parts`; nothing is formatted
// while the stream is off.
template <class... Parts>
void message(Stream stream, const std::string& tag, const Parts&... parts)
{
    logger& owner = kel::debug_logger::debuglogger();
    if (!owner.enabled(stream))
        return;
    dbgostream out(owner, stream, tag);
    (out.buffer() << ... << parts);
    out << std::endl;
}

// "WARNING: " and `parts`, on `derr` with an empty tag.
template <class... Parts>
void warning(const Parts&... parts)
{
    message(Stream::Err, std::string(), "WARNING: ", parts...);
}

// `parts` on `dout` with the tag "Err".
template <class... Parts>
void dataError(const Parts&... parts)
{
    message(Stream::Out, "Err", parts...);
}

// The trace of one computation on `dlog`. `line` writes a whole message;
// `item` adds a text ended by "\n" to the message in the making, which the
// next `line` ends. While `dlog` is off every call is a single branch.
class ORVDEBUG_EXPORT TraceLines {
public:
    TraceLines();

    bool enabled() const { return m_stream.enabled(); }

    template <class... Parts>
    void line(const Parts&... parts)
    {
        if (!enabled())
            return;
        (m_stream.buffer() << ... << parts);
        m_stream << std::endl;
    }

    template <class... Parts>
    void item(const Parts&... parts)
    {
        if (enabled())
            (m_stream.buffer() << ... << parts) << '\n';
    }

private:
    dbgostream m_stream;
};

} // namespace orvdebug
