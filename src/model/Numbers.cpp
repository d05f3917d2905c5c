#include "model/Numbers.h"

#include <cmath>
#include <charconv>
#include <string>

namespace shd {

namespace {
// Whole numbers of up to this many digits are exact as doubles; the files
// are full of short ones, which need no more than adding up their digits.
constexpr std::size_t kExactDigits = 15;

bool IsDigit(char c) { return c >= '0' && c <= '9'; }
}  // namespace

std::optional<double> ParseTypedNumber(std::string_view text) {
    std::size_t i = 0;
    const std::size_t n = text.size();
    while (i < n && text[i] == ' ') ++i;
    bool negative = false;
    if (i < n && (text[i] == '+' || text[i] == '-')) negative = text[i++] == '-';
    const std::size_t first = i;
    long long whole = 0;
    for (; i < n && IsDigit(text[i]); ++i)
        if (i - first < kExactDigits) whole = whole * 10 + (text[i] - '0');
    const std::size_t wholeDigits = i - first;
    std::size_t digits = wholeDigits;
    const bool fraction = i < n && text[i] == '.';
    if (fraction)
        for (++i; i < n && IsDigit(text[i]); ++i) ++digits;
    const std::size_t end = i;
    while (i < n && text[i] == ' ') ++i;
    if (digits == 0 || i != n) return std::nullopt;
    double value = static_cast<double>(whole);
    if (fraction || wholeDigits > kExactDigits) {
        // The grammar is checked; from_chars only converts, and never by the locale.
        const auto [at, error] = std::from_chars(text.data() + first, text.data() + end, value);
        // Hundreds of digits: too large for a double, or a fraction too small.
        if (error == std::errc::result_out_of_range)
            value = text.substr(first, wholeDigits).find_first_not_of('0') != std::string_view::npos ? HUGE_VAL : 0.0;
    }
    return negative ? -value : value;
}

std::optional<double> LeadingNumber(std::string_view text) {
    std::size_t start = 0;
    while (start < text.size() && (text[start] == ' ' || text[start] == '\t')) ++start;
    std::size_t end = start;
    if (end < text.size() && (text[end] == '+' || text[end] == '-')) ++end;
    while (end < text.size() && IsDigit(text[end])) ++end;
    if (end < text.size() && text[end] == '.')
        for (++end; end < text.size() && IsDigit(text[end]);) ++end;
    const auto number = ParseTypedNumber(text.substr(start, end - start));
    if (!number) return std::nullopt;
    return RoundHalfEven(*number);
}

double RoundHalfEven(double value) { return std::nearbyint(value); }

std::string DecimalText(long value) { return std::to_string(value); }

}  // namespace shd
