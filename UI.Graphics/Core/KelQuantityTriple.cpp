#include "KelQuantityTriple.h"

#include <QLocale>
#include <QRegularExpression>
#include <QStringList>

#include <array>

namespace {

using Comp = Orv::Math::Vector3::Comp;

QString shortestText(double number)
{
    return QString::number(number, 'g', QLocale::FloatingPointShortest);
}

struct ParsedComponent {
    double number = 0.0;
    QString unit;
};

// "number" or "number [unit]", blanks allowed around the parts.
bool parseComponent(const QString& text, ParsedComponent& parsed)
{
    static const QRegularExpression form(QStringLiteral(R"(^\s*([^\s\[\]]+)\s*(?:\[([^\[\]]*)\])?\s*$)"));
    const QRegularExpressionMatch match = form.match(text);
    if (!match.hasMatch())
        return false;
    bool ok = false;
    parsed.number = match.captured(1).toDouble(&ok);
    parsed.unit = match.captured(2);
    return ok;
}

} // namespace

KelQuantityComponent::KelQuantityComponent(KelModifiedGroup& group, const QString& name)
    : KelProperties(group)
    , value(*this, QStringLiteral("value"), 0.0)
{
    setType(QStringLiteral("quantity.component"));
    rename(name);
}

KelQuantityComponent::KelQuantityComponent(const KelQuantityComponent& other)
    : KelProperties(other)
    , value(*this, QStringLiteral("value"), 0.0)
{
}

KelQuantityComponent& KelQuantityComponent::operator=(const KelQuantityComponent& other)
{
    KelProperties::operator=(other);
    return *this;
}

KelQuantityComponent::~KelQuantityComponent() = default;

void KelQuantityComponent::set(double number, const QString& unit)
{
    value.set(number);
    setUnit(unit);
}

bool KelQuantityComponent::convertUnit(const IUnitsConverter& converter, const QString& target)
{
    const QString current = unit();
    if (target.isEmpty() || target == current)
        return true;
    double number = value.get();
    if (!current.isEmpty() && !converter.convert(number, current, target))
        return false;
    set(number, target);
    return true;
}

QString KelQuantityComponent::text() const
{
    const QString number = shortestText(value.get());
    const QString u = unit();
    return u.isEmpty() ? number : number + QStringLiteral(" [") + u + QLatin1Char(']');
}

KelQuantityTriple::KelQuantityTriple(KelModifiedGroup& group)
    : KelProperties(group)
    , x(group, QStringLiteral("x"))
    , y(group, QStringLiteral("y"))
    , z(group, QStringLiteral("z"))
{
    setType(QStringLiteral("quantity.triple"));
    rename(QStringLiteral("quantity.1"));
    insertComponents();
}

// The base copies no children, so the copied components join this node here.
KelQuantityTriple::KelQuantityTriple(const KelQuantityTriple& other)
    : KelProperties(other)
    , x(other.x)
    , y(other.y)
    , z(other.z)
{
    insertComponents();
}

KelQuantityTriple& KelQuantityTriple::operator=(const KelQuantityTriple& other) = default;

KelQuantityTriple::~KelQuantityTriple() = default;

void KelQuantityTriple::insertComponents()
{
    insert(&x, true);
    insert(&y, true);
    insert(&z, true);
}

KelQuantityComponent& KelQuantityTriple::component(Comp c)
{
    return c == Comp::X ? x : c == Comp::Y ? y : z;
}

const KelQuantityComponent& KelQuantityTriple::component(Comp c) const
{
    return const_cast<KelQuantityTriple&>(*this).component(c);
}

Orv::Math::Vector3 KelQuantityTriple::vector() const
{
    return {static_cast<float>(x.value.get()), static_cast<float>(y.value.get()),
            static_cast<float>(z.value.get())};
}

void KelQuantityTriple::reset(const Orv::Math::Vector3& values, const QString& unit1, const QString& unit2,
                              const QString& unit3)
{
    x.set(values.x(), unit1);
    y.set(values.y(), unit2);
    z.set(values.z(), unit3);
    setModified();
}

bool KelQuantityTriple::convertUnit(const boost::shared_ptr<IUnitsConverter>& converter, const QString& unit1,
                                    const QString& unit2, const QString& unit3)
{
    if (!converter)
        return false;
    // Every component is tried, even after a refusal.
    const bool first = x.convertUnit(*converter, unit1);
    const bool second = y.convertUnit(*converter, unit2);
    const bool third = z.convertUnit(*converter, unit3);
    setModified();
    return first && second && third;
}

QString KelQuantityTriple::text() const
{
    return x.text() + QStringLiteral(", ") + y.text() + QStringLiteral(", ") + z.text();
}

QString KelQuantityTriple::setText(const QString& text)
{
    const QStringList parts = text.split(QLatin1Char(','));
    std::array<ParsedComponent, 3> parsed;
    bool ok = parts.size() == 3;
    for (int i = 0; ok && i < 3; ++i)
        ok = parseComponent(parts[i], parsed[static_cast<std::size_t>(i)]);
    if (!ok) {
        return QStringLiteral("%1: expected three components \"number [unit]\" separated by commas, got \"%2\"")
            .arg(name(), text);
    }
    x.set(parsed[0].number, parsed[0].unit);
    y.set(parsed[1].number, parsed[1].unit);
    z.set(parsed[2].number, parsed[2].unit);
    setModified();
    return {};
}

QString KelQuantityTriple::getValue(const QString& name, QString& value, const QString& defaultValue) const
{
    if (name != this->name())
        return KelProperties::getValue(name, value, defaultValue);
    value = text();
    return {};
}

QString KelQuantityTriple::setValue(const QString& name, const QString& value)
{
    return name == this->name() ? setText(value) : KelProperties::setValue(name, value);
}
