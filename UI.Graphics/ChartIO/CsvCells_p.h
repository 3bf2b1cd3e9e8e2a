#pragma once
// Reading single CSV cells: blanks around them, the many ways files write a
// missing value, and numbers as spreadsheets and reports print them.

#include <string_view>

namespace Orv::Chart {

// What a number cell was written with besides digits; a column keeps the union.
enum NumberMark : unsigned {
    PlainNumber = 0,
    GroupedDigits = 1 << 0, // "100,000"
    PercentSign = 1 << 1,   // "12.5%"
    CurrencySign = 1 << 2,  // "$1,250.00", "-€3", "£ 4"
};

std::string_view trimmedCell(std::string_view cell);

// Empty, or one of the markers statistics programs and spreadsheets write for
// no value: NA, N/A, NaN, null, None, #N/A, #NA, -, --, ., ? (in any case).
bool isMissingCell(std::string_view cell);

// A number, plain ("-1.5e3", "+2") or decorated (grouped digits, a leading
// currency sign, a trailing percent sign); `marks` gains what decorated it.
// "12.5%" reads as 12.5: the column's unit says percent.
bool parseCellNumber(std::string_view cell, float& value, unsigned& marks);
// The same where a comma is the decimal mark and points group digits ("1.234,5"), as European exports write.
bool parseCellNumber(std::string_view cell, float& value, unsigned& marks, bool decimalComma);

// Whether a cell is a number written with a decimal comma ("-3,25"), or with a decimal point ("3.25").
bool hasDecimalComma(std::string_view cell);
bool hasDecimalPoint(std::string_view cell);

} // namespace Orv::Chart
