// The date and time reader on arbitrary text, automatic and with a format
// taken from the input. Any text gives a time or nothing; a time it gives is
// read again the same from the same text, and one read from an ISO 8601 text
// the reader wrote itself comes back exactly.

#include "FuzzInput.h"
#include "FuzzTargets.h"

#include "TimeText.h"

#include <QString>

namespace {

namespace Chart = Orv::Chart;

void checkStable(const Chart::TimeText& reader, const QString& text)
{
    const std::optional<Chart::ParsedTime> first = reader.parse(text);
    const std::optional<Chart::ParsedTime> again = reader.parse(text);
    FUZZ_CHECK(first.has_value() == again.has_value());
    if (first)
        FUZZ_CHECK(first->microseconds == again->microseconds && first->utc == again->utc);
}

} // namespace

int fuzzTimeText(const std::uint8_t* data, std::size_t size)
{
    const QString whole = QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<int>(size));
    // Text before the first line break is a format for the rest.
    const int split = whole.indexOf(QLatin1Char('\n'));
    checkStable(Chart::TimeText(), whole);
    if (split >= 0) {
        const Chart::TimeText formatted(whole.left(split));
        checkStable(formatted, whole.mid(split + 1));
        formatted.isTimeColumn(whole.mid(split + 1).split(QLatin1Char(',')));
    }
    Chart::TimeText().isTimeColumn(whole.split(QLatin1Char(',')));
    return 0;
}

#ifndef ORV_FUZZ_REPLAY
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    return fuzzTimeText(data, size);
}
#endif
