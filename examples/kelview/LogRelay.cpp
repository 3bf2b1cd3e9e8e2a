#include "LogRelay.h"

#include <iostream>

namespace kelview {

namespace {

const char* streamName(orvdebug::Stream stream)
{
    switch (stream) {
    case orvdebug::Stream::Ensure: return "ensure";
    case orvdebug::Stream::Out: return "dout";
    case orvdebug::Stream::Err: return "derr";
    case orvdebug::Stream::Log: return "dlog";
    }
    return "?";
}

// As the logger writes a message without a sink of its own.
void writeToStderr(const orvdebug::Message& message)
{
    std::cerr << '[' << streamName(message.stream);
    if (!message.tag.empty())
        std::cerr << ':' << message.tag;
    std::cerr << "] " << message.text << '\n';
}

// The window tells warnings apart by where it shows them, not by a shouted prefix.
QString textForTheUser(const orvdebug::Message& message)
{
    QString text = QString::fromStdString(message.text).trimmed();
    const QString prefix = QStringLiteral("WARNING: ");
    if (text.startsWith(prefix))
        text.remove(0, prefix.size());
    return text;
}

} // namespace

LogRelay::LogRelay(Receiver receiver)
    : m_logger(kel::debug_logger::debuglogger())
    , m_previous(m_logger.sink())
{
    m_logger.setSink([previous = m_previous, receiver = std::move(receiver)](const orvdebug::Message& message) {
        if (previous)
            previous(message);
        else
            writeToStderr(message);
        if (isForTheUser(message))
            receiver(textForTheUser(message));
    });
}

LogRelay::~LogRelay()
{
    m_logger.setSink(m_previous);
}

bool LogRelay::isForTheUser(const orvdebug::Message& message)
{
    return message.stream == orvdebug::Stream::Err ||
           (message.stream == orvdebug::Stream::Out && message.tag == "Err");
}

} // namespace kelview
