#pragma once
// Where the texts of a written SVG or PDF file lie, so that tests can check
// that two writers of one chart (or a printer) put the same texts in the same
// places: the boxes of an SVG document's <text> elements, the words of a PDF
// file as poppler's pdftotext finds them, and a comparison of the two.
//
// A text's box is what its font covers: its advance along the baseline, from
// the ascent above to the descent below it, mapped to the document (a rotated
// text covers a box on its side). pdftotext measures words the same way, from
// the embedded font's ascent and descent, in points from the page's top left.

#include "SvgChecks.h"

#include <QList>
#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <QString>
#include <QStringList>
#include <QTransform>

namespace OrvTest {

struct PlacedText {
    QString text;
    QRectF box;
    // The way the text reads in the document: (1, 0) left to right, (0, -1) upwards.
    QPointF direction{1, 0};
};

// Every non-blank <text> of the document, in document order, measured with
// the font its style names (family, pixel size, weight).
QList<PlacedText> svgTextBoxes(const SvgDocument& document);

// Whether pdftotext can be run.
bool pdftotextFound();

struct PdfPageText {
    QSizeF size; // in points
    QList<PlacedText> words;
};

// Each page of the PDF file with its words (boxes in points); empty, with
// `error` saying why, when pdftotext is missing or fails.
QList<PdfPageText> pdfWords(const QString& path, QString* error);

// The words mapped through `transform` (e.g. from points to a chart's pixels).
QList<PlacedText> mapped(const QList<PlacedText>& words, const QTransform& transform);

// Compares expected texts with the words found: the words whose centres lie
// in a text's box (grown by `tolerance`), read along the text's direction,
// must spell it (blanks aside), and together cover its box to within
// `tolerance` on each side. One line per text missing or misplaced, and one
// per word that no text accounts for; empty when all agree.
QStringList placementFaults(const QList<PlacedText>& expected, const QList<PlacedText>& words, double tolerance);

} // namespace OrvTest
