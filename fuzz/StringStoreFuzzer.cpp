// The string store of a property node under arbitrary writes: typed values,
// texts by name, units and removals, in any order. Properties checked:
//   - a typed value reads back exactly as written;
//   - an untyped entry takes any text as it is;
//   - a refused text leaves the stored text as it was;
//   - an accepted text reads back as its entry's type, and writing the stored
//     text again is accepted and changes nothing;
//   - any text read as any type that parses survives a typed round trip.

#include "FuzzInput.h"
#include "FuzzTargets.h"

#include "KelPropertiesString.h"

#include <QColor>
#include <QList>
#include <QString>
#include <QStringList>

#include <cmath>
#include <cstring>
#include <vector>

namespace {

constexpr int maxOperations = 32;
constexpr int maxListLength = 6;
constexpr std::size_t maxTextLength = 48;

// Fragments of the text formats, so that short inputs build texts the parsers
// take apart: quotes, escapes, separators, number and colour spellings.
const char* const fragments[] = {
    "\"", ",", ", ", "\\", "\\n", "\\\"", "\\x", " ", "\t", "\n", "\r", "\xc2\xa0", "\xe2\x80\xa8",
    "nan", "-nan", "inf", "-inf", "-0", "0", "1", "-1", "1.5", "1e308", "1e309", "4.9e-324", "1e-400",
    "4294967295", "4294967296", "2147483647", "-2147483648", "2147483648", "+1", "0x10", ".5", "5.",
    "true", "false", "#", "#ff0000", "#80ff0000", "#0000ffff00000000", "#fff", "#123456789", "#12345678901234567",
    "red", "transparent", "\"\"", "\x01", "\xc3\xa9", "\xf0\x9f\x98\x80", "\xff",
};

const char* const names[] = {"a", "b", "lineWidth", "colors", ""};

QString textFrom(FuzzInput& in)
{
    if (in.flag())
        return QString::fromUtf8(QByteArray::fromStdString(in.text(maxTextLength)));
    QString text;
    const int count = in.index(8) + 1;
    for (int i = 0; i < count; ++i)
        text += in.flag() ? QString::fromUtf8(fragments[in.index(static_cast<int>(std::size(fragments)))])
                          : QString::fromUtf8(QByteArray::fromStdString(in.text(4)));
    return text;
}

QString nameFrom(FuzzInput& in)
{
    const int choice = in.index(static_cast<int>(std::size(names)) + 1);
    if (choice == static_cast<int>(std::size(names)))
        return textFrom(in);
    return QString::fromLatin1(names[choice]);
}

QColor colorFrom(FuzzInput& in)
{
    switch (in.index(4)) {
    case 0:
        return QColor();
    case 1: {
        const auto channel = [&in] { return static_cast<quint16>(in.integer(0, 0xffff)); };
        const quint16 r = channel(), g = channel(), b = channel(), a = channel();
        return QColor::fromRgba64(r, g, b, a);
    }
    case 2: {
        const int r = in.byte(), g = in.byte(), b = in.byte(), a = in.byte();
        return QColor(r, g, b, a);
    }
    default: {
        // Hue -1 is Qt's achromatic colour.
        const int h = static_cast<int>(in.integer(-1, 359)), s = in.byte(), v = in.byte(), a = in.byte();
        return QColor::fromHsv(h, s, v, a);
    }
    }
}

// Equality as the store promises it: doubles bit for bit, except that a NaN
// keeps only its sign; colours by their RGB value.
bool same(double a, double b)
{
    if (std::isnan(a) || std::isnan(b))
        return std::isnan(a) && std::isnan(b) && std::signbit(a) == std::signbit(b);
    return std::memcmp(&a, &b, sizeof a) == 0;
}

bool same(const QColor& a, const QColor& b)
{
    return a.isValid() == b.isValid() && (!a.isValid() || a.rgba64() == b.rgba64());
}

template <class T>
bool same(const T& a, const T& b)
{
    return a == b;
}

template <class List>
bool sameLists(const List& a, const List& b)
{
    if (a.size() != b.size())
        return false;
    for (int i = 0; i < static_cast<int>(a.size()); ++i)
        if (!same(a[i], b[i]))
            return false;
    return true;
}

bool same(const std::vector<double>& a, const std::vector<double>& b)
{
    return sameLists(a, b);
}

bool same(const QList<QColor>& a, const QList<QColor>& b)
{
    return sameLists(a, b);
}

// A typed value written to a fresh store reads back the same, and its text is stable.
template <class T>
void checkRoundTrip(const T& value)
{
    KelPropertiesString scratch;
    const QString name = QStringLiteral("v");
    FUZZ_CHECK(scratch.setValue(name, value).isEmpty());
    T back{};
    FUZZ_CHECK(scratch.getValue(name, back, T{}).isEmpty());
    FUZZ_CHECK(same(value, back));
    const QString text = scratch.getString(name);
    FUZZ_CHECK(scratch.setValue(name, text).isEmpty());
    FUZZ_CHECK(scratch.getString(name) == text);
}

// Reads the entry as T; a value that parses must survive a round trip. The
// entry's own type must always parse.
template <class T>
void readAs(const KelPropertiesString& store, const QString& name, const char* type)
{
    T value{};
    const bool parsed = store.getValue(name, value, T{}).isEmpty();
    if (store.defined(name) && store.valueType(name) == QLatin1String(type))
        FUZZ_CHECK(parsed);
    if (parsed && store.defined(name))
        checkRoundTrip(value);
}

void readAsEveryType(const KelPropertiesString& store, const QString& name)
{
    QString text;
    store.getValue(name, text, QString());
    FUZZ_CHECK(text == store.getString(name));
    readAs<bool>(store, name, "bool");
    readAs<int>(store, name, "int");
    readAs<unsigned>(store, name, "unsigned");
    readAs<double>(store, name, "double");
    readAs<QColor>(store, name, "color");
    readAs<QStringList>(store, name, "stringlist");
    readAs<QList<QColor>>(store, name, "colorlist");
    readAs<std::vector<int>>(store, name, "intlist");
    readAs<std::vector<double>>(store, name, "doublelist");
    readAs<std::vector<bool>>(store, name, "boollist");
}

template <class T>
void writeTyped(KelPropertiesString& store, const QString& name, const T& value)
{
    FUZZ_CHECK(store.setValue(name, value).isEmpty());
    T back{};
    FUZZ_CHECK(store.getValue(name, back, T{}).isEmpty());
    FUZZ_CHECK(same(value, back));
}

template <class List, class Make>
List listFrom(FuzzInput& in, Make make)
{
    List list;
    const int length = in.index(maxListLength + 1);
    for (int i = 0; i < length; ++i)
        list.push_back(make());
    return list;
}

void writeTypedValue(KelPropertiesString& store, const QString& name, FuzzInput& in)
{
    switch (in.index(10)) {
    case 0: writeTyped(store, name, in.flag()); break;
    case 1: writeTyped(store, name, in.anyInt()); break;
    case 2: writeTyped(store, name, static_cast<unsigned>(in.anyInt())); break;
    case 3: writeTyped(store, name, in.anyDouble()); break;
    case 4: writeTyped(store, name, colorFrom(in)); break;
    case 5: writeTyped(store, name, listFrom<QStringList>(in, [&in] { return textFrom(in); })); break;
    case 6: writeTyped(store, name, listFrom<QList<QColor>>(in, [&in] { return colorFrom(in); })); break;
    case 7: writeTyped(store, name, listFrom<std::vector<int>>(in, [&in] { return in.anyInt(); })); break;
    case 8: writeTyped(store, name, listFrom<std::vector<double>>(in, [&in] { return in.anyDouble(); })); break;
    default: writeTyped(store, name, listFrom<std::vector<bool>>(in, [&in] { return in.flag(); })); break;
    }
}

void writeText(KelPropertiesString& store, const QString& name, const QString& text)
{
    const bool typed = !store.valueType(name).isEmpty();
    const QString before = store.getString(name);
    if (!store.setValue(name, text).isEmpty()) {
        FUZZ_CHECK(typed);
        FUZZ_CHECK(store.getString(name) == before);
        return;
    }
    const QString stored = store.getString(name);
    if (!typed)
        FUZZ_CHECK(stored == text);
    FUZZ_CHECK(store.setValue(name, stored).isEmpty());
    FUZZ_CHECK(store.getString(name) == stored);
}

} // namespace

int fuzzStringStore(const std::uint8_t* data, std::size_t size)
{
    FuzzInput in(data, size);
    KelPropertiesString store;
    for (int operation = 0; operation < maxOperations && !in.empty(); ++operation) {
        const QString name = nameFrom(in);
        switch (in.index(6)) {
        case 0:
        case 1:
            writeTypedValue(store, name, in);
            break;
        case 2:
        case 3:
            writeText(store, name, textFrom(in));
            break;
        case 4: {
            const QString unit = textFrom(in);
            store.setUnit(name, unit);
            FUZZ_CHECK(store.defined(name));
            FUZZ_CHECK(store.getUnit(name, QStringLiteral("?")) == (unit.isEmpty() ? QStringLiteral("?") : unit));
            break;
        }
        default: {
            const bool wasDefined = store.defined(name);
            FUZZ_CHECK(store.remove(name) == wasDefined);
            FUZZ_CHECK(!store.defined(name));
            break;
        }
        }
        readAsEveryType(store, name);
    }
    // A copy holds the same entries in the same order.
    const KelPropertiesString copy(store);
    FUZZ_CHECK(copy.names() == store.names());
    for (const QString& name : store.names())
        FUZZ_CHECK(copy.getString(name) == store.getString(name) && copy.valueType(name) == store.valueType(name));
    return 0;
}

#ifndef ORV_FUZZ_REPLAY
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    return fuzzStringStore(data, size);
}
#endif
