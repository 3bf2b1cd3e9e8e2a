#include "KelUnitsConverter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

TEST(UnitsConverter, ConvertsAffineAndCompoundUnitsOneByOneAndInArrays)
{
    const KelUnitsConverter converter;
    const struct {
        const char *from, *to;
        double value, expected;
    } conversions[] = {{"degC", "degF", 100.0, 212.0},   {"degF", "degC", -40.0, -40.0},
                       {"degF", "K", 212.0, 373.15},     {"K", "degC", 0.0, -273.15},
                       {"°C", "degF", 0.0, 32.0},        {"km/h", "m/s", 36.0, 10.0},
                       {"kg m-3", "g/cm3", 1000.0, 1.0}, {"psi", "Pa", 1.0, 6894.757293168361},
                       {" km ", "m", 1.0, 1000.0}};
    for (const auto& c : conversions) {
        SCOPED_TRACE(testing::Message() << c.value << ' ' << c.from << " to " << c.to);
        const double magnitude = std::max(1.0, std::abs(c.expected));
        double value = c.value, values[] = {0.0, c.value};
        float floats[] = {static_cast<float>(c.value)};
        ASSERT_TRUE(converter.convertible(c.from, c.to) && converter.convert(value, c.from, c.to)
                    && converter.convert(values, 2, c.from, c.to) && converter.convert(floats, 1, c.from, c.to));
        EXPECT_NEAR(value, c.expected, 1e-12 * magnitude);
        EXPECT_EQ(values[1], value);
        EXPECT_NEAR(floats[0], c.expected, 1e-6 * magnitude);
    }
}

TEST(UnitsConverter, EmptyOrEqualUnitsAreTheIdentityOtherDimensionsAndNonUnitsAreRefused)
{
    const KelUnitsConverter converter;
    double value = 3.5;
    EXPECT_TRUE(converter.convert(value, "", "m"));
    EXPECT_TRUE(converter.convert(value, "K", ""));
    EXPECT_TRUE(converter.convert(value, "no such unit", "no such unit"));
    EXPECT_EQ(value, 3.5);
    double identity[] = {1.0, 2.0};
    float floatIdentity[] = {3.0f};
    EXPECT_TRUE(converter.convert(identity, 2, "K", "") && converter.convert(floatIdentity, 1, "m", "m"));
    EXPECT_TRUE(identity[0] == 1.0 && identity[1] == 2.0 && floatIdentity[0] == 3.0f);
    for (const auto& [from, to] : std::vector<std::pair<QString, QString>>{
             {"m", "s"}, {"degC", "Pa"}, {"kg m-3", "kg"}, {"m", "blorp"}, {"blorp", "m"}, {"m/", "m"}}) {
        double values[] = {1.0, 2.0};
        float floats[] = {1.0f};
        EXPECT_FALSE(converter.convertible(from, to) || converter.convert(value, from, to)
                     || converter.convert(values, 2, from, to) || converter.convert(floats, 1, from, to))
            << from.toStdString() << " -> " << to.toStdString();
        EXPECT_TRUE(value == 3.5 && values[1] == 2.0 && floats[0] == 1.0f);
    }
}

namespace {

// Takes the interface's default float path, which goes through the double overload in chunks.
class ChunkedFloats : public KelUnitsConverter {
public:
    using KelUnitsConverter::convert;
    bool convert(float* values, std::size_t count, const QString& from, const QString& to) const override
    {
        return IUnitsConverter::convert(values, count, from, to);
    }
};

} // namespace

TEST(UnitsConverter, DefaultFloatPathConvertsEveryChunk)
{
    std::vector<float> values(1500);
    for (std::size_t i = 0; i < values.size(); ++i)
        values[i] = static_cast<float>(i);
    ASSERT_TRUE(ChunkedFloats().convert(values.data(), values.size(), "km", "m"));
    for (std::size_t i = 0; i < values.size(); ++i)
        ASSERT_EQ(values[i], 1000.0f * static_cast<float>(i)) << i;
}

TEST(UnitsConverter, PreferredUnitIsTheFirstOfTheSameDimension)
{
    const KelUnitsConverter converter({"", "bogus", "m", "s", "K", "km", "m/s"});
    EXPECT_EQ(converter.preferredUnit("km"), "m");
    EXPECT_EQ(converter.preferredUnit("degF"), "K");
    EXPECT_EQ(converter.preferredUnit("Pa"), "Pa");
    EXPECT_EQ(converter.preferredUnit("blorp"), "blorp");
    EXPECT_EQ(converter.preferredUnit(""), "");
}

TEST(UnitsConverter, IsUnitAsksTheDatabase)
{
    ASSERT_TRUE(KelUnitsConverter::databaseAvailable());
    const KelUnitsConverter converter;
    for (const char* unit : {"m", " km/h ", "degC", "°F", "kg m-3"})
        EXPECT_TRUE(converter.isUnit(unit)) << unit;
    for (const char* text : {"", "blorp", "m/"})
        EXPECT_FALSE(converter.isUnit(text)) << text;
}
