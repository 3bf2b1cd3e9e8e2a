#pragma once
// A quantity of three components, each a number with an optional unit, such
// as a size "1 [mm], 2 [mm], 0" or a position. Every component is a member
// child node ("x", "y", "z") whose "value" property holds the number, with the
// component's unit as that property's unit.
//
// The triple answers the text interface for its own name with all three
// components: "number [unit]" joined by ", ", the " [unit]" left out for a
// component without unit, numbers in their shortest exact form ("0.1", "1e+20",
// "nan", "inf"). Setting that text parses the same form. Units holding a comma
// or a square bracket cannot be written in it.

#include "OrvCoreExport.h"
#include "IUnitsConverter.h"
#include "KelProperties.h"
#include "KelStoredValue.h"
#include "Vector.h"

#include <boost/shared_ptr.hpp>

class ORV_CORE_EXPORT KelQuantityComponent : public KelProperties {
public:
    KelQuantityComponent(KelModifiedGroup& group, const QString& name);
    KelQuantityComponent(const KelQuantityComponent& other);
    KelQuantityComponent& operator=(const KelQuantityComponent& other);
    ~KelQuantityComponent() override;

    KelStoredValue<double> value;

    QString unit() const { return value.getUnit(); }
    void setUnit(const QString& unit) { value.setUnit(unit); }
    void set(double number, const QString& unit);

    // Converts the value to `target` and takes that unit. A component without
    // unit just takes `target`: a bare number is read as being in it. An empty
    // `target` asks for nothing. False, with nothing changed, when the
    // converter refuses.
    bool convertUnit(const IUnitsConverter& converter, const QString& target);

    // "number [unit]", or just the number without a unit.
    QString text() const;
};

class ORV_CORE_EXPORT KelQuantityTriple : public KelProperties {
public:
    explicit KelQuantityTriple(KelModifiedGroup& group);
    KelQuantityTriple(const KelQuantityTriple& other);
    KelQuantityTriple& operator=(const KelQuantityTriple& other);
    ~KelQuantityTriple() override;

    KelQuantityComponent x;
    KelQuantityComponent y;
    KelQuantityComponent z;

    KelQuantityComponent& component(Orv::Math::Vector3::Comp c);
    const KelQuantityComponent& component(Orv::Math::Vector3::Comp c) const;
    // The three values, rounded to float.
    Orv::Math::Vector3 vector() const;

    void reset(const Orv::Math::Vector3& values, const QString& unit1, const QString& unit2, const QString& unit3);
    // Converts each component to its target unit (see
    // `KelQuantityComponent::convertUnit`). A null converter changes nothing.
    // True when every component with a non-empty target now has it.
    bool convertUnit(const boost::shared_ptr<IUnitsConverter>& converter, const QString& unit1,
                     const QString& unit2, const QString& unit3);

    QString text() const;
    // Parses the text form; malformed text changes nothing and gives a
    // diagnostic. Empty on success.
    QString setText(const QString& text);

    // Own name: the text form. Other names: the store.
    QString getValue(const QString& name, QString& value, const QString& defaultValue) const override;
    QString setValue(const QString& name, const QString& value) override;

private:
    void insertComponents();
};
