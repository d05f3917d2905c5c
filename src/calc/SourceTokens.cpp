#include "calc/SourceTokens.h"

#include <algorithm>
#include <cmath>

#include "model/Numbers.h"

namespace shd::source {

namespace {

bool IsBlank(char c) { return c == ' ' || c == '\t'; }
bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsLineEnd(char c) { return c == '\r' || c == '\n'; }

// Only upper-case letters are hex digits here.
int HexDigitValue(char c) {
    if (IsDigit(c)) return c - '0';
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

}  // namespace

void FieldReader::EndLine() {
    if (text_[pos_] == '\r' && pos_ + 1 < text_.size() && text_[pos_ + 1] == '\n') ++pos_;
    ++pos_;
    ++line_;
}

std::optional<std::string_view> FieldReader::ReadField() {
    lastLine_ = line_;
    if (pos_ >= text_.size()) return std::nullopt;
    while (pos_ < text_.size() && IsBlank(text_[pos_])) ++pos_;
    const std::size_t start = pos_;
    semicolon_ = std::string_view::npos;
    for (; pos_ < text_.size() && text_[pos_] != ',' && !IsLineEnd(text_[pos_]); ++pos_)
        if (text_[pos_] == ';' && semicolon_ == std::string_view::npos) semicolon_ = pos_ - start;
    const std::string_view field = text_.substr(start, pos_ - start);
    if (pos_ < text_.size()) {
        if (text_[pos_] == ',')
            ++pos_;
        else
            EndLine();
    }
    return field;
}

std::optional<std::string_view> FieldReader::ReadLine() {
    lastLine_ = line_;
    if (pos_ >= text_.size()) return std::nullopt;
    const std::size_t start = pos_;
    while (pos_ < text_.size() && !IsLineEnd(text_[pos_])) ++pos_;
    const std::string_view line = text_.substr(start, pos_ - start);
    if (pos_ < text_.size()) EndLine();
    return line;
}

std::optional<std::string_view> FieldReader::NextString() {
    for (;;) {
        auto field = ReadField();
        if (!field) return std::nullopt;
        if (field->empty() || (*field)[0] == ';') continue;
        return field->substr(0, semicolon_);
    }
}

std::optional<std::string_view> FieldReader::GetNextByte() {
    auto token = NextString();
    if (!token) return std::nullopt;
    if (!CutToEightDigits(*token)) {
        token = NextString();
        if (!token) return std::nullopt;
    }
    if (auto digits = CutToEightDigits(*token)) return digits;
    return token;
}

std::optional<std::string_view> CutToEightDigits(std::string_view text) {
    std::optional<std::string_view> found;
    std::size_t run = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        run = IsDigit(text[i]) ? run + 1 : 0;
        if (run >= 8) found = text.substr(i - 7, 8);
    }
    return found;
}

int HexToDec(std::string_view text) {
    int value = 0;
    if (text.size() == 2 && HexDigitValue(text[0]) >= 0) value += 16 * HexDigitValue(text[0]);
    if (!text.empty() && HexDigitValue(text.back()) >= 0) value += HexDigitValue(text.back());
    return value;
}

std::optional<long> DecimalTokenValue(std::string_view token) {
    while (!token.empty() && !(token.size() >= 3 && IsDigit(token.back()))) token.remove_suffix(1);
    if (token.empty()) return std::nullopt;
    return static_cast<long>(LeadingNumber(token.substr(token.size() - 3)).value_or(0));
}

std::optional<long> GetTokenValue(std::string_view token) {
    const bool hex = std::any_of(token.begin(), token.end(), [](char c) { return c == '$' || c == 'h'; });
    if (!hex) return DecimalTokenValue(token);
    if (token.size() < 3) return std::nullopt;
    const std::string_view last = token.substr(token.size() - 3);
    if (last[0] == '$') return HexToDec(last.substr(1, 2));
    if (last[2] == 'h') return HexToDec(last.substr(0, 2));
    return std::nullopt;
}

long FieldNumber(std::string_view field) {
    while (!field.empty() && IsBlank(field.back())) field.remove_suffix(1);
    while (!field.empty() && IsBlank(field.front())) field.remove_prefix(1);
    const auto number = ParseTypedNumber(field);
    if (!number) return 0;
    // Far beyond any field's range; keeps the conversion defined.
    const double rounded = RoundHalfEven(*number);
    if (std::fabs(rounded) > 1e9) return rounded > 0 ? 1000000000L : -1000000000L;
    return static_cast<long>(rounded);
}

bool IsLevelLabel(std::string_view token) {
    if (token.size() < 7 || token.substr(0, 5) != "level" || token.back() != ':') return false;
    for (char c : token.substr(5, token.size() - 6))
        if (!IsDigit(c)) return false;
    return true;
}

}  // namespace shd::source
