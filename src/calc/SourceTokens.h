// How the source reader splits assembly text into fields and tokens and turns
// tokens into numbers. The rules are loose about layout and strict about
// order, so that hand-edited sources with comments still read.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace shd::source {

// Sequential fields over the text of a source file: a field runs up to the
// next comma or line end, which it uses up; blanks (spaces, tabs) in front are
// skipped, blanks at the end stay, double quotes are ordinary characters.
// Lines may end in CR LF, LF or CR.
class FieldReader {
public:
    explicit FieldReader(std::string_view text) : text_(text) {}

    // Fields, lines and tokens are views into the text the reader was given.

    // The next field; nothing at the end of the text. An empty line gives one
    // empty field.
    std::optional<std::string_view> ReadField();

    // The rest of the current line, its end used up; nothing at the end of the text.
    std::optional<std::string_view> ReadLine();

    // The next field that is neither empty nor a comment, cut before its
    // first ";" (blanks in front of the ";" stay).
    std::optional<std::string_view> NextString();

    // The next eight-digit binary number: one stray token is passed over,
    // then the last eight digits of the last run of eight or more are kept.
    // Without such a run the token it gave up on comes back unchanged.
    std::optional<std::string_view> GetNextByte();

    // The line, counted from 1, on which the last read started.
    int LastLine() const { return lastLine_; }

private:
    void EndLine();

    std::string_view text_;
    std::size_t pos_ = 0;
    std::size_t semicolon_ = std::string_view::npos;  // where the last field's first ";" is, if it has one
    int line_ = 1;
    int lastLine_ = 1;
};

// The eight digits that end the last run of eight or more digits, if any (a
// view into `text`).
std::optional<std::string_view> CutToEightDigits(std::string_view text);

// One or two characters as hexadecimal. Only 0-9 and upper case A-F are hex
// digits; the high digit counts only in a two-character text, and a character
// that is no hex digit counts as 0.
int HexToDec(std::string_view text);

// A token holding "$" or a lower-case "h" is hexadecimal ($NN or NNh at its
// end); any other is decimal (a number in its last three characters).
// Nothing when the token cannot be read as a value.
std::optional<long> GetTokenValue(std::string_view token);

// The decimal rule alone: cut back until the token ends in a digit with two
// characters before it, then the leading number of the last three characters
// (blanks in front dropped), 0 when they do not start with a number.
std::optional<long> DecimalTokenValue(std::string_view token);

// A field read as a number: the whole field (blanks around it allowed) as a
// number, rounded; 0 when it is not a number.
long FieldNumber(std::string_view field);

// "level", one or more digits, ":".
bool IsLevelLabel(std::string_view token);

}  // namespace shd::source
