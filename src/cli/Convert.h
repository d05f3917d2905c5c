// The converter's two jobs, apart from reading its command line.
#pragma once

#include <string>

#include "formats/Formats.h"

namespace shd::cli {

// Exit statuses.
constexpr int kDone = 0;
constexpr int kRefused = 1;  // the input, the set or the output was refused; nothing written
constexpr int kUsage = 2;

// "-" as INPUT is standard input, as OUTPUT standard output.
inline constexpr const char* kStandardStream = "-";

// Reads `input` as `from`, saves it as `to` into `output`, as the editor's
// open and save commands would, without their questions. Messages go to
// standard error.
int Convert(FormatId from, const std::string& input, FormatId to, const std::string& output);

// Prints, for every level, what CountBlocks and the debugger would say, then
// the number of findings.
int Check(FormatId from, const std::string& input);

}  // namespace shd::cli
