// The one place where the editor and the converter touch the disk.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace shd {

// The whole file, or nothing when it cannot be read.
std::optional<std::string> ReadWholeFile(const std::string& path);

// A file's bytes for reading, mapped from the page cache where the system
// allows: for a converter run, copying them into fresh memory costs more
// than reading them does.
class FileBytes {
public:
    explicit FileBytes(const std::string& path);
    ~FileBytes();
    FileBytes(const FileBytes&) = delete;
    FileBytes& operator=(const FileBytes&) = delete;
    bool ok() const { return map_ || copy_; }  // false: errno says why
    std::string_view view() const { return map_ ? std::string_view(map_, size_) : std::string_view(*copy_); }

private:
    const char* map_ = nullptr;
    std::size_t size_ = 0;
    std::optional<std::string> copy_;
};

// Writes beside the target and renames over it, so a failed write never
// leaves a half-written file nor destroys the one that was there.
bool WriteFileAtomic(const std::string& path, const std::string& bytes, std::string* error = nullptr);

// The path up to and including its last separator ("" when it has none).
std::string FolderOf(const std::string& path);

// The file name without its folder.
std::string FileTitleOf(const std::string& path);

}  // namespace shd
