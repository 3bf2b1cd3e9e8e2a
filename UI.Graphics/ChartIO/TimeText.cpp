#include "TimeText.h"

#include <QHash>
#include <QRegularExpression>
#include <QLocale>
#include <QStringView>

// The calendar library rounds the seconds it read even when the read failed
// and the result is thrown away; GCC warns about that value.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"
#include <date/date.h>
#pragma GCC diagnostic pop

#include <algorithm>
#include <array>
#include <chrono>
#include <locale>
#include <regex>
#include <sstream>
#include <string_view>

namespace Orv::Chart {

namespace {

using std::chrono::microseconds;
using std::chrono::minutes;

constexpr std::int64_t microsecondsPerSecond = 1000000;
constexpr std::int64_t microsecondsPerMinute = 60 * microsecondsPerSecond;
constexpr std::int64_t microsecondsPerHour = 60 * microsecondsPerMinute;

// Long enough for the longest month name, "september".
using WordBuffer = std::array<char, 9>;

bool isDigit(QChar c)
{
    return c.unicode() >= u'0' && c.unicode() <= u'9';
}

bool isLetter(QChar c)
{
    const char16_t code = c.unicode();
    return (code >= u'a' && code <= u'z') || (code >= u'A' && code <= u'Z');
}

// ASCII letters in lower case; everything else as it is, so that no other
// character can pass for a letter.
char16_t lowered(QChar c)
{
    const char16_t code = c.unicode();
    return code >= u'A' && code <= u'Z' ? static_cast<char16_t>(code - u'A' + u'a') : code;
}

enum class Meridiem { None, Am, Pm };

// Reads a text from left to right without copying it. Any read that fails
// ends the attempt, so reads need not restore the position.
class Scanner {
public:
    explicit Scanner(QStringView text)
        : m_at(text.begin())
        , m_end(text.end())
    {
    }

    bool atEnd() const { return m_at == m_end; }

    // Consumes `c` if it comes next; letters in either case.
    bool accept(char c)
    {
        if (atEnd() || lowered(*m_at) != static_cast<char16_t>(c))
            return false;
        ++m_at;
        return true;
    }

    // Consumes a run of blanks; whether there was one.
    bool skipBlanks()
    {
        const QChar* start = m_at;
        while (!atEnd() && m_at->isSpace())
            ++m_at;
        return m_at != start;
    }

    int digitsAhead() const
    {
        int count = 0;
        for (const QChar* at = m_at; at != m_end && isDigit(*at); ++at)
            ++count;
        return count;
    }

    // The number that a whole run of `minDigits` to `maxDigits` digits gives. A
    // longer run does not match: "20120101" is not a year followed by more.
    std::optional<int> number(int minDigits, int maxDigits)
    {
        const int count = digitsAhead();
        if (count < minDigits || count > maxDigits)
            return std::nullopt;
        int value = 0;
        for (int i = 0; i < count; ++i, ++m_at)
            value = value * 10 + (m_at->unicode() - u'0');
        return value;
    }

    // The digits after a decimal point in microseconds, rounded to the nearest.
    std::optional<std::int64_t> fraction()
    {
        if (digitsAhead() == 0)
            return std::nullopt;
        constexpr int kept = 7; // one digit beyond microseconds, for the rounding
        std::int64_t tenths = 0;
        int digits = 0;
        for (; !atEnd() && isDigit(*m_at); ++m_at, ++digits) {
            if (digits < kept)
                tenths = tenths * 10 + (m_at->unicode() - u'0');
        }
        for (; digits < kept; ++digits)
            tenths *= 10;
        return (tenths + 5) / 10;
    }

    // "AM" or "PM" in either case, perhaps after blanks and not followed by a letter; consumed only
    // when it is there, so that blanks before a zone are left to it.
    Meridiem meridiem()
    {
        const QChar* at = m_at;
        while (at != m_end && at->isSpace())
            ++at;
        if (m_end - at < 2 || lowered(at[1]) != u'm' || (m_end - at > 2 && isLetter(at[2])))
            return Meridiem::None;
        const char16_t first = lowered(at[0]);
        const Meridiem found = first == u'a' ? Meridiem::Am : first == u'p' ? Meridiem::Pm : Meridiem::None;
        if (found != Meridiem::None)
            m_at = at + 2;
        return found;
    }

    // The run of ASCII letters that comes next, lower-cased into `buffer` and
    // consumed; empty when there is none or it does not fit.
    std::string_view word(WordBuffer& buffer)
    {
        std::size_t length = 0;
        const QChar* at = m_at;
        for (; at != m_end && isLetter(*at); ++at) {
            if (length == buffer.size())
                return {};
            buffer[length++] = static_cast<char>(lowered(*at));
        }
        m_at = at;
        return {buffer.data(), length};
    }

private:
    const QChar* m_at;
    const QChar* m_end;
};

// What a text states, before it becomes a count of microseconds.
struct Stamp {
    date::year_month_day day;
    std::int64_t timeOfDay = 0; // microseconds after midnight
    minutes offset{0}; // east of UTC
    bool hasOffset = false;
};

std::optional<Stamp> stampOf(std::optional<date::year_month_day> day)
{
    if (!day)
        return std::nullopt;
    Stamp stamp;
    stamp.day = *day;
    return stamp;
}

// The day of a calendar, when every field was read and the day exists.
std::optional<date::year_month_day> calendarDay(std::optional<int> year, std::optional<int> month,
                                                std::optional<int> day)
{
    if (!year || !month || !day)
        return std::nullopt;
    const date::year_month_day calendar{date::year{*year}, date::month{static_cast<unsigned>(*month)},
                                        date::day{static_cast<unsigned>(*day)}};
    return calendar.ok() ? std::optional(calendar) : std::nullopt;
}

// A year of four digits, or of two read as "%y" reads them: 69-99 are 1969-1999, 00-68 are 2000-2068.
std::optional<int> twoOrFourDigitYear(Scanner& scanner)
{
    if (scanner.digitsAhead() != 2)
        return scanner.number(4, 4);
    const int twoDigits = *scanner.number(2, 2);
    return twoDigits >= 69 ? 1900 + twoDigits : 2000 + twoDigits;
}

std::optional<int> monthNamed(std::string_view word)
{
    static constexpr std::array<std::string_view, 12> names{
        "january", "february", "march", "april", "may", "june",
        "july", "august", "september", "october", "november", "december"};
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (word == names[i] || (word.size() == 3 && names[i].substr(0, 3) == word))
            return static_cast<int>(i) + 1;
    }
    if (word == "sept")
        return 9;
    return std::nullopt;
}

std::optional<int> monthName(Scanner& scanner)
{
    WordBuffer buffer;
    return monthNamed(scanner.word(buffer));
}

// Fields of a date are separated by a dash or by blanks, the same kind
// throughout; a comma may come before the blanks ("Jan 1, 2000").
enum class Separator { None, Dash, Blanks };

Separator separator(Scanner& scanner)
{
    if (scanner.accept('-'))
        return Separator::Dash;
    const bool comma = scanner.accept(',');
    return scanner.skipBlanks() || comma ? Separator::Blanks : Separator::None;
}

// The hour on a 24-hour clock of an hour read with "AM" or "PM" (1 to 12), or as it is without.
std::optional<int> hourOfDay(std::optional<int> hour, Meridiem meridiem)
{
    if (!hour || meridiem == Meridiem::None)
        return hour;
    if (*hour < 1 || *hour > 12)
        return std::nullopt;
    return *hour % 12 + (meridiem == Meridiem::Pm ? 12 : 0);
}

// "14:05", "9:05", "14:05:30", "14:05:30.25", "2:05 PM"; "24:00" is the end of the day.
std::optional<std::int64_t> timeOfDay(Scanner& scanner)
{
    const std::optional<int> clockHour = scanner.number(1, 2);
    const std::optional<int> minute = clockHour && scanner.accept(':') ? scanner.number(2, 2) : std::nullopt;
    if (!minute)
        return std::nullopt;
    std::optional<int> second = 0;
    std::optional<std::int64_t> fraction = 0;
    if (scanner.accept(':')) {
        second = scanner.number(2, 2);
        if (scanner.accept('.') || scanner.accept(','))
            fraction = scanner.fraction();
    }
    const std::optional<int> hour = hourOfDay(clockHour, scanner.meridiem());
    if (!hour || !second || !fraction)
        return std::nullopt;
    const bool withinDay = *hour < 24 && *minute < 60 && *second < 60;
    const bool endOfDay = *hour == 24 && *minute == 0 && *second == 0 && *fraction == 0;
    if (!withinDay && !endOfDay)
        return std::nullopt;
    return *hour * microsecondsPerHour + *minute * microsecondsPerMinute + *second * microsecondsPerSecond + *fraction;
}

// "Z", or an offset east of UTC: "+05:45", "-0300", "+05", perhaps after blanks.
std::optional<minutes> zone(Scanner& scanner)
{
    if (scanner.accept('z'))
        return minutes{0};
    scanner.skipBlanks();
    const int sign = scanner.accept('+') ? 1 : scanner.accept('-') ? -1 : 0;
    std::optional<int> hours;
    std::optional<int> mins = 0;
    if (scanner.digitsAhead() == 4) {
        const int hhmm = *scanner.number(4, 4);
        hours = hhmm / 100;
        mins = hhmm % 100;
    } else {
        hours = scanner.number(2, 2);
        if (scanner.accept(':'))
            mins = scanner.number(2, 2);
    }
    if (sign == 0 || !hours || !mins || *hours > 23 || *mins > 59)
        return std::nullopt;
    return minutes{sign * (*hours * 60 + *mins)};
}

// A day, perhaps followed by a time of day and then a zone; `iso` lets a "T"
// stand between day and time.
std::optional<Stamp> dayAndTime(Scanner& scanner, std::optional<date::year_month_day> day, bool iso)
{
    std::optional<Stamp> stamp = stampOf(day);
    if (!stamp || scanner.atEnd())
        return stamp;
    const bool separated = (iso && scanner.accept('t')) || scanner.skipBlanks();
    const std::optional<std::int64_t> time = separated ? timeOfDay(scanner) : std::nullopt;
    if (!time)
        return std::nullopt;
    stamp->timeOfDay = *time;
    if (scanner.atEnd())
        return stamp;
    const std::optional<minutes> offset = zone(scanner);
    if (!offset)
        return std::nullopt;
    stamp->offset = *offset;
    stamp->hasOffset = true;
    return stamp;
}

std::optional<Stamp> quarterStart(int year, std::optional<int> quarter)
{
    if (!quarter || *quarter < 1 || *quarter > 4)
        return std::nullopt;
    return stampOf(calendarDay(year, 3 * *quarter - 2, 1));
}

// "2013/08/29", "2013/8/29 12:06".
std::optional<Stamp> yearSlashMonthSlashDay(Scanner& scanner, int year)
{
    const std::optional<int> month = scanner.number(1, 2);
    const std::optional<int> day = scanner.accept('/') ? scanner.number(1, 2) : std::nullopt;
    return dayAndTime(scanner, calendarDay(year, month, day), false);
}

// "2012-01-01" with a time perhaps, "2012-03", "1974Q1", "1974 Q1", "1974-Q3", "2013/08/29".
std::optional<Stamp> yearFirst(Scanner& scanner)
{
    const int year = *scanner.number(4, 4);
    if (scanner.accept('/'))
        return yearSlashMonthSlashDay(scanner, year);
    const bool dash = scanner.accept('-');
    if (!dash)
        scanner.skipBlanks();
    if (scanner.accept('q'))
        return quarterStart(year, scanner.number(1, 1));
    if (!dash)
        return std::nullopt;
    const std::optional<int> month = scanner.number(2, 2);
    if (!scanner.accept('-'))
        return stampOf(calendarDay(year, month, 1));
    const std::optional<int> day = scanner.number(2, 2);
    return dayAndTime(scanner, calendarDay(year, month, day), true);
}

// "Jan 1 2000", "Jan 1, 2000", "January 1 2000", "Jan-1-1995", "Jan 2000".
std::optional<Stamp> monthFirst(Scanner& scanner)
{
    const std::optional<int> month = monthName(scanner);
    const Separator first = separator(scanner);
    if (!month || first == Separator::None)
        return std::nullopt;
    if (scanner.digitsAhead() == 4)
        return stampOf(calendarDay(scanner.number(4, 4), month, 1));
    const std::optional<int> day = scanner.number(1, 2);
    if (separator(scanner) != first)
        return std::nullopt;
    return dayAndTime(scanner, calendarDay(scanner.number(4, 4), month, day), false);
}

// The rest of "1 Jan 2000", "1-Jan-2000", "19-Sep-03" after the day.
std::optional<Stamp> dayMonthNameYear(Scanner& scanner, int day)
{
    const Separator first = separator(scanner);
    const std::optional<int> month = monthName(scanner);
    if (first == Separator::None || separator(scanner) != first)
        return std::nullopt;
    return dayAndTime(scanner, calendarDay(twoOrFourDigitYear(scanner), month, day), false);
}

// The rest of "7/29/2016", "1/31/85" after the first number and the slash, which is the month or the
// day as `order` says.
std::optional<Stamp> slashDate(Scanner& scanner, int first, DateOrder order)
{
    const std::optional<int> second = scanner.number(1, 2);
    if (!second || !scanner.accept('/'))
        return std::nullopt;
    const bool monthComesFirst = order == DateOrder::MonthFirst;
    const int month = monthComesFirst ? first : *second;
    const int day = monthComesFirst ? *second : first;
    return dayAndTime(scanner, calendarDay(twoOrFourDigitYear(scanner), month, day), false);
}

// The rest of "31.01.1985", "31.1.1985" after the day and the dot. Two-digit years are refused: "1.2.12"
// is more likely a version than a date.
std::optional<Stamp> dottedDate(Scanner& scanner, int day)
{
    const std::optional<int> month = scanner.number(1, 2);
    const std::optional<int> year = scanner.accept('.') ? scanner.number(4, 4) : std::nullopt;
    return dayAndTime(scanner, calendarDay(year, month, day), false);
}

// Dates that start with a day or, in slash dates, a month of one or two digits.
std::optional<Stamp> shortNumberFirst(Scanner& scanner, DateOrder order)
{
    const std::optional<int> first = scanner.number(1, 2);
    if (!first)
        return std::nullopt;
    if (scanner.accept('/'))
        return slashDate(scanner, *first, order);
    if (scanner.accept('.'))
        return dottedDate(scanner, *first);
    return dayMonthNameYear(scanner, *first);
}

std::optional<Stamp> readStamp(Scanner& scanner, DateOrder order)
{
    const int digits = scanner.digitsAhead();
    if (digits == 4)
        return yearFirst(scanner);
    return digits > 0 ? shortNumberFirst(scanner, order) : monthFirst(scanner);
}

// A wall-clock time, or a UTC instant when it was read with an offset.
ParsedTime parsedTime(microseconds wallClock, minutes offset, bool hasOffset)
{
    ParsedTime time;
    time.microseconds = (wallClock - (hasOffset ? offset : minutes{0})).count();
    time.utc = hasOffset;
    return time;
}

std::optional<ParsedTime> parseAutomatic(QStringView text, DateOrder order)
{
    Scanner scanner(text);
    const std::optional<Stamp> stamp = readStamp(scanner, order);
    if (!stamp || !scanner.atEnd())
        return std::nullopt;
    const microseconds wallClock = date::sys_days(stamp->day).time_since_epoch() + microseconds(stamp->timeOfDay);
    return parsedTime(wallClock, stamp->offset, stamp->hasOffset);
}

// The whole of `text` read with a format that has no offset field.
std::optional<microseconds> parseWallClock(const std::string& format, const std::string& text)
{
    std::istringstream in(text);
    in.imbue(std::locale::classic());
    date::local_time<microseconds> wallClock;
    date::from_stream(in, format.c_str(), wallClock);
    if (in.fail() || in.peek() != std::istringstream::traits_type::eof())
        return std::nullopt;
    return wallClock.time_since_epoch();
}

// The whole of `text` read with a format; an offset at its end ("%z": "+0530", "-03:00") makes the time a
// UTC instant. The offset is read here, not by the calendar library, which overflows on a sign without
// digits; an offset field anywhere else matches nothing.
std::optional<ParsedTime> parseWithFormat(const std::string& format, const QString& text)
{
    static const std::regex offsetField("%[EO]?z$");
    static const std::regex anyOffsetField("%[EO]?z");
    static const QRegularExpression offsetText(QStringLiteral("([+-])(\\d\\d):?(\\d\\d)?$"));
    std::smatch field;
    if (!std::regex_search(format, field, offsetField)) {
        if (format.find('z') != std::string::npos && std::regex_search(format, anyOffsetField))
            return std::nullopt;
        const std::optional<microseconds> wallClock = parseWallClock(format, text.toStdString());
        if (!wallClock)
            return std::nullopt;
        return parsedTime(*wallClock, minutes(0), false);
    }
    const QRegularExpressionMatch offset = offsetText.match(text);
    if (!offset.hasMatch())
        return std::nullopt;
    const std::optional<microseconds> wallClock =
        parseWallClock(format.substr(0, static_cast<std::size_t>(field.position(0))),
                       text.left(offset.capturedStart(0)).toStdString());
    if (!wallClock)
        return std::nullopt;
    const int sign = offset.captured(1) == QLatin1String("-") ? -1 : 1;
    const minutes shift(sign * (offset.captured(2).toInt() * 60 + offset.captured(3).toInt()));
    return parsedTime(*wallClock, shift, true);
}

// Whether `text` starts with a number of one or two digits and a slash, as "1/2/2016" does and
// "2013/08/29" does not.
bool startsAsSlashDate(QStringView text)
{
    Scanner scanner(text);
    return scanner.number(1, 2) && scanner.accept('/');
}

bool isMissing(QStringView cell)
{
    return cell.isEmpty() || cell.compare(QLatin1String("nan"), Qt::CaseInsensitive) == 0;
}

bool isPlainNumber(QStringView cell)
{
    bool ok = false;
    QLocale::c().toDouble(cell, &ok);
    return ok;
}

// The locale's composite fields spelled out as the C locale writes them: the calendar library reads some of
// them (%c) with undefined behaviour on malformed text, and a data file's dates do not depend on our locale.
// Field widths keep at most two digits, as no field is wider and the library overflows on longer ones.
QString explicitFormat(const QString& format)
{
    static const QHash<QChar, QString> composites = {
        {QLatin1Char('c'), QStringLiteral("%a %b %d %H:%M:%S %Y")}, {QLatin1Char('x'), QStringLiteral("%m/%d/%y")},
        {QLatin1Char('X'), QStringLiteral("%H:%M:%S")},             {QLatin1Char('r'), QStringLiteral("%I:%M:%S %p")},
        {QLatin1Char('D'), QStringLiteral("%m/%d/%y")},             {QLatin1Char('T'), QStringLiteral("%H:%M:%S")},
        {QLatin1Char('R'), QStringLiteral("%H:%M")}};
    QString spelled;
    for (int i = 0; i < format.size(); ++i) {
        if (format.at(i) != QLatin1Char('%')) {
            spelled += format.at(i);
            continue;
        }
        // A field: '%', a width, an E or O modifier, the conversion.
        QString field = QStringLiteral("%");
        int digits = 0;
        for (; i + 1 < format.size() && format.at(i + 1).isDigit(); ++i)
            if (++digits <= 2)
                field += format.at(i + 1);
        if (i + 1 < format.size() && (format.at(i + 1) == QLatin1Char('E') || format.at(i + 1) == QLatin1Char('O')))
            field += format.at(++i);
        // A field cut off by the end of the format is a percent sign: the library misreads it.
        if (i + 1 == format.size()) {
            spelled += QStringLiteral("%%");
            break;
        }
        const QChar conversion = format.at(++i);
        spelled += composites.contains(conversion) ? composites.value(conversion) : field + conversion;
    }
    return spelled;
}

} // namespace

TimeText::TimeText(const QString& format, DateOrder order)
    : m_format(explicitFormat(format).toStdString())
    , m_order(order)
{
}

std::optional<ParsedTime> TimeText::parse(const QString& text) const
{
    const QStringView trimmed = QStringView(text).trimmed();
    if (m_format.empty())
        return parseAutomatic(trimmed, m_order);
    return parseWithFormat(m_format, trimmed.toString());
}

bool TimeText::isTimeColumn(const QStringList& cells) const
{
    bool anyTime = false;
    bool allNumbers = true;
    for (const QString& cell : cells) {
        const QStringView text = QStringView(cell).trimmed();
        if (isMissing(text))
            continue;
        if (!parse(cell))
            return false;
        anyTime = true;
        allNumbers = allNumbers && isPlainNumber(text);
    }
    return anyTime && !allNumbers;
}

SlashReading TimeText::slashReading(const QString& text)
{
    const QStringView trimmed = QStringView(text).trimmed();
    if (!startsAsSlashDate(trimmed))
        return SlashReading::NotSlashDate;
    const bool readMonthFirst = parseAutomatic(trimmed, DateOrder::MonthFirst).has_value();
    const bool readDayFirst = parseAutomatic(trimmed, DateOrder::DayFirst).has_value();
    if (readMonthFirst && readDayFirst)
        return SlashReading::Both;
    if (readMonthFirst || readDayFirst)
        return readMonthFirst ? SlashReading::MonthFirstOnly : SlashReading::DayFirstOnly;
    return SlashReading::NotSlashDate;
}

} // namespace Orv::Chart
