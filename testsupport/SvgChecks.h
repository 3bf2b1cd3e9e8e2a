#pragma once
// Checks on an SVG document, for tests of what a chart drawn to SVG holds:
// its texts, and which drawn elements are stroked or filled with a colour.
//
// The document is read into a flat list of the elements that draw something
// (path, rect, line, text, ...), in document order. Each keeps its own
// attributes and, resolved, the style it inherits: QSvgGenerator writes pens,
// brushes and fonts as attributes of enclosing <g> elements, not of the shapes
// themselves. Nothing inside <defs>, <clipPath>, gradients and the like is
// drawn, so none of it is listed.

#include <QByteArray>
#include <QColor>
#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>
#include <QTransform>

namespace OrvTest {

struct SvgElement {
    QString tag;                        // local name: "path", "text", ...
    QHash<QString, QString> attributes; // as written on the element, by qualified name
    QHash<QString, QString> style;      // inherited style properties (fill, stroke, font-size, ...),
                                        // the element's own attributes and style="" overriding its ancestors'
    QTransform transform;               // from the element's coordinates to the document's: its own
                                        // transform and those of every ancestor
    QString text;                       // the characters of a <text>, its <tspan>s included

    // An attribute of the element itself, or empty.
    QString attribute(const QString& name) const { return attributes.value(name); }
    // A style property in effect for the element, or empty if none is set.
    QString property(const QString& name) const { return style.value(name); }
};

struct SvgDocument {
    QList<SvgElement> elements;
    QString error; // why the document could not be read; empty if it was

    bool isValid() const { return error.isEmpty(); }
};

SvgDocument parseSvg(const QByteArray& svg);

// The contents of every <text>, in document order.
QStringList texts(const SvgDocument& document);
bool hasText(const SvgDocument& document, const QString& text);

// The elements whose effective fill or stroke is `color`, compared as RGB
// (opacity is a property of its own, fill-opacity or stroke-opacity). As in
// SVG, an element with no fill set is filled black; one with no stroke is not
// stroked.
QList<SvgElement> elementsFilledWith(const SvgDocument& document, const QColor& color);
QList<SvgElement> elementsStrokedWith(const SvgDocument& document, const QColor& color);

} // namespace OrvTest
