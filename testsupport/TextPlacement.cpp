#include "TextPlacement.h"

#include <QFont>
#include <QFontMetricsF>
#include <QLineF>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QXmlStreamReader>

#include <algorithm>
#include <cmath>
#include <vector>

namespace OrvTest {

namespace {

QFont svgFont(const SvgElement& element)
{
    QFont font(element.property(QStringLiteral("font-family")));
    font.setPixelSize(qRound(element.property(QStringLiteral("font-size")).toDouble()));
    font.setBold(element.property(QStringLiteral("font-weight")).toInt() >= 600);
    const QString style = element.property(QStringLiteral("font-style"));
    font.setItalic(style == QLatin1String("italic") || style == QLatin1String("oblique"));
    return font;
}

// The box of the text without the blanks around it, which cover nothing.
PlacedText svgTextBox(const SvgElement& element)
{
    const QFontMetricsF metrics(svgFont(element));
    const QString trimmed = element.text.trimmed();
    const double lead = metrics.horizontalAdvance(element.text.left(element.text.indexOf(trimmed)));
    const double x = element.attribute(QStringLiteral("x")).toDouble() + lead;
    const double y = element.attribute(QStringLiteral("y")).toDouble();
    const QRectF local(x, y - metrics.ascent(), metrics.horizontalAdvance(trimmed), metrics.ascent() + metrics.descent());
    const QLineF along = element.transform.map(QLineF(0, 0, 1, 0)).unitVector();
    return {trimmed, element.transform.mapRect(local), QPointF(along.dx(), along.dy())};
}

QString describe(const QRectF& box)
{
    return QStringLiteral("(%1, %2; %3 x %4)")
        .arg(box.x(), 0, 'f', 1)
        .arg(box.y(), 0, 'f', 1)
        .arg(box.width(), 0, 'f', 1)
        .arg(box.height(), 0, 'f', 1);
}

bool near(const QRectF& a, const QRectF& b, double tolerance)
{
    return std::abs(a.left() - b.left()) <= tolerance && std::abs(a.right() - b.right()) <= tolerance
           && std::abs(a.top() - b.top()) <= tolerance && std::abs(a.bottom() - b.bottom()) <= tolerance;
}

double attribute(const QXmlStreamReader& xml, const char* name)
{
    return xml.attributes().value(QLatin1String(name)).toString().toDouble();
}

QList<PdfPageText> parsePdfText(const QByteArray& xhtml, QString* error)
{
    QList<PdfPageText> pages;
    QXmlStreamReader xml(xhtml);
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (xml.name() == QLatin1String("page"))
            pages.append({QSizeF(attribute(xml, "width"), attribute(xml, "height")), {}});
        else if (xml.name() == QLatin1String("word") && !pages.isEmpty()) {
            const QRectF box(QPointF(attribute(xml, "xMin"), attribute(xml, "yMin")),
                             QPointF(attribute(xml, "xMax"), attribute(xml, "yMax")));
            pages.last().words.append({xml.readElementText(), box, {1, 0}});
        }
    }
    if (xml.hasError() && error)
        *error = QStringLiteral("pdftotext's output does not read: %1").arg(xml.errorString());
    return xml.hasError() ? QList<PdfPageText>() : pages;
}

// The words whose centres lie in the text's box, in reading order.
QList<int> wordsIn(const PlacedText& text, const QList<PlacedText>& words, double tolerance)
{
    const QRectF grown = text.box.adjusted(-tolerance, -tolerance, tolerance, tolerance);
    QList<int> inside;
    for (int i = 0; i < words.size(); ++i)
        if (grown.contains(words[i].box.center()))
            inside.append(i);
    const auto along = [&](int i) { return QPointF::dotProduct(words[i].box.center(), text.direction); };
    std::sort(inside.begin(), inside.end(), [&](int a, int b) { return along(a) < along(b); });
    return inside;
}

QString withoutBlanks(QString text)
{
    return text.remove(QRegularExpression(QStringLiteral("\\s")));
}

} // namespace

QList<PlacedText> svgTextBoxes(const SvgDocument& document)
{
    QList<PlacedText> boxes;
    for (const SvgElement& element : document.elements)
        if (element.tag == QLatin1String("text") && !element.text.trimmed().isEmpty())
            boxes.append(svgTextBox(element));
    return boxes;
}

bool pdftotextFound()
{
    return !QStandardPaths::findExecutable(QStringLiteral("pdftotext")).isEmpty();
}

QList<PdfPageText> pdfWords(const QString& path, QString* error)
{
    QProcess process;
    process.start(QStringLiteral("pdftotext"), {QStringLiteral("-bbox"), QStringLiteral("-enc"), QStringLiteral("UTF-8"),
                                                path, QStringLiteral("-")});
    if (!process.waitForFinished(30000) || process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0) {
        if (error)
            *error = QStringLiteral("pdftotext %1 failed: %2 %3")
                         .arg(path, process.errorString(), QString::fromLocal8Bit(process.readAllStandardError()));
        return {};
    }
    return parsePdfText(process.readAllStandardOutput(), error);
}

QList<PlacedText> mapped(const QList<PlacedText>& words, const QTransform& transform)
{
    QList<PlacedText> result;
    for (const PlacedText& word : words)
        result.append({word.text, transform.mapRect(word.box), word.direction});
    return result;
}

QStringList placementFaults(const QList<PlacedText>& expected, const QList<PlacedText>& words, double tolerance)
{
    QStringList faults;
    std::vector<bool> claimed(static_cast<std::size_t>(words.size()), false);
    for (const PlacedText& text : expected) {
        QString spelled;
        QRectF covered;
        for (const int i : wordsIn(text, words, tolerance)) {
            spelled += words[i].text;
            covered = covered.isNull() ? words[i].box : covered.united(words[i].box);
            claimed[static_cast<std::size_t>(i)] = true;
        }
        if (withoutBlanks(spelled) != withoutBlanks(text.text))
            faults << QStringLiteral("\"%1\" at %2: the words there spell \"%3\"")
                          .arg(text.text, describe(text.box), spelled);
        else if (!near(covered, text.box, tolerance))
            faults << QStringLiteral("\"%1\" at %2: its words cover %3").arg(text.text, describe(text.box), describe(covered));
    }
    for (int i = 0; i < words.size(); ++i)
        if (!claimed[static_cast<std::size_t>(i)])
            faults << QStringLiteral("\"%1\" at %2: no expected text there").arg(words[i].text, describe(words[i].box));
    return faults;
}

} // namespace OrvTest
