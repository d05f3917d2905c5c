// Writing the JSON form.
#include <string_view>

#include "files/Json.h"
#include "files/JsonKeys.h"
#include "model/Cp1252.h"
#include "model/Quoted.h"
#include "model/TextOut.h"

namespace shd {

namespace {
using namespace json;

// Written by hand so that grids and pictures keep one row to a line and
// stay readable.
class JsonText {
public:
    explicit JsonText(std::size_t expected) : out(expected) {}
    TextOut out;

    void Indent(int spaces) {
        static constexpr std::string_view kSpaces = "                ";
        out << kSpaces.substr(0, static_cast<std::size_t>(spaces));
    }
    void Key(int indent, std::string_view key) {
        Indent(indent);
        out << '"' << key << "\": ";
    }
    // UTF-8 as it is, with only the quote, the backslash and the control
    // characters escaped.
    void String(std::string_view utf8) {
        static constexpr char kHex[] = "0123456789abcdef";
        out << '"';
        for (const char c : utf8) {
            switch (c) {
            case '"': out << "\\\""; break;
            case '\\': out << "\\\\"; break;
            case '\b': out << "\\b"; break;
            case '\f': out << "\\f"; break;
            case '\n': out << "\\n"; break;
            case '\r': out << "\\r"; break;
            case '\t': out << "\\t"; break;
            default:
                if (static_cast<unsigned char>(c) < 0x20) out << "\\u00" << kHex[c >> 4] << kHex[c & 0xF];
                else out << c;
            }
        }
        out << '"';
    }
    void Bool(bool value) { out << (value ? "true" : "false"); }
    void Number(int value) { out.Number(value); }
    template <typename Cells>
    void Rows(int indent, const Cells& cells, std::size_t perRow) {
        out << "[\n";
        for (std::size_t row = 0; row < cells.size(); row += perRow) {
            if (row > 0) out << ",\n";
            Indent(indent + 2);
            const std::size_t end = std::min(row + perRow, cells.size());
            for (std::size_t i = row; i < end; ++i) {
                if (i > row) out << ',';
                Number(cells[i]);
            }
        }
        out << '\n';
        Indent(indent);
        out << ']';
    }
    void EndMember(bool last) { out << (last ? "\n" : ",\n"); }

    void Level(const LevelLayout& layout, const LevelRecord& record) {
        out << "    {\n";
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
            if (slot.sharesLine) out << ',';
            else EndMember(last);
            lineStart = !slot.sharesLine;
        }
        out << "    }";
    }
};
}  // namespace

WriteResult WriteJsonFile(const LevelSet& set) {
    // Room for the longest numbers and a title of escapes, so the text is never moved while it grows.
    JsonText text(2048 + 6 * (set.Title.size() + set.BonusClock.size() + set.ExtraLifePoints.size()) +
                  set.Layouts.size() * 800);
    text.out << "{\n";
    for (const Slot& slot : kSetSlots) {
        text.Key(2, slot.key);
        switch (slot.shape) {
        case Shape::Kind: text.String(KindName(set.Kind)); break;
        case Shape::Text: text.String(Cp1252ToUtf8(set.*slot.text)); break;
        case Shape::SetFlag: text.Bool(set.*slot.setFlag); break;
        case Shape::Picture: text.Rows(2, (set.*slot.picture).cells, 10); break;
        case Shape::Levels:
            text.out << "[\n";
            for (int level = 1; level <= set.LevelCount(); ++level) {
                text.Level(set.Layout(level), set.Record(level));
                text.EndMember(level == set.LevelCount());
            }
            text.out << "  ]";
            break;
        default: break;
        }
        text.EndMember(slot.shape == Shape::Levels);
    }
    text.out << "}\n";
    return Written(text.out.Take());
}

}  // namespace shd
