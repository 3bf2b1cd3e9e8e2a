// The model's C-locale label texts in a reader's locale.

#include "LocaleText.h"

#include <gtest/gtest.h>

namespace {

namespace LocaleText = Orv::Chart::LocaleText;

const QLocale german(QLocale::German, QLocale::Germany);

struct GermanCase {
    const char* label;
    QString expected;
};

void PrintTo(const GermanCase& c, std::ostream* os)
{
    *os << c.label;
}

class GermanLabels : public ::testing::TestWithParam<GermanCase> {};

TEST_P(GermanLabels, AreWrittenInGerman)
{
    EXPECT_EQ(LocaleText::label(QString::fromUtf8(GetParam().label), german), GetParam().expected);
}

// Names and the exponent symbol as the Qt version's locale data has them ("Mär" or "März", "e" or "E").
INSTANTIATE_TEST_SUITE_P(
    Texts, GermanLabels,
    ::testing::Values(GermanCase{"0.5", QStringLiteral("0,5")}, GermanCase{"-1.250", QStringLiteral("-1,250")},
                      GermanCase{"1000000", QStringLiteral("1.000.000")}, GermanCase{"1500", QStringLiteral("1500")},
                      GermanCase{"12345.5", QStringLiteral("12.345,5")}, GermanCase{"1e-7", QStringLiteral("1%1-7").arg(german.exponential())},
                      GermanCase{"2.5e+20", QStringLiteral("2,5%1+20").arg(german.exponential())}, GermanCase{"+299.9", QStringLiteral("+299,9")},
                      // Dates and times: separators stay, padded fields keep their zeros.
                      GermanCase{"2012-03-14", QStringLiteral("2012-03-14")},
                      GermanCase{"2012-03-14 14:05", QStringLiteral("2012-03-14 14:05")},
                      GermanCase{"14:06:30.25", QStringLiteral("14:06:30,25")},
                      GermanCase{"Mar", german.standaloneMonthName(3, QLocale::ShortFormat)},
                      GermanCase{"Mar 2 06:00", german.monthName(3, QLocale::ShortFormat) + QStringLiteral(" 2 06:00")},
                      GermanCase{"Tue 14", german.dayName(2, QLocale::ShortFormat) + QStringLiteral(" 14")},
                      GermanCase{"Sun 1 06:00:30", german.dayName(7, QLocale::ShortFormat) + QStringLiteral(" 1 06:00:30")},
                      // Words that are no month or weekday, and the factor's superscripts, stay.
                      GermanCase{"Mars", QStringLiteral("Mars")},
                      GermanCase{"(\u00d7 10\u207b\u00b3)", QStringLiteral("(\u00d7 10\u207b\u00b3)")}));

// Numbers of five integer digits and more agree with QLocale's own, so do those
// below 1000, in locales with other signs, separators and digits.
TEST(LocaleText, NumbersAgreeWithTheLocale)
{
    const QLocale locales[] = {german,
                               QLocale(QLocale::French, QLocale::France),
                               QLocale(QLocale::Swedish, QLocale::Sweden),
                               QLocale(QLocale::Arabic, QLocale::Egypt),
                               QLocale(QLocale::English, QLocale::UnitedStates),
                               QLocale(QLocale::Russian, QLocale::Russia)};
    const double values[] = {0.5, -1.25, 987.375, 123456.75, -9876543.125, 12345678901.5};
    for (const QLocale& locale : locales)
        for (const double value : values)
            for (int decimals = 0; decimals <= 3; ++decimals)
                EXPECT_EQ(LocaleText::number(value, decimals, locale), locale.toString(value, 'f', decimals))
                    << locale.name().toStdString() << ' ' << value << ' ' << decimals;
}

// The shortest text keeps every digit; a value that rounds to zero has no sign.
TEST(LocaleText, NumbersKeepTheirDigits)
{
    EXPECT_EQ(LocaleText::number(299.90015, german), QStringLiteral("299,90015"));
    EXPECT_EQ(LocaleText::number(-0.00001234, german), QStringLiteral("-0,00001234"));
    EXPECT_EQ(LocaleText::number(-0.0001, 2, german), QStringLiteral("0,00"));
}

// A label format of the user's: its numbers stay as written, its English names become the locale's.
TEST(LocaleText, NamesOnlyKeepTheNumbers)
{
    EXPECT_EQ(LocaleText::names(QStringLiteral("14.03. Tuesday"), german),
              QStringLiteral("14.03. ") + german.dayName(2, QLocale::LongFormat));
    EXPECT_EQ(LocaleText::names(QStringLiteral("March"), german), german.standaloneMonthName(3, QLocale::LongFormat));
    EXPECT_EQ(LocaleText::names(QStringLiteral("2.5 Sep 2012"), german),
              QStringLiteral("2.5 ") + german.monthName(9, QLocale::ShortFormat) + QStringLiteral(" 2012"));
}

TEST(LocaleText, TheCLocaleChangesNothing)
{
    for (const char* label :
         {"0.5", "-1.25", "1000000", "1e-7", "Mar", "Sep 2 06:00", "Tue 14", "2012-03-14 14:05", "+299.9", "evening"})
        EXPECT_EQ(LocaleText::label(QString::fromLatin1(label), QLocale::c()), QString::fromLatin1(label));
}

} // namespace
