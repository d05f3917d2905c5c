#include "model/Numbers.h"

#include <cmath>
#include <cstdlib>
#include <string>

namespace shd {

namespace {
// Up to this many digits a whole number is exact as a double and fits the
// accumulator; the files are full of short ones.
constexpr int kExactDigits = 15;
}  // namespace

std::optional<double> ParseTypedNumber(std::string_view text) {
    std::size_t i = 0;
    const std::size_t n = text.size();
    while (i < n && text[i] == ' ') ++i;
    const std::size_t start = i;
    bool negative = false;
    if (i < n && (text[i] == '+' || text[i] == '-')) negative = text[i++] == '-';
    const std::size_t first = i;
    long long whole = 0;
    while (i < n && text[i] >= '0' && text[i] <= '9') {
        if (i - first < kExactDigits) whole = whole * 10 + (text[i] - '0');
        ++i;
    }
    int digits = static_cast<int>(i - first);
    bool fraction = false;
    if (i < n && text[i] == '.') {
        fraction = true;
        ++i;
        const std::size_t fractionStart = i;
        while (i < n && text[i] >= '0' && text[i] <= '9') ++i;
        digits += static_cast<int>(i - fractionStart);
    }
    const std::size_t end = i;
    while (i < n && text[i] == ' ') ++i;
    if (digits == 0 || i != n) return std::nullopt;
    if (!fraction && digits <= kExactDigits) return negative ? -static_cast<double>(whole) : static_cast<double>(whole);
    // Long digit runs and fractions go to strtod; the text is checked already
    // and only needs its blanks and a plus sign dropped.
    std::string normal(text.substr(start, end - start));
    if (normal[0] == '+') normal.erase(0, 1);
    return std::strtod(normal.c_str(), nullptr);
}

double RoundHalfEven(double value) { return std::nearbyint(value); }

std::string DecimalText(long value) { return std::to_string(value); }

}  // namespace shd
