#include "files/Json.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <nlohmann/json.hpp>
#include <optional>
#include <string_view>
#include <vector>

#include "model/Cp1252.h"

namespace shd {

namespace {

using nlohmann::json;

// What a key holds, and so how it is written and checked.
enum class Shape { Kind, Text, SetFlag, Picture, Levels, Cells, LayoutNumber, RecordFlag, RecordNumber };

struct Slot {
    std::string_view key;
    Shape shape;
    Bytes LevelSet::*text = nullptr;
    bool LevelSet::*setFlag = nullptr;
    PiecePicture LevelSet::*picture = nullptr;
    std::int16_t LevelLayout::*layoutNumber = nullptr;
    bool LevelRecord::*recordFlag = nullptr;
    std::int16_t LevelRecord::*recordNumber = nullptr;
    bool sharesLine = false;  // written on one line with the key after it
};

// The set's keys in the order they are written.
const Slot kSetSlots[] = {
    {.key = "Kind", .shape = Shape::Kind},
    {.key = "Title", .shape = Shape::Text, .text = &LevelSet::Title},
    {.key = "BonusClock", .shape = Shape::Text, .text = &LevelSet::BonusClock},
    {.key = "ExtraLifePoints", .shape = Shape::Text, .text = &LevelSet::ExtraLifePoints},
    {.key = "ArrowBlocksBreakable", .shape = Shape::SetFlag, .setFlag = &LevelSet::ArrowBlocksBreakable},
    {.key = "UseWrapAround", .shape = Shape::SetFlag, .setFlag = &LevelSet::UseWrapAround},
    {.key = "UseCustomShardles", .shape = Shape::SetFlag, .setFlag = &LevelSet::UseCustomShardles},
    {.key = "UseShardlesDebugger", .shape = Shape::SetFlag, .setFlag = &LevelSet::UseShardlesDebugger},
    {.key = "MatchLocksToBlocks", .shape = Shape::SetFlag, .setFlag = &LevelSet::MatchLocksToBlocks},
    {.key = "CustomShardlePicture", .shape = Shape::Picture, .picture = &LevelSet::CustomShardlePicture},
    {.key = "CustomChangerPicture", .shape = Shape::Picture, .picture = &LevelSet::CustomChangerPicture},
    {.key = "Levels", .shape = Shape::Levels},
};

// A level's numbers are written a few to a line, one line per group of the
// record; `last` ends the line.
constexpr Slot LayoutNumber(std::string_view key, std::int16_t LevelLayout::*field, bool last = false) {
    return {.key = key, .shape = Shape::LayoutNumber, .layoutNumber = field, .sharesLine = !last};
}
constexpr Slot RecordFlag(std::string_view key, bool LevelRecord::*field) {
    return {.key = key, .shape = Shape::RecordFlag, .recordFlag = field, .sharesLine = true};
}
constexpr Slot RecordNumber(std::string_view key, std::int16_t LevelRecord::*field, bool last = false) {
    return {.key = key, .shape = Shape::RecordNumber, .recordNumber = field, .sharesLine = !last};
}
constexpr bool kLast = true;

// A level's keys: its layout, then the thirteen record fields in the record's order.
const Slot kLevelSlots[] = {
    {.key = "Cells", .shape = Shape::Cells},
    LayoutNumber("BlockCount", &LevelLayout::BlockCount),
    LayoutNumber("LastBlockCount", &LevelLayout::LastBlockCount),
    LayoutNumber("BallX", &LevelLayout::BallX),
    LayoutNumber("BallY", &LevelLayout::BallY, kLast),
    RecordFlag("SpottedUnused", &LevelRecord::SpottedUnused),
    RecordNumber("SpottedCount", &LevelRecord::SpottedCount),
    RecordNumber("SpottedChangerCount", &LevelRecord::SpottedChangerCount, kLast),
    RecordFlag("ZigZagUnused", &LevelRecord::ZigZagUnused),
    RecordNumber("ZigZagCount", &LevelRecord::ZigZagCount),
    RecordNumber("ZigZagChangerCount", &LevelRecord::ZigZagChangerCount, kLast),
    RecordFlag("CenterLineUnused", &LevelRecord::CenterLineUnused),
    RecordNumber("CenterLineCount", &LevelRecord::CenterLineCount),
    RecordNumber("CenterLineChangerCount", &LevelRecord::CenterLineChangerCount, kLast),
    RecordFlag("CustomUnused", &LevelRecord::CustomUnused),
    RecordNumber("CustomCount", &LevelRecord::CustomCount),
    RecordNumber("CustomChangerCount", &LevelRecord::CustomChangerCount, kLast),
    RecordNumber("SpecialUnusedCount", &LevelRecord::SpecialUnusedCount, kLast),
};

const char* KindName(GameKind kind) { return kind == GameKind::Shardles ? "Shardles" : "Tiltbash"; }

// ---- writing ----------------------------------------------------------------

// Written by hand rather than by the library's pretty printer so that grids
// and pictures keep one row to a line and stay readable.
class JsonText {
public:
    std::string out;

    void Key(int indent, std::string_view key) {
        out.append(static_cast<std::size_t>(indent), ' ');
        out += '"';
        out += key;
        out += "\": ";
    }
    void String(std::string_view utf8) { out += json(utf8).dump(); }
    void Bool(bool value) { out += value ? "true" : "false"; }
    void Number(int value) {
        char digits[12];
        auto end = std::to_chars(digits, digits + sizeof digits, value).ptr;
        out.append(digits, end);
    }
    template <typename Cells>
    void Rows(int indent, const Cells& cells, std::size_t perRow) {
        out += "[\n";
        for (std::size_t i = 0; i < cells.size(); ++i) {
            if (i % perRow == 0) out.append(static_cast<std::size_t>(indent + 2), ' ');
            Number(cells[i]);
            if (i + 1 < cells.size()) out += (i + 1) % perRow == 0 ? ",\n" : ",";
        }
        out += '\n';
        out.append(static_cast<std::size_t>(indent), ' ');
        out += ']';
    }
    void EndMember(bool last) { out += last ? "\n" : ",\n"; }

    void Level(const LevelLayout& layout, const LevelRecord& record) {
        out += "    {\n";
        bool lineStart = true;
        for (const Slot& slot : kLevelSlots) {
            if (lineStart) Key(6, slot.key);
            else Key(1, slot.key);
            switch (slot.shape) {
            case Shape::Cells: Rows(6, layout.Cells, kColumns); break;
            case Shape::LayoutNumber: Number(layout.*slot.layoutNumber); break;
            case Shape::RecordFlag: Bool(record.*slot.recordFlag); break;
            case Shape::RecordNumber: Number(record.*slot.recordNumber); break;
            default: break;
            }
            const bool last = &slot == std::prev(std::end(kLevelSlots));
            if (slot.sharesLine) out += ',';
            else EndMember(last);
            lineStart = !slot.sharesLine;
        }
        out += "    }";
    }
};

// ---- reading ----------------------------------------------------------------

// A value the parser hands over, whatever its JSON type.
struct Scalar {
    enum class Type { Null, Boolean, Signed, Unsigned, Float, String } type;
    bool boolean = false;
    std::int64_t whole = 0;
    std::uint64_t unsignedWhole = 0;
    double real = 0;
    const std::string* text = nullptr;  // String: the text; Float: the number as written
};

struct Fault {
    std::string place;  // the key's path as jq writes it, or the byte offset of malformed JSON
    std::string reason;
};

// A level as read, before the kind is sure: the kind may come after the levels.
struct PendingLevel {
    std::vector<std::uint8_t> cells;  // at most 80 kept; `cellCount` counts them all
    std::size_t cellCount = 0;
    bool cellsGiven = false;
    LevelLayout layout;
    LevelRecord record;
};

// Fills a LevelSet straight from the parser's events, without building the
// document first: reading stays well under the cost of starting the process.
class SetReader : public nlohmann::json_sax<json> {
public:
    LevelSet set;  // starts as the reset before every read leaves it; missing keys keep that
    std::optional<Fault> fault;

    bool null() override { return Value({Scalar::Type::Null}); }
    bool boolean(bool value) override { return Value({Scalar::Type::Boolean, value}); }
    bool number_integer(number_integer_t value) override { return Value({Scalar::Type::Signed, false, value}); }
    bool number_unsigned(number_unsigned_t value) override {
        return Value({Scalar::Type::Unsigned, false, 0, value});
    }
    bool number_float(number_float_t value, const string_t& written) override {
        return Value({Scalar::Type::Float, false, 0, 0, value, &written});
    }
    bool string(string_t& value) override { return Value({Scalar::Type::String, false, 0, 0, 0, &value}); }
    bool binary(binary_t&) override { return Value({Scalar::Type::Null}); }

    bool start_object(std::size_t) override;
    bool key(string_t& key) override;
    bool end_object() override { return Close(); }
    bool start_array(std::size_t) override;
    bool end_array() override { return Close(); }

    bool parse_error(std::size_t position, const std::string&, const nlohmann::detail::exception& error) override {
        parseFault = {position, error.what()};
        return false;
    }

    std::optional<std::pair<std::size_t, std::string>> parseFault;  // bytes read, the library's text

    // After a clean parse: the checks that needed the whole document, and the levels.
    bool Finish();

private:
    enum class Frame { Set, Levels, Level, Cells, Picture };
    struct Open {
        explicit Open(Frame f) : frame(f) {}
        Frame frame;
        std::size_t index = 0;        // arrays: the element being read
        const Slot* slot = nullptr;   // objects: the key being read
        std::string key;              // objects: its name, for messages
    };
    std::vector<Open> open_;  // the objects and arrays not yet closed, innermost last
    std::size_t skipping_ = 0;  // depth inside a level past the last one, which is only counted
    std::vector<PendingLevel> levels_;
    bool levelsGiven_ = false;
    bool kindGiven_ = false;
    PiecePicture* picture_ = nullptr;

    bool Fail(std::string place, std::string reason) {
        fault = Fault{std::move(place), std::move(reason)};
        return false;
    }
    // The path of the position `depth` open containers deep, ".Levels[3].Cells" say.
    std::string Path(std::size_t depth) const {
        std::string path;
        for (std::size_t i = 0; i < depth; ++i) {
            const Open& o = open_[i];
            if (o.frame == Frame::Set || o.frame == Frame::Level) path += "." + o.key;
            else path += "[" + std::to_string(o.index) + "]";
        }
        return path.empty() ? "." : path;
    }
    std::string Here() const { return Path(open_.size()); }

    bool Value(const Scalar& value);
    bool SlotValue(const Slot& slot, const Scalar& value);
    bool Whole(const Scalar& value, long long low, long long high, long long& out);
    bool Close();
    std::optional<std::string> CellsFault(std::size_t level) const;
    static std::string TypeReason(const Slot& slot);
    void Next() {
        if (!open_.empty()) ++open_.back().index;
    }
};

std::string SetReader::TypeReason(const Slot& slot) {
    switch (slot.shape) {
    case Shape::Kind: return "must be \"Shardles\" or \"Tiltbash\"";
    case Shape::Text: return "must be a string";
    case Shape::SetFlag:
    case Shape::RecordFlag: return "must be true or false";
    case Shape::Picture: return "must be an array of 60 numbers";
    case Shape::Levels: return "must be an array of levels";
    case Shape::Cells: return "must be an array of numbers";
    case Shape::LayoutNumber:
    case Shape::RecordNumber: return "must be a whole number from -32768 to 32767";
    }
    return {};
}

bool SetReader::Whole(const Scalar& value, long long low, long long high, long long& out) {
    // Messages are made only on the way out: this runs for every number.
    auto range = [&] { return std::to_string(low) + " to " + std::to_string(high); };
    switch (value.type) {
    case Scalar::Type::Signed:
        if (value.whole < low || value.whole > high)
            return Fail(Here(), std::to_string(value.whole) + " is out of range " + range());
        out = value.whole;
        return true;
    case Scalar::Type::Unsigned:
        if (value.unsignedWhole > static_cast<std::uint64_t>(high))
            return Fail(Here(), std::to_string(value.unsignedWhole) + " is out of range " + range());
        out = static_cast<long long>(value.unsignedWhole);
        return true;
    case Scalar::Type::Float:
        // JSON does not tell 5 from 5.0; a tool may well write either.
        if (value.real == std::trunc(value.real)) {
            if (value.real < static_cast<double>(low) || value.real > static_cast<double>(high))
                return Fail(Here(), *value.text + " is out of range " + range());
            out = static_cast<long long>(value.real);
            return true;
        }
        break;
    default: break;
    }
    return Fail(Here(), "must be a whole number from " + range());
}

bool SetReader::Value(const Scalar& value) {
    if (skipping_) return true;
    if (open_.empty()) return Fail(".", "must be an object");
    Open& top = open_.back();
    long long number = 0;
    switch (top.frame) {
    case Frame::Set:
    case Frame::Level: return SlotValue(*top.slot, value);
    case Frame::Levels:
        if (top.index < static_cast<std::size_t>(kMaxLevels)) return Fail(Here(), "must be an object");
        break;
    case Frame::Cells: {
        if (!Whole(value, 0, 15, number)) return false;
        PendingLevel& level = levels_.back();
        if (level.cells.size() < static_cast<std::size_t>(CellCount(GameKind::Shardles)))
            level.cells.push_back(static_cast<std::uint8_t>(number));
        ++level.cellCount;
        break;
    }
    case Frame::Picture:
        if (!Whole(value, 0, 255, number)) return false;
        if (top.index < kPictureCells) picture_->cells[top.index] = static_cast<std::uint8_t>(number);
        break;
    }
    Next();
    return true;
}

bool SetReader::SlotValue(const Slot& slot, const Scalar& value) {
    long long number = 0;
    switch (slot.shape) {
    case Shape::Kind:
        if (value.type == Scalar::Type::String && *value.text == "Shardles") set.Kind = GameKind::Shardles;
        else if (value.type == Scalar::Type::String && *value.text == "Tiltbash") set.Kind = GameKind::Tiltbash;
        else return Fail(Here(), TypeReason(slot));
        kindGiven_ = true;
        return true;
    case Shape::Text: {
        if (value.type != Scalar::Type::String) return Fail(Here(), TypeReason(slot));
        auto converted = Utf8ToCp1252(*value.text);
        if (!converted.ok()) {
            const std::string& utf8 = *value.text;
            const auto character =
                1 + std::count_if(utf8.begin(), utf8.begin() + static_cast<std::ptrdiff_t>(converted.fault->offset),
                                  [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; });
            return Fail(Here(), "character " + std::to_string(character) + ": " + converted.fault->reason);
        }
        set.*slot.text = std::move(converted.bytes);
        return true;
    }
    case Shape::SetFlag:
    case Shape::RecordFlag:
        if (value.type != Scalar::Type::Boolean) return Fail(Here(), TypeReason(slot));
        if (slot.shape == Shape::SetFlag) set.*slot.setFlag = value.boolean;
        else levels_.back().record.*slot.recordFlag = value.boolean;
        return true;
    case Shape::LayoutNumber:
    case Shape::RecordNumber:
        if (!Whole(value, -32768, 32767, number)) return false;
        if (slot.shape == Shape::LayoutNumber)
            levels_.back().layout.*slot.layoutNumber = static_cast<std::int16_t>(number);
        else
            levels_.back().record.*slot.recordNumber = static_cast<std::int16_t>(number);
        return true;
    case Shape::Picture:
    case Shape::Levels:
    case Shape::Cells: break;
    }
    return Fail(Here(), TypeReason(slot));
}

bool SetReader::start_object(std::size_t) {
    if (skipping_) {
        ++skipping_;
        return true;
    }
    if (open_.empty()) {
        open_.emplace_back(Frame::Set);
        return true;
    }
    Open& top = open_.back();
    switch (top.frame) {
    case Frame::Levels:
        if (top.index < static_cast<std::size_t>(kMaxLevels)) {
            levels_.emplace_back();
            open_.emplace_back(Frame::Level);
        } else {
            skipping_ = 1;
        }
        return true;
    case Frame::Set:
    case Frame::Level: return Fail(Here(), TypeReason(*top.slot));
    case Frame::Cells: return Fail(Here(), "must be a whole number from 0 to 15");
    case Frame::Picture: return Fail(Here(), "must be a whole number from 0 to 255");
    }
    return false;
}

bool SetReader::start_array(std::size_t) {
    if (skipping_) {
        ++skipping_;
        return true;
    }
    if (open_.empty()) return Fail(".", "must be an object");
    Open& top = open_.back();
    switch (top.frame) {
    case Frame::Set:
        if (top.slot->shape == Shape::Levels) {
            levels_.clear();
            levels_.reserve(kMaxLevels);  // a fixed bound; only the levels read are touched
            levelsGiven_ = true;
            open_.emplace_back(Frame::Levels);
            return true;
        }
        if (top.slot->shape == Shape::Picture) {
            picture_ = &(set.*top.slot->picture);
            *picture_ = PiecePicture{};
            open_.emplace_back(Frame::Picture);
            return true;
        }
        return Fail(Here(), TypeReason(*top.slot));
    case Frame::Level:
        if (top.slot->shape == Shape::Cells) {
            PendingLevel& level = levels_.back();
            level.cells.clear();
            level.cellCount = 0;
            level.cellsGiven = true;
            open_.emplace_back(Frame::Cells);
            return true;
        }
        return Fail(Here(), TypeReason(*top.slot));
    case Frame::Levels:
        if (top.index < static_cast<std::size_t>(kMaxLevels)) return Fail(Here(), "must be an object");
        skipping_ = 1;
        return true;
    case Frame::Cells: return Fail(Here(), "must be a whole number from 0 to 15");
    case Frame::Picture: return Fail(Here(), "must be a whole number from 0 to 255");
    }
    return false;
}

bool SetReader::key(string_t& key) {
    if (skipping_) return true;
    Open& top = open_.back();
    // Keys mostly come in the order they are written, so the search starts
    // after the key before.
    const auto find = [&](const auto& slots) -> const Slot* {
        const std::size_t count = std::size(slots);
        const std::size_t start = top.slot ? static_cast<std::size_t>(top.slot - std::begin(slots)) + 1 : 0;
        for (std::size_t i = 0; i < count; ++i) {
            const Slot& slot = slots[(start + i) % count];
            if (slot.key == key) return &slot;
        }
        return nullptr;
    };
    top.slot = top.frame == Frame::Set ? find(kSetSlots) : find(kLevelSlots);
    top.key = std::move(key);
    // A misspelt key would otherwise be dropped without a word.
    if (!top.slot) return Fail(Here(), "is not a key of a level set");
    return true;
}

std::optional<std::string> SetReader::CellsFault(std::size_t level) const {
    const PendingLevel& pending = levels_[level];
    const auto wanted = static_cast<std::size_t>(CellCount(set.Kind));
    if (!pending.cellsGiven || pending.cellCount == wanted) return std::nullopt;
    return "must hold " + std::to_string(wanted) + " numbers, not " + std::to_string(pending.cellCount);
}

bool SetReader::Close() {
    if (skipping_) {
        if (--skipping_ == 0) Next();
        return true;
    }
    const Open& top = open_.back();
    auto place = [&] { return Path(open_.size() - 1); };
    switch (top.frame) {
    case Frame::Cells:
        // Checked now when the kind is known, else once the whole set is read.
        if (kindGiven_)
            if (auto why = CellsFault(levels_.size() - 1)) return Fail(place(), *why);
        break;
    case Frame::Picture:
        if (top.index != kPictureCells)
            return Fail(place(), "must hold 60 numbers, not " + std::to_string(top.index));
        break;
    case Frame::Levels:
        if (top.index == 0 || top.index > static_cast<std::size_t>(kMaxLevels))
            return Fail(place(), "must hold 1 to 255 levels, not " + std::to_string(top.index));
        break;
    default: break;
    }
    open_.pop_back();
    Next();
    return true;
}

bool SetReader::Finish() {
    if (!levelsGiven_) {
        MakeLevels(set, 1);
        return true;
    }
    for (std::size_t i = 0; i < levels_.size(); ++i)
        if (auto why = CellsFault(i)) return Fail(".Levels[" + std::to_string(i) + "].Cells", *why);
    MakeLevels(set, static_cast<int>(levels_.size()));
    for (std::size_t i = 0; i < levels_.size(); ++i) {
        PendingLevel& pending = levels_[i];
        LevelLayout& layout = set.Layouts[i];
        if (pending.cellsGiven) layout.Cells = std::move(pending.cells);
        for (const Slot& slot : kLevelSlots)
            if (slot.shape == Shape::LayoutNumber) layout.*slot.layoutNumber = pending.layout.*slot.layoutNumber;
        set.Records[i] = pending.record;
    }
    return true;
}

// The library's reason without its "[json.exception...] parse error at line
// L, column C: " prefix, nor the text of the token it was reading, which may
// be long and hold bytes that are not text.
std::string ParseReason(std::string reason) {
    const auto bracket = reason.find("] ");
    if (reason.starts_with("[json.exception.") && bracket != std::string::npos) reason.erase(0, bracket + 2);
    if (reason.starts_with("parse error")) {
        const auto colon = reason.find(": ");
        if (colon != std::string::npos) reason.erase(0, colon + 2);
    }
    const auto lastRead = reason.find("; last read: ");
    if (lastRead != std::string::npos) {
        const auto expected = reason.find("; expected ", lastRead);
        reason.erase(lastRead, expected == std::string::npos ? std::string::npos : expected - lastRead);
    }
    return reason;
}

// The library counts the bytes it has read; the offending one is the last.
std::string ParsePlace(std::string_view bytes, std::size_t bytesRead) {
    const std::size_t offset = std::min(bytesRead > 0 ? bytesRead - 1 : 0, bytes.size());
    const std::string_view before = bytes.substr(0, offset);
    const auto line = 1 + std::count(before.begin(), before.end(), '\n');
    const auto lineStart = before.rfind('\n');
    const auto column = offset - (lineStart == std::string_view::npos ? 0 : lineStart + 1) + 1;
    return "byte " + std::to_string(offset) + " (line " + std::to_string(line) + ", column " +
           std::to_string(column) + ")";
}

// A refusal still carries a usable set, as every reader's result does.
ReadResult Refusal(std::string message) {
    ReadResult result = Refuse(std::move(message));
    result.set = NewSet(GameKind::Tiltbash);
    return result;
}

}  // namespace

WriteResult WriteJsonFile(const LevelSet& set) {
    JsonText text;
    // Room for the longest numbers, so the text is never moved while it grows.
    text.out.reserve(2048 + set.Layouts.size() * 1200);
    text.out += "{\n";
    for (const Slot& slot : kSetSlots) {
        text.Key(2, slot.key);
        switch (slot.shape) {
        case Shape::Kind: text.String(KindName(set.Kind)); break;
        case Shape::Text: text.String(Cp1252ToUtf8(set.*slot.text)); break;
        case Shape::SetFlag: text.Bool(set.*slot.setFlag); break;
        case Shape::Picture: text.Rows(2, (set.*slot.picture).cells, 10); break;
        case Shape::Levels:
            text.out += "[\n";
            for (int level = 1; level <= set.LevelCount(); ++level) {
                text.Level(set.Layout(level), set.Record(level));
                text.EndMember(level == set.LevelCount());
            }
            text.out += "  ]";
            break;
        default: break;
        }
        text.EndMember(slot.shape == Shape::Levels);
    }
    text.out += "}\n";
    return Written(std::move(text.out));
}

ReadResult ReadJsonFile(std::string_view bytes) {
    try {
        SetReader reader;
        const bool parsed = json::sax_parse(bytes.begin(), bytes.end(), &reader);
        if (reader.fault) return Refusal(reader.fault->place + ": " + reader.fault->reason);
        if (!parsed || reader.parseFault) {
            const auto [read, what] = reader.parseFault.value_or(std::pair{bytes.size() + 1, std::string("malformed")});
            return Refusal(ParsePlace(bytes, read) + ": " + ParseReason(what));
        }
        if (!reader.Finish()) return Refusal(reader.fault->place + ": " + reader.fault->reason);
        ReadResult result;
        result.set = std::move(reader.set);
        return result;
    } catch (const std::exception& e) {
        return Refusal(std::string("cannot be read: ") + e.what());
    }
}

}  // namespace shd
