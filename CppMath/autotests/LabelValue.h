#pragma once
// Reads an axis label back as a number, as a person or a parser reads the text: "-2.5", "1.5e3",
// "10⁶", "2×10⁻³", times a factor of 10^factorExponent. Written apart from the code under test.

#include <cstdlib>
#include <string>
#include <string_view>

namespace LabelValue {

// The exponent written in superscript digits and minus sign ("⁻¹²"), as a plain one ("-12").
inline std::string plainExponent(std::string_view superscript)
{
    static const std::string_view digits[] = {"⁰", "¹", "²", "³", "⁴", "⁵", "⁶", "⁷", "⁸", "⁹"};
    std::string plain;
    while (!superscript.empty()) {
        bool known = false;
        if (superscript.substr(0, 3) == "⁻") {
            plain += '-';
            superscript.remove_prefix(3);
            continue;
        }
        for (int d = 0; d < 10 && !known; ++d) {
            if (superscript.substr(0, digits[d].size()) == digits[d]) {
                plain += static_cast<char>('0' + d);
                superscript.remove_prefix(digits[d].size());
                known = true;
            }
        }
        if (!known)
            return "?";
    }
    return plain;
}

// The label as decimal text with a plain exponent, the factor's included: "1.5e3" with factor
// 10^6 is "1.5e9", "2×10⁻³" is "2e-3".
inline std::string decimalText(const std::string& label, int factorExponent)
{
    std::string mantissa = label, exponent = "0";
    if (const auto times = label.find("×10"); times != std::string::npos) {
        mantissa = label.substr(0, times);
        exponent = plainExponent(std::string_view(label).substr(times + 4));
    } else if (label.rfind("10", 0) == 0 && label.size() > 2 && static_cast<unsigned char>(label[2]) >= 0x80) {
        mantissa = "1";
        exponent = plainExponent(std::string_view(label).substr(2));
    } else if (const auto e = label.find('e'); e != std::string::npos) {
        mantissa = label.substr(0, e);
        exponent = label.substr(e + 1);
    }
    return mantissa + "e" + std::to_string(std::atoll(exponent.c_str()) + factorExponent);
}

inline double value(const std::string& label, int factorExponent)
{
    return std::strtod(decimalText(label, factorExponent).c_str(), nullptr);
}

} // namespace LabelValue
