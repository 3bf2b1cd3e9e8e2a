#include "KelProperties.h" // prints QString in failure messages
#include "KelPropertiesString.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>

namespace {

std::uint64_t bitsOf(double value)
{
    std::uint64_t bits;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

// Writes `value` typed, reads it back through a copy of the store (so the
// text is all that carries it) and returns what came back.
template <class T>
T roundTrip(const T& value, const T& defaultValue = T())
{
    KelPropertiesString store;
    EXPECT_EQ(store.setValue("p", value), QString());
    const KelPropertiesString copy = store;
    T back = defaultValue;
    EXPECT_EQ(copy.getValue("p", back, defaultValue), QString()) << "text: " << copy.getString("p");
    return back;
}

} // namespace

// --- Round trips ---------------------------------------------------------------

class StoreDoubleRoundTrip : public testing::TestWithParam<double> {};

TEST_P(StoreDoubleRoundTrip, KeepsEveryBit)
{
    EXPECT_EQ(bitsOf(roundTrip(GetParam(), 42.0)), bitsOf(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(Values, StoreDoubleRoundTrip,
                         testing::Values(0.0, -0.0, 0.1, 1.0 / 3.0, -2.5e-8, 123456789.123456789, std::acos(-1.0),
                                         std::numeric_limits<double>::max(),
                                         std::numeric_limits<double>::lowest(),
                                         std::numeric_limits<double>::min(),
                                         std::numeric_limits<double>::denorm_min(),
                                         std::numeric_limits<double>::infinity(),
                                         -std::numeric_limits<double>::infinity()));

TEST(StoreRoundTrip, NanKeepsItsSign)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_TRUE(std::isnan(roundTrip(nan)));
    EXPECT_FALSE(std::signbit(roundTrip(std::copysign(nan, 1.0))));
    EXPECT_TRUE(std::signbit(roundTrip(std::copysign(nan, -1.0))));
}

struct ColorCase {
    QColor color;
    QString text;
};

void PrintTo(const ColorCase& colorCase, std::ostream* os)
{
    *os << '"' << colorCase.text << '"';
}

class StoreColorRoundTrip : public testing::TestWithParam<ColorCase> {};

TEST_P(StoreColorRoundTrip, WritesDocumentedTextAndReadsItBack)
{
    KelPropertiesString store;
    store.setValue("c", GetParam().color);
    EXPECT_EQ(store.getString("c"), GetParam().text);
    const QColor back = roundTrip(GetParam().color, QColor(Qt::green));
    EXPECT_EQ(back, GetParam().color);
    EXPECT_EQ(back.rgba64(), GetParam().color.rgba64());
}

INSTANTIATE_TEST_SUITE_P(Colors, StoreColorRoundTrip,
                         testing::Values(ColorCase{QColor(255, 0, 16), "#ff0010"},
                                         ColorCase{QColor(1, 2, 3, 4), "#04010203"},
                                         ColorCase{QColor(0, 0, 0, 0), "#00000000"},
                                         ColorCase{QColor::fromRgba64(0x1234, 0xffff, 0, 0xffff),
                                                   "#ffff1234ffff0000"},
                                         ColorCase{QColor::fromRgba64(0x1111, 0x2222, 0x3333, 0x8001),
                                                   "#8001111122223333"},
                                         ColorCase{QColor(), ""}));

class StoreStringListRoundTrip : public testing::TestWithParam<QStringList> {};

TEST_P(StoreStringListRoundTrip, KeepsEveryEntry)
{
    EXPECT_EQ(roundTrip(GetParam(), QStringList{"default"}), GetParam());
}

INSTANTIATE_TEST_SUITE_P(Lists, StoreStringListRoundTrip,
                         testing::Values(QStringList{}, QStringList{""}, QStringList{"", ""},
                                         QStringList{"a", "b c"}, QStringList{"a, b", "c,"},
                                         QStringList{"say \"hi\"", "\""}, QStringList{"back\\slash", "\\n"},
                                         QStringList{"line\nbreak", "cr\r", "tab\t", QString(QChar(1))},
                                         QStringList{" padded ", "\u00a0nbsp"},
                                         QStringList{QString::fromUtf8("\xc3\xbc\xe2\x82\xac"), "#ff0000"}));

TEST(StoreRoundTrip, ScalarsAndScalarLists)
{
    EXPECT_EQ(roundTrip(true), true);
    EXPECT_EQ(roundTrip(false, true), false);
    EXPECT_EQ(roundTrip(std::numeric_limits<int>::min()), std::numeric_limits<int>::min());
    EXPECT_EQ(roundTrip(std::numeric_limits<int>::max()), std::numeric_limits<int>::max());
    EXPECT_EQ(roundTrip(std::numeric_limits<unsigned>::max()), std::numeric_limits<unsigned>::max());
    EXPECT_EQ(roundTrip(QString("any, \"text\"\n")), QString("any, \"text\"\n"));
    EXPECT_EQ(roundTrip(std::vector<int>{}, {7}), std::vector<int>{});
    EXPECT_EQ(roundTrip(std::vector<int>{-1, 0, 65536}), (std::vector<int>{-1, 0, 65536}));
    EXPECT_EQ(roundTrip(std::vector<bool>{true, false, true}), (std::vector<bool>{true, false, true}));
    const std::vector<double> doubles{0.1, -0.0, 1e300, std::numeric_limits<double>::infinity()};
    const std::vector<double> backDoubles = roundTrip(doubles);
    ASSERT_EQ(backDoubles.size(), doubles.size());
    for (std::size_t i = 0; i < doubles.size(); ++i)
        EXPECT_EQ(bitsOf(backDoubles[i]), bitsOf(doubles[i]));
    const QList<QColor> colors{QColor(Qt::red), QColor(), QColor(1, 2, 3, 4)};
    EXPECT_EQ(roundTrip(colors), colors);
    EXPECT_EQ(roundTrip(QList<QColor>{}, {QColor(Qt::red)}), QList<QColor>{});
}

TEST(StoreFormat, ListsAreCommaSeparatedAndQuotedOnlyWhenNeeded)
{
    KelPropertiesString store;
    store.setValue("s", QStringList{"a", "b c", "", "x,y"});
    EXPECT_EQ(store.getString("s"), "a, b c, \"\", \"x,y\"");
    store.setValue("i", std::vector<int>{1, -2});
    EXPECT_EQ(store.getString("i"), "1, -2");
    store.setValue("b", std::vector<bool>{true, false});
    EXPECT_EQ(store.getString("b"), "true, false");
    store.setValue("d", 0.1);
    EXPECT_EQ(store.getString("d"), "0.1");
}

// --- Reading text that was not written typed -----------------------------------

TEST(StoreRead, UnparsableOrMissingTextGivesTheDefaultAndADiagnostic)
{
    KelPropertiesString store;
    store.setValue("t", QString("abc"));
    int i = 0;
    EXPECT_FALSE(store.getValue("t", i, 7).isEmpty());
    EXPECT_EQ(i, 7);
    EXPECT_FALSE(store.getValue("missing", i, 9).isEmpty());
    EXPECT_EQ(i, 9);
    std::vector<double> list;
    store.setValue("t", QString("1, \"2"));
    EXPECT_FALSE(store.getValue("t", list, {5.0}).isEmpty());
    EXPECT_EQ(list, std::vector<double>{5.0});
    QColor color;
    store.setValue("t", QString("nocolor"));
    EXPECT_FALSE(store.getValue("t", color, QColor(Qt::blue)).isEmpty());
    EXPECT_EQ(color, QColor(Qt::blue));
}

TEST(StoreRead, LenientForms)
{
    KelPropertiesString store;
    store.setValue("t", QString(" 12 "));
    int i = 0;
    EXPECT_EQ(store.getValue("t", i, 0), QString());
    EXPECT_EQ(i, 12);
    store.setValue("t", QString("1"));
    bool b = false;
    EXPECT_EQ(store.getValue("t", b, false), QString());
    EXPECT_TRUE(b);
    store.setValue("t", QString("red, #80ff0000,\"\""));
    QList<QColor> colors;
    EXPECT_EQ(store.getValue("t", colors, {}), QString());
    EXPECT_EQ(colors, (QList<QColor>{QColor(Qt::red), QColor(255, 0, 0, 128), QColor()}));
}

// --- Text writes by name to typed entries --------------------------------------

struct RefusalCase {
    const char* label;
    void (*writeTyped)(KelPropertiesString&);
    QString badText;
    QString type;
};

void PrintTo(const RefusalCase& refusal, std::ostream* os)
{
    *os << refusal.type << " entry, text \"" << refusal.badText << '"';
}

class StoreTextWriteRefusal : public testing::TestWithParam<RefusalCase> {};

TEST_P(StoreTextWriteRefusal, KeepsValueAndRevisionAndSaysWhy)
{
    KelPropertiesString store;
    GetParam().writeTyped(store);
    const QString before = store.getString("p");
    const std::uint64_t revision = store.revision();
    EXPECT_EQ(store.valueType("p"), GetParam().type);
    EXPECT_EQ(store.setValue("p", GetParam().badText),
              QString("cannot read \"%1\" as %2 for \"p\"").arg(GetParam().badText, GetParam().type));
    EXPECT_EQ(store.getString("p"), before);
    EXPECT_EQ(store.revision(), revision);
}

INSTANTIATE_TEST_SUITE_P(
    Types, StoreTextWriteRefusal,
    testing::Values(
        RefusalCase{"Double", [](KelPropertiesString& s) { s.setValue("p", 1.5); }, "abc", "double"},
        RefusalCase{"DoubleOverflow", [](KelPropertiesString& s) { s.setValue("p", 1.5); }, "1e999", "double"},
        RefusalCase{"Int", [](KelPropertiesString& s) { s.setValue("p", 3); }, "1.5", "int"},
        RefusalCase{"IntOverflow", [](KelPropertiesString& s) { s.setValue("p", 3); }, "2147483648", "int"},
        RefusalCase{"Unsigned", [](KelPropertiesString& s) { s.setValue("p", 3u); }, "-1", "unsigned"},
        RefusalCase{"Bool", [](KelPropertiesString& s) { s.setValue("p", true); }, "yes", "bool"},
        RefusalCase{"Color", [](KelPropertiesString& s) { s.setValue("p", QColor(Qt::red)); }, "#12", "color"},
        RefusalCase{"StringList", [](KelPropertiesString& s) { s.setValue("p", QStringList{"a"}); },
                    "\"open", "stringlist"},
        RefusalCase{"StringListEmptyEntry", [](KelPropertiesString& s) { s.setValue("p", QStringList{"a"}); },
                    "a,,b", "stringlist"},
        RefusalCase{"IntList", [](KelPropertiesString& s) { s.setValue("p", std::vector<int>{1}); }, "1, x",
                    "intlist"},
        RefusalCase{"BoolList", [](KelPropertiesString& s) { s.setValue("p", std::vector<bool>{}); }, "true, 2",
                    "boollist"}),
    [](const testing::TestParamInfo<RefusalCase>& info) { return std::string(info.param.label); });

TEST(StoreTextWrite, AcceptedTextIsStoredInTheTypesFormat)
{
    KelPropertiesString store;
    store.setValue("d", 1.0);
    EXPECT_EQ(store.setValue("d", QString(" 2.50 ")), QString());
    EXPECT_EQ(store.getString("d"), "2.5");
    store.setValue("c", QColor());
    EXPECT_EQ(store.setValue("c", "red"), QString());
    EXPECT_EQ(store.getString("c"), "#ff0000");
    store.setValue("u", QString("anything"));
    EXPECT_EQ(store.setValue("u", QString(" kept as is ")), QString());
    EXPECT_EQ(store.getString("u"), " kept as is ");
    EXPECT_EQ(store.valueType("u"), QString());
}

// --- Entries, units, revisions ---------------------------------------------------

TEST(StoreEntries, NamesInInsertionOrderRemoveAndUnits)
{
    KelPropertiesString store;
    store.setValue("b", 1);
    store.setValue("a", QString("x"));
    store.setValue("b", 2);
    EXPECT_EQ(store.names(), (QStringList{"b", "a"}));
    EXPECT_EQ(store.getUnit("b", "mm"), "mm");
    store.setUnit("b", "cm");
    EXPECT_EQ(store.getUnit("b", "mm"), "cm");
    EXPECT_EQ(store.getString("b"), "2");
    store.setUnit("c", "s");
    EXPECT_TRUE(store.defined("c"));
    EXPECT_TRUE(store.remove("b"));
    EXPECT_FALSE(store.remove("b"));
    EXPECT_FALSE(store.defined("b"));
    EXPECT_EQ(store.names(), (QStringList{"a", "c"}));
}

TEST(StoreRevision, ChangesOnEveryWriteAndNeverRepeatsAcrossStores)
{
    KelPropertiesString first;
    KelPropertiesString second;
    EXPECT_NE(first.revision(), second.revision());
    std::uint64_t seen = first.revision();
    const auto expectChanged = [&](const char* what) {
        EXPECT_NE(first.revision(), seen) << what;
        EXPECT_NE(first.revision(), second.revision()) << what;
        seen = first.revision();
    };
    first.setValue("p", 1.0);
    expectChanged("typed write");
    first.setValue("p", QString("1"));
    expectChanged("text write of the same value");
    first.setUnit("p", "m");
    expectChanged("unit write");
    second.setValue("q", 2);
    first = second;
    expectChanged("assignment");
    EXPECT_EQ(first.names(), QStringList{"q"});
    first.remove("q");
    expectChanged("remove");
}
