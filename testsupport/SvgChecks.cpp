#include "SvgChecks.h"

#include <QRegularExpression>
#include <QSet>
#include <QXmlStreamReader>
#include <QtMath>

#include <cmath>
#include <initializer_list>
#include <vector>

namespace OrvTest {

namespace {

QSet<QString> names(std::initializer_list<const char*> list)
{
    QSet<QString> set;
    for (const char* name : list)
        set.insert(QLatin1String(name));
    return set;
}

bool isDrawn(const QString& tag)
{
    static const QSet<QString> drawn =
        names({"path", "rect", "circle", "ellipse", "line", "polyline", "polygon", "text", "image", "use"});
    return drawn.contains(tag);
}

// Containers whose content is only referred to, never drawn where it stands.
bool isReferenceOnly(const QString& tag)
{
    static const QSet<QString> hidden =
        names({"defs", "clipPath", "mask", "pattern", "marker", "symbol", "linearGradient", "radialGradient"});
    return hidden.contains(tag);
}

// The style properties an element takes from its ancestors unless it sets them itself.
bool isInherited(const QString& property)
{
    static const QSet<QString> inherited =
        names({"fill", "fill-opacity", "fill-rule", "stroke", "stroke-width", "stroke-opacity", "stroke-linecap",
               "stroke-linejoin", "stroke-dasharray", "stroke-dashoffset", "stroke-miterlimit", "font-family",
               "font-size", "font-style", "font-weight", "text-anchor", "visibility", "color"});
    return inherited.contains(property);
}

// One item of a transform list: "translate(10, 20)", "matrix(1 0 0 1 0 0)", ...
QTransform transformItem(const QString& name, const std::vector<double>& v)
{
    const auto at = [&v](size_t i) { return i < v.size() ? v[i] : 0.0; };
    QTransform t;
    if (name == QLatin1String("matrix") && v.size() == 6)
        return QTransform(v[0], v[1], v[2], v[3], v[4], v[5]);
    if (name == QLatin1String("translate"))
        return t.translate(at(0), at(1));
    if (name == QLatin1String("scale"))
        return t.scale(at(0), v.size() > 1 ? v[1] : at(0));
    if (name == QLatin1String("rotate"))
        return t.translate(at(1), at(2)).rotate(at(0)).translate(-at(1), -at(2));
    if (name == QLatin1String("skewX"))
        return QTransform(1, 0, std::tan(qDegreesToRadians(at(0))), 1, 0, 0);
    if (name == QLatin1String("skewY"))
        return QTransform(1, std::tan(qDegreesToRadians(at(0))), 0, 1, 0, 0);
    return t;
}

// A transform list applies its last item first.
QTransform parseTransform(const QString& text)
{
    static const QRegularExpression item(QStringLiteral("([A-Za-z]+)\\s*\\(([^)]*)\\)"));
    static const QRegularExpression separator(QStringLiteral("[\\s,]+"));
    QTransform result;
    for (auto it = item.globalMatch(text); it.hasNext();) {
        const QRegularExpressionMatch match = it.next();
        std::vector<double> values;
        for (const QString& number : match.captured(2).split(separator, Qt::SkipEmptyParts))
            values.push_back(number.toDouble());
        result = transformItem(match.captured(1), values) * result;
    }
    return result;
}

struct Scope {
    QHash<QString, QString> style;
    QTransform transform;
    bool hidden = false;
};

Scope enter(const Scope& parent, const QString& tag, const QHash<QString, QString>& attributes)
{
    Scope scope = parent;
    scope.hidden = parent.hidden || isReferenceOnly(tag);
    for (auto it = attributes.begin(); it != attributes.end(); ++it)
        if (isInherited(it.key()))
            scope.style.insert(it.key(), it.value());
    // style="fill:#ff0000; stroke:none" overrides the presentation attributes.
    for (const QString& declaration : attributes.value(QStringLiteral("style")).split(QLatin1Char(';'))) {
        const int colon = declaration.indexOf(QLatin1Char(':'));
        if (colon > 0) {
            const QString property = declaration.left(colon).trimmed();
            if (isInherited(property))
                scope.style.insert(property, declaration.mid(colon + 1).trimmed());
        }
    }
    if (attributes.contains(QStringLiteral("transform")))
        scope.transform = parseTransform(attributes.value(QStringLiteral("transform"))) * parent.transform;
    return scope;
}

QList<SvgElement> paintedWith(const SvgDocument& document, const QString& property, const QColor& color)
{
    QList<SvgElement> found;
    for (const SvgElement& element : document.elements) {
        QString value = element.property(property);
        // Unset, a fill is black and a stroke is none.
        if (value.isEmpty() && property == QLatin1String("fill"))
            value = QStringLiteral("black");
        if (value == QLatin1String("currentColor"))
            value = element.property(QStringLiteral("color"));
        if (value.isEmpty() || value == QLatin1String("none"))
            continue;
        const QColor painted(value);
        if (painted.isValid() && painted.rgb() == color.rgb())
            found.append(element);
    }
    return found;
}

} // namespace

SvgDocument parseSvg(const QByteArray& svg)
{
    SvgDocument document;
    QXmlStreamReader reader(svg);
    std::vector<Scope> scopes{Scope()};
    int textDepth = 0; // > 0 inside a listed <text>, whose characters are being gathered
    while (!reader.atEnd()) {
        const QXmlStreamReader::TokenType token = reader.readNext();
        if (token == QXmlStreamReader::StartElement) {
            const QString tag = reader.name().toString();
            QHash<QString, QString> attributes;
            for (const QXmlStreamAttribute& attribute : reader.attributes())
                attributes.insert(attribute.qualifiedName().toString(), attribute.value().toString());
            scopes.push_back(enter(scopes.back(), tag, attributes));
            if (textDepth > 0) {
                ++textDepth;
            } else if (!scopes.back().hidden && isDrawn(tag)) {
                document.elements.append({tag, attributes, scopes.back().style, scopes.back().transform, QString()});
                if (tag == QLatin1String("text"))
                    textDepth = 1;
            }
        } else if (token == QXmlStreamReader::EndElement) {
            scopes.pop_back();
            if (textDepth > 0)
                --textDepth;
        } else if (token == QXmlStreamReader::Characters && textDepth > 0) {
            document.elements.last().text += reader.text().toString();
        }
    }
    if (reader.hasError())
        document.error = QStringLiteral("line %1: %2").arg(reader.lineNumber()).arg(reader.errorString());
    return document;
}

QStringList texts(const SvgDocument& document)
{
    QStringList result;
    for (const SvgElement& element : document.elements)
        if (element.tag == QLatin1String("text"))
            result.append(element.text);
    return result;
}

bool hasText(const SvgDocument& document, const QString& text)
{
    return texts(document).contains(text);
}

QList<SvgElement> elementsFilledWith(const SvgDocument& document, const QColor& color)
{
    return paintedWith(document, QStringLiteral("fill"), color);
}

QList<SvgElement> elementsStrokedWith(const SvgDocument& document, const QColor& color)
{
    return paintedWith(document, QStringLiteral("stroke"), color);
}

} // namespace OrvTest
