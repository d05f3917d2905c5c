// Reading the JSON form: the parser's events go straight into the set, each
// key checked against the table of keys as it comes.
#include "files/Json.h"

#include <rapidjson/stream.h>
#include <rapidjson/reader.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <limits>
#include <optional>
#include <string_view>
#include <vector>

#include "files/JsonKeys.h"
#include "model/Cp1252.h"
#include "model/Quoted.h"
#include "model/TextOut.h"

namespace shd {

namespace {
using namespace json;

// A value the parser hands over, whatever its JSON type.
struct Scalar {
    enum class Type { Null, Boolean, Whole, Huge, Real, String } type;
    bool boolean = false;
    long long whole = 0;      // Whole: the number; Huge is a whole number beyond that range
    double real = 0;          // Real: a number with a fraction or an exponent
    std::string_view text{};  // String: the text
};

struct Fault {
    std::string place;  // the key's path as jq writes it
    std::string reason;
};

// What a level's cells looked like, before the kind is sure: the kind may
// come after the levels.
struct CellsSeen {
    std::size_t count = 0;  // every number, though at most 80 are kept
    bool given = false;
};

// Fills a LevelSet straight from the parser's events, without building the
// document first: reading stays well under the cost of starting the process.
class SetReader : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, SetReader> {
public:
    using Size = rapidjson::SizeType;

    LevelSet set;  // starts as the reset before every read leaves it; missing keys keep that
    std::optional<Fault> fault;

    // `bytes` is what `stream` reads; the reader looks back at it to quote a number.
    SetReader(std::string_view bytes, rapidjson::InsituStringStream& stream) : bytes_(bytes), stream_(stream) {}

    bool Null() { return Value({Scalar::Type::Null}); }
    bool Bool(bool value) { return Value({Scalar::Type::Boolean, value}); }
    bool Int(int value) { return Value({Scalar::Type::Whole, false, value}); }
    bool Uint(unsigned value) {
        // Grid cells are most of a file; they take the shortest way.
        if (inCells_ && value <= 15) {
            AddCell(static_cast<std::uint8_t>(value));
            return true;
        }
        return Value({Scalar::Type::Whole, false, value});
    }
    bool Int64(std::int64_t value) { return Value({Scalar::Type::Whole, false, value}); }
    bool Uint64(std::uint64_t value) {
        constexpr auto kLargest = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
        if (value > kLargest) return Value({Scalar::Type::Huge});
        return Value({Scalar::Type::Whole, false, static_cast<long long>(value)});
    }
    bool Double(double value) { return Value({Scalar::Type::Real, false, 0, value}); }
    bool String(const char* text, Size length, bool) {
        return Value({Scalar::Type::String, false, 0, 0, {text, length}});
    }
    bool StartObject();
    bool Key(const char* text, Size length, bool);
    bool EndObject(Size) { return Close(); }
    bool StartArray();
    bool EndArray(Size) { return Close(); }

    // After a clean parse: the checks that needed the whole document.
    bool Finish();

private:
    enum class Frame { Set, Levels, Level, Cells, Picture };
    std::string_view bytes_;
    rapidjson::InsituStringStream& stream_;
    struct Open {
        explicit Open(Frame f) : frame(f) {}
        Frame frame;
        std::size_t index = 0;        // arrays: the element being read
        const Slot* slot = nullptr;   // objects: the key being read
    };
    std::vector<Open> open_;  // the objects and arrays not yet closed, innermost last
    bool inCells_ = false;    // the innermost of them is a level's grid
    std::size_t skipping_ = 0;  // depth inside a level past the last one, which is only counted
    std::vector<CellsSeen> cells_;  // one for each level read so far
    bool levelsGiven_ = false;
    bool kindGiven_ = false;
    PiecePicture* picture_ = nullptr;

    bool Fail(std::string place, std::string reason) {
        fault = Fault{std::move(place), std::move(reason)};
        return false;
    }
    // Out of line and marked rare, so the paths every value takes stay lean.
    [[gnu::cold]] bool FailHere(std::string_view reason) { return Fail(Here(), std::string(reason)); }
    // The path of the position `depth` open containers deep, ".Levels[3].Cells" say.
    std::string Path(std::size_t depth) const {
        std::string path;
        for (std::size_t i = 0; i < depth; ++i) {
            const Open& o = open_[i];
            if (o.frame == Frame::Set || o.frame == Frame::Level) {
                path += '.';
                path += o.slot->key;
            } else {
                path += '[';
                path += std::to_string(o.index);
                path += ']';
            }
        }
        return path.empty() ? "." : path;
    }
    std::string Here() const { return Path(open_.size()); }
    // The number just read as the file writes it: while the parser hands a
    // number over, the stream it was given still stands at its start.
    std::string NumberText() const {
        const std::size_t start = std::min(stream_.Tell(), bytes_.size());
        const std::size_t end = bytes_.find_first_not_of("0123456789+-.eE", start);
        return Escaped(bytes_.substr(start, end == std::string_view::npos ? std::string_view::npos : end - start));
    }

    bool Value(const Scalar& value);
    bool SlotValue(const Slot& slot, const Scalar& value);
    bool Whole(const Scalar& value, long long low, long long high, long long& out);
    [[gnu::cold]] bool WholeSlowly(const Scalar& value, long long low, long long high, long long& out);
    bool Deeper();
    bool Close();
    std::optional<std::string> CellsFault(std::size_t level) const;
    static std::string_view TypeReason(const Slot& slot);
    void Next() {
        if (!open_.empty()) ++open_.back().index;
    }
    void AddCell(std::uint8_t code) {
        BlockGrid& cells = set.Layouts.back().Cells;
        if (cells.size() < static_cast<std::size_t>(CellCount(GameKind::Shardles))) cells.push_back(code);
        ++cells_.back().count;
        ++open_.back().index;
    }
};

std::string_view SetReader::TypeReason(const Slot& slot) {
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
    if (value.type == Scalar::Type::Whole && value.whole >= low && value.whole <= high) {
        out = value.whole;
        return true;
    }
    return WholeSlowly(value, low, high, out);
}

// Whole numbers out of range, numbers with a fraction or an exponent, and the messages.
bool SetReader::WholeSlowly(const Scalar& value, long long low, long long high, long long& out) {
    const std::string range = std::to_string(low) + " to " + std::to_string(high);
    auto outOfRange = [&] { return Fail(Here(), NumberText() + " is out of range " + range); };
    switch (value.type) {
    case Scalar::Type::Whole:
    case Scalar::Type::Huge: return outOfRange();
    case Scalar::Type::Real:
        // JSON does not tell 5 from 5.0 or 5e0; a tool may well write either.
        if (value.real != std::trunc(value.real)) break;
        if (value.real < static_cast<double>(low) || value.real > static_cast<double>(high)) return outOfRange();
        out = static_cast<long long>(value.real);
        return true;
    default: break;
    }
    return Fail(Here(), "must be a whole number from " + range);
}

bool SetReader::Value(const Scalar& value) {
    if (skipping_) return true;
    if (open_.empty()) return FailHere("must be an object");
    Open& top = open_.back();
    long long number = 0;
    switch (top.frame) {
    case Frame::Set:
    case Frame::Level: return SlotValue(*top.slot, value);
    case Frame::Levels:
        if (top.index < static_cast<std::size_t>(kMaxLevels)) return FailHere("must be an object");
        break;
    case Frame::Cells:
        if (!Whole(value, 0, 15, number)) return false;
        AddCell(static_cast<std::uint8_t>(number));
        return true;
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
        if (value.type == Scalar::Type::String && value.text == "Shardles") set.Kind = GameKind::Shardles;
        else if (value.type == Scalar::Type::String && value.text == "Tiltbash") set.Kind = GameKind::Tiltbash;
        else return FailHere(TypeReason(slot));
        kindGiven_ = true;
        return true;
    case Shape::Text: {
        if (value.type != Scalar::Type::String) return FailHere(TypeReason(slot));
        auto converted = Utf8ToCp1252(value.text);
        if (!converted.ok()) {
            const std::string_view utf8 = value.text;
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
        if (value.type != Scalar::Type::Boolean) return FailHere(TypeReason(slot));
        if (slot.shape == Shape::SetFlag) set.*slot.setFlag = value.boolean;
        else set.Records.back().*slot.recordFlag = value.boolean;
        return true;
    case Shape::LayoutNumber:
    case Shape::RecordNumber:
        if (!Whole(value, -32768, 32767, number)) return false;
        if (slot.shape == Shape::LayoutNumber)
            set.Layouts.back().*slot.layoutNumber = static_cast<std::int16_t>(number);
        else
            set.Records.back().*slot.recordNumber = static_cast<std::int16_t>(number);
        return true;
    case Shape::Picture:
    case Shape::Levels:
    case Shape::Cells: break;
    }
    return FailHere(TypeReason(slot));
}

// The parser goes down one call per level of nesting, so the depth is held
// to what no level set needs, long before the stack would run out.
bool SetReader::Deeper() {
    constexpr std::size_t kDeepest = 256;
    if (open_.size() + skipping_ < kDeepest) return true;
    return Fail(Here(), "is nested deeper than " + std::to_string(kDeepest) + " levels");
}

bool SetReader::StartObject() {
    if (!Deeper()) return false;
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
            // Straight into the set; the cells' size is checked once the kind is sure.
            set.Layouts.emplace_back();
            set.Records.emplace_back();
            cells_.emplace_back();
            open_.emplace_back(Frame::Level);
        } else {
            skipping_ = 1;
        }
        return true;
    case Frame::Set:
    case Frame::Level: return FailHere(TypeReason(*top.slot));
    case Frame::Cells: return FailHere("must be a whole number from 0 to 15");
    case Frame::Picture: return FailHere("must be a whole number from 0 to 255");
    }
    return false;
}

bool SetReader::StartArray() {
    if (!Deeper()) return false;
    if (skipping_) {
        ++skipping_;
        return true;
    }
    if (open_.empty()) return FailHere("must be an object");
    Open& top = open_.back();
    switch (top.frame) {
    case Frame::Set:
        if (top.slot->shape == Shape::Levels) {
            // A repeated key starts the levels over.
            set.Layouts.clear();
            set.Records.clear();
            cells_.clear();
            set.Layouts.reserve(kMaxLevels);  // a fixed bound; only the levels read are touched
            set.Records.reserve(kMaxLevels);
            cells_.reserve(kMaxLevels);
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
        return FailHere(TypeReason(*top.slot));
    case Frame::Level:
        if (top.slot->shape == Shape::Cells) {
            BlockGrid& cells = set.Layouts.back().Cells;
            cells.clear();
            cells.reserve(static_cast<std::size_t>(CellCount(GameKind::Shardles)));
            cells_.back() = {0, true};
            open_.emplace_back(Frame::Cells);
            inCells_ = true;
            return true;
        }
        return FailHere(TypeReason(*top.slot));
    case Frame::Levels:
        if (top.index < static_cast<std::size_t>(kMaxLevels)) return FailHere("must be an object");
        skipping_ = 1;
        return true;
    case Frame::Cells: return FailHere("must be a whole number from 0 to 15");
    case Frame::Picture: return FailHere("must be a whole number from 0 to 255");
    }
    return false;
}

bool SetReader::Key(const char* text, Size length, bool) {
    if (skipping_) return true;
    Open& top = open_.back();
    const std::string_view key(text, length);
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
    // A misspelt key would otherwise be dropped without a word.
    if (!top.slot) {
        const std::string parent = open_.size() > 1 ? Path(open_.size() - 1) : std::string();
        return Fail(parent + "." + Escaped(key), "is not a key of a level set");
    }
    return true;
}

std::optional<std::string> SetReader::CellsFault(std::size_t level) const {
    const CellsSeen& seen = cells_[level];
    const auto wanted = static_cast<std::size_t>(CellCount(set.Kind));
    if (!seen.given || seen.count == wanted) return std::nullopt;
    return "must hold " + std::to_string(wanted) + " numbers, not " + std::to_string(seen.count);
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
            if (auto why = CellsFault(cells_.size() - 1)) return Fail(place(), *why);
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
    inCells_ = false;  // a grid holds nothing that opens
    Next();
    return true;
}

bool SetReader::Finish() {
    if (!levelsGiven_) {
        MakeLevels(set, 1);
        return true;
    }
    for (std::size_t i = 0; i < cells_.size(); ++i) {
        if (auto why = CellsFault(i)) return Fail(".Levels[" + std::to_string(i) + "].Cells", *why);
        if (!cells_[i].given) set.Layouts[i].Cells.assign(static_cast<std::size_t>(CellCount(set.Kind)), 0);
    }
    return true;
}

// The parser's reason in our words.
std::string_view ParseReason(rapidjson::ParseErrorCode code) {
    switch (code) {
    case rapidjson::kParseErrorDocumentEmpty: return "there is no JSON value";
    case rapidjson::kParseErrorDocumentRootNotSingular: return "something follows the end of the JSON value";
    case rapidjson::kParseErrorValueInvalid: return "not a JSON value";
    case rapidjson::kParseErrorObjectMissName: return "a key in double quotes is missing";
    case rapidjson::kParseErrorObjectMissColon: return "a colon is missing after the key";
    case rapidjson::kParseErrorObjectMissCommaOrCurlyBracket: return "a comma or '}' is missing";
    case rapidjson::kParseErrorArrayMissCommaOrSquareBracket: return "a comma or ']' is missing";
    case rapidjson::kParseErrorStringUnicodeEscapeInvalidHex: return "a \\u escape needs four hexadecimal digits";
    case rapidjson::kParseErrorStringUnicodeSurrogateInvalid: return "a \\u escape holds half a surrogate pair";
    case rapidjson::kParseErrorStringEscapeInvalid: return "a string holds a control character or an unknown escape";
    case rapidjson::kParseErrorStringMissQuotationMark: return "a string is not closed";
    case rapidjson::kParseErrorStringInvalidEncoding: return "a string holds bytes that are not UTF-8";
    case rapidjson::kParseErrorNumberTooBig: return "a number is too large";
    case rapidjson::kParseErrorNumberMissFraction: return "a number has no digits after its decimal point";
    case rapidjson::kParseErrorNumberMissExponent: return "a number has no digits in its exponent";
    default: return "the JSON is malformed";
    }
}

std::string ParsePlace(std::string_view bytes, std::size_t offset) {
    offset = std::min(offset, bytes.size());
    const std::string_view before = bytes.substr(0, offset);
    const auto line = 1 + std::count(before.begin(), before.end(), '\n');
    const auto lineStart = before.rfind('\n');
    const auto column = offset - (lineStart == std::string_view::npos ? 0 : lineStart + 1) + 1;
    return "byte " + std::to_string(offset) + " (line " + std::to_string(line) + ", column " +
           std::to_string(column) + ")";
}

}  // namespace

ReadResult ReadJsonFile(const std::string& bytes) {
    try {
        // A byte-order mark is allowed before the text; places are counted
        // from the file's first byte all the same.
        const std::size_t mark = bytes.starts_with("\xEF\xBB\xBF") ? 3 : 0;
        // A string's bytes end in a zero byte, which is where the parser stops.
        // Strings are decoded in a copy of the text, in place: the parser's
        // own buffer for them does arithmetic on a null pointer before its
        // first use, which the sanitizers rightly refuse.
        std::string text = bytes.substr(mark);
        rapidjson::InsituStringStream stream(text.data());
        SetReader reader(std::string_view(bytes).substr(mark), stream);
        rapidjson::Reader parser;
        // Text is checked for UTF-8 as it is turned into Windows-1252, and
        // keys by being looked up.
        constexpr unsigned kFlags = rapidjson::kParseDefaultFlags | rapidjson::kParseInsituFlag;
        const rapidjson::ParseResult parsed = parser.Parse<kFlags>(stream, reader);
        if (reader.fault) return RefusedRead(reader.fault->place + ": " + reader.fault->reason);
        if (parsed.IsError())
            return RefusedRead(ParsePlace(bytes, mark + parsed.Offset()) + ": " + std::string(ParseReason(parsed.Code())));
        // The parser takes a zero byte for the end of the text.
        if (mark + stream.Tell() < bytes.size())
            return RefusedRead(ParsePlace(bytes, mark + stream.Tell()) + ": something follows the end of the JSON value");
        if (!reader.Finish()) return RefusedRead(reader.fault->place + ": " + reader.fault->reason);
        ReadResult result;
        result.set = std::move(reader.set);
        return result;
    } catch (const std::exception& e) {
        return RefusedRead(std::string("cannot be read: ") + e.what());
    }
}

}  // namespace shd
