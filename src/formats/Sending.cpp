#include "formats/Sending.h"

#include "files/FileIo.h"

namespace shd {

namespace {
bool IsLetter(char c) { return c >= 'A' && c <= 'Z'; }
bool IsDigit(char c) { return c >= '0' && c <= '9'; }
}  // namespace

std::string UpperCase(std::string_view text) {
    std::string out(text);
    for (char& c : out)
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    return out;
}

std::optional<std::string> CalculatorNameFault(std::string_view name) {
    bool fits = !name.empty() && name.size() <= 8 && IsLetter(name[0]);
    for (const char c : name) fits = fits && (IsLetter(c) || IsDigit(c));
    if (fits) return std::nullopt;
    return "The name on the calculator has to be 1 to 8 letters and digits, starting with a letter: \"" +
           std::string(name) + "\" is not.";
}

std::string CalculatorNameOfFile(std::string_view path) {
    const std::string title = FileTitleOf(std::string(path));
    std::string_view name = title;
    if (const auto dot = name.find_last_of('.'); dot != std::string_view::npos && dot > 0) name = name.substr(0, dot);
    return UpperCase(name);
}

}  // namespace shd
