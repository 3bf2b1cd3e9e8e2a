#pragma once
// Debug logger of the host application: consistency reports (`ensure`), the
// `dout`, `derr` and `dlog` streams, and scoped traces.
//
// Every message is delivered whole to the logger's sink together with its
// stream and tag. The default sink writes enabled streams to stderr; `ensure`,
// `dout` and `derr` are enabled by default and `dlog` is off. Tests install a
// `ScopedCapture` to collect messages in memory.
//
// A disabled stream costs next to nothing: `dbgostream` allocates no buffer and
// `buffer()` hands out a stream that discards its input. Callers that format in
// a loop ask `enabled()` first and skip the formatting altogether.

#include "OrvDebugExport.h"

#include <functional>
#include <ostream>
#include <sstream>
#include <string>
#include <vector>

// The enclosing function's full signature, as `ensure` texts and traces show it.
#define ORV_FUNCTION_SIGNATURE std::string(__PRETTY_FUNCTION__)

namespace orvdebug {

enum class Stream { Ensure, Out, Err, Log };

struct ORVDEBUG_EXPORT Message {
    Stream stream;
    std::string tag;
    std::string text;
    bool operator==(const Message& other) const
    {
        return stream == other.stream && tag == other.tag && text == other.text;
    }
};

using Sink = std::function<void(const Message&)>;

class logger;

// One message in the making. Text goes to `buffer()`; `std::endl` written
// through `operator<<` below ends the message and hands it to the logger.
// Text left unended when the object dies is delivered too, so nothing is lost.
class ORVDEBUG_EXPORT dbgostream {
public:
    dbgostream(logger& owner, Stream stream, std::string tag);
    dbgostream(dbgostream&& other) noexcept;
    dbgostream(const dbgostream&) = delete;
    dbgostream& operator=(const dbgostream&) = delete;
    dbgostream& operator=(dbgostream&&) = delete;
    ~dbgostream();

    std::ostream& buffer();
    bool enabled() const { return m_text != nullptr; }
    void flush();

private:
    logger* m_owner;
    Stream m_stream;
    std::string m_tag;
    std::ostringstream* m_text; // null while the stream is disabled
};

// Manipulators (`std::endl`, `std::flush`) end the current message.
ORVDEBUG_EXPORT dbgostream& operator<<(dbgostream& stream, std::ostream& (*manipulator)(std::ostream&));
ORVDEBUG_EXPORT dbgostream& operator<<(dbgostream&& stream, std::ostream& (*manipulator)(std::ostream&));

class ORVDEBUG_EXPORT logger {
public:
    logger();

    // Reports a failed consistency test; `text` is the condition in double
    // quotes, " - " and the signature. Does nothing when `condition` is true.
    void ensure(bool condition, const std::string& text);

    dbgostream dout(const std::string& tag = std::string());
    dbgostream derr(const std::string& tag = std::string());
    dbgostream dlog(const std::string& tag = std::string());

    bool enabled(Stream stream) const { return m_enabled[index(stream)]; }
    void setEnabled(Stream stream, bool on) { m_enabled[index(stream)] = on; }

    // Replaces the sink; an empty sink restores the default (stderr).
    void setSink(Sink sink);
    const Sink& sink() const { return m_sink; }

    void write(Stream stream, const std::string& tag, const std::string& text);

private:
    static int index(Stream stream) { return static_cast<int>(stream); }
    bool m_enabled[4];
    Sink m_sink;
};

// Writes "enter <signature><where>" on construction and "leave <signature><where>"
// on destruction to the `dlog` stream, when that stream is enabled.
class ORVDEBUG_EXPORT trace {
public:
    trace(logger& owner, std::string signature, std::string where);
    ~trace();
    trace(const trace&) = delete;
    trace& operator=(const trace&) = delete;

private:
    logger& m_owner;
    std::string m_signature;
    std::string m_where;
};

// Collects every message in memory while it lives, with all streams enabled,
// and restores the logger's sink and switches afterwards.
class ORVDEBUG_EXPORT ScopedCapture {
public:
    explicit ScopedCapture(logger& owner);
    ~ScopedCapture();
    ScopedCapture(const ScopedCapture&) = delete;
    ScopedCapture& operator=(const ScopedCapture&) = delete;

    const std::vector<Message>& messages() const { return m_messages; }
    std::vector<std::string> texts(Stream stream) const;
    void clear() { m_messages.clear(); }

private:
    logger& m_owner;
    Sink m_previousSink;
    bool m_previousEnabled[4];
    std::vector<Message> m_messages;
};

} // namespace orvdebug

namespace kel::debug_logger {
// The process's logger.
ORVDEBUG_EXPORT orvdebug::logger& debuglogger();
} // namespace kel::debug_logger
