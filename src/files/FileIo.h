// The one place where the editor and the converter touch the disk.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace shd {

// The whole file, or nothing with `error` (when given) saying why.
std::optional<std::string> ReadWholeFile(const std::string& path, std::string* error = nullptr);

// Writes beside the target and renames over it, so a failed write never
// leaves a half-written file nor destroys the one that was there.
bool WriteFileAtomic(const std::string& path, const std::string& bytes, std::string* error = nullptr);

// The path up to and including its last separator ("" when it has none).
std::string FolderOf(const std::string& path);

// The file name without its folder.
std::string FileTitleOf(const std::string& path);

}  // namespace shd
