#include "KelPropertiesString.h"

#include <QByteArray>

#include <algorithm>
#include <atomic>
#include <charconv>
#include <system_error>

namespace {

// One counter for the whole process, so that a revision never repeats, not
// even across stores: a reader holding a revision of a store that was assigned
// or replaced sees a difference.
std::uint64_t freshRevision()
{
    static std::atomic<std::uint64_t> last{0};
    return ++last;
}

QString cannotRead(const QString& text, const char* type, const QString& name)
{
    return QStringLiteral("cannot read \"%1\" as %2 for \"%3\"").arg(text, QLatin1String(type), name);
}

QString notDefined(const QString& name)
{
    return QStringLiteral("\"%1\" is not defined").arg(name);
}

// --- Scalars -----------------------------------------------------------------

template <class Number>
QString formatNumber(Number value)
{
    char buffer[64];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    return QString::fromLatin1(buffer, static_cast<int>(result.ptr - buffer));
}

// Reads the whole text (outer blanks aside) as a number; overflow fails.
template <class Number>
bool parseNumber(const QString& text, Number& value)
{
    const QByteArray bytes = text.trimmed().toLatin1();
    const char* begin = bytes.constData();
    const char* end = begin + bytes.size();
    Number parsed{};
    const auto result = std::from_chars(begin, end, parsed);
    if (bytes.isEmpty() || result.ec != std::errc() || result.ptr != end)
        return false;
    value = parsed;
    return true;
}

QString formatBool(bool value)
{
    return value ? QStringLiteral("true") : QStringLiteral("false");
}

bool parseBool(const QString& text, bool& value)
{
    const QString word = text.trimmed();
    if (word == QLatin1String("true") || word == QLatin1String("1"))
        value = true;
    else if (word == QLatin1String("false") || word == QLatin1String("0"))
        value = false;
    else
        return false;
    return true;
}

bool isWhole8Bit(quint16 channel)
{
    return (channel >> 8) == (channel & 0xff);
}

QString formatColor(const QColor& color)
{
    if (!color.isValid())
        return {};
    const QRgba64 c = color.rgba64();
    if (!isWhole8Bit(c.red()) || !isWhole8Bit(c.green()) || !isWhole8Bit(c.blue()) || !isWhole8Bit(c.alpha()))
        return QString::asprintf("#%04x%04x%04x%04x", c.alpha(), c.red(), c.green(), c.blue());
    const QRgb rgb = color.rgba();
    if (qAlpha(rgb) == 255)
        return QString::asprintf("#%02x%02x%02x", qRed(rgb), qGreen(rgb), qBlue(rgb));
    return QString::asprintf("#%02x%02x%02x%02x", qAlpha(rgb), qRed(rgb), qGreen(rgb), qBlue(rgb));
}

// "#aaaarrrrggggbbbb", which Qt does not read itself.
bool parseColor64(const QString& text, QColor& color)
{
    quint16 channels[4];
    for (int i = 0; i < 4; ++i) {
        bool ok = false;
        channels[i] = static_cast<quint16>(QStringView(text).mid(1 + 4 * i, 4).toUInt(&ok, 16));
        if (!ok)
            return false;
    }
    color = QColor::fromRgba64(channels[1], channels[2], channels[3], channels[0]);
    return true;
}

bool parseColor(const QString& text, QColor& color)
{
    const QString word = text.trimmed();
    if (word.isEmpty()) {
        color = QColor();
        return true;
    }
    if (word.size() == 17 && word.startsWith(QLatin1Char('#')))
        return parseColor64(word, color);
    // Checked first: QColor warns on names it does not know.
    if (!QColor::isValidColor(word))
        return false;
    color = QColor(word);
    return true;
}

// --- Lists -------------------------------------------------------------------

bool needsQuotes(const QString& entry)
{
    if (entry.isEmpty() || entry.front().isSpace() || entry.back().isSpace())
        return true;
    return std::any_of(entry.begin(), entry.end(), [](QChar c) {
        return c == QLatin1Char(',') || c == QLatin1Char('"') || c == QLatin1Char('\\') || c.category() == QChar::Other_Control;
    });
}

QString quoted(const QString& entry)
{
    QString text = QStringLiteral("\"");
    for (const QChar c : entry) {
        switch (c.unicode()) {
        case '"': text += QLatin1String("\\\""); break;
        case '\\': text += QLatin1String("\\\\"); break;
        case '\n': text += QLatin1String("\\n"); break;
        case '\r': text += QLatin1String("\\r"); break;
        case '\t': text += QLatin1String("\\t"); break;
        default: text += c;
        }
    }
    return text + QLatin1Char('"');
}

QString joinEntries(const QStringList& entries)
{
    QStringList written;
    written.reserve(entries.size());
    for (const QString& entry : entries)
        written << (needsQuotes(entry) ? quoted(entry) : entry);
    return written.join(QLatin1String(", "));
}

// Reads the list text one entry at a time: a quoted entry with escapes, or a
// bare entry up to the next comma (trimmed, not empty, without quotes).
class ListReader {
public:
    explicit ListReader(const QString& text) : m_text(text) {}

    bool read(QStringList& entries)
    {
        entries.clear();
        if (m_text.trimmed().isEmpty())
            return true;
        for (;;) {
            QString entry;
            skipBlanks();
            if (!(atQuote() ? readQuoted(entry) : readBare(entry)))
                return false;
            entries << entry;
            skipBlanks();
            if (atEnd())
                return true;
            if (m_text[m_pos++] != QLatin1Char(','))
                return false;
        }
    }

private:
    bool atEnd() const { return m_pos >= m_text.size(); }
    bool atQuote() const { return !atEnd() && m_text[m_pos] == QLatin1Char('"'); }
    void skipBlanks()
    {
        while (!atEnd() && m_text[m_pos].isSpace())
            ++m_pos;
    }

    bool readQuoted(QString& entry)
    {
        ++m_pos;
        while (!atEnd()) {
            const QChar c = m_text[m_pos++];
            if (c == QLatin1Char('"'))
                return true;
            if (c != QLatin1Char('\\')) {
                entry += c;
                continue;
            }
            if (atEnd())
                return false;
            switch (m_text[m_pos++].unicode()) {
            case '"': entry += QLatin1Char('"'); break;
            case '\\': entry += QLatin1Char('\\'); break;
            case 'n': entry += QLatin1Char('\n'); break;
            case 'r': entry += QLatin1Char('\r'); break;
            case 't': entry += QLatin1Char('\t'); break;
            default: return false;
            }
        }
        return false; // no closing quote
    }

    bool readBare(QString& entry)
    {
        int comma = m_text.indexOf(QLatin1Char(','), m_pos);
        if (comma < 0)
            comma = m_text.size();
        entry = m_text.mid(m_pos, comma - m_pos).trimmed();
        m_pos = comma;
        return !entry.isEmpty() && !entry.contains(QLatin1Char('"'));
    }

    const QString& m_text;
    int m_pos = 0;
};

bool splitEntries(const QString& text, QStringList& entries)
{
    return ListReader(text).read(entries);
}

// --- Codecs: the type name, text format and parser of every typed value ------

template <class T>
struct Codec;

template <>
struct Codec<bool> {
    static constexpr const char* type = "bool";
    static QString format(bool value) { return formatBool(value); }
    static bool parse(const QString& text, bool& value) { return parseBool(text, value); }
};

template <>
struct Codec<int> {
    static constexpr const char* type = "int";
    static QString format(int value) { return formatNumber(value); }
    static bool parse(const QString& text, int& value) { return parseNumber(text, value); }
};

template <>
struct Codec<unsigned> {
    static constexpr const char* type = "unsigned";
    static QString format(unsigned value) { return formatNumber(value); }
    static bool parse(const QString& text, unsigned& value) { return parseNumber(text, value); }
};

template <>
struct Codec<double> {
    static constexpr const char* type = "double";
    static QString format(double value) { return formatNumber(value); }
    static bool parse(const QString& text, double& value) { return parseNumber(text, value); }
};

template <>
struct Codec<QColor> {
    static constexpr const char* type = "color";
    static QString format(const QColor& value) { return formatColor(value); }
    static bool parse(const QString& text, QColor& value) { return parseColor(text, value); }
};

template <>
struct Codec<QStringList> {
    static constexpr const char* type = "stringlist";
    static QString format(const QStringList& value) { return joinEntries(value); }
    static bool parse(const QString& text, QStringList& value) { return splitEntries(text, value); }
};

// Lists of scalars: every element in its scalar format, joined like strings.
template <class List, class Element>
struct ListCodec {
    static QString format(const List& list)
    {
        QStringList entries;
        for (auto&& element : list)
            entries << Codec<Element>::format(element);
        return joinEntries(entries);
    }

    static bool parse(const QString& text, List& list)
    {
        QStringList entries;
        if (!splitEntries(text, entries))
            return false;
        List parsed;
        for (const QString& entry : entries) {
            Element element{};
            if (!Codec<Element>::parse(entry, element))
                return false;
            parsed.push_back(element);
        }
        list = std::move(parsed);
        return true;
    }
};

template <>
struct Codec<QList<QColor>> : ListCodec<QList<QColor>, QColor> {
    static constexpr const char* type = "colorlist";
};

template <>
struct Codec<std::vector<int>> : ListCodec<std::vector<int>, int> {
    static constexpr const char* type = "intlist";
};

template <>
struct Codec<std::vector<double>> : ListCodec<std::vector<double>, double> {
    static constexpr const char* type = "doublelist";
};

template <>
struct Codec<std::vector<bool>> : ListCodec<std::vector<bool>, bool> {
    static constexpr const char* type = "boollist";
};

// Rewrites text in the canonical format of a type; false when it does not parse.
template <class T>
bool canonicalText(const QString& text, QString& canonical)
{
    T value{};
    if (!Codec<T>::parse(text, value))
        return false;
    canonical = Codec<T>::format(value);
    return true;
}

struct TypeChecker {
    const char* type;
    bool (*canonical)(const QString& text, QString& canonical);
};

template <class T>
constexpr TypeChecker checker()
{
    return {Codec<T>::type, &canonicalText<T>};
}

constexpr TypeChecker typeCheckers[] = {
    checker<bool>(), checker<int>(), checker<unsigned>(), checker<double>(),
    checker<QColor>(), checker<QStringList>(), checker<QList<QColor>>(),
    checker<std::vector<int>>(), checker<std::vector<double>>(), checker<std::vector<bool>>(),
};

const TypeChecker* checkerOf(const QString& type)
{
    for (const TypeChecker& checker : typeCheckers) {
        if (type == QLatin1String(checker.type))
            return &checker;
    }
    return nullptr;
}

} // namespace

// --- The store ---------------------------------------------------------------

KelPropertiesString::KelPropertiesString()
    : m_revision(freshRevision())
{
}

KelPropertiesString::KelPropertiesString(const KelPropertiesString& other)
    : m_entries(other.m_entries)
    , m_revision(freshRevision())
{
}

KelPropertiesString& KelPropertiesString::operator=(const KelPropertiesString& other)
{
    if (this != &other)
        m_entries = other.m_entries;
    touch();
    return *this;
}

KelPropertiesString::~KelPropertiesString() = default;

const KelPropertiesString::Entry* KelPropertiesString::find(const QString& name) const
{
    const auto it = std::find_if(m_entries.begin(), m_entries.end(),
                                 [&name](const Entry& entry) { return entry.name == name; });
    return it == m_entries.end() ? nullptr : &*it;
}

KelPropertiesString::Entry* KelPropertiesString::find(const QString& name)
{
    return const_cast<Entry*>(static_cast<const KelPropertiesString*>(this)->find(name));
}

KelPropertiesString::Entry& KelPropertiesString::findOrAppend(const QString& name)
{
    if (Entry* entry = find(name))
        return *entry;
    m_entries.push_back(Entry{name, QString(), QString(), QString()});
    return m_entries.back();
}

void KelPropertiesString::touch()
{
    m_revision = freshRevision();
}

bool KelPropertiesString::defined(const QString& name) const
{
    return find(name) != nullptr;
}

QStringList KelPropertiesString::names() const
{
    QStringList list;
    list.reserve(static_cast<int>(m_entries.size()));
    for (const Entry& entry : m_entries)
        list << entry.name;
    return list;
}

bool KelPropertiesString::remove(const QString& name)
{
    const auto it = std::find_if(m_entries.begin(), m_entries.end(),
                                 [&name](const Entry& entry) { return entry.name == name; });
    if (it == m_entries.end())
        return false;
    m_entries.erase(it);
    touch();
    return true;
}

QString KelPropertiesString::getUnit(const QString& name, const QString& defaultUnit) const
{
    const Entry* entry = find(name);
    return entry && !entry->unit.isEmpty() ? entry->unit : defaultUnit;
}

QString KelPropertiesString::setUnit(const QString& name, const QString& unit)
{
    findOrAppend(name).unit = unit;
    touch();
    return {};
}

QString KelPropertiesString::getString(const QString& name) const
{
    const Entry* entry = find(name);
    return entry ? entry->value : QString();
}

QString KelPropertiesString::valueType(const QString& name) const
{
    const Entry* entry = find(name);
    return entry ? entry->type : QString();
}

template <class T>
QString KelPropertiesString::getTyped(const QString& name, T& value, const T& defaultValue) const
{
    const Entry* entry = find(name);
    if (!entry) {
        value = defaultValue;
        return notDefined(name);
    }
    if (!Codec<T>::parse(entry->value, value)) {
        value = defaultValue;
        return cannotRead(entry->value, Codec<T>::type, name);
    }
    return {};
}

template <class T>
QString KelPropertiesString::setTyped(const QString& name, const T& value)
{
    Entry& entry = findOrAppend(name);
    entry.value = Codec<T>::format(value);
    entry.type = QLatin1String(Codec<T>::type);
    touch();
    return {};
}

QString KelPropertiesString::getValue(const QString& name, QString& value, const QString& defaultValue) const
{
    const Entry* entry = find(name);
    value = entry ? entry->value : defaultValue;
    return entry ? QString() : notDefined(name);
}

QString KelPropertiesString::getValue(const QString& name, bool& value, bool defaultValue) const
{
    return getTyped(name, value, defaultValue);
}

QString KelPropertiesString::getValue(const QString& name, int& value, int defaultValue) const
{
    return getTyped(name, value, defaultValue);
}

QString KelPropertiesString::getValue(const QString& name, unsigned& value, unsigned defaultValue) const
{
    return getTyped(name, value, defaultValue);
}

QString KelPropertiesString::getValue(const QString& name, double& value, double defaultValue) const
{
    return getTyped(name, value, defaultValue);
}

QString KelPropertiesString::getValue(const QString& name, QColor& value, const QColor& defaultValue) const
{
    return getTyped(name, value, defaultValue);
}

QString KelPropertiesString::getValue(const QString& name, QStringList& value,
                                      const QStringList& defaultValue) const
{
    return getTyped(name, value, defaultValue);
}

QString KelPropertiesString::getValue(const QString& name, QList<QColor>& value,
                                      const QList<QColor>& defaultValue) const
{
    return getTyped(name, value, defaultValue);
}

QString KelPropertiesString::getValue(const QString& name, std::vector<int>& value,
                                      const std::vector<int>& defaultValue) const
{
    return getTyped(name, value, defaultValue);
}

QString KelPropertiesString::getValue(const QString& name, std::vector<double>& value,
                                      const std::vector<double>& defaultValue) const
{
    return getTyped(name, value, defaultValue);
}

QString KelPropertiesString::getValue(const QString& name, std::vector<bool>& value,
                                      const std::vector<bool>& defaultValue) const
{
    return getTyped(name, value, defaultValue);
}

QString KelPropertiesString::setValue(const QString& name, const QString& value)
{
    Entry* entry = find(name);
    QString stored = value;
    if (entry && !entry->type.isEmpty()) {
        const TypeChecker* checker = checkerOf(entry->type);
        if (checker && !checker->canonical(value, stored))
            return cannotRead(value, checker->type, name);
    }
    findOrAppend(name).value = stored;
    touch();
    return {};
}

QString KelPropertiesString::setValue(const QString& name, bool value)
{
    return setTyped(name, value);
}

QString KelPropertiesString::setValue(const QString& name, int value)
{
    return setTyped(name, value);
}

QString KelPropertiesString::setValue(const QString& name, unsigned value)
{
    return setTyped(name, value);
}

QString KelPropertiesString::setValue(const QString& name, double value)
{
    return setTyped(name, value);
}

QString KelPropertiesString::setValue(const QString& name, const QColor& value)
{
    return setTyped(name, value);
}

QString KelPropertiesString::setValue(const QString& name, const QStringList& value)
{
    return setTyped(name, value);
}

QString KelPropertiesString::setValue(const QString& name, const QList<QColor>& value)
{
    return setTyped(name, value);
}

QString KelPropertiesString::setValue(const QString& name, const std::vector<int>& value)
{
    return setTyped(name, value);
}

QString KelPropertiesString::setValue(const QString& name, const std::vector<double>& value)
{
    return setTyped(name, value);
}

QString KelPropertiesString::setValue(const QString& name, const std::vector<bool>& value)
{
    return setTyped(name, value);
}
