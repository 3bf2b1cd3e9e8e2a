#include "QtPrinters.h"
#include "SvgChecks.h"

#include <gtest/gtest.h>

using namespace OrvTest;

namespace {

// Shaped like QSvgGenerator's output: style on enclosing groups, one group per
// pen and brush, texts carrying their own fill and font.
const QByteArray chart = R"svg(<?xml version="1.0" encoding="UTF-8" standalone="no"?>
<svg width="200" height="100" viewBox="0 0 200 100" xmlns="http://www.w3.org/2000/svg" version="1.2">
<title>chart</title>
<defs>
  <clipPath id="clip1"><rect x="0" y="0" width="200" height="100" fill="#ff0000"/></clipPath>
</defs>
<g fill="none" stroke="black" stroke-width="1" fill-rule="evenodd" stroke-linecap="square">
  <g fill="#ff0000" fill-opacity="1" stroke="none" transform="matrix(1,0,0,1,10,20)">
    <path vector-effect="none" fill-rule="evenodd" d="M0,0 L8,0 L8,6 L0,6 L0,0"/>
  </g>
  <g fill="none" stroke="#0000ff" stroke-opacity="1" stroke-width="2" transform="translate(5, 5)">
    <polyline fill="none" vector-effect="none" points="0,0 10,10 20,5" transform="scale(2)"/>
    <text fill="#000000" fill-opacity="1" stroke="none" xml:space="preserve" x="30" y="40"
          font-family="Sans" font-size="12" font-weight="400">axis <tspan>label</tspan></text>
  </g>
  <g style="fill: #ff0000; stroke: #00ff00" fill="#0000ff">
    <rect x="1" y="2" width="3" height="4"/>
  </g>
  <text x="0" y="90">1.5</text>
</g>
<circle cx="5" cy="5" r="2"/>
</svg>
)svg";

class SvgChart : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(document.isValid()) << document.error.toStdString(); }

    const SvgDocument document = parseSvg(chart);
};

TEST_F(SvgChart, ListsOnlyDrawnElementsInOrder)
{
    QStringList tags;
    for (const SvgElement& element : document.elements)
        tags.append(element.tag);
    // The clip path's rectangle is not drawn.
    EXPECT_EQ(tags, QStringList({"path", "polyline", "text", "rect", "text", "circle"}));
    EXPECT_EQ(document.elements[0].attribute(QStringLiteral("d")), QStringLiteral("M0,0 L8,0 L8,6 L0,6 L0,0"));
}

TEST_F(SvgChart, ReadsTextsWithTheirSpans)
{
    EXPECT_EQ(texts(document), QStringList({"axis label", "1.5"}));
    EXPECT_TRUE(hasText(document, QStringLiteral("1.5")));
    EXPECT_FALSE(hasText(document, QStringLiteral("label")));
    EXPECT_EQ(document.elements[2].property(QStringLiteral("font-size")), QStringLiteral("12"));
}

TEST_F(SvgChart, ResolvesInheritedFillAndStroke)
{
    // The path inherits the red fill of its group, and its stroke "none" overrides the outer black.
    const QList<SvgElement> red = elementsFilledWith(document, QColor(255, 0, 0));
    ASSERT_EQ(red.size(), 2);
    EXPECT_EQ(red[0].tag, QStringLiteral("path"));
    // style="" beats the fill attribute beside it.
    EXPECT_EQ(red[1].tag, QStringLiteral("rect"));
    EXPECT_EQ(elementsFilledWith(document, QColor(0, 0, 255)).size(), 0);

    const QList<SvgElement> blue = elementsStrokedWith(document, QColor(0, 0, 255));
    ASSERT_EQ(blue.size(), 1);
    EXPECT_EQ(blue[0].tag, QStringLiteral("polyline"));
    EXPECT_EQ(blue[0].property(QStringLiteral("stroke-width")), QStringLiteral("2"));

    // Only the outermost group strokes "1.5"; the circle sets no fill, so it is filled black.
    const QList<SvgElement> blackStroke = elementsStrokedWith(document, Qt::black);
    ASSERT_EQ(blackStroke.size(), 1);
    EXPECT_EQ(blackStroke[0].text, QStringLiteral("1.5"));
    const QList<SvgElement> blackFill = elementsFilledWith(document, Qt::black);
    ASSERT_EQ(blackFill.size(), 2);
    EXPECT_EQ(blackFill[0].text, QStringLiteral("axis label"));
    EXPECT_EQ(blackFill[1].tag, QStringLiteral("circle"));
}

TEST_F(SvgChart, ComposesTransformsInnermostFirst)
{
    EXPECT_EQ(document.elements[0].transform.map(QPointF(8, 6)), QPointF(18, 26));
    // scale(2) on the polyline, then its group's translate(5, 5).
    EXPECT_EQ(document.elements[1].transform.map(QPointF(20, 5)), QPointF(45, 15));
    EXPECT_EQ(document.elements[2].transform.map(QPointF(30, 40)), QPointF(35, 45));
    EXPECT_TRUE(document.elements[4].transform.isIdentity());
}

TEST(SvgChecks, TransformListsApplyTheirLastItemFirst)
{
    const SvgDocument document = parseSvg(R"svg(<svg xmlns="http://www.w3.org/2000/svg">
        <line transform="translate(10 0) rotate(90) scale(2, 3)" x1="0" y1="0" x2="1" y2="1"/>
        <line transform="rotate(90, 10, 10)" x1="0" y1="0" x2="1" y2="1"/></svg>)svg");
    ASSERT_EQ(document.elements.size(), 2);
    const QPointF first = document.elements[0].transform.map(QPointF(1, 1)); // (2, 3) -> (-3, 2) -> (7, 2)
    EXPECT_NEAR(first.x(), 7, 1e-9);
    EXPECT_NEAR(first.y(), 2, 1e-9);
    const QPointF second = document.elements[1].transform.map(QPointF(10, 0)); // about (10, 10)
    EXPECT_NEAR(second.x(), 20, 1e-9);
    EXPECT_NEAR(second.y(), 10, 1e-9);
}

TEST(SvgChecks, ReportsMalformedDocuments)
{
    EXPECT_FALSE(parseSvg("<svg><g></svg>").isValid());
    EXPECT_FALSE(parseSvg("").isValid());
}

} // namespace
