#include "model/Numbers.h"

#include <cmath>
#include <cstdlib>
#include <string>

namespace shd {

std::optional<double> ParseTypedNumber(std::string_view text) {
    std::size_t i = 0;
    const std::size_t n = text.size();
    while (i < n && text[i] == ' ') ++i;
    std::string normal;
    if (i < n && (text[i] == '+' || text[i] == '-')) normal += text[i++];
    int digits = 0;
    while (i < n && text[i] >= '0' && text[i] <= '9') { normal += text[i++]; ++digits; }
    if (i < n && text[i] == '.') {
        normal += text[i++];
        while (i < n && text[i] >= '0' && text[i] <= '9') { normal += text[i++]; ++digits; }
    }
    while (i < n && text[i] == ' ') ++i;
    if (digits == 0 || i != n) return std::nullopt;
    // Long digit runs are fine for strtod; they only lose precision far beyond any range check.
    return std::strtod(normal.c_str(), nullptr);
}

double RoundHalfEven(double value) { return std::nearbyint(value); }

std::string DecimalText(long value) { return std::to_string(value); }

}  // namespace shd
