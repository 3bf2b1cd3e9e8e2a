#include "OrvDebug.h"

#include <iostream>

namespace orvdebug {

namespace {

std::ostream& nullStream()
{
    // A stream without a buffer is in a failed state and drops every write cheaply.
    static std::ostream discard(nullptr);
    return discard;
}

const char* streamName(Stream stream)
{
    switch (stream) {
    case Stream::Ensure: return "ensure";
    case Stream::Out: return "dout";
    case Stream::Err: return "derr";
    case Stream::Log: return "dlog";
    }
    return "?";
}

void writeToStderr(const Message& message)
{
    std::cerr << '[' << streamName(message.stream);
    if (!message.tag.empty())
        std::cerr << ':' << message.tag;
    std::cerr << "] " << message.text << '\n';
}

} // namespace

dbgostream::dbgostream(logger& owner, Stream stream, std::string tag)
    : m_owner(&owner)
    , m_stream(stream)
    , m_tag(std::move(tag))
    , m_text(owner.enabled(stream) ? new std::ostringstream : nullptr)
{
}

dbgostream::dbgostream(dbgostream&& other) noexcept
    : m_owner(other.m_owner)
    , m_stream(other.m_stream)
    , m_tag(std::move(other.m_tag))
    , m_text(other.m_text)
{
    other.m_text = nullptr;
}

dbgostream::~dbgostream()
{
    if (m_text && !m_text->str().empty())
        flush();
    delete m_text;
}

std::ostream& dbgostream::buffer()
{
    return m_text ? *m_text : nullStream();
}

void dbgostream::flush()
{
    if (!m_text)
        return;
    m_owner->write(m_stream, m_tag, m_text->str());
    m_text->str(std::string());
    m_text->clear();
}

dbgostream& operator<<(dbgostream& stream, std::ostream& (*manipulator)(std::ostream&))
{
    stream.flush();
    (void)manipulator;
    return stream;
}

dbgostream& operator<<(dbgostream&& stream, std::ostream& (*manipulator)(std::ostream&))
{
    return stream << manipulator;
}

logger::logger()
    : m_enabled{true, true, true, false}
{
}

void logger::ensure(bool condition, const std::string& text)
{
    if (!condition)
        write(Stream::Ensure, std::string(), text);
}

dbgostream logger::dout(const std::string& tag) { return {*this, Stream::Out, tag}; }
dbgostream logger::derr(const std::string& tag) { return {*this, Stream::Err, tag}; }
dbgostream logger::dlog(const std::string& tag) { return {*this, Stream::Log, tag}; }

void logger::setSink(Sink sink) { m_sink = std::move(sink); }

void logger::write(Stream stream, const std::string& tag, const std::string& text)
{
    if (!enabled(stream))
        return;
    const Message message{stream, tag, text};
    if (m_sink)
        m_sink(message);
    else
        writeToStderr(message);
}

trace::trace(logger& owner, std::string signature, std::string where)
    : m_owner(owner)
    , m_signature(std::move(signature))
    , m_where(std::move(where))
{
    if (m_owner.enabled(Stream::Log))
        m_owner.write(Stream::Log, std::string(), "enter " + m_signature + m_where);
}

trace::~trace()
{
    if (m_owner.enabled(Stream::Log))
        m_owner.write(Stream::Log, std::string(), "leave " + m_signature + m_where);
}

ScopedCapture::ScopedCapture(logger& owner)
    : m_owner(owner)
    , m_previousSink(owner.sink())
{
    for (int i = 0; i < 4; ++i) {
        const auto stream = static_cast<Stream>(i);
        m_previousEnabled[i] = owner.enabled(stream);
        owner.setEnabled(stream, true);
    }
    owner.setSink([this](const Message& message) { m_messages.push_back(message); });
}

ScopedCapture::~ScopedCapture()
{
    m_owner.setSink(m_previousSink);
    for (int i = 0; i < 4; ++i)
        m_owner.setEnabled(static_cast<Stream>(i), m_previousEnabled[i]);
}

std::vector<std::string> ScopedCapture::texts(Stream stream) const
{
    std::vector<std::string> result;
    for (const Message& message : m_messages)
        if (message.stream == stream)
            result.push_back(message.text);
    return result;
}

} // namespace orvdebug

namespace kel::debug_logger {

orvdebug::logger& debuglogger()
{
    static orvdebug::logger instance;
    return instance;
}

} // namespace kel::debug_logger
