// The editor's own level file ("My File", and the older layout it still
// reads) and the TI-83 list file.
#include "files/EditorFiles.h"

#include <array>
#include <cstdint>
#include <string>

#include "files/TextScanner.h"
#include "model/Numbers.h"
#include "model/Quoted.h"
#include "model/TextOut.h"

namespace shd {

namespace {

constexpr std::string_view kMagic = "QUARTLEV";
constexpr std::string_view kListHeader = "//LQRVLE";
constexpr std::string_view kNotMine = "Not one of my files.";
constexpr std::string_view kNotList = "Not a valid list file.";

// The in-row numbers of a picture row in the order the custom piece dialog
// shows them; the older files store each row's values in this order.
constexpr std::array<int, 10> kShownOrder{8, 7, 6, 5, 4, 3, 2, 1, 10, 9};
constexpr int kPictureRows = 6;

// ---------------------------------------------------------------- writing

// A number as a Print statement writes it: a blank (or the minus sign) before, a blank after.
void Printed(TextOut& out, long value) {
    if (value >= 0) out << ' ';
    out.Number(value) << ' ';
}
std::string_view PrintedBool(bool value) { return value ? "True" : "False"; }
std::string_view ListedBool(bool value) { return value ? "#TRUE#" : "#FALSE#"; }

// Every value but the last listed with its comma, the last one printed: "0,5, 12 ".
template <typename Values>
void Row(TextOut& out, const Values& values) {
    std::size_t left = values.size();
    for (const auto value : values) {
        if (--left > 0) out.Number(value) << ',';
        else Printed(out, value);
    }
    out.Line();
}

bool HoldsLineBreak(const Bytes& text) { return text.find_first_of("\r\n") != Bytes::npos; }

// A set the readers could not bring back as it is gets refused.
std::string WhyNotWritable(const LevelSet& set) {
    if (std::string fault = CheckConsistent(set); !fault.empty())
        return "The level set cannot be saved: " + fault + ".";
    if (HoldsLineBreak(set.Title)) return "The title cannot hold a line break.";
    if (set.IsShardles() && (HoldsLineBreak(set.BonusClock) || HoldsLineBreak(set.ExtraLifePoints)))
        return "The bonus clock and extra life settings cannot hold a line break.";
    return {};
}

// The file's size at most, given the longest a level's lines can be.
std::size_t ExpectedSize(const LevelSet& set, std::size_t perLevel) {
    return 1024 + set.Title.size() + set.BonusClock.size() + set.ExtraLifePoints.size() +
           static_cast<std::size_t>(set.LevelCount()) * perLevel;
}

// Kind, level count and the Shardles settings and pictures; the same in both files.
void WriteSetWide(TextOut& out, const LevelSet& set) {
    out.Line(PrintedBool(set.IsShardles()));
    Printed(out, set.LevelCount());
    out.Line();
    if (!set.IsShardles()) return;
    out.Line(PrintedBool(set.ArrowBlocksBreakable));
    out.Line(set.ExtraLifePoints);
    out.Line(set.BonusClock);
    out.Line(PrintedBool(set.UseWrapAround));
    out.Line(PrintedBool(set.UseCustomShardles));
    out.Line(PrintedBool(set.UseShardlesDebugger));
    out.Line(PrintedBool(set.MatchLocksToBlocks));
    if (!set.UseCustomShardles) return;
    Row(out, set.CustomShardlePicture.cells);
    Row(out, set.CustomChangerPicture.cells);
}

// ---------------------------------------------------------------- reading

std::string_view TrimBlanks(std::string_view text) {
    const auto first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

bool SameIgnoringCase(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i) {
        auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
        if (lower(a[i]) != lower(b[i])) return false;
    }
    return true;
}

std::optional<bool> TrueOrFalse(std::string_view text) {
    text = TrimBlanks(text);
    if (SameIgnoringCase(text, "True")) return true;
    if (SameIgnoringCase(text, "False")) return false;
    return std::nullopt;
}

// "True", "False", or a number that is true when not 0.
std::optional<bool> BooleanOf(std::string_view text) {
    if (auto value = TrueOrFalse(text)) return value;
    if (auto number = ParseTypedNumber(text)) return *number != 0;
    return std::nullopt;
}

// The whole item as a number, rounded to a whole one.
std::optional<double> NumberOf(std::string_view text) {
    if (auto number = ParseTypedNumber(text)) return RoundHalfEven(*number);
    return std::nullopt;
}



enum class ByteRule { WholeItem, LeadingPart };

class SetReader {
public:
    explicit SetReader(std::string_view bytes) : scan_(bytes) {}

    files::TextScanner& Scan() { return scan_; }
    LevelSet& Set() { return result_.set; }

    void Section(std::string name) { section_ = std::move(name); }

    void SetUpLevels(int count) { MakeLevels(result_.set, count); }

    std::optional<std::string_view> Line(std::string_view what) {
        const int line = scan_.Line();
        auto text = scan_.ReadLine();
        if (!text) Fail(line, "the file ends before " + std::string(what));
        return text;
    }

    bool TextLine(Bytes& field, std::string_view what) {
        auto text = Line(what);
        if (text) field = Bytes(*text);
        return text.has_value();
    }

    bool BoolLine(bool& field, std::string_view what) {
        const int line = scan_.Line();
        auto text = Line(what);
        if (!text) return false;
        auto value = BooleanOf(*text);
        if (!value) return Fail(line, Quoted(*text) + " is not True or False");
        field = *value;
        return true;
    }

    bool CountLine(int& count) {
        const int line = scan_.Line();
        auto text = Line("the level count");
        if (!text) return false;
        auto number = LeadingNumber(*text);
        if (!number || *number < 1 || *number > kMaxLevels)
            return Fail(line, "level count " + Quoted(TrimBlanks(*text)) + " is not 1 to 255");
        count = static_cast<int>(*number);
        return true;
    }

    bool Int16Item(std::int16_t& field) {
        auto item = NextItem();
        if (!item) return false;
        auto number = NumberOf(item->text);
        if (!number) return Fail(item->line, Quoted(item->text) + " is not a number");
        if (*number < INT16_MIN || *number > INT16_MAX)
            return Fail(item->line, Quoted(item->text) + " does not fit a 16-bit number");
        field = static_cast<std::int16_t>(*number);
        return true;
    }

    bool BoolItem(bool& field) {
        auto item = NextItem();
        if (!item) return false;
        std::optional<bool> value;
        if (SameIgnoringCase(item->text, "#TRUE#")) value = true;
        else if (SameIgnoringCase(item->text, "#FALSE#")) value = false;
        else value = BooleanOf(item->text);
        if (!value) return Fail(item->line, Quoted(item->text) + " is not #TRUE# or #FALSE#");
        field = *value;
        return true;
    }

    bool PictureItem(std::uint8_t& field, ByteRule rule) {
        auto item = NextItem();
        if (!item) return false;
        std::optional<double> number;
        if (rule == ByteRule::LeadingPart) number = LeadingNumber(item->text).value_or(0);
        else number = NumberOf(item->text);
        if (!number) return Fail(item->line, Quoted(item->text) + " is not a number");
        if (*number < 0 || *number > 255) return Fail(item->line, Quoted(item->text) + " does not fit a byte");
        field = static_cast<std::uint8_t>(*number);
        return true;
    }

    // With `letters` (the older file), "A" to "F" stand for 10 to 15 and an
    // item that is neither a number nor one of them leaves the cell 0.
    bool CellItem(std::uint8_t& field, bool letters) {
        auto item = NextItem();
        if (!item) return false;
        const std::string_view text = item->text;
        std::optional<double> number;
        if (letters && text.size() == 1 && text[0] >= 'A' && text[0] <= 'F') number = text[0] - 'A' + 10;
        else number = NumberOf(text);
        if (!number) {
            if (letters) return true;
            return Fail(item->line, Quoted(text) + " is not a number");
        }
        if (*number < 0 || *number > 15) return Fail(item->line, "cell value " + Quoted(text) + " is not 0 to 15");
        field = static_cast<std::uint8_t>(*number);
        return true;
    }

    ReadResult Finish(bool complete) {
        if (!complete) return StoppedRead(std::move(result_.set), "line " + std::to_string(stopLine_), std::move(stopWhy_));
        result_.set.CurrentLevel = 1;
        return std::move(result_);
    }

private:
    std::optional<files::Item> NextItem() {
        auto item = scan_.ReadItem();
        if (!item) Fail(scan_.Line(), "the file ends inside " + section_);
        return item;
    }

    bool Fail(int line, std::string why) {
        stopLine_ = line;
        stopWhy_ = std::move(why);
        return false;
    }

    files::TextScanner scan_;
    ReadResult result_;
    std::string section_;
    int stopLine_ = 0;
    std::string stopWhy_;
};

enum class Layout { MyFile, OldMyFile, List };

bool ReadPicture(SetReader& reader, PiecePicture& picture, bool grouped) {
    if (!grouped) {
        for (int n = 1; n <= kPictureCells; ++n)
            if (!reader.PictureItem(picture.at(n), ByteRule::WholeItem)) return false;
        return true;
    }
    for (int row = 0; row < kPictureRows; ++row)
        for (int number : kShownOrder)
            if (!reader.PictureItem(picture.at(10 * row + number), ByteRule::LeadingPart)) return false;
    return true;
}

// From the kind line to the last picture value.
bool ReadSetWide(SetReader& reader, Layout layout, int& count) {
    LevelSet& set = reader.Set();
    bool shardles = false;
    if (!reader.BoolLine(shardles, "the game kind")) return false;
    set.Kind = shardles ? GameKind::Shardles : GameKind::Tiltbash;
    if (!reader.CountLine(count)) return false;
    if (!set.IsShardles()) return true;
    if (!reader.BoolLine(set.ArrowBlocksBreakable, "the arrow block option") ||
        !reader.TextLine(set.ExtraLifePoints, "the extra life points") ||
        !reader.TextLine(set.BonusClock, "the bonus clock") ||
        !reader.BoolLine(set.UseWrapAround, "the wrap around option") ||
        !reader.BoolLine(set.UseCustomShardles, "the custom shardles option"))
        return false;

    // A list file from elsewhere may lack the two option lines that ours
    // carries; where they are, the next line is a Boolean and not a number.
    bool optionLines = layout == Layout::MyFile;
    if (layout == Layout::List) {
        const auto next = reader.Scan().PeekLine();
        optionLines = next && TrueOrFalse(*next);
    }
    if (optionLines && (!reader.BoolLine(set.UseShardlesDebugger, "the debugger option") ||
                        !reader.BoolLine(set.MatchLocksToBlocks, "the lock matching option")))
        return false;

    if (!set.UseCustomShardles) return true;
    // The layouts without those lines also keep the pictures in the dialog's order.
    const bool grouped = !optionLines;
    reader.Section("the custom shardle picture");
    if (!ReadPicture(reader, set.CustomShardlePicture, grouped)) return false;
    reader.Section("the custom changer picture");
    return ReadPicture(reader, set.CustomChangerPicture, grouped);
}

bool ReadLevels(SetReader& reader, Layout layout, int count) {
    reader.SetUpLevels(count);
    LevelSet& set = reader.Set();
    for (int level = 1; level <= count; ++level) {
        reader.Section("level " + std::to_string(level));
        LevelLayout& levelLayout = set.Layout(level);
        for (auto& cell : levelLayout.Cells)
            if (!reader.CellItem(cell, layout == Layout::OldMyFile)) return false;
        if (!set.IsShardles()) {
            if (!reader.Int16Item(levelLayout.BlockCount)) return false;
            continue;
        }
        if (!reader.Int16Item(levelLayout.BlockCount) || !reader.Int16Item(levelLayout.LastBlockCount) ||
            !reader.Int16Item(levelLayout.BallX) || !reader.Int16Item(levelLayout.BallY))
            return false;
        if (layout != Layout::MyFile) continue;
        LevelRecord& record = set.Record(level);
        if (!reader.BoolItem(record.CenterLineUnused) || !reader.Int16Item(record.CustomChangerCount) ||
            !reader.Int16Item(record.SpottedChangerCount) || !reader.Int16Item(record.ZigZagChangerCount) ||
            !reader.Int16Item(record.SpecialUnusedCount))
            return false;
    }
    return true;
}

ReadResult ReadEditorFile(std::string_view bytes, Layout layout) {
    SetReader reader(bytes);
    const auto magic = reader.Scan().ReadLine();
    if (!magic) return StoppedBeforeReplacing("line 1", "the file is empty");
    if (*magic != kMagic) return RefusedRead(std::string(kNotMine));
    int count = 0;
    const bool complete = reader.TextLine(reader.Set().Title, "the title") &&
                          ReadSetWide(reader, layout, count) && ReadLevels(reader, layout, count);
    return reader.Finish(complete);
}

}  // namespace

WriteResult WriteMyFile(const LevelSet& set) {
    if (std::string why = WhyNotWritable(set); !why.empty()) return RefusedWrite(std::move(why));
    TextOut out(ExpectedSize(set, 320));
    out.Line(kMagic);
    out.Line(set.Title);
    WriteSetWide(out, set);
    for (int level = 1; level <= set.LevelCount(); ++level) {
        const LevelLayout& layout = set.Layout(level);
        Row(out, layout.Cells);
        if (!set.IsShardles()) {
            Printed(out, layout.BlockCount);
            out.Line();
            continue;
        }
        out.Number(layout.BlockCount) << ',';
        out.Number(layout.LastBlockCount) << ',';
        out.Number(layout.BallX) << ',';
        out.Number(layout.BallY).Line();
        const LevelRecord& record = set.Record(level);
        out << ListedBool(record.CenterLineUnused) << ',';
        out.Number(record.CustomChangerCount) << ',';
        out.Number(record.SpottedChangerCount) << ',';
        out.Number(record.ZigZagChangerCount) << ',';
        out.Number(record.SpecialUnusedCount).Line();
    }
    return Written(out.Take());
}

WriteResult WriteListFile(const LevelSet& set) {
    if (std::string why = WhyNotWritable(set); !why.empty()) return RefusedWrite(std::move(why));
    TextOut out(ExpectedSize(set, 520));
    out.Line(set.Title);
    out.Line(kListHeader);
    WriteSetWide(out, set);
    for (int level = 1; level <= set.LevelCount(); ++level) {
        const LevelLayout& layout = set.Layout(level);
        for (std::uint8_t cell : layout.Cells) {
            Printed(out, cell);
            out.Line();
        }
        out.Number(layout.BlockCount).Line();
        if (!set.IsShardles()) continue;
        out.Number(layout.LastBlockCount).Line();
        out.Number(layout.BallX).Line();
        out.Number(layout.BallY).Line();
    }
    return Written(out.Take());
}

ReadResult ReadMyFile(const std::string& bytes) { return ReadEditorFile(bytes, Layout::MyFile); }

ReadResult ReadOldMyFile(const std::string& bytes) { return ReadEditorFile(bytes, Layout::OldMyFile); }

ReadResult ReadListFile(const std::string& bytes) {
    SetReader reader(bytes);
    const auto title = reader.Scan().ReadLine();
    const auto header = reader.Scan().ReadLine();
    if (!title) return StoppedBeforeReplacing("line 1", "the file is empty");
    if (!header) return StoppedBeforeReplacing("line 2", "the file ends before the header");
    if (!header->starts_with("//L")) return RefusedRead(std::string(kNotList));
    reader.Set().Title = Bytes(*title);
    int count = 0;
    const bool complete = ReadSetWide(reader, Layout::List, count) && ReadLevels(reader, Layout::List, count);
    return reader.Finish(complete);
}

}  // namespace shd
