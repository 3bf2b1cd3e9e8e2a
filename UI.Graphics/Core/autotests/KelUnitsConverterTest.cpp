#include "KelUnitsConverter.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace {

struct Conversion {
    const char* from;
    const char* to;
    double value;
    double expected;
};

void PrintTo(const Conversion& c, std::ostream* os)
{
    *os << c.value << ' ' << c.from << " to " << c.to;
}

class UnitsConversion : public testing::TestWithParam<Conversion> {
protected:
    KelUnitsConverter converter;
};

} // namespace

TEST_P(UnitsConversion, ConvertsExactly)
{
    const Conversion c = GetParam();
    double value = c.value;
    ASSERT_TRUE(converter.convertible(c.from, c.to));
    ASSERT_TRUE(converter.convert(value, c.from, c.to));
    EXPECT_NEAR(value, c.expected, 1e-12 * std::max(1.0, std::abs(c.expected)));
}

INSTANTIATE_TEST_SUITE_P(
    AffineAndCompound, UnitsConversion,
    testing::Values(Conversion{"degC", "degF", 100.0, 212.0}, Conversion{"degF", "degC", -40.0, -40.0},
                    Conversion{"degF", "K", 212.0, 373.15}, Conversion{"K", "degC", 0.0, -273.15},
                    Conversion{"degC", "K", 0.0, 273.15}, Conversion{"°C", "degF", 0.0, 32.0},
                    Conversion{"km/h", "m/s", 36.0, 10.0}, Conversion{"kg m-3", "g/cm3", 1000.0, 1.0},
                    Conversion{"psi", "Pa", 1.0, 6894.757293168361}, Conversion{"mm", "m", 2.5, 0.0025},
                    Conversion{" km ", "m", 1.0, 1000.0}));

TEST(UnitsConverter, EmptyOrEqualUnitsAreTheIdentity)
{
    const KelUnitsConverter converter;
    double value = 3.5;
    EXPECT_TRUE(converter.convert(value, "", "m"));
    EXPECT_TRUE(converter.convert(value, "K", ""));
    EXPECT_TRUE(converter.convert(value, "no such unit", "no such unit"));
    EXPECT_EQ(value, 3.5);
    EXPECT_TRUE(converter.convertible("", "furlongs per fortnight?"));
}

TEST(UnitsConverter, RefusesOtherDimensionsAndUnknownTextsWithoutTouchingValues)
{
    const KelUnitsConverter converter;
    const std::vector<std::pair<QString, QString>> refused = {
        {"m", "s"}, {"degC", "Pa"}, {"kg m-3", "kg"}, {"m", "blorp"}, {"blorp", "m"}, {"m/", "m"}};
    for (const auto& [from, to] : refused) {
        double value = 7.0;
        std::vector<double> values = {1.0, 2.0};
        std::vector<float> floats = {1.0f, 2.0f};
        EXPECT_FALSE(converter.convertible(from, to)) << from.toStdString() << " -> " << to.toStdString();
        EXPECT_FALSE(converter.convert(value, from, to));
        EXPECT_FALSE(converter.convert(values.data(), values.size(), from, to));
        EXPECT_FALSE(converter.convert(floats.data(), floats.size(), from, to));
        EXPECT_EQ(value, 7.0);
        EXPECT_EQ(values, (std::vector<double>{1.0, 2.0}));
        EXPECT_EQ(floats, (std::vector<float>{1.0f, 2.0f}));
    }
    EXPECT_FALSE(converter.isUnit("blorp"));
    EXPECT_TRUE(converter.isUnit("kg m-3"));
}

TEST(UnitsConverter, ConvertsArraysInOneCall)
{
    const KelUnitsConverter converter;
    std::vector<double> values = {0.0, 100.0, -40.0};
    ASSERT_TRUE(converter.convert(values.data(), values.size(), "degC", "degF"));
    EXPECT_NEAR(values[0], 32.0, 1e-12);
    EXPECT_NEAR(values[1], 212.0, 1e-12);
    EXPECT_NEAR(values[2], -40.0, 1e-12);

    std::vector<float> floats = {1.0f, 2.5f};
    ASSERT_TRUE(converter.convert(floats.data(), floats.size(), "km", "m"));
    EXPECT_EQ(floats, (std::vector<float>{1000.0f, 2500.0f}));
    EXPECT_TRUE(converter.convert(static_cast<double*>(nullptr), 0, "km", "m"));
}

// A converter that only knows doubles, to exercise the chunked float path.
class DoubleOnlyConverter : public IUnitsConverter {
public:
    using IUnitsConverter::convert;
    bool convertible(const QString& from, const QString& to) const override { return m_real.convertible(from, to); }
    bool convert(double& value, const QString& from, const QString& to) const override
    {
        return m_real.convert(value, from, to);
    }
    bool convert(double* values, std::size_t count, const QString& from, const QString& to) const override
    {
        return m_real.convert(values, count, from, to);
    }
    QString preferredUnit(const QString& unit) const override { return m_real.preferredUnit(unit); }

private:
    KelUnitsConverter m_real;
};

TEST(UnitsConverter, DefaultFloatPathConvertsEveryChunk)
{
    const DoubleOnlyConverter converter;
    std::vector<float> values(1500);
    for (std::size_t i = 0; i < values.size(); ++i)
        values[i] = static_cast<float>(i);
    ASSERT_TRUE(converter.convert(values.data(), values.size(), "km", "m"));
    for (std::size_t i = 0; i < values.size(); ++i)
        ASSERT_EQ(values[i], 1000.0f * static_cast<float>(i)) << i;
    EXPECT_FALSE(converter.convert(values.data(), values.size(), "km", "s"));
}

TEST(UnitsConverter, PreferredUnitIsTheFirstOfTheSameDimension)
{
    const KelUnitsConverter converter({"", "bogus", "m", "s", "K", "km", "m/s"});
    EXPECT_EQ(converter.preferredUnit("mm"), "m");
    EXPECT_EQ(converter.preferredUnit("km"), "m");
    EXPECT_EQ(converter.preferredUnit("h"), "s");
    EXPECT_EQ(converter.preferredUnit("degF"), "K");
    EXPECT_EQ(converter.preferredUnit("km/h"), "m/s");
    EXPECT_EQ(converter.preferredUnit("Pa"), "Pa");
    EXPECT_EQ(converter.preferredUnit("blorp"), "blorp");
    EXPECT_EQ(converter.preferredUnit(""), "");
    EXPECT_EQ(KelUnitsConverter().preferredUnit("mm"), "mm");
}
