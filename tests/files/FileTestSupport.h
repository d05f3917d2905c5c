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
    for (std::size_t start = 0, end = 0; start < bytes.size(); start = end + 2) {
        end = bytes.find("\r\n", start);
        if (end == std::string::npos) {
            ADD_FAILURE() << "last line has no CR LF: " << bytes.substr(start);
            break;
        }
        lines.push_back(bytes.substr(start, end - start));
        EXPECT_EQ(lines.back().find_first_of("\r\n"), std::string::npos) << "stray line break in " << lines.back();
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
    if (set.IsShardles()) {
        const std::vector<LevelRecord> fresh = kept.Records;
        kept = set;
        kept.CurrentLevel = 1;
        kept.Records = fresh;
        if (!set.UseCustomShardles) kept.CustomShardlePicture = kept.CustomChangerPicture = PiecePicture{};
    }
    kept.Title = set.Title;
    for (int level = 1; level <= set.LevelCount(); ++level) {
        kept.Layout(level).Cells = set.Layout(level).Cells;
        kept.Layout(level).BlockCount = set.Layout(level).BlockCount;
        if (!set.IsShardles() || !records) continue;
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

}  // namespace shd::test
