#include "LocaleText.h"

#include "NumberText.h"

#include <algorithm>
#include <array>

namespace Orv::Chart::LocaleText {

namespace {

// Integer parts from this many digits on are grouped.
constexpr int groupedDigits = 5;
// More digits than a long long holds are written digit by digit, ungrouped.
constexpr int longestGroupedDigits = 18;

constexpr std::array<const char*, 12> monthNames = {"January",   "February", "March",    "April",
                                                    "May",       "June",     "July",     "August",
                                                    "September", "October",  "November", "December"};
// In QLocale's order: 1 is Monday.
constexpr std::array<const char*, 7> weekdayNames = {"Monday", "Tuesday",  "Wednesday", "Thursday",
                                                     "Friday", "Saturday", "Sunday"};

// The index of `word` among `names`, written in full or as its first three
// letters ("May" among those is short); -1 for none.
template <std::size_t n>
int nameIndex(const QString& word, const std::array<const char*, n>& names, QLocale::FormatType& format)
{
    format = word.size() == 3 ? QLocale::ShortFormat : QLocale::LongFormat;
    for (std::size_t i = 0; i < n; ++i) {
        const QLatin1String name(names[i]);
        if (word == name || (word.size() == 3 && name.startsWith(word)))
            return static_cast<int>(i);
    }
    return -1;
}

bool isDigit(QChar c)
{
    return c >= QLatin1Char('0') && c <= QLatin1Char('9');
}

bool isLetter(QChar c)
{
    return (c >= QLatin1Char('a') && c <= QLatin1Char('z')) || (c >= QLatin1Char('A') && c <= QLatin1Char('Z'));
}

// The position after the run of ASCII digits starting at `from`.
int digitsEnd(const QString& text, int from)
{
    while (from < text.size() && isDigit(text[from]))
        ++from;
    return from;
}

// A C-locale number of a label: [sign] digits [. digits] [e [sign] digits].
struct Number {
    QChar sign;
    QString integer;
    QString fraction;
    bool hasExponent = false;
    QChar exponentSign;
    QString exponent;
};

class Writer {
public:
    // With `numbers` false, numbers are kept as they are written.
    Writer(const QLocale& locale, bool numbers)
        : m_locale(locale)
        , m_numbers(numbers)
    {
        for (int d = 0; d < 10; ++d)
            m_digits[d] = locale.toString(d);
    }

    QString translated(const QString& text) const;

private:
    // A sign belongs to a number only at the start of the text or of a word;
    // between digits ("2012-03") it separates fields.
    static bool signStartsNumber(const QString& text, int at);
    static Number readNumber(const QString& text, int& at);
    QString written(const Number& number) const;
    QString sign(QChar c) const;
    QString digits(const QString& run) const;
    QString integerPart(const QString& run) const;
    QString word(const QString& text, int from, int to) const;

    const QLocale& m_locale;
    const bool m_numbers;
    std::array<QString, 10> m_digits;
};

bool Writer::signStartsNumber(const QString& text, int at)
{
    const QChar c = text[at];
    if ((c != QLatin1Char('-') && c != QLatin1Char('+')) || at + 1 >= text.size() || !isDigit(text[at + 1]))
        return false;
    return at == 0 || text[at - 1].isSpace() || text[at - 1] == QLatin1Char('(');
}

Number Writer::readNumber(const QString& text, int& at)
{
    Number number;
    if (!isDigit(text[at]))
        number.sign = text[at++];
    int end = digitsEnd(text, at);
    number.integer = text.mid(at, end - at);
    at = end;
    if (at + 1 < text.size() && text[at] == QLatin1Char('.') && isDigit(text[at + 1])) {
        end = digitsEnd(text, at + 1);
        number.fraction = text.mid(at + 1, end - at - 1);
        at = end;
    }
    if (at + 1 < text.size() && (text[at] == QLatin1Char('e') || text[at] == QLatin1Char('E'))) {
        int from = at + 1;
        const QChar sign = text[from];
        if ((sign == QLatin1Char('-') || sign == QLatin1Char('+')) && from + 1 < text.size())
            ++from;
        if (isDigit(text[from])) {
            number.hasExponent = true;
            number.exponentSign = from > at + 1 ? sign : QChar();
            end = digitsEnd(text, from);
            number.exponent = text.mid(from, end - from);
            at = end;
        }
    }
    return number;
}

QString Writer::sign(QChar c) const
{
    if (c == QLatin1Char('-'))
        return {m_locale.negativeSign()};
    if (c == QLatin1Char('+'))
        return {m_locale.positiveSign()};
    return {};
}

QString Writer::digits(const QString& run) const
{
    QString text;
    for (const QChar c : run)
        text += m_digits[c.digitValue()];
    return text;
}

// Grouped as the locale groups from five digits on; a zero-padded field never.
QString Writer::integerPart(const QString& run) const
{
    if (run.size() < groupedDigits || run.size() > longestGroupedDigits || run.startsWith(QLatin1Char('0')))
        return digits(run);
    return m_locale.toString(run.toLongLong());
}

QString Writer::written(const Number& number) const
{
    QString text = sign(number.sign) + integerPart(number.integer);
    if (!number.fraction.isEmpty())
        text += QString(m_locale.decimalPoint()) + digits(number.fraction);
    if (number.hasExponent)
        text += QString(m_locale.exponential()) + sign(number.exponentSign) + digits(number.exponent);
    return text;
}

// A month alone in its label is named as it stands alone; beside a day, as in a date.
QString Writer::word(const QString& text, int from, int to) const
{
    QString name = text.mid(from, to - from);
    QLocale::FormatType format = QLocale::ShortFormat;
    if (const int month = nameIndex(name, monthNames, format) + 1; month > 0)
        return text.trimmed() == name ? m_locale.standaloneMonthName(month, format) : m_locale.monthName(month, format);
    if (const int day = nameIndex(name, weekdayNames, format) + 1; day > 0)
        return m_locale.dayName(day, format);
    return name;
}

QString Writer::translated(const QString& text) const
{
    QString result;
    int at = 0;
    while (at < text.size()) {
        if (m_numbers && (isDigit(text[at]) || signStartsNumber(text, at))) {
            result += written(readNumber(text, at));
        } else if (isLetter(text[at])) {
            int end = at;
            while (end < text.size() && isLetter(text[end]))
                ++end;
            result += word(text, at, end);
            at = end;
        } else {
            result += text[at++];
        }
    }
    return result;
}

bool onlyZeros(const QString& text)
{
    return std::none_of(text.begin(), text.end(), [](QChar c) { return isDigit(c) && c != QLatin1Char('0'); });
}

} // namespace

QString label(const QString& cLocaleLabel, const QLocale& locale)
{
    if (locale.language() == QLocale::C)
        return cLocaleLabel;
    return Writer(locale, true).translated(cLocaleLabel);
}

QString names(const QString& text, const QLocale& locale)
{
    if (locale.language() == QLocale::C)
        return text;
    return Writer(locale, false).translated(text);
}

QString number(double value, const QLocale& locale)
{
    return label(numberText(value), locale);
}

QString number(double value, int decimals, const QLocale& locale)
{
    QString text = QString::number(value, 'f', std::max(0, decimals));
    if (text.startsWith(QLatin1Char('-')) && onlyZeros(text))
        text.remove(0, 1);
    return label(text, locale);
}

} // namespace Orv::Chart::LocaleText
