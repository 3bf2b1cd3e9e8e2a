#include "KelUnitSystem.h"

#include "KelUnitsConverter.h"

KelUnitSystem::KelUnitSystem(KelModifiedGroup& group)
    : KelProperties(group)
    , enabled(*this, QStringLiteral("enabled"), false)
    , preferredUnits(*this, QStringLiteral("preferredUnits"), defaultPreferredUnits())
{
    setType(QStringLiteral("units.system"));
    rename(QStringLiteral("unitsystem.1"));
}

// The base copies the store, so the properties find their values there.
KelUnitSystem::KelUnitSystem(const KelUnitSystem& other)
    : KelProperties(other)
    , enabled(*this, other.enabled.name(), false)
    , preferredUnits(*this, other.preferredUnits.name(), defaultPreferredUnits())
{
}

KelUnitSystem& KelUnitSystem::operator=(const KelUnitSystem& other)
{
    KelProperties::operator=(other);
    return *this;
}

KelUnitSystem::~KelUnitSystem() = default;

boost::shared_ptr<IUnitsConverter> KelUnitSystem::GetConverter() const
{
    const QStringList units = preferredUnits.get();
    if (!m_converter || units != m_converterUnits) {
        m_converter = boost::shared_ptr<IUnitsConverter>(new KelUnitsConverter(units));
        m_converterUnits = units;
    }
    return m_converter;
}

QStringList KelUnitSystem::defaultPreferredUnits()
{
    return {QStringLiteral("m"),    QStringLiteral("kg"),     QStringLiteral("s"),   QStringLiteral("A"),
            QStringLiteral("K"),    QStringLiteral("mol"),    QStringLiteral("cd"),  QStringLiteral("m2"),
            QStringLiteral("m3"),   QStringLiteral("m/s"),    QStringLiteral("m/s2"), QStringLiteral("N"),
            QStringLiteral("Pa"),   QStringLiteral("J"),      QStringLiteral("W"),   QStringLiteral("kg m-3")};
}
