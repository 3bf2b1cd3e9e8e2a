#pragma once
// Drops the debug logger's messages while it lives. Fuzzed inputs make the
// code under test warn on nearly every run; writing that to stderr would slow
// the fuzzer down and bury its own report.

#include "OrvDebug.h"

class QuietLogger {
public:
    QuietLogger()
        : m_logger(kel::debug_logger::debuglogger())
        , m_previous(m_logger.sink())
    {
        m_logger.setSink([](const orvdebug::Message&) {});
    }
    ~QuietLogger() { m_logger.setSink(m_previous); }
    QuietLogger(const QuietLogger&) = delete;
    QuietLogger& operator=(const QuietLogger&) = delete;

private:
    orvdebug::logger& m_logger;
    orvdebug::Sink m_previous;
};
