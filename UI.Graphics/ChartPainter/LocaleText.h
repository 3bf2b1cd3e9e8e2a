#pragma once
// Texts of the chart model in a reader's locale. The model writes its tick
// labels, offset texts and factors in the C locale ("0.5", "-1.25", "1e-7",
// "Mar", "Tue 14", "2012-03-14 12:00"); a host draws them through these
// functions in the locale it was given:
//   - each number is written with the locale's digits, signs, decimal point
//     and exponent symbol, keeping its digits and number of decimals exactly
//     (the text is rewritten, never read back into a double): "0.50" becomes
//     "0,50" in German;
//   - an integer part of five digits or more is grouped as the locale groups
//     ("1.000.000", "12 345"); shorter ones are not, so that years and
//     four-digit values stay compact ("2012", "1500"); a locale whose number
//     options omit the group separator (the C locale) never groups;
//   - a zero-padded field ("03" of "2012-03", "06:00") keeps its padding and
//     gets only the locale's digits; a '-' between digits is a separator,
//     not a sign;
//   - the English month and weekday abbreviations ("Mar", "Tue") become the
//     locale's short names, and the full names ("March", "Tuesday") its long
//     ones: a month alone in its label in the standalone form ("Mär"),
//     otherwise, as before a day, in the format form ("März", "Di.").
// Everything else (words, punctuation, superscripts) is kept. The C locale
// gives every text back unchanged. Texts the user wrote (titles, category
// names) are not the model's and are not meant to go through here.

#include "OrvChartPainterExport.h"

#include <QLocale>
#include <QString>

namespace Orv::Chart::LocaleText {

// A C-locale label of the model in `locale`.
ORV_CHARTPAINTER_EXPORT QString label(const QString& cLocaleLabel, const QLocale& locale);

// Only the month and weekday names of `text` in `locale`, its numbers as they
// are: for texts written in a format of the user's, such as a time axis's
// label format, where "14.03." is a date and no decimal.
ORV_CHARTPAINTER_EXPORT QString names(const QString& text, const QLocale& locale);

// `value` in its shortest text that reads back exactly (see numberText), in `locale`.
ORV_CHARTPAINTER_EXPORT QString number(double value, const QLocale& locale);

// `value` with `decimals` digits after the decimal point (0 or more), in
// `locale`; a value that rounds to zero has no sign.
ORV_CHARTPAINTER_EXPORT QString number(double value, int decimals, const QLocale& locale);

} // namespace Orv::Chart::LocaleText
