#include "OrvDiagnostics.h"

#include <gtest/gtest.h>

using orvdebug::Message;
using orvdebug::Stream;

namespace {

orvdebug::logger& log() { return kel::debug_logger::debuglogger(); }

void failingCheck(int value)
{
    ORV_ENSURE(value > 0);
}

} // namespace

TEST(Logger, EnsureTextIsQuotedConditionDashSignature)
{
    orvdebug::ScopedCapture capture(log());
    failingCheck(1);
    failingCheck(-1);
    ASSERT_EQ(capture.messages().size(), 1u);
    EXPECT_EQ(capture.messages()[0],
              (Message{Stream::Ensure, "", "\"value > 0\" - void {anonymous}::failingCheck(int)"}));
}

TEST(Logger, MessageEndsAtEndlAndKeepsItsTag)
{
    orvdebug::ScopedCapture capture(log());
    auto err = log().dout("Err");
    err.buffer() << "first " << 1 << "\n" << "line";
    EXPECT_TRUE(capture.messages().empty());
    err << std::endl;
    err.buffer() << "second";
    err << std::endl;
    ASSERT_EQ(capture.messages().size(), 2u);
    EXPECT_EQ(capture.messages()[0], (Message{Stream::Out, "Err", "first 1\nline"}));
    EXPECT_EQ(capture.messages()[1].text, "second");
}

TEST(Logger, UnendedTextIsDeliveredWhenTheStreamDies)
{
    orvdebug::ScopedCapture capture(log());
    log().derr().buffer() << "WARNING: dangling";
    EXPECT_EQ(capture.texts(Stream::Err), std::vector<std::string>{"WARNING: dangling"});
}

TEST(Logger, DisabledStreamDropsEverythingAndAllocatesNoBuffer)
{
    orvdebug::ScopedCapture capture(log());
    log().setEnabled(Stream::Log, false);
    auto stream = log().dlog();
    EXPECT_FALSE(stream.enabled());
    stream.buffer() << "ignored " << 3.5;
    stream << std::endl;
    EXPECT_TRUE(capture.messages().empty());
}

TEST(Logger, CaptureRestoresSwitchesAndDefaultsLeaveDlogOff)
{
    orvdebug::logger fresh;
    EXPECT_TRUE(fresh.enabled(Stream::Ensure));
    EXPECT_TRUE(fresh.enabled(Stream::Out));
    EXPECT_TRUE(fresh.enabled(Stream::Err));
    EXPECT_FALSE(fresh.enabled(Stream::Log));
    {
        orvdebug::ScopedCapture capture(fresh);
        EXPECT_TRUE(fresh.enabled(Stream::Log));
    }
    EXPECT_FALSE(fresh.enabled(Stream::Log));
    EXPECT_FALSE(fresh.sink());
}

TEST(Logger, ScopedTraceWritesEnterAndLeave)
{
    orvdebug::ScopedCapture capture(log());
    {
        orvdebug::trace scope(log(), "void f()", " @line 25");
        log().dlog().buffer() << "inside";
    }
    EXPECT_EQ(capture.texts(Stream::Log),
              (std::vector<std::string>{"enter void f() @line 25", "inside", "leave void f() @line 25"}));
}
