#include "files/FileIo.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <sstream>

#ifdef _WIN32
#include <io.h>
#else
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace shd {

namespace {
bool IsSeparator(char c) {
#ifdef _WIN32
    return c == '\\' || c == '/';
#else
    return c == '/';
#endif
}
}  // namespace

std::optional<std::string> ReadWholeFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) return std::nullopt;
    std::ostringstream bytes;
    bytes << in.rdbuf();
    if (in.bad()) return std::nullopt;
    return std::move(bytes).str();
}

#ifdef MAP_POPULATE
constexpr int kPopulate = MAP_POPULATE;  // one call maps every page, rather than one fault each
#elif defined(__unix__) || defined(__APPLE__)
constexpr int kPopulate = 0;
#endif

FileBytes::FileBytes(const std::string& path) {
#if defined(__unix__) || defined(__APPLE__)
    const int fd = ::open(path.c_str(), O_RDONLY);
    if (fd < 0) return;
    struct stat info {};
    const bool known = ::fstat(fd, &info) == 0;
    if (known && S_ISDIR(info.st_mode)) {
        ::close(fd);
        errno = EISDIR;  // reading a folder would give no bytes rather than fail
        return;
    }
    if (known && S_ISREG(info.st_mode) && info.st_size > 0) {
        const auto size = static_cast<std::size_t>(info.st_size);
        void* mapped = ::mmap(nullptr, size, PROT_READ, MAP_PRIVATE | kPopulate, fd, 0);
        if (mapped != MAP_FAILED) {
            map_ = static_cast<const char*>(mapped);
            size_ = size;
        }
    }
    ::close(fd);
    if (map_) return;
#endif
    copy_ = ReadWholeFile(path);
}

FileBytes::~FileBytes() {
#if defined(__unix__) || defined(__APPLE__)
    if (map_) ::munmap(const_cast<char*>(map_), size_);
#endif
}

bool WriteFileAtomic(const std::string& path, const std::string& bytes, std::string* error) {
    // The rename is what keeps the old file whole when a write fails; a flush
    // to the disk on every save would cost more than the whole conversion.
    const std::string temp = path + ".saving~";
    std::FILE* out = std::fopen(temp.c_str(), "wb");
    if (!out) {
        if (error) *error = std::string("cannot create ") + temp + ": " + std::strerror(errno);
        return false;
    }
    const bool written = std::fwrite(bytes.data(), 1, bytes.size(), out) == bytes.size();
    const bool closed = std::fclose(out) == 0;
    auto fail = [&](const char* what) {
        if (error) *error = std::string(what) + ": " + std::strerror(errno);
        std::remove(temp.c_str());
        return false;
    };
    if (!written || !closed) return fail("cannot write");
#ifdef _WIN32
    std::remove(path.c_str());
#endif
    if (std::rename(temp.c_str(), path.c_str()) != 0) return fail("cannot replace");
    return true;
}

std::string FolderOf(const std::string& path) {
    for (std::size_t i = path.size(); i > 0; --i)
        if (IsSeparator(path[i - 1])) return path.substr(0, i);
    return {};
}

std::string FileTitleOf(const std::string& path) { return path.substr(FolderOf(path).size()); }

}  // namespace shd
