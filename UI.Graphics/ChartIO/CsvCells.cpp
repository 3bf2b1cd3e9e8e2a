#include "CsvCells_p.h"

#include <fast_float/fast_float.h>

#include <array>
#include <cctype>
#include <string>

namespace Orv::Chart {

namespace {

bool isBlank(char c)
{
    return c == ' ' || c == '\t';
}

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool equalsIgnoringCase(std::string_view text, std::string_view lower)
{
    if (text.size() != lower.size())
        return false;
    for (std::size_t i = 0; i < text.size(); ++i)
        if (std::tolower(static_cast<unsigned char>(text[i])) != lower[i])
            return false;
    return true;
}

bool parsePlain(std::string_view cell, float& value)
{
    if (!cell.empty() && cell.front() == '+')
        cell.remove_prefix(1);
    if (cell.empty())
        return false;
    double number = 0.0;
    const auto result = fast_float::from_chars(cell.data(), cell.data() + cell.size(), number);
    value = static_cast<float>(number);
    return result.ec == std::errc() && result.ptr == cell.data() + cell.size();
}

bool removePrefix(std::string_view& text, std::string_view prefix)
{
    if (text.substr(0, prefix.size()) != prefix)
        return false;
    text.remove_prefix(prefix.size());
    return true;
}

// "$", "€", "£", "¥" in UTF-8, with any blanks after it.
bool removeCurrency(std::string_view& text)
{
    static constexpr std::array<std::string_view, 4> signs = {"$", "\xE2\x82\xAC", "\xC2\xA3", "\xC2\xA5"};
    for (std::string_view sign : signs) {
        if (removePrefix(text, sign)) {
            while (!text.empty() && isBlank(text.front()))
                text.remove_prefix(1);
            return true;
        }
    }
    return false;
}

// "1,234,567.5" without its commas; nothing unless every group after the first has three digits.
bool ungroup(std::string_view digits, std::string& plain)
{
    const std::size_t point = std::min(digits.find_first_of(".eE"), digits.size());
    const std::string_view whole = digits.substr(0, point);
    std::size_t run = 0;
    bool grouped = false;
    for (const char c : whole) {
        if (c == ',') {
            if (run == 0 || (grouped && run != 3) || run > 3)
                return false;
            grouped = true;
            run = 0;
        } else if (isDigit(c)) {
            ++run;
        } else {
            return false;
        }
    }
    if (!grouped || run != 3)
        return false;
    for (char c : whole)
        if (c != ',')
            plain += c;
    plain.append(digits.substr(point));
    return true;
}

bool parseDecorated(std::string_view cell, float& value, unsigned& marks)
{
    unsigned found = PlainNumber;
    std::string plain;
    if (!cell.empty() && (cell.front() == '-' || cell.front() == '+')) {
        plain += cell.front();
        cell.remove_prefix(1);
    }
    if (removeCurrency(cell))
        found |= CurrencySign;
    if (plain.empty() && !cell.empty() && cell.front() == '-') {
        plain += '-';
        cell.remove_prefix(1);
    }
    if (!cell.empty() && cell.back() == '%') {
        found |= PercentSign;
        cell.remove_suffix(1);
        while (!cell.empty() && isBlank(cell.back()))
            cell.remove_suffix(1);
    }
    if (cell.find(',') != std::string_view::npos) {
        if (!ungroup(cell, plain))
            return false;
        found |= GroupedDigits;
    } else {
        plain.append(cell);
    }
    if (found == PlainNumber || !parsePlain(plain, value))
        return false;
    marks |= found;
    return true;
}

// "1.234.567,5" as "1234567.5": points must group digits by three before the comma.
bool swapMarks(std::string_view cell, std::string& plain)
{
    const std::size_t comma = std::min(cell.find(','), cell.size());
    std::size_t run = 0;
    bool grouped = false;
    for (std::size_t i = 0; i < comma; ++i) {
        if (cell[i] == '.') {
            if (run == 0 || run > 3 || (grouped && run != 3))
                return false;
            grouped = true;
            run = 0;
            continue;
        }
        run = isDigit(cell[i]) ? run + 1 : run;
        plain += cell[i];
    }
    if (grouped && run != 3)
        return false;
    if (comma < cell.size())
        plain.append(".").append(cell.substr(comma + 1));
    return cell.find(',', comma + 1) == std::string_view::npos;
}

// Digits, then the mark, then digits, with an optional sign in front.
bool isDecimal(std::string_view cell, char mark)
{
    if (!cell.empty() && (cell.front() == '-' || cell.front() == '+'))
        cell.remove_prefix(1);
    const std::size_t at = cell.find(mark);
    if (at == 0 || at == std::string_view::npos || at + 1 == cell.size())
        return false;
    for (std::size_t i = 0; i < cell.size(); ++i)
        if (i != at && !isDigit(cell[i]))
            return false;
    return true;
}

} // namespace

bool hasDecimalComma(std::string_view cell)
{
    return isDecimal(cell, ',');
}

bool hasDecimalPoint(std::string_view cell)
{
    return isDecimal(cell, '.');
}

bool parseCellNumber(std::string_view cell, float& value, unsigned& marks, bool decimalComma)
{
    if (!decimalComma)
        return parseCellNumber(cell, value, marks);
    std::string plain;
    plain.reserve(cell.size());
    return swapMarks(cell, plain) && parseCellNumber(plain, value, marks);
}

std::string_view trimmedCell(std::string_view cell)
{
    while (!cell.empty() && isBlank(cell.front()))
        cell.remove_prefix(1);
    while (!cell.empty() && isBlank(cell.back()))
        cell.remove_suffix(1);
    return cell;
}

bool isMissingCell(std::string_view cell)
{
    if (cell.empty())
        return true;
    // Numbers, by far the most cells, start with a digit; no marker does.
    if (cell.size() > 4 || isDigit(cell.front()))
        return false;
    static constexpr std::array<std::string_view, 11> markers = {"na", "n/a", "nan", "null", "none", "#n/a",
                                                                 "#na", "-",  "--",  ".",    "?"};
    for (std::string_view marker : markers)
        if (equalsIgnoringCase(cell, marker))
            return true;
    return false;
}

bool parseCellNumber(std::string_view cell, float& value, unsigned& marks)
{
    if (parsePlain(cell, value))
        return true;
    return parseDecorated(cell, value, marks);
}

} // namespace Orv::Chart
