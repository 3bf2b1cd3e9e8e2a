#pragma once
// A variable iterator fed from memory by the host: scalar items (doubles) or
// 2-D items (pairs of floats), each component with its own undefined flags and
// native unit. The data are not properties and are not persisted.
//
// Units: each component is delivered in the unit chosen through `setUnits`,
// else, with the unit system flag on, in the converter's preferred unit of its
// dimension, else in its native unit. `units` reports the latter two, the
// units the data have under the unit system, never a chosen one. A component without native unit is a
// bare number and is never converted; `setUnits` accepts only an empty unit
// for it. A chosen unit that the data replaced later can no longer reach is
// kept but not used: the component falls back to its native unit.
//
// An item component is undefined when the host's flag says so; NaN and
// infinite values are ordinary values here, for the caller to judge.
// Logarithmic components are delivered as log10 of their (converted) values;
// values <= 0 have no logarithm and are then reported undefined (as NaN).
//
// The delivered arrays are built in one pass, with one converter call per
// component, when data, units or settings changed: lazily at the next
// `reset()` (or `units()`). Call `reset()` before iterating after any change.

#include "OrvCoreExport.h"
#include "KelProperties.h"
#include "KelVariableIterInterface.h"

#include <array>
#include <cstddef>
#include <vector>

class ORV_CORE_EXPORT KelVariableIter : public KelProperties, public KelVariableIterInterface {
public:
    explicit KelVariableIter(KelModifiedGroup& group);
    KelVariableIter(const KelVariableIter& other);
    KelVariableIter& operator=(const KelVariableIter& other);
    ~KelVariableIter() override;

    // Undefined flag vectors may be empty (all defined) or shorter than the
    // values (the rest defined). Pass the vectors with std::move to hand them
    // over without a copy.
    void setScalarData(std::vector<double> values, std::vector<bool> undefined = {}, const QString& unit = {});
    // `x` and `y` must have the same length; the longer one is cut.
    void setVector2Data(std::vector<float> x, std::vector<float> y, std::vector<bool> xUndefined = {},
                        std::vector<bool> yUndefined = {}, const QString& xUnit = {}, const QString& yUnit = {});
    // The same with x in double precision, for x values a float cannot tell apart (times of
    // samples 0.1 s apart, years after the first): iteration delivers them rounded to float, as
    // every 2-D item is; `delivered()` also gives them in full (`Delivered::exactX`).
    void setPreciseVector2Data(std::vector<double> x, std::vector<float> y, std::vector<bool> xUndefined = {},
                               std::vector<bool> yUndefined = {}, const QString& xUnit = {},
                               const QString& yUnit = {});
    // Drops the data and their native units; chosen units and flags stay.
    void clear();
    std::size_t size() const { return m_size; }
    // 1 for scalar items, 2 for 2-D items, 0 without data.
    int dimension() const { return m_dimension; }
    QString nativeUnit(Orv::Math::Vector3::Comp c) const;

    // How many defined values of logarithmic components are <= 0 and so were
    // delivered undefined, counted over both components.
    std::size_t valuesWithoutLogarithm();

    // The items that iteration delivers, as arrays: what `scalarValue`,
    // `vector2Value` and `undefinedFlags` give item by item, for readers that
    // take millions of items and cannot afford several virtual calls each.
    // Prepares the arrays as `reset()` does but leaves the iteration position
    // alone. The views stay valid until the data or a setting changes.
    struct Delivered {
        std::size_t size = 0;
        const double* scalars = nullptr; // scalar items
        const float* x = nullptr;        // 2-D items
        const float* y = nullptr;
        const double* exactX = nullptr;  // x in double precision, where the host gave it so
        const std::vector<bool>* xUndefined = nullptr; // `size` flags, or null without data
        const std::vector<bool>* yUndefined = nullptr; // 2-D items only
    };
    Delivered delivered();

    bool next() override;
    void reset() override;
    // The value of a scalar item, or the first component of a 2-D item.
    double scalarValue() override;
    void vector2Value(Orv::Math::Vector2& value) override;
    void vector3Value(Orv::Math::Vector3& value) override;
    void undefinedFlags(bool& x, bool& y, bool& z) override;
    bool hasDimension(int n) override;
    void setConverter(const boost::shared_ptr<IUnitsConverter>& converter) override;
    void setUnitSystemFlag(bool on) override;
    void units(QString& x, QString& y, QString& z) override;
    bool setUnits(const QString& x, const QString& y, const QString& z) override;
    void logarithmic(bool& x, bool& y, bool& z) const override;
    void setLogarithmic(bool x, bool y, bool z) override;

private:
    struct Component {
        QString nativeUnit;
        QString chosenUnit; // from setUnits; empty when none was chosen
        bool logarithmic = false;
    };
    static constexpr std::size_t noItem = static_cast<std::size_t>(-1);

    void invalidate();
    // Builds the delivered arrays, unless nothing changed since they were built.
    void prepare();
    QString systemUnit(const Component& component) const;
    QString targetUnit(const Component& component) const;
    bool accepts(const Component& component, const QString& unit) const;
    template <class T>
    const T* deliver(const std::vector<T>& native, std::vector<T>& converted, std::size_t index);
    const double* deliverExactX();

    // Native data.
    int m_dimension = 0;
    std::size_t m_size = 0;
    std::vector<double> m_scalars;
    std::vector<float> m_xs;
    std::vector<float> m_ys;
    std::vector<double> m_exactXs; // empty unless the host gave x in double precision
    std::array<std::vector<bool>, 2> m_undefined;

    // Settings.
    std::array<Component, 3> m_components;
    boost::shared_ptr<IUnitsConverter> m_converter;
    bool m_unitSystem = false;

    // Delivered data: views of the native arrays or of the converted copies.
    // `m_count` is 0 until `prepare` built them, so stale views are never read.
    bool m_prepared = false;
    std::vector<double> m_convertedScalars;
    std::vector<float> m_convertedXs;
    std::vector<float> m_convertedYs;
    std::vector<double> m_convertedExactXs;
    const double* m_scalarView = nullptr;
    const float* m_xView = nullptr;
    const float* m_yView = nullptr;
    const double* m_exactXView = nullptr;
    // The host's flags, or for logarithmic components those joined with the
    // flags of values without logarithm.
    std::array<std::vector<bool>, 2> m_logUndefined;
    std::array<const std::vector<bool>*, 2> m_undefinedView = {nullptr, nullptr};
    std::size_t m_withoutLogarithm = 0;
    std::size_t m_count = 0;
    std::size_t m_next = 0;
    std::size_t m_current = noItem;
};
