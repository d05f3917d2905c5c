// Reading the editor's text files: whole lines, and items separated by commas,
// blanks or line ends. Lines may end in CR LF, LF or CR. Nothing here reads
// past the end of the bytes.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace shd::files {

struct Item {
    std::string_view text;  // without the blanks around it
    int line = 0;           // where it starts, counted from 1
};

class TextScanner {
public:
    explicit TextScanner(std::string_view bytes) : bytes_(bytes) {}

    // The line the next read starts on, counted from 1.
    int Line() const { return line_; }

    // The rest of the current line with all its characters but without its
    // end; nothing once the bytes are used up.
    std::optional<std::string_view> ReadLine() {
        if (pos_ >= bytes_.size()) return std::nullopt;
        std::size_t end = pos_;
        while (end < bytes_.size() && !IsLineEnd(bytes_[end])) ++end;
        const std::string_view line = bytes_.substr(pos_, end - pos_);
        pos_ = end;
        // A last line without its end still counts as a line of its own.
        if (!SkipLineEnd()) ++line_;
        return line;
    }

    std::optional<std::string_view> PeekLine() const {
        TextScanner ahead = *this;
        return ahead.ReadLine();
    }

    // The next item: it ends at a comma, a blank or a line end, and one comma
    // or line end after it (blanks around it aside) is used up with it. Two
    // delimiters in a row enclose an empty item. Nothing when only blanks are left.
    std::optional<Item> ReadItem() {
        SkipBlanks();
        if (pos_ >= bytes_.size()) return std::nullopt;
        Item item{{}, line_};
        std::size_t end = pos_;
        while (end < bytes_.size() && !IsDelimiter(bytes_[end])) ++end;
        item.text = bytes_.substr(pos_, end - pos_);
        pos_ = end;
        SkipBlanks();
        if (pos_ < bytes_.size() && bytes_[pos_] == ',') ++pos_;
        else SkipLineEnd();
        return item;
    }

private:
    static bool IsLineEnd(char c) { return c == '\r' || c == '\n'; }
    static bool IsBlank(char c) { return c == ' ' || c == '\t'; }
    static bool IsDelimiter(char c) { return c == ',' || IsBlank(c) || IsLineEnd(c); }

    void SkipBlanks() {
        while (pos_ < bytes_.size() && IsBlank(bytes_[pos_])) ++pos_;
    }

    bool SkipLineEnd() {
        if (pos_ >= bytes_.size() || !IsLineEnd(bytes_[pos_])) return false;
        if (bytes_[pos_] == '\r' && pos_ + 1 < bytes_.size() && bytes_[pos_ + 1] == '\n') ++pos_;
        ++pos_;
        ++line_;
        return true;
    }

    std::string_view bytes_;
    std::size_t pos_ = 0;
    int line_ = 1;
};

}  // namespace shd::files
