#pragma once
// Guesses how a CSV file is written from its first lines: the separator
// (comma, semicolon, tab, bar, or runs of blanks), comment lines above the
// header, and whether there is a header line at all. Each guess yields to the
// user's options.

#include "CsvImport.h"

#include <QByteArray>

namespace Orv::Chart {

struct CsvDialect {
    // The character between fields; with `blankRuns`, any run of spaces and tabs.
    char separator = ',';
    bool blankRuns = false;
    // Lines starting with '#' above the first line of the table.
    int commentLines = 0;
    bool header = true;
    // Numbers write "3,5" for 3.5: guessed where fields are not separated by commas.
    bool decimalComma = false;
};

// The lines of `head` that the guess may use: `complete` says whether the
// head holds the whole file (its last line is then whole too).
CsvDialect guessDialect(const QByteArray& head, bool complete, const CsvOptions& options);

// Blanks the comment lines at the start of `head`, keeping their line ends so that line numbers stay.
void blankCommentLines(QByteArray& head, int count);

// Turns runs of blanks between fields into single tabs while the text streams
// through, leaving quoted fields as they are; blanks at line starts and ends go.
class BlankRunFilter {
public:
    QByteArray apply(const QByteArray& block);

private:
    bool m_quoted = false;
    bool m_lineStart = true;
    bool m_pendingBlank = false;
};

} // namespace Orv::Chart
