// Samples 0.1 s apart, one minute of them, read from a file whose first row lies 1, 10 or 100
// years before them: the series must draw, decimate and hover exactly as when the samples follow
// the first row by seconds, however far the values are from the file's first row.

#include "ChartFrames.h"
#include "ChartSetUp.h"
#include "CsvImport.h"
#include "DataBinding.h"
#include "ElementClasses.h"
#include "HoverText.h"

#include "KelChart2D.h"
#include "KelChartAxisContinuous.h"
#include "KelChartVariable.h"

#include <QBuffer>
#include <QDateTime>
#include <QImage>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <memory>
#include <utility>

using namespace Orv::Chart;

namespace {

constexpr int Samples = 600;
constexpr double Step = 0.1;
const QSize ImageSize(640, 360);

const QDateTime FirstRow(QDate(2000, 1, 1), QTime(0, 0), Qt::UTC);

// The first sample: `years` and ten seconds after the first row.
QDateTime firstSample(int years)
{
    return FirstRow.addYears(years).addSecs(10);
}

// Seconds from the first row to the first sample.
double startOf(int years)
{
    return static_cast<double>(FirstRow.secsTo(firstSample(years)));
}

// The file: a first row without a reading (so no line leads from it), then the samples.
QByteArray samplesFile(int years)
{
    QByteArray csv = "time,level\n2000-01-01T00:00:00Z,\n";
    const QDateTime first = firstSample(years);
    for (int k = 0; k < Samples; ++k) {
        const double level = 10.0 * std::sin(k * 0.37) + k % 7;
        csv += first.addMSecs(100LL * k).toString(Qt::ISODateWithMs).toUtf8() + "," + QByteArray::number(level) + "\n";
    }
    return csv;
}

// The chart of one file, its x axis on the samples' minute and y fixed.
class SamplesChart {
public:
    explicit SamplesChart(int years)
        : m_chart(m_group)
    {
        QByteArray bytes = samplesFile(years);
        QBuffer file(&bytes);
        file.open(QIODevice::ReadOnly);
        CsvImport::Result read = CsvImport::read(file, QStringLiteral("samples.csv"));
        EXPECT_TRUE(read.ok()) << read.error.message.toStdString();
        setUpChartForData(m_chart, read.data, QStringLiteral("samples"));
        bindData(m_chart.variables, axisPairsOf(m_chart), std::move(read.data));
        const auto* variable = static_cast<const KelChartVariable*>(m_chart.variables[0]);
        const AxisPairs pairs = axisPairsOf(m_chart);
        // Ends off the samples' grid, so that no sample falls on a pixel boundary.
        fix(pairs.find(variable->xAxis.get()), startOf(years) - 0.0123, startOf(years) + Samples * Step + 0.0377);
        fix(pairs.find(variable->yAxis.get()), -12.0, 20.0);
        m_frames = std::make_unique<ChartFrames>(m_chart, axisPairsOf(m_chart));
        m_frames->rescale(ImageSize);
    }

    // The plot area only: the labels name other days.
    QImage plotImage() const
    {
        QImage image(ImageSize, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::white);
        QPainter painter(&image);
        m_frames->paint(painter);
        painter.end();
        return image.copy(m_frames->layout().plot().toAlignedRect());
    }

    // The sample the hover names at that fraction of the plot's width, and its text.
    std::pair<long, QString> hoverAt(double fraction) const
    {
        const QRectF plot = m_frames->layout().plot();
        const QPointF pixel(plot.left() + fraction * plot.width(), plot.center().y());
        const HoverText::Hover hover = HoverText::at(*m_frames, pixel);
        if (hover.hits.size() != 1)
            return {-1, {}};
        const QString line = hover.hits.front().line;
        // "level: x = 2001-01-01 00:00:12.3, y = ...": the date differs by the years, the time must not.
        return {static_cast<long>(hover.hits.front().index), line.mid(line.indexOf(' ', line.indexOf("x = ") + 4))};
    }

    // The points the view draws.
    std::vector<std::size_t> lines() const { return m_frames->view(0).lines(placement()); }
    std::vector<std::size_t> points() const { return m_frames->view(0).points(placement()); }

private:
    static void fix(KelChartAxis* axis, double min, double max)
    {
        auto* continuous = dynamic_cast<KelChartAxisContinuous*>(axis);
        ASSERT_NE(continuous, nullptr);
        continuous->autoScale.set(false);
        continuous->min.set(min);
        continuous->max.set(max);
    }

    KelChartDecimatedView::Placement placement() const
    {
        const QRectF plot = m_frames->layout().plot();
        return {m_frames->pipeline().scaling().preciseMatrix(0), 0.0, plot.left(), plot.bottom(), plot.width(),
                plot.height()};
    }

    KelModifiedGroup m_group;
    KelChart2D m_chart;
    std::unique_ptr<ChartFrames> m_frames;
};

// The largest difference of a colour channel between the images.
int largestDifference(const QImage& a, const QImage& b)
{
    if (a.size() != b.size())
        return 255;
    int largest = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            const QRgb p = a.pixel(x, y), q = b.pixel(x, y);
            largest = std::max({largest, std::abs(qRed(p) - qRed(q)), std::abs(qGreen(p) - qGreen(q)),
                                std::abs(qBlue(p) - qBlue(q))});
        }
    }
    return largest;
}

class TimeResolutionTest : public testing::TestWithParam<int> {};

} // namespace

TEST_P(TimeResolutionTest, SamplesYearsAfterTheFirstRowDrawAsAtTheOrigin)
{
    const SamplesChart atOrigin(0); // ten seconds after the first row
    const SamplesChart later(GetParam());
    EXPECT_EQ(later.lines(), atOrigin.lines());
    EXPECT_EQ(later.points(), atOrigin.points());
    for (const double fraction : {0.001, 0.2537, 0.5, 0.9871}) {
        const auto expectedHover = atOrigin.hoverAt(fraction);
        EXPECT_GE(expectedHover.first, 0);
        EXPECT_EQ(later.hoverAt(fraction), expectedHover) << fraction << " " << expectedHover.second.toStdString();
    }
    const QImage expected = atOrigin.plotImage();
    // A century from the first row, a double holds the times to 0.5 µs, which moves a point by
    // millionths of a pixel: at most an antialiased edge pixel may shade a level differently.
    EXPECT_LE(largestDifference(later.plotImage(), expected), 2);
}

INSTANTIATE_TEST_SUITE_P(, TimeResolutionTest, testing::Values(1, 10, 100),
                         [](const testing::TestParamInfo<int>& info) { return std::to_string(info.param) + "Years"; });
