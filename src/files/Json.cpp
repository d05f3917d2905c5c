#include "files/Json.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <limits>
#include <nlohmann/json.hpp>

#include "model/Cp1252.h"

namespace shd {

namespace {

using nlohmann::json;

// The thirteen record fields in the record's order; the unused flags are Booleans.
struct RecordField {
    const char* key;
    bool LevelRecord::*flag;           // nullptr for a count
    std::int16_t LevelRecord::*count;  // nullptr for a flag
};
const RecordField kRecordFields[] = {
    {"SpottedUnused", &LevelRecord::SpottedUnused, nullptr},
    {"SpottedCount", nullptr, &LevelRecord::SpottedCount},
    {"SpottedChangerCount", nullptr, &LevelRecord::SpottedChangerCount},
    {"ZigZagUnused", &LevelRecord::ZigZagUnused, nullptr},
    {"ZigZagCount", nullptr, &LevelRecord::ZigZagCount},
    {"ZigZagChangerCount", nullptr, &LevelRecord::ZigZagChangerCount},
    {"CenterLineUnused", &LevelRecord::CenterLineUnused, nullptr},
    {"CenterLineCount", nullptr, &LevelRecord::CenterLineCount},
    {"CenterLineChangerCount", nullptr, &LevelRecord::CenterLineChangerCount},
    {"CustomUnused", &LevelRecord::CustomUnused, nullptr},
    {"CustomCount", nullptr, &LevelRecord::CustomCount},
    {"CustomChangerCount", nullptr, &LevelRecord::CustomChangerCount},
    {"SpecialUnusedCount", nullptr, &LevelRecord::SpecialUnusedCount},
};

struct LayoutField {
    const char* key;
    std::int16_t LevelLayout::*field;
};
const LayoutField kLayoutFields[] = {
    {"BlockCount", &LevelLayout::BlockCount},
    {"LastBlockCount", &LevelLayout::LastBlockCount},
    {"BallX", &LevelLayout::BallX},
    {"BallY", &LevelLayout::BallY},
};

struct TextField {
    const char* key;
    Bytes LevelSet::*field;
};
const TextField kTextFields[] = {
    {"Title", &LevelSet::Title},
    {"BonusClock", &LevelSet::BonusClock},
    {"ExtraLifePoints", &LevelSet::ExtraLifePoints},
};

struct FlagField {
    const char* key;
    bool LevelSet::*field;
};
const FlagField kFlagFields[] = {
    {"ArrowBlocksBreakable", &LevelSet::ArrowBlocksBreakable},
    {"UseWrapAround", &LevelSet::UseWrapAround},
    {"UseCustomShardles", &LevelSet::UseCustomShardles},
    {"UseShardlesDebugger", &LevelSet::UseShardlesDebugger},
    {"MatchLocksToBlocks", &LevelSet::MatchLocksToBlocks},
};

struct PictureField {
    const char* key;
    PiecePicture LevelSet::*field;
};
const PictureField kPictureFields[] = {
    {"CustomShardlePicture", &LevelSet::CustomShardlePicture},
    {"CustomChangerPicture", &LevelSet::CustomChangerPicture},
};

const char* KindName(GameKind kind) { return kind == GameKind::Shardles ? "Shardles" : "Tiltbash"; }

// ---- writing ----------------------------------------------------------------

// Written by hand rather than by the library's pretty printer so that grids
// and pictures keep one row to a line and stay readable.
class JsonText {
public:
    std::string out;

    void Key(int indent, const char* key) {
        out.append(static_cast<std::size_t>(indent), ' ');
        out += '"';
        out += key;
        out += "\": ";
    }
    void String(const Bytes& bytes) { out += json(Cp1252ToUtf8(bytes)).dump(); }
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
            if (i + 1 < cells.size()) out += (i + 1) % perRow == 0 ? ",\n" : ", ";
        }
        out += '\n';
        out.append(static_cast<std::size_t>(indent), ' ');
        out += ']';
    }
    void EndMember(bool last) { out += last ? "\n" : ",\n"; }
};

// ---- reading ----------------------------------------------------------------

struct Fault {
    std::string path;
    std::string reason;
};

// Thrown only inside ReadJsonFile, which turns it into a refusal.
struct FaultThrown {
    Fault fault;
};

[[noreturn]] void Fail(const std::string& path, std::string reason) { throw FaultThrown{{path, std::move(reason)}}; }

std::string IndexPath(const std::string& path, std::size_t index) {
    return path + "[" + std::to_string(index) + "]";
}

const json* Member(const json& object, const char* key) {
    auto it = object.find(key);
    return it == object.end() ? nullptr : &*it;
}

void RefuseUnknownKeys(const json& object, const std::string& path, std::initializer_list<const char*> known1,
                       std::initializer_list<const char*> known2 = {}) {
    for (auto it = object.begin(); it != object.end(); ++it) {
        bool known = false;
        for (const char* k : known1) known = known || it.key() == k;
        for (const char* k : known2) known = known || it.key() == k;
        if (!known) Fail(path + "." + it.key(), "is not a key of a level set");
    }
}

long long WholeNumber(const json& value, const std::string& path, long long low, long long high) {
    const std::string range = std::to_string(low) + " to " + std::to_string(high);
    if (value.is_number_unsigned()) {
        const auto n = value.get<std::uint64_t>();
        if (n > static_cast<std::uint64_t>(high)) Fail(path, std::to_string(n) + " is out of range " + range);
        return static_cast<long long>(n);
    }
    if (value.is_number_integer()) {
        const auto n = value.get<std::int64_t>();
        if (n < low || n > high) Fail(path, std::to_string(n) + " is out of range " + range);
        return n;
    }
    Fail(path, "must be a whole number from " + range);
}

std::int16_t Int16(const json& value, const std::string& path) {
    return static_cast<std::int16_t>(
        WholeNumber(value, path, std::numeric_limits<std::int16_t>::min(), std::numeric_limits<std::int16_t>::max()));
}

bool Boolean(const json& value, const std::string& path) {
    if (!value.is_boolean()) Fail(path, "must be true or false");
    return value.get<bool>();
}

Bytes Text(const json& value, const std::string& path) {
    if (!value.is_string()) Fail(path, "must be a string");
    const auto& utf8 = value.get_ref<const std::string&>();
    auto converted = Utf8ToCp1252(utf8);
    if (!converted.ok()) {
        std::size_t character = 1;
        for (std::size_t i = 0; i < converted.fault->offset; ++i)
            if ((static_cast<unsigned char>(utf8[i]) & 0xC0) != 0x80) ++character;
        Fail(path, "character " + std::to_string(character) + ": " + converted.fault->reason);
    }
    return std::move(converted.bytes);
}

const json& Array(const json& value, const std::string& path, std::size_t size, const char* what) {
    if (!value.is_array()) Fail(path, std::string("must be an array of ") + std::to_string(size) + " " + what);
    if (value.size() != size)
        Fail(path, "must hold " + std::to_string(size) + " " + what + ", not " + std::to_string(value.size()));
    return value;
}

void ReadLevel(const json& value, const std::string& path, LevelSet& set, int level) {
    if (!value.is_object()) Fail(path, "must be an object");
    static constexpr std::initializer_list<const char*> kLevelKeys{
        "Cells", "BlockCount", "LastBlockCount", "BallX", "BallY", "SpottedUnused", "SpottedCount",
        "SpottedChangerCount", "ZigZagUnused", "ZigZagCount", "ZigZagChangerCount", "CenterLineUnused",
        "CenterLineCount", "CenterLineChangerCount", "CustomUnused", "CustomCount", "CustomChangerCount",
        "SpecialUnusedCount"};
    RefuseUnknownKeys(value, path, kLevelKeys);
    LevelLayout& layout = set.Layout(level);
    if (const json* cells = Member(value, "Cells")) {
        const std::string cellsPath = path + ".Cells";
        const auto size = static_cast<std::size_t>(CellCount(set.Kind));
        Array(*cells, cellsPath, size, "numbers");
        for (std::size_t i = 0; i < size; ++i)
            layout.Cells[i] = static_cast<std::uint8_t>(WholeNumber((*cells)[i], IndexPath(cellsPath, i), 0, 15));
    }
    for (const auto& f : kLayoutFields)
        if (const json* v = Member(value, f.key)) layout.*f.field = Int16(*v, path + "." + f.key);
    LevelRecord& record = set.Record(level);
    for (const auto& f : kRecordFields) {
        const json* v = Member(value, f.key);
        if (!v) continue;
        if (f.flag) record.*f.flag = Boolean(*v, path + "." + f.key);
        else record.*f.count = Int16(*v, path + "." + f.key);
    }
}

LevelSet ReadSet(const json& root) {
    if (!root.is_object()) Fail(".", "must be an object");
    RefuseUnknownKeys(root, "",
                      {"Kind", "Title", "BonusClock", "ExtraLifePoints", "ArrowBlocksBreakable", "UseWrapAround",
                       "UseCustomShardles", "UseShardlesDebugger", "MatchLocksToBlocks"},
                      {"CustomShardlePicture", "CustomChangerPicture", "Levels"});
    // What the reset before every read leaves: the keys left out keep it.
    LevelSet set;
    if (const json* kind = Member(root, "Kind")) {
        if (*kind == "Shardles") set.Kind = GameKind::Shardles;
        else if (*kind == "Tiltbash") set.Kind = GameKind::Tiltbash;
        else Fail(".Kind", "must be \"Shardles\" or \"Tiltbash\"");
    }
    for (const auto& f : kTextFields)
        if (const json* v = Member(root, f.key)) set.*f.field = Text(*v, std::string(".") + f.key);
    for (const auto& f : kFlagFields)
        if (const json* v = Member(root, f.key)) set.*f.field = Boolean(*v, std::string(".") + f.key);
    for (const auto& f : kPictureFields) {
        const json* v = Member(root, f.key);
        if (!v) continue;
        const std::string path = std::string(".") + f.key;
        Array(*v, path, kPictureCells, "numbers");
        for (int n = 1; n <= kPictureCells; ++n) {
            const auto i = static_cast<std::size_t>(n - 1);
            (set.*f.field).at(n) = static_cast<std::uint8_t>(WholeNumber((*v)[i], IndexPath(path, i), 0, 255));
        }
    }
    const json* levels = Member(root, "Levels");
    if (!levels) {
        MakeLevels(set, 1);
        return set;
    }
    if (!levels->is_array()) Fail(".Levels", "must be an array of levels");
    if (levels->empty() || levels->size() > static_cast<std::size_t>(kMaxLevels))
        Fail(".Levels", "must hold 1 to 255 levels, not " + std::to_string(levels->size()));
    MakeLevels(set, static_cast<int>(levels->size()));
    for (std::size_t i = 0; i < levels->size(); ++i)
        ReadLevel((*levels)[i], IndexPath(".Levels", i), set, static_cast<int>(i) + 1);
    return set;
}

// Builds the document like the library's own parser does, but hears where a
// fault lies for every kind of fault, a number too large for a double too.
class DocumentBuilder : public nlohmann::json_sax<json> {
public:
    json root;
    std::size_t faultPosition = 0;  // bytes the library had read at the fault
    std::string faultWhat;

    bool null() override { return Add(nullptr); }
    bool boolean(bool value) override { return Add(value); }
    bool number_integer(number_integer_t value) override { return Add(value); }
    bool number_unsigned(number_unsigned_t value) override { return Add(value); }
    bool number_float(number_float_t value, const string_t&) override { return Add(value); }
    bool string(string_t& value) override { return Add(std::move(value)); }
    bool binary(binary_t& value) override { return Add(std::move(value)); }
    bool start_object(std::size_t) override { return Open(json::object()); }
    bool key(string_t& key) override {
        key_ = std::move(key);
        return true;
    }
    bool end_object() override { return Close(); }
    bool start_array(std::size_t) override { return Open(json::array()); }
    bool end_array() override { return Close(); }
    bool parse_error(std::size_t position, const std::string&, const nlohmann::detail::exception& fault) override {
        faultPosition = position;
        faultWhat = fault.what();
        return false;
    }

private:
    std::vector<json*> open_;  // the arrays and objects not yet closed, innermost last
    string_t key_;

    json* Place(json value) {
        if (open_.empty()) {
            root = std::move(value);
            return &root;
        }
        json& parent = *open_.back();
        if (parent.is_array()) {
            parent.push_back(std::move(value));
            return &parent.back();
        }
        json& slot = parent[key_];  // a repeated key keeps its last value
        slot = std::move(value);
        return &slot;
    }
    bool Add(json value) {
        Place(std::move(value));
        return true;
    }
    bool Open(json container) {
        open_.push_back(Place(std::move(container)));
        return true;
    }
    bool Close() {
        open_.pop_back();
        return true;
    }
};

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
    text.out.reserve(1024 + set.Layouts.size() * 700);
    text.out += "{\n";
    text.Key(2, "Kind");
    text.out += '"';
    text.out += KindName(set.Kind);
    text.out += '"';
    text.EndMember(false);
    for (const auto& f : kTextFields) {
        text.Key(2, f.key);
        text.String(set.*f.field);
        text.EndMember(false);
    }
    for (const auto& f : kFlagFields) {
        text.Key(2, f.key);
        text.Bool(set.*f.field);
        text.EndMember(false);
    }
    for (const auto& f : kPictureFields) {
        text.Key(2, f.key);
        text.Rows(2, (set.*f.field).cells, 10);
        text.EndMember(false);
    }
    text.Key(2, "Levels");
    text.out += "[\n";
    for (int level = 1; level <= set.LevelCount(); ++level) {
        const LevelLayout& layout = set.Layout(level);
        const LevelRecord& record = set.Record(level);
        text.out += "    {\n";
        text.Key(6, "Cells");
        text.Rows(6, layout.Cells, kColumns);
        text.EndMember(false);
        for (const auto& f : kLayoutFields) {
            text.Key(6, f.key);
            text.Number(layout.*f.field);
            text.EndMember(false);
        }
        for (const auto& f : kRecordFields) {
            text.Key(6, f.key);
            if (f.flag) text.Bool(record.*f.flag);
            else text.Number(record.*f.count);
            text.EndMember(&f == &std::end(kRecordFields)[-1]);
        }
        text.out += "    }";
        text.EndMember(level == set.LevelCount());
    }
    text.out += "  ]\n}\n";
    return Written(std::move(text.out));
}

ReadResult ReadJsonFile(std::string_view bytes) {
    try {
        DocumentBuilder builder;
        if (!json::sax_parse(bytes.begin(), bytes.end(), &builder))
            return Refusal(ParsePlace(bytes, builder.faultPosition) + ": " + ParseReason(builder.faultWhat));
        ReadResult result;
        result.set = ReadSet(builder.root);
        return result;
    } catch (const FaultThrown& thrown) {
        return Refusal(thrown.fault.path + ": " + thrown.fault.reason);
    } catch (const std::exception& e) {
        return Refusal(std::string("cannot be read: ") + e.what());
    }
}

}  // namespace shd
