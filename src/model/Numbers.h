// Numbers as the user types them, and the rounding the editor uses.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace shd {

// Optional blanks, an optional sign, digits with an optional decimal point and
// fraction (at least one digit in all), optional blanks. Anything else is not
// a number.
std::optional<double> ParseTypedNumber(std::string_view text);

// The number a text starts with, after blanks ("12abc" is 12, "-3.5;x" is
// -4), rounded as below; nothing when it starts with none.
std::optional<double> LeadingNumber(std::string_view text);

// Nearest whole number, a half going to the even neighbour.
double RoundHalfEven(double value);

// Decimal text of a number, no blanks, minus sign when negative.
std::string DecimalText(long value);

}  // namespace shd
