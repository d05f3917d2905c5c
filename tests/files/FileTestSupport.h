// Helpers for the editor file tests: splitting written files into lines and
// the part of a set that each file carries.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "model/LevelSet.h"
#include "model/ReadResult.h"

namespace shd::test {

// The lines of a written file; every line must end in CR LF and no other
// line break may occur.
inline std::vector<std::string> SplitCrLf(const std::string& bytes) {
    std::vector<std::string> lines;
    std::size_t start = 0;
    while (start < bytes.size()) {
        const std::size_t end = bytes.find("\r\n", start);
        if (end == std::string::npos) {
            ADD_FAILURE() << "last line has no CR LF: " << bytes.substr(start);
            break;
        }
        const std::string line = bytes.substr(start, end - start);
        EXPECT_EQ(line.find_first_of("\r\n"), std::string::npos) << "stray line break in " << line;
        lines.push_back(line);
        start = end + 2;
    }
    return lines;
}

inline std::string JoinCrLf(const std::vector<std::string>& lines) {
    std::string bytes;
    for (const auto& line : lines) bytes += line + "\r\n";
    return bytes;
}

// What survives a trip through a file: the set-wide fields the kind's file
// lines hold, the pictures only with UseCustomShardles, the layout fields the
// kind stores and, with `records`, the five record fields of the record line.
inline LevelSet Carried(const LevelSet& set, bool records) {
    LevelSet kept = NewSet(set.Kind);
    MakeLevels(kept, set.LevelCount());
    kept.Title = set.Title;
    if (set.IsShardles()) {
        kept.ArrowBlocksBreakable = set.ArrowBlocksBreakable;
        kept.ExtraLifePoints = set.ExtraLifePoints;
        kept.BonusClock = set.BonusClock;
        kept.UseWrapAround = set.UseWrapAround;
        kept.UseCustomShardles = set.UseCustomShardles;
        kept.UseShardlesDebugger = set.UseShardlesDebugger;
        kept.MatchLocksToBlocks = set.MatchLocksToBlocks;
        if (set.UseCustomShardles) {
            kept.CustomShardlePicture = set.CustomShardlePicture;
            kept.CustomChangerPicture = set.CustomChangerPicture;
        }
    }
    for (int level = 1; level <= set.LevelCount(); ++level) {
        const LevelLayout& from = set.Layout(level);
        LevelLayout& to = kept.Layout(level);
        to.Cells = from.Cells;
        to.BlockCount = from.BlockCount;
        if (!set.IsShardles()) continue;
        to.LastBlockCount = from.LastBlockCount;
        to.BallX = from.BallX;
        to.BallY = from.BallY;
        if (!records) continue;
        const LevelRecord& record = set.Record(level);
        LevelRecord& keptRecord = kept.Record(level);
        keptRecord.CenterLineUnused = record.CenterLineUnused;
        keptRecord.CustomChangerCount = record.CustomChangerCount;
        keptRecord.SpottedChangerCount = record.SpottedChangerCount;
        keptRecord.ZigZagChangerCount = record.ZigZagChangerCount;
        keptRecord.SpecialUnusedCount = record.SpecialUnusedCount;
    }
    return kept;
}

// The set as the editor's earlier versions wrote it: no option lines, the
// pictures grouped in the dialog's order, codes 10 to 15 as letters and no
// record lines.
inline WriteResult WriteOldMyFileForTest(const LevelSet& set) {
    auto printed = [](long value) { return (value < 0 ? "" : " ") + std::to_string(value) + " "; };
    auto row = [&](const std::vector<std::string>& items) {
        std::string line;
        for (std::size_t i = 0; i + 1 < items.size(); ++i) line += items[i] + ",";
        return line + " " + items.back() + " ";
    };
    auto boolean = [](bool value) { return std::string(value ? "True" : "False"); };
    std::vector<std::string> lines{"QUARTLEV", set.Title, boolean(set.IsShardles()), printed(set.LevelCount())};
    if (set.IsShardles()) {
        lines.insert(lines.end(), {boolean(set.ArrowBlocksBreakable), set.ExtraLifePoints, set.BonusClock,
                                   boolean(set.UseWrapAround), boolean(set.UseCustomShardles)});
        if (set.UseCustomShardles) {
            for (const PiecePicture* picture : {&set.CustomShardlePicture, &set.CustomChangerPicture}) {
                std::vector<std::string> items;
                for (int r = 0; r < 6; ++r)
                    for (int number : {8, 7, 6, 5, 4, 3, 2, 1, 10, 9})
                        items.push_back(std::to_string(picture->at(10 * r + number)));
                lines.push_back(row(items));
            }
        }
    }
    for (int level = 1; level <= set.LevelCount(); ++level) {
        const LevelLayout& layout = set.Layout(level);
        std::vector<std::string> cells;
        for (std::uint8_t code : layout.Cells)
            cells.push_back(code >= 10 ? std::string(1, static_cast<char>('A' + code - 10)) : std::to_string(code));
        lines.push_back(row(cells));
        if (set.IsShardles())
            lines.push_back(std::to_string(layout.BlockCount) + "," + std::to_string(layout.LastBlockCount) + "," +
                            std::to_string(layout.BallX) + "," + std::to_string(layout.BallY));
        else
            lines.push_back(printed(layout.BlockCount));
    }
    return Written(JoinCrLf(lines));
}

}  // namespace shd::test
