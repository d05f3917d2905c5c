// The converter's two jobs, apart from reading its command line.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "formats/Formats.h"

namespace shd::cli {

// Exit statuses.
constexpr int kDone = 0;
constexpr int kRefused = 1;  // the input, the set or the output was refused; nothing written
constexpr int kUsage = 2;

// "-" as INPUT is standard input, as OUTPUT standard output.
inline constexpr const char* kStandardStream = "-";

// The set in `input` (kStandardStream: standard input) read as `from`, as
// the editor holds it right after opening; nothing when the read did not
// complete, with the reason on standard error.
std::optional<LevelSet> ReadInput(FormatId from, const std::string& input);

// Reads `input` as `from`, saves it as `to` into `output`, as the editor's
// open and save commands would, without their questions. Messages go to
// standard error, each naming the file it is about.
int Convert(FormatId from, const std::string& input, FormatId to, const std::string& output);

// Converts each input into `folder`, named after it with the extension of
// `to`, going on after a refusal. kRefused when any was refused.
int ConvertInto(const std::optional<FormatId>& from, const std::vector<std::string>& inputs, FormatId to,
                const std::string& folder);

// Sends the set as a program named `name` (by default after the input's
// file name) over `cable` (by default the first one found).
int Send(FormatId from, const std::string& input, const std::optional<std::string>& name,
         const std::optional<std::string>& cable);

// Prints the cables found, one a line, as --cable takes them.
int ListCables();

// Prints, for every level, what CountBlocks and the debugger would say, then
// the number of findings.
int Check(FormatId from, const std::string& input);

// A wrong command line: the reason and where help is, on standard error; kUsage.
int UsageError(const char* program, const std::string& reason);

// `status` once what was printed on standard output is written out; kRefused,
// with the reason on standard error, when it could not be.
int Finished(int status);

}  // namespace shd::cli
