#include "editor/CellTools.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <limits>

namespace shd {

CellRange RangeBetween(int a, int b) {
    const int columnA = a % kColumns, rowA = a / kColumns, columnB = b % kColumns, rowB = b / kColumns;
    return {std::min(columnA, columnB), std::min(rowA, rowB), std::abs(columnA - columnB) + 1,
            std::abs(rowA - rowB) + 1};
}

CellRange ClipRange(const CellRange& range, int rows) {
    if (range.empty()) return {};
    const int left = std::max(range.column, 0), top = std::max(range.row, 0);
    const int right = std::min(range.column + range.columns, kColumns), bottom = std::min(range.row + range.rows, rows);
    if (right <= left || bottom <= top) return {};
    return {left, top, right - left, bottom - top};
}

std::vector<int> CellsIn(const CellRange& range) {
    std::vector<int> cells;
    for (int row = range.row; row < range.row + range.rows; ++row)
        for (int column = range.column; column < range.column + range.columns; ++column)
            cells.push_back(row * kColumns + column);
    return cells;
}

std::vector<int> ConnectedArea(const BlockGrid& grid, int start) {
    const int size = static_cast<int>(grid.size());
    if (start < 0 || start >= size) return {};
    const std::uint8_t code = grid[static_cast<std::size_t>(start)];
    std::vector<bool> seen(grid.size());
    std::vector<int> area{start};
    seen[static_cast<std::size_t>(start)] = true;
    // The area doubles as the queue: each cell found is looked around once.
    for (std::size_t next = 0; next < area.size(); ++next) {
        const int cell = area[next];
        const int column = cell % kColumns;
        for (int neighbour : {column > 0 ? cell - 1 : -1, column < kColumns - 1 ? cell + 1 : -1, cell - kColumns,
                              cell + kColumns}) {
            if (neighbour < 0 || neighbour >= size) continue;
            const auto at = static_cast<std::size_t>(neighbour);
            if (seen[at] || grid[at] != code) continue;
            seen[at] = true;
            area.push_back(neighbour);
        }
    }
    return area;
}

namespace {
// The grid with each cell taken from where `from` says it comes from.
template <typename From>
BlockGrid Rearranged(const BlockGrid& grid, From from) {
    BlockGrid result(grid.size());
    const int rows = RowsOf(grid);
    for (int row = 0; row < rows; ++row)
        for (int column = 0; column < kColumns; ++column)
            result[static_cast<std::size_t>(row * kColumns + column)] =
                grid[static_cast<std::size_t>(from(column, row, rows))];
    return result;
}

int Wrapped(int value, int size) { return ((value % size) + size) % size; }
}  // namespace

BlockGrid FlippedLeftRight(const BlockGrid& grid) {
    return Rearranged(grid, [](int column, int row, int) { return row * kColumns + (kColumns - 1 - column); });
}

BlockGrid FlippedTopBottom(const BlockGrid& grid) {
    return Rearranged(grid, [](int column, int row, int rows) { return (rows - 1 - row) * kColumns + column; });
}

BlockGrid Shifted(const BlockGrid& grid, int columns, int rows) {
    if (grid.empty()) return grid;
    return Rearranged(grid, [&](int column, int row, int gridRows) {
        return Wrapped(row - rows, gridRows) * kColumns + Wrapped(column - columns, kColumns);
    });
}

CellBlock CopyRange(const BlockGrid& grid, const CellRange& range) {
    CellBlock block{range.columns, range.rows, {}};
    for (int cell : CellsIn(range)) block.codes.push_back(grid[static_cast<std::size_t>(cell)]);
    return block;
}

BlockGrid Placed(BlockGrid grid, const CellBlock& block, int column, int row, CellRange* covered) {
    const CellRange range = ClipRange({column, row, block.columns, block.rows}, RowsOf(grid));
    for (int r = 0; r < range.rows; ++r)
        for (int c = 0; c < range.columns; ++c)
            grid[static_cast<std::size_t>((range.row + r) * kColumns + range.column + c)] =
                block.codes[static_cast<std::size_t>((range.row - row + r) * block.columns + range.column - column + c)];
    if (covered) *covered = range;
    return grid;
}

// ---- the clipboard's text forms ----

namespace {
constexpr std::string_view kCellsHeader = "shardles-editor cells";
constexpr std::string_view kLevelHeader = "shardles-editor level";

// The lines of a text, one at a time, each without its "\r".
class Lines {
public:
    explicit Lines(std::string_view text) : rest_(text) {}
    std::optional<std::string_view> Next() {
        if (rest_.empty()) return std::nullopt;
        const auto end = rest_.find('\n');
        std::string_view line = rest_.substr(0, end);
        rest_ = end == std::string_view::npos ? std::string_view{} : rest_.substr(end + 1);
        if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
        return line;
    }
    bool OnlyLineEndsLeft() const { return rest_.find_first_not_of("\r\n") == std::string_view::npos; }

private:
    std::string_view rest_;
};

// A line of words that starts with `name`, whose other `values.size()` words
// are whole decimal numbers from `least` to `most`.
bool ReadNumbers(std::optional<std::string_view> line, std::string_view name, std::vector<int>& values, int least,
                 int most) {
    if (!line || !line->starts_with(name)) return false;
    std::string_view rest = line->substr(name.size());
    for (int& value : values) {
        if (!rest.starts_with(' ')) return false;
        rest.remove_prefix(1);
        const auto [end, error] = std::from_chars(rest.data(), rest.data() + rest.size(), value);
        if (error != std::errc{} || end == rest.data() || value < least || value > most) return false;
        rest.remove_prefix(static_cast<std::size_t>(end - rest.data()));
    }
    return rest.empty();
}

int HexValue(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

// The cells form from its header line on, with nothing after it.
std::optional<CellBlock> ReadCells(Lines& lines) {
    std::vector<int> size(2);
    if (!ReadNumbers(lines.Next(), kCellsHeader, size, 1, kMaxClipSide)) return std::nullopt;
    CellBlock block{size[0], size[1], {}};
    for (int row = 0; row < block.rows; ++row) {
        const auto line = lines.Next();
        if (!line || static_cast<int>(line->size()) != block.columns) return std::nullopt;
        for (char digit : *line) {
            const int code = HexValue(digit);
            if (code < 0) return std::nullopt;
            block.codes.push_back(static_cast<std::uint8_t>(code));
        }
    }
    if (!lines.OnlyLineEndsLeft()) return std::nullopt;
    return block;
}
}  // namespace

std::string CellsText(const CellBlock& block) {
    std::string text = std::string(kCellsHeader) + " " + std::to_string(block.columns) + " " +
                       std::to_string(block.rows) + "\n";
    for (int row = 0; row < block.rows; ++row) {
        for (int column = 0; column < block.columns; ++column) {
            // A code above 15 (from a damaged file) has no digit; it goes as an empty cell.
            const int code = block.codes[static_cast<std::size_t>(row * block.columns + column)];
            text += "0123456789ABCDEF"[code <= 15 ? code : 0];
        }
        text += '\n';
    }
    return text;
}

std::optional<CellBlock> ParseCellsText(std::string_view text) {
    Lines lines(text);
    return ReadCells(lines);
}

std::string LevelText(const LevelLayout& layout, const LevelRecord& r) {
    auto line = [](std::string name, std::initializer_list<int> values) {
        for (int value : values) name += " " + std::to_string(value);
        return name + "\n";
    };
    return std::string(kLevelHeader) + "\n" + line("ball", {layout.BallX, layout.BallY}) +
           line("blocks", {layout.BlockCount, layout.LastBlockCount}) +
           line("record", {r.SpottedUnused, r.SpottedCount, r.SpottedChangerCount, r.ZigZagUnused, r.ZigZagCount,
                           r.ZigZagChangerCount, r.CenterLineUnused, r.CenterLineCount, r.CenterLineChangerCount,
                           r.CustomUnused, r.CustomCount, r.CustomChangerCount, r.SpecialUnusedCount}) +
           CellsText({kColumns, RowsOf(layout.Cells), layout.Cells});
}

std::optional<LevelClip> ParseLevelText(std::string_view text, GameKind kind) {
    constexpr int kLeast = std::numeric_limits<std::int16_t>::min(), kMost = std::numeric_limits<std::int16_t>::max();
    Lines lines(text);
    std::vector<int> ball(2), blocks(2), record(13);
    if (lines.Next() != kLevelHeader || !ReadNumbers(lines.Next(), "ball", ball, kLeast, kMost) ||
        !ReadNumbers(lines.Next(), "blocks", blocks, kLeast, kMost) ||
        !ReadNumbers(lines.Next(), "record", record, kLeast, kMost))
        return std::nullopt;
    for (int flag : {0, 3, 6, 9})
        if (record[static_cast<std::size_t>(flag)] != 0 && record[static_cast<std::size_t>(flag)] != 1)
            return std::nullopt;
    const auto cells = ReadCells(lines);
    if (!cells) return std::nullopt;

    LevelClip clip;
    LevelLayout& layout = clip.layout;
    layout.Cells = Placed(BlockGrid(static_cast<std::size_t>(CellCount(kind)), 0), *cells, 0, 0);
    layout.BallX = static_cast<std::int16_t>(ball[0]);
    layout.BallY = static_cast<std::int16_t>(ball[1]);
    layout.BlockCount = static_cast<std::int16_t>(blocks[0]);
    layout.LastBlockCount = static_cast<std::int16_t>(blocks[1]);
    auto field = [&](int n) { return static_cast<std::int16_t>(record[static_cast<std::size_t>(n)]); };
    clip.record = {field(0) != 0, field(1), field(2), field(3) != 0, field(4), field(5), field(6) != 0,
                   field(7), field(8), field(9) != 0, field(10), field(11), field(12)};
    return clip;
}

}  // namespace shd
