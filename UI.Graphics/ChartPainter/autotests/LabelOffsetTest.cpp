// Tick labels relative to an offset: worked out exactly from the labels, and
// drawn on a zoomed axis short, distinct and whole, with the offset beside it.

#include "ChartPainter.h"
#include "LabelOffset.h"
#include "PaintedChart.h"
#include "Plot.h"
#include "TextBoxes.h"
#include "TickFit.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <memory>
#include <set>

namespace {

namespace Chart = Orv::Chart;

std::vector<QString> strings(std::initializer_list<const char*> texts)
{
    std::vector<QString> result;
    for (const char* text : texts)
        result.push_back(QString::fromLatin1(text));
    return result;
}

struct OffsetCase {
    const char* name;
    std::vector<QString> labels;
    double factor;
    // Empty: the labels stand as they are.
    const char* offset;
    int exponent;
    std::vector<QString> shown;
};

void PrintTo(const OffsetCase& c, std::ostream* os)
{
    *os << c.name;
}

class LabelOffsetCases : public ::testing::TestWithParam<OffsetCase> {};

// In a room of 48 pixels at 7 per character: six characters fit, seven do not.
TEST_P(LabelOffsetCases, ShortExactLabels)
{
    const OffsetCase& c = GetParam();
    const Chart::LabelOffset offset =
        Chart::LabelOffset::of(c.labels, c.factor, 48, Chart::TickFit::perCharacter(Chart::TickRoom::characterWidth));
    EXPECT_EQ(offset.text, QString::fromLatin1(c.offset));
    EXPECT_EQ(offset.applies(), !offset.text.isEmpty());
    if (!offset.applies()) {
        EXPECT_TRUE(offset.labels.empty());
        return;
    }
    EXPECT_EQ(offset.exponent, c.exponent);
    EXPECT_EQ(offset.labels, c.shown);
}

INSTANTIATE_TEST_SUITE_P(
    Ranges, LabelOffsetCases,
    ::testing::Values(
        // Seven characters of "0.00010" are still too wide: millionths.
        OffsetCase{"ZoomedIn",
                   strings({"299.90010", "299.90015", "299.90020", "299.90025", "299.90030", "299.90035", "299.90040"}),
                   1, "+299.9", -6, strings({"100", "150", "200", "250", "300", "350", "400"})},
        OffsetCase{"InTheUnitWhereThatFits", strings({"1000000", "1000100", "1000200", "1000300"}), 1, "+1e6", 0,
                   strings({"0", "100", "200", "300"})},
        OffsetCase{"DecimalsOfTheStepKept", strings({"12345.60", "12345.65", "12345.70"}), 1, "+12345", 0,
                   strings({"0.60", "0.65", "0.70"})},
        // Negative values keep their sign: the offset lies between them and zero.
        OffsetCase{"Negative", strings({"-299.90040", "-299.90020", "-299.90000"}), 1, "-299.9", -6,
                   strings({"-400", "-200", "0"})},
        // A range across a round value is labelled on both sides of it.
        OffsetCase{"AcrossARoundValue", strings({"99999.5", "100000.0", "100000.5"}), 1, "+100000", 0,
                   strings({"-0.5", "0.0", "0.5"})},
        // Labels in thousands of the unit: the offset is in the unit itself.
        OffsetCase{"WithTheScalesFactor", strings({"1700000.0", "1700001.2", "1700002.4", "1700003.6"}), 1000,
                   "+1.7e9", 0, strings({"0", "1200", "2400", "3600"})},
        OffsetCase{"FitTheirRoom", strings({"101.0", "101.5", "102.0"}), 1, "", 0, {}},
        OffsetCase{"NoSharedDigits", strings({"1000000", "3000000", "5000000"}), 1, "", 0, {}},
        OffsetCase{"AcrossZero", strings({"-0.0000150", "0.0000000", "0.0000150"}), 1, "", 0, {}},
        OffsetCase{"NotDecimals", strings({"1234567a", "1234568a"}), 1, "", 0, {}}),
    [](const ::testing::TestParamInfo<OffsetCase>& info) { return std::string(info.param.name); });

// The sample chart with settings by path, its pipeline and what painting it draws.
class ZoomedAxisTest : public ::testing::Test {
protected:
    void zoom(const char* axis, const char* min, const char* max)
    {
        const QString path = QStringLiteral("%1/%2/").arg(QString::fromLatin1(axis).section(QLatin1Char('.'), 0, 1),
                                                          QString::fromLatin1(axis));
        PaintedChart::assignAll(*chart,
                                {path + QStringLiteral("autoScale=false"), path + QStringLiteral("min=") + min,
                                 path + QStringLiteral("max=") + max, path + QStringLiteral("tightRange=true")});
    }

    const Chart::PlotAxis& run(const QLocale& locale = QLocale::c())
    {
        plot =
            std::make_unique<Chart::Plot>(*chart, Chart::axisPairsOf(*chart), Chart::TickRoom{size, 100, {}, locale});
        Chart::ChartPainter painter(*plot, size);
        painter.setLocale(locale);
        texts = OrvTest::drawnTexts(size, [&painter](QPainter& device) { painter.paint(device); });
        return *plot->axis(QStringLiteral("axis.y.left"));
    }

    const Chart::PlotAxis& axis(const char* name) const { return *plot->axis(QString::fromLatin1(name)); }

    QStringList drawn() const
    {
        QStringList result;
        for (const OrvTest::DrawnText& text : texts)
            result << text.text;
        return result;
    }

    const QSize size{800, 500};
    KelModifiedGroup group;
    std::unique_ptr<KelChart2D> chart = PaintedChart::sample(group);
    std::unique_ptr<Chart::Plot> plot;
    QList<OrvTest::DrawnText> texts;
};

// Label × factor + offset gives back each tick's value; the labels are short
// and distinct, all drawn whole, and the offset is drawn once.
TEST_F(ZoomedAxisTest, DeepZoomDrawsShortExactLabelsAndTheOffset)
{
    zoom("axis.y.left", "299.9001", "299.9004");
    const Chart::PlotAxis& left = run();
    EXPECT_EQ(left.offsetText, QStringLiteral("+299.9"));
    ASSERT_GE(left.ticks.major().size(), 4u);
    std::set<QString> distinct;
    for (const Chart::Tick& tick : left.ticks.major()) {
        EXPECT_LE(tick.label.size(), 4) << tick.label.toStdString();
        EXPECT_NEAR(tick.label.toDouble() * left.factor + left.offset, tick.value, 1e-12 * tick.value);
        distinct.insert(tick.label);
        EXPECT_EQ(drawn().contains(tick.label), tick.labelled) << tick.label.toStdString();
    }
    EXPECT_EQ(distinct.size(), left.ticks.major().size());
    EXPECT_EQ(drawn().count(QStringLiteral("+299.9")), 1);
    for (const QString& text : drawn())
        EXPECT_FALSE(text.contains(QChar(0x2026))) << text.toStdString();
}

// Along a horizontal axis the short labels leave room for more of them, and none overlap.
TEST_F(ZoomedAxisTest, HorizontalAxisTakesTheOffsetToo)
{
    zoom("axis.x.bottom", "12.00001", "12.00004");
    run();
    const Chart::PlotAxis& bottom = axis("axis.x.bottom");
    EXPECT_EQ(bottom.offsetText, QStringLiteral("+12"));
    std::size_t labelled = 0;
    for (const Chart::Tick& tick : bottom.ticks.major())
        labelled += tick.labelled;
    EXPECT_GE(labelled, 5u);
    EXPECT_EQ(OrvTest::overlappingTexts(texts), QStringList());
    EXPECT_EQ(OrvTest::textsOutside(texts, size), QStringList());
}

TEST_F(ZoomedAxisTest, OffsetAndLabelsInTheLocale)
{
    zoom("axis.y.left", "299.9001", "299.9004");
    const Chart::PlotAxis& left = run(QLocale(QLocale::German, QLocale::Germany));
    EXPECT_EQ(left.offsetText, QStringLiteral("+299.9"));
    EXPECT_TRUE(drawn().contains(QStringLiteral("+299,9")));
    // The right axis's pressures and the period names of the top one.
    EXPECT_TRUE(drawn().contains(QStringLiteral("101,5")));
    EXPECT_FALSE(drawn().contains(QStringLiteral("101.5")));
    EXPECT_TRUE(drawn().contains(QStringLiteral("afternoon")));
}

} // namespace
