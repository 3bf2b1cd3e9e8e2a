#pragma once
// Hands the warnings and data errors of the library's debug logger to the
// window while it lives, so that the user sees them and not only a terminal.
// Every message still goes where it went before: to the sink that was set, or
// to stderr.

#include "OrvDebug.h"

#include <QString>

#include <functional>

namespace kelview {

class LogRelay {
public:
    using Receiver = std::function<void(const QString& warning)>;

    explicit LogRelay(Receiver receiver);
    ~LogRelay();
    LogRelay(const LogRelay&) = delete;
    LogRelay& operator=(const LogRelay&) = delete;

    // Whether the user should see the message: warnings ("WARNING: ..." on
    // derr) and data errors (dout tagged "Err"), not traces or checks.
    static bool isForTheUser(const orvdebug::Message& message);

private:
    orvdebug::logger& m_logger;
    orvdebug::Sink m_previous;
};

} // namespace kelview
