// The viewer's files as people name them: data told from charts by suffix, a
// tab-separated file read by tabs, the suffix a saved chart gets, and the
// command line that names them.
#include "ChartDocument.h"
#include "Failure.h"
#include "ViewOptions.h"

#include "TempFolder.h"

#include <gtest/gtest.h>

#include <ostream>

namespace {

using kelview::ViewOptions;

struct FileKind {
    const char* name;
    bool data;
};

void PrintTo(const FileKind& kind, std::ostream* out)
{
    *out << kind.name << (kind.data ? " (data)" : " (chart)");
}

class FileKinds : public ::testing::TestWithParam<FileKind> {};

TEST_P(FileKinds, AreToldBySuffix)
{
    EXPECT_EQ(kelview::isDataFile(QString::fromUtf8(GetParam().name)), GetParam().data);
}

INSTANTIATE_TEST_SUITE_P(Names, FileKinds,
                         ::testing::Values(FileKind{"walk.csv", true}, FileKind{"walk.TSV", true},
                                           FileKind{"logger/run 2.txt", true}, FileKind{"chart.json", false},
                                           FileKind{"chart", false}, FileKind{"walk.csv.json", false},
                                           FileKind{"tsv", false}));

TEST(DataFiles, ATsvFileIsSplitAtTabsEvenWhereCommasWouldSplitItEvenly)
{
    // Guessing alone would take the commas for separators: two fields on every line.
    const OrvTest::TempFolder folder;
    const QString path = folder.write(QStringLiteral("sizes.tsv"), "t\tsize, mm\n1\t2,5\n2\t3,5\n3\t4,5\n");
    const auto document = kelview::ChartDocument::open(path);
    ASSERT_NE(document->chart(), nullptr);
    EXPECT_NE(document->chart()->variables.at(QStringLiteral("size, mm")), nullptr);
    EXPECT_TRUE(document->chartPath().isEmpty()) << "a chart set up for data has no file to save to yet";
    EXPECT_EQ(document->displayName(), QStringLiteral("sizes.tsv"));
    EXPECT_EQ(kelview::dataOptionsFor(QStringLiteral("a.csv")).separator, QString());
}

TEST(SavedCharts, GetJsonOnlyWhenTheNameHasNoSuffix)
{
    EXPECT_EQ(kelview::withChartSuffix(QStringLiteral("/tmp/walk")), QStringLiteral("/tmp/walk.json"));
    EXPECT_EQ(kelview::withChartSuffix(QStringLiteral("/tmp/v1.2/walk")), QStringLiteral("/tmp/v1.2/walk.json"));
    EXPECT_EQ(kelview::withChartSuffix(QStringLiteral("/tmp/walk.json")), QStringLiteral("/tmp/walk.json"));
    EXPECT_EQ(kelview::withChartSuffix(QStringLiteral("walk.chart")), QStringLiteral("walk.chart"));
}

ViewOptions parse(const QStringList& arguments)
{
    return ViewOptions::parse(QStringList(QStringLiteral("kelview")) + arguments);
}

TEST(CommandLine, TakesDataFilesOfEverySuffixAndOneChart)
{
    const ViewOptions options = parse({QStringLiteral("run.tsv"), QStringLiteral("walk.json")});
    EXPECT_EQ(options.csvPath, QStringLiteral("run.tsv"));
    EXPECT_EQ(options.chartPath, QStringLiteral("walk.json"));
    EXPECT_THROW(parse({QStringLiteral("a.txt"), QStringLiteral("b.csv")}), kelchart::Failure);
}

TEST(CommandLine, TakesLocalesByNameAndRefusesOthers)
{
    EXPECT_EQ(parse({}).locale, QString());
    EXPECT_EQ(parse({QStringLiteral("--locale"), QStringLiteral("de_DE")}).locale, QStringLiteral("de_DE"));
    EXPECT_EQ(parse({QStringLiteral("--locale"), QStringLiteral("C")}).locale, QStringLiteral("C"));
    try {
        parse({QStringLiteral("--locale"), QStringLiteral("klingon")});
        FAIL() << "an unknown locale was taken as C";
    } catch (const kelchart::Failure& failure) {
        EXPECT_EQ(failure.status(), kelchart::Failure::BadUsage);
    }
}

} // namespace
