#include "KelProperties.h" // prints QString in failure messages
#include "KelPropertiesString.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <functional>
#include <limits>

namespace {

template <class T>
bool same(const T& a, const T& b)
{
    return a == b;
}

// Bit for bit, except that a NaN keeps only its sign. (QColor compares all 16 bits of its channels.)
bool same(double a, double b)
{
    if (std::isnan(a) || std::isnan(b))
        return std::isnan(a) && std::isnan(b) && std::signbit(a) == std::signbit(b);
    return std::memcmp(&a, &b, sizeof a) == 0;
}

// A typed write with its stored text, a check that the value reads back from
// a copy of the store (so the text is all that carries it), and a text that a
// write by name must refuse for the entry's type.
struct Entry {
    QString text;
    std::function<void(KelPropertiesString&)> write;
    std::function<bool(const KelPropertiesString&)> readsBack;
    QString refused;
    QString type;
};

template <class T>
Entry entry(const T& value, const char* text, const char* refused = nullptr, const char* type = nullptr)
{
    return {QString::fromUtf8(text), [value](KelPropertiesString& store) { store.setValue("p", value); },
            [value](const KelPropertiesString& store) {
                T back{};
                return store.getValue("p", back, T{}).isEmpty() && same(back, value);
            },
            QString::fromUtf8(refused), QString::fromUtf8(type)};
}

void PrintTo(const Entry& entry, std::ostream* os)
{
    *os << '"' << entry.text << '"';
}

class StoreEntry : public testing::TestWithParam<Entry> {};

} // namespace

TEST_P(StoreEntry, RoundTripsThroughItsTextAndRefusesTextOfAnotherForm)
{
    const Entry& e = GetParam();
    KelPropertiesString store;
    e.write(store);
    EXPECT_EQ(store.getString("p"), e.text);
    EXPECT_TRUE(e.readsBack(KelPropertiesString(store)));
    EXPECT_EQ(store.setValue("p", e.text), QString()); // its own text is accepted by name
    EXPECT_EQ(store.getString("p"), e.text);
    if (e.refused.isNull())
        return;
    const std::uint64_t revision = store.revision();
    EXPECT_EQ(store.setValue("p", e.refused), QString("cannot read \"%1\" as %2 for \"p\"").arg(e.refused, e.type));
    EXPECT_EQ(store.getString("p"), e.text);
    EXPECT_EQ(store.revision(), revision);
}

using Limits = std::numeric_limits<double>;
const double quietNan = Limits::quiet_NaN();

INSTANTIATE_TEST_SUITE_P(
    Types, StoreEntry,
    testing::Values(
        entry(true, "true", "yes", "bool"), entry(false, "false"),
        entry(std::numeric_limits<int>::min(), "-2147483648", "1.5", "int"),
        entry(std::numeric_limits<int>::max(), "2147483647", "2147483648", "int"),
        entry(std::numeric_limits<unsigned>::max(), "4294967295", "-1", "unsigned"),
        entry(0.1, "0.1", "abc", "double"), entry(-0.0, "-0", "1e999", "double"),
        entry(1.0 / 3.0, "0.3333333333333333"), entry(Limits::max(), "1.7976931348623157e+308"),
        entry(Limits::denorm_min(), "5e-324"), entry(-Limits::infinity(), "-inf"), entry(quietNan, "nan"),
        entry(-quietNan, "-nan"), entry(QString("any, \"text\"\n"), "any, \"text\"\n"),
        entry(QColor(255, 0, 16), "#ff0010", "#12", "color"), entry(QColor(1, 2, 3, 4), "#04010203"),
        entry(QColor::fromRgba64(0x1234, 0xffff, 0, 0xffff), "#ffff1234ffff0000"), entry(QColor(), ""),
        entry(QStringList{}, ""), entry(QStringList{""}, "\"\"", "\"open", "stringlist"),
        entry(QStringList{"a", "b c", "", "x,y"}, "a, b c, \"\", \"x,y\"", "a,,b", "stringlist"),
        entry(QStringList{"say \"hi\"", "back\\slash", "line\nbreak\r\t", " padded "},
              "\"say \\\"hi\\\"\", \"back\\\\slash\", \"line\\nbreak\\r\\t\", \" padded \""),
        entry(QStringList{QString(QChar(1)), "\u00a0nbsp", QString::fromUtf8("\xc3\xbc\xe2\x82\xac")},
              "\"\x01\", \"\u00a0nbsp\", \xc3\xbc\xe2\x82\xac"),
        entry(QList<QColor>{Qt::red, QColor(), QColor(1, 2, 3, 4)}, "#ff0000, \"\", #04010203", "red, nocolor",
              "colorlist"),
        entry(std::vector<int>{-1, 0, 65536}, "-1, 0, 65536", "1, x", "intlist"), entry(std::vector<int>{}, ""),
        entry(std::vector<double>{0.1, -0.0, 1e300, Limits::infinity()}, "0.1, -0, 1e+300, inf", "1, \"2",
              "doublelist"),
        entry(std::vector<bool>{true, false}, "true, false", "true, 2", "boollist")));

TEST(StoreRead, AcceptsLenientFormsAndGivesTheDefaultForBadTextOrMissingNames)
{
    KelPropertiesString store;
    store.setValue("i", QString(" 12 "));
    store.setValue("b", QString("1"));
    store.setValue("c", QString("red, #80ff0000,\"\""));
    int i = 0;
    bool b = false;
    QList<QColor> colors;
    EXPECT_TRUE(store.getValue("i", i, 0).isEmpty() && store.getValue("b", b, false).isEmpty());
    EXPECT_EQ(store.getValue("c", colors, {}), QString());
    EXPECT_TRUE(i == 12 && b);
    EXPECT_EQ(colors, (QList<QColor>{QColor(Qt::red), QColor(255, 0, 0, 128), QColor()}));
    EXPECT_EQ(store.getValue("c", i, 7), "cannot read \"red, #80ff0000,\"\"\" as int for \"c\"");
    EXPECT_EQ(i, 7);
    EXPECT_FALSE(store.getValue("missing", i, 9).isEmpty());
    EXPECT_EQ(i, 9);
}

// Accepted text by name is stored in the type's format (untyped text as is),
// in place: names keep the order in which they were first written.
TEST(StoreEntries, KeepTheirOrderTheirUnitsAndTheTypesFormat)
{
    KelPropertiesString store;
    store.setValue("d", 1.0);
    store.setValue("c", QColor());
    store.setValue("u", QString("anything"));
    EXPECT_EQ(store.setValue("d", QString(" 2.50 ")), QString());
    EXPECT_EQ(store.setValue("c", "red"), QString());
    EXPECT_EQ(store.setValue("u", QString(" kept as is ")), QString());
    EXPECT_EQ(store.getString("d"), "2.5");
    EXPECT_EQ(store.getString("c"), "#ff0000");
    EXPECT_EQ(store.getString("u"), " kept as is ");
    EXPECT_EQ(store.getUnit("d", "mm"), "mm");
    store.setUnit("d", "cm");
    store.setUnit("e", "s"); // defines the name
    EXPECT_EQ(store.getUnit("d", "mm"), "cm");
    EXPECT_EQ(store.names(), (QStringList{"d", "c", "u", "e"}));
    EXPECT_TRUE(store.remove("d"));
    EXPECT_FALSE(store.remove("d"));
    EXPECT_EQ(store.names(), (QStringList{"c", "u", "e"}));
}

TEST(StoreRevision, ChangesOnEveryWriteAndNeverRepeatsAcrossStores)
{
    KelPropertiesString first;
    KelPropertiesString second;
    EXPECT_NE(first.revision(), second.revision());
    const auto expectChangedBy = [&](const char* what, const std::function<void()>& write) {
        const std::uint64_t before = first.revision();
        write();
        EXPECT_NE(first.revision(), before) << what;
        EXPECT_NE(first.revision(), second.revision()) << what;
    };
    expectChangedBy("typed write", [&] { first.setValue("p", 1.0); });
    expectChangedBy("text write of the same value", [&] { first.setValue("p", QString("1")); });
    expectChangedBy("unit write", [&] { first.setUnit("p", "m"); });
    second.setValue("q", 2);
    expectChangedBy("assignment", [&] { first = second; });
    expectChangedBy("remove", [&] { first.remove("q"); });
}
