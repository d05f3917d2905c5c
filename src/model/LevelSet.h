// The one document the editor works on: a level set for Shardles or Tiltbash.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace shd {

enum class GameKind { Shardles, Tiltbash };

// Text is kept as the 8-bit bytes the files carry (Windows-1252).
using Bytes = std::string;

constexpr int kMaxLevels = 255;
constexpr int kPictureCells = 60;

inline int CellCount(GameKind kind) { return kind == GameKind::Shardles ? 80 : 64; }
inline int RowCount(GameKind kind) { return kind == GameKind::Shardles ? 10 : 8; }
constexpr int kColumns = 8;

// A custom piece's picture: cells 1 to 60, 6 rows of 10; normally 0 or 1, but
// a file may bring other digits and they are kept as read.
struct PiecePicture {
    std::array<std::uint8_t, kPictureCells> cells{};
    std::uint8_t& at(int n) { return cells[static_cast<std::size_t>(n - 1)]; }
    std::uint8_t at(int n) const { return cells[static_cast<std::size_t>(n - 1)]; }
    bool operator==(const PiecePicture&) const = default;
};

// One level's cells (one block code 0 to 15 each, index = 8 * row + column).
using BlockGrid = std::vector<std::uint8_t>;

struct LevelLayout {
    BlockGrid Cells;
    std::int16_t BlockCount = 0;
    std::int16_t LastBlockCount = 0;
    std::int16_t BallX = 0;
    std::int16_t BallY = 0;
    bool operator==(const LevelLayout&) const = default;
};

struct LevelRecord {
    bool SpottedUnused = false;
    std::int16_t SpottedCount = 0;
    std::int16_t SpottedChangerCount = 0;
    bool ZigZagUnused = false;
    std::int16_t ZigZagCount = 0;
    std::int16_t ZigZagChangerCount = 0;
    bool CenterLineUnused = false;
    std::int16_t CenterLineCount = 0;
    std::int16_t CenterLineChangerCount = 0;
    bool CustomUnused = false;
    std::int16_t CustomCount = 0;
    std::int16_t CustomChangerCount = 0;
    std::int16_t SpecialUnusedCount = 0;
    bool operator==(const LevelRecord&) const = default;
};

// The piece count that a block code feeds, or nullptr for codes without one.
std::int16_t LevelRecord::*CountFieldFor(int code);

struct LevelSet {
    GameKind Kind = GameKind::Tiltbash;
    Bytes Title = "Please Add a Title";
    Bytes BonusClock = "30";
    Bytes ExtraLifePoints = "100";
    bool ArrowBlocksBreakable = false;
    bool UseWrapAround = false;
    bool UseCustomShardles = false;
    bool UseShardlesDebugger = true;
    bool MatchLocksToBlocks = true;
    int CurrentLevel = 1;
    // Level n is at index n - 1; the level count is their size.
    std::vector<LevelLayout> Layouts;
    std::vector<LevelRecord> Records;
    PiecePicture CustomShardlePicture;
    PiecePicture CustomChangerPicture;

    int LevelCount() const { return static_cast<int>(Layouts.size()); }
    bool IsShardles() const { return Kind == GameKind::Shardles; }
    LevelLayout& Layout(int level) { return Layouts[static_cast<std::size_t>(level - 1)]; }
    const LevelLayout& Layout(int level) const { return Layouts[static_cast<std::size_t>(level - 1)]; }
    LevelRecord& Record(int level) { return Records[static_cast<std::size_t>(level - 1)]; }
    const LevelRecord& Record(int level) const { return Records[static_cast<std::size_t>(level - 1)]; }
    LevelLayout& Current() { return Layout(CurrentLevel); }
    LevelRecord& CurrentRecord() { return Record(CurrentLevel); }
    const LevelLayout& Current() const { return Layout(CurrentLevel); }
    const LevelRecord& CurrentRecord() const { return Record(CurrentLevel); }

    bool operator==(const LevelSet&) const = default;
};

// The set-wide defaults of a new set (what ResetAll gives), with no levels yet.
void ResetSetFields(LevelSet& set);

// Re-creates the per-level arrays for `count` levels of the set's kind, every
// field 0; the pictures and set-wide fields stay. `count` must be 1 to 255.
void MakeLevels(LevelSet& set, int count);

// Appends one empty level of the set's kind.
void AddEmptyLevel(LevelSet& set);

// A new set of the given kind: one empty level, defaults everywhere.
LevelSet NewSet(GameKind kind);

// The first step of ShowLevel: the eight piece counts of the current level
// recounted from its cells; unused flags and the special count stay.
void RecountCurrentLevel(LevelSet& set);

// Empty when the set keeps every invariant, else what is wrong.
std::string CheckConsistent(const LevelSet& set);

// The picture file of each block code, e.g. "shdblockA.gif"; Tiltbash swaps 7 and 8-11.
std::string PictureFile(GameKind kind, int code);

}  // namespace shd
