// The viewer's File menu writing the chart out: Export... as PNG, SVG or PDF
// by the name's suffix (or the dialog's filter), faults shown as the other
// file faults are, and Print, here to a PDF file.
#include "ChartWidget.h"
#include "MessageBar.h"
#include "ViewWindow.h"

#include "SvgChecks.h"
#include "TempFolder.h"
#include "TextPlacement.h"

#include <QAction>
#include <QCoreApplication>
#include <QImage>
#include <QMenuBar>
#include <QPageSize>
#include <QPrinter>

#include <gtest/gtest.h>

#include <memory>

namespace {

class ExportTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        window = std::make_unique<kelview::ViewWindow>(kelview::ChartDocument::open(QString(), QString()));
        window->setAttribute(Qt::WA_QuitOnClose, false);
        window->resize(1100, 640);
        window->show();
        QCoreApplication::processEvents();
        ASSERT_NE(window->chartView()->frames(), nullptr);
    }

    QSize chartSize() const { return window->chartView()->frames()->size(); }

    std::unique_ptr<kelview::ViewWindow> window;
    OrvTest::TempFolder folder;
};

TEST_F(ExportTest, FileMenuOffersExport)
{
    const QList<QAction*> menus = window->menuBar()->actions();
    ASSERT_FALSE(menus.isEmpty());
    QStringList texts;
    for (const QAction* action : menus.front()->menu()->actions())
        texts << action->text();
    EXPECT_TRUE(texts.contains(QStringLiteral("&Export..."))) << texts.join(QLatin1Char('|')).toStdString();
    EXPECT_TRUE(texts.contains(QStringLiteral("&Print...")));
}

TEST_F(ExportTest, SuffixPicksTheFormat)
{
    ASSERT_TRUE(window->exportChart(folder.path(QStringLiteral("chart.png"))));
    EXPECT_EQ(window->statusMessage(),
              QStringLiteral("Exported the chart to ") + folder.path(QStringLiteral("chart.png")));
    EXPECT_EQ(QImage(folder.path(QStringLiteral("chart.png"))).size(), chartSize());
    ASSERT_TRUE(window->exportChart(folder.path(QStringLiteral("chart.SVG"))));
    const OrvTest::SvgDocument svg = OrvTest::parseSvg(folder.read(QStringLiteral("chart.SVG")));
    EXPECT_TRUE(OrvTest::hasText(svg, QStringLiteral("Weather station, one day")));
    ASSERT_TRUE(window->exportChart(folder.path(QStringLiteral("chart.pdf"))));
    EXPECT_TRUE(folder.read(QStringLiteral("chart.pdf")).startsWith("%PDF-"));
}

// As a file that does not open: in the message bar and the status bar, naming the file.
TEST_F(ExportTest, FaultsAreShownNamingTheFile)
{
    const QString unknown = folder.path(QStringLiteral("chart.bmp"));
    EXPECT_FALSE(window->exportChart(unknown));
    EXPECT_TRUE(window->statusMessage().startsWith(unknown + QStringLiteral(": unknown image format")))
        << window->statusMessage().toStdString();
    EXPECT_TRUE(window->messageBar()->isVisible());
    const QString unwritable = folder.path(QStringLiteral("missing/chart.pdf"));
    EXPECT_FALSE(window->exportChart(unwritable));
    EXPECT_TRUE(window->statusMessage().startsWith(unwritable + QStringLiteral(": cannot write")))
        << window->statusMessage().toStdString();
}

TEST(ExportSuffix, ComesFromTheNameOrElseTheFilter)
{
    const QString pdf = QStringLiteral("PDF documents (*.pdf)");
    EXPECT_EQ(kelview::withExportSuffix(QStringLiteral("/a/chart"), pdf), QStringLiteral("/a/chart.pdf"));
    EXPECT_EQ(kelview::withExportSuffix(QStringLiteral("/a/chart.SVG"), pdf), QStringLiteral("/a/chart.SVG"));
    EXPECT_EQ(kelview::withExportSuffix(QStringLiteral("/a/chart.png"), pdf), QStringLiteral("/a/chart.png"));
    EXPECT_EQ(kelview::withExportSuffix(QStringLiteral("/a/v1.2"), pdf), QStringLiteral("/a/v1.2.pdf"));
}

// The chart fills the printable area's width or height, centred in the other
// direction; its texts lie where the chart's own SVG file puts them, to the
// page's scale, within 2 of the chart's pixels.
TEST_F(ExportTest, PrintedPageHoldsTheChartFittedAndCentred)
{
    if (!OrvTest::pdftotextFound())
        GTEST_SKIP() << "pdftotext (poppler-utils) is not installed";
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(folder.path(QStringLiteral("printed.pdf")));
    printer.setPageSize(QPageSize(QPageSize::A4));
    window->printOn(printer);
    EXPECT_EQ(window->statusMessage(), QStringLiteral("Printed the chart"));

    QString error;
    const QList<OrvTest::PdfPageText> pages = OrvTest::pdfWords(folder.path(QStringLiteral("printed.pdf")), &error);
    ASSERT_EQ(pages.size(), 1) << error.toStdString();
    const QRectF area = printer.pageRect(QPrinter::Point);
    const QSizeF size = chartSize();
    const double scale = std::min(area.width() / size.width(), area.height() / size.height());
    const QPointF corner =
        area.topLeft() + QPointF(area.width() - scale * size.width(), area.height() - scale * size.height()) / 2;
    const QTransform toChart = QTransform::fromTranslate(corner.x(), corner.y()).scale(scale, scale).inverted();

    ASSERT_TRUE(window->exportChart(folder.path(QStringLiteral("chart.svg"))));
    const QList<OrvTest::PlacedText> expected =
        OrvTest::svgTextBoxes(OrvTest::parseSvg(folder.read(QStringLiteral("chart.svg"))));
    ASSERT_GT(expected.size(), 20);
    const QStringList faults = OrvTest::placementFaults(expected, OrvTest::mapped(pages[0].words, toChart), 2.0);
    EXPECT_TRUE(faults.isEmpty()) << faults.join(QLatin1Char('\n')).toStdString();
}

} // namespace
