// The converter's two jobs, apart from reading its command line.
#pragma once

#include <optional>
#include <string>

#include "files/FileIo.h"
#include "formats/Formats.h"
#include "model/LevelSet.h"

namespace shd::cli {

// Exit statuses.
constexpr int kDone = 0;
constexpr int kRefused = 1;  // the input, the set or the output was refused; nothing written
constexpr int kUsage = 2;

// What a run holds: the input file's bytes, the set and the bytes written.
// The caller keeps it until the process ends, so that a run can end without
// taking it apart piece by piece.
struct Workspace {
    std::optional<FileBytes> input;
    std::optional<LevelSet> set;
    std::string output;
};

// Reads `input` as `from`, saves it as `to` into `output`, as the editor's
// open and save commands would, without their questions. Messages go to
// standard error.
int Convert(FormatId from, const std::string& input, FormatId to, const std::string& output, Workspace& work);

// Prints, for every level, what CountBlocks and the debugger would say, then
// the number of findings.
int Check(FormatId from, const std::string& input, Workspace& work);

}  // namespace shd::cli
