// What the editor and the converter say and check when they send a set to a
// calculator, whatever carries it there.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace shd {

// A program's name on a TI-83: 1 to 8 letters and digits, starting with a
// letter, as the calculator's own name prompt allows. `name` is taken as
// given (call it with the upper-case name); the message says what is wrong.
std::optional<std::string> CalculatorNameFault(std::string_view name);

// The name a file's set gets on the calculator when none is given: the file
// name without its folder and last extension, in upper case.
std::string CalculatorNameOfFile(std::string_view path);

std::string UpperCase(std::string_view text);

inline constexpr const char* kNoCableMessage =
    "No link cable was found. Plug a TI link cable (SilverLink, GrayLink, BlackLink or parallel) into this "
    "computer, check that you may use it, and try again.";
inline constexpr const char* kNoAnswerMessage =
    "The calculator did not answer. Check that the cable is pushed firmly into the calculator, that the "
    "calculator is switched on and shows its home screen, and try again.";
inline constexpr const char* kSendCancelledMessage = "Sending was cancelled; the calculator may hold part of it.";

}  // namespace shd
