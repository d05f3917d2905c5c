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
// saying why, when it cannot be read, is larger than kLargestInput or is not
// a regular file (a FIFO or a device is refused without waiting on it).
std::optional<std::string> ReadWholeFile(const std::string& path, std::string* error = nullptr);
std::optional<std::string> ReadStandardInput(std::string* error = nullptr);

// Saves `bytes` as the file at `path`, whole or not at all: they are written
// to a new file of a unique name beside it, created exclusively, flushed to
// the disk, which then takes the file's place; the folder is flushed too, so
// the save outlives a power cut once this returns. The new file keeps the
// permission bits (and, where the saver may set them, the owner and group)
// of the file it replaces, read from that very file as it was opened; a new
// file gets the usual mode from the umask. A symlink is followed as the
// kernel follows it for this user, so a link that protected_symlinks forbids
// is refused, and stays a link. A target that is not a regular file (a
// device, a FIFO, a terminal) is written directly, as `other` says. On
// failure the old file stays as it was, nothing is left beside it, and
// `error` says why.
enum class OtherTargets {
    Write,                // as a shell's > does: a FIFO waits for its reader
    WriteWithoutWaiting,  // a FIFO without a reader is a failed save
    Refuse,               // only a regular file is saved
};
bool WriteFileAtomic(const std::string& path, std::string_view bytes, std::string* error = nullptr,
                     OtherTargets other = OtherTargets::Write);
bool WriteStandardOutput(std::string_view bytes, std::string* error = nullptr);

// From now on every signal that would end the process (an interrupt, a
// hangup, a termination, a quit, an alarm ...) removes an unfinished save's
// file first, then ends the process as it would have; a file-size limit
// fails the write instead of ending the process. Signals the process
// ignores stay ignored.
void RemoveUnfinishedSavesOnSignals();

// Whether `path` names a folder (links followed); false also when its
// status cannot be read, whatever the reason.
bool IsFolder(const std::string& path);
bool IsRegularFile(const std::string& path);

// Which file a name stands for, links followed, to tell whether two names
// stand for one file; nothing when there is none.
struct FileId {
    unsigned long long device = 0, inode = 0;
    bool operator==(const FileId&) const = default;
};
std::optional<FileId> IdOfFile(const std::string& path);

// The path up to and including its last separator ("" when it has none).
std::string FolderOf(const std::string& path);

// The file name without its folder.
std::string FileTitleOf(const std::string& path);

}  // namespace shd
