// The one place where the editor and the converter touch the disk.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace shd {

// More than any form of the largest level set takes, blanks and all; a
// longer input is refused as soon as it is seen to be longer.
constexpr std::size_t kLargestInput = std::size_t{8} << 20;

// The whole file, opened once and read with read(); nothing, with `error`
// saying why, when it cannot be read or is larger than kLargestInput.
std::optional<std::string> ReadWholeFile(const std::string& path, std::string* error = nullptr);
std::optional<std::string> ReadStandardInput(std::string* error = nullptr);

// Saves `bytes` as the file at `path`, whole or not at all: they are written
// to a new file of a unique name beside it, created exclusively, which then
// takes the file's place. The new file keeps the permission bits (and, where
// the saver may set them, the owner and group) of the file it replaces; a new
// file gets the usual mode from the umask. A symlink is followed and stays a
// link. A target that is not a regular file (a device, a FIFO, a terminal) is
// written directly. On failure the old file stays as it was, nothing is left
// beside it, and `error` says why.
bool WriteFileAtomic(const std::string& path, std::string_view bytes, std::string* error = nullptr);
bool WriteStandardOutput(std::string_view bytes, std::string* error = nullptr);

// From now on an interrupt, hangup or termination during a save removes the
// save's unfinished file before the process ends as it would have.
void RemoveUnfinishedSavesOnSignals();

// The path up to and including its last separator ("" when it has none).
std::string FolderOf(const std::string& path);

// The file name without its folder.
std::string FileTitleOf(const std::string& path);

}  // namespace shd
