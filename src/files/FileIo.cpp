#include "files/FileIo.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

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
    // C's streams rather than C++'s: the first C++ file stream sets up the
    // locale machinery, which the editor's start-up would pay for one small
    // settings file.
    std::FILE* in = std::fopen(path.c_str(), "rb");
    if (!in) return std::nullopt;
    std::string bytes;
    char chunk[16384];
    std::size_t got = 0;
    while ((got = std::fread(chunk, 1, sizeof chunk, in)) > 0) bytes.append(chunk, got);
    const bool failed = std::ferror(in) != 0;
    std::fclose(in);
    if (failed) return std::nullopt;
    return bytes;
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

namespace {
// The whole of `bytes` into a new file at `path`; false with errno set when not.
bool WriteNewFile(const std::string& path, const std::string& bytes, bool& created) {
#if defined(__unix__) || defined(__APPLE__)
    // Straight to the system: one write, no stream buffer to set up.
    const int fd = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    created = fd >= 0;
    if (!created) return false;
    const char* next = bytes.data();
    std::size_t left = bytes.size();
    while (left > 0) {
        const ssize_t written = ::write(fd, next, left);
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) {
            if (written == 0) errno = EIO;
            const int error = errno;
            ::close(fd);
            errno = error;
            return false;
        }
        next += written;
        left -= static_cast<std::size_t>(written);
    }
    return ::close(fd) == 0;
#else
    std::FILE* out = std::fopen(path.c_str(), "wb");
    created = out != nullptr;
    if (!created) return false;
    const bool written = std::fwrite(bytes.data(), 1, bytes.size(), out) == bytes.size();
    const bool closed = std::fclose(out) == 0;
    return written && closed;
#endif
}
}  // namespace

bool WriteFileAtomic(const std::string& path, const std::string& bytes, std::string* error) {
    // The rename is what keeps the old file whole when a write fails; a flush
    // to the disk on every save would cost more than the whole conversion.
    const std::string temp = path + ".saving~";
    bool created = false;
    if (!WriteNewFile(temp, bytes, created)) {
        const int cause = errno;
        if (created) std::remove(temp.c_str());
        if (error)
            *error = (created ? std::string("cannot write") : "cannot create " + temp) + ": " + std::strerror(cause);
        return false;
    }
#ifdef _WIN32
    std::remove(path.c_str());
#endif
    if (std::rename(temp.c_str(), path.c_str()) != 0) {
        const int cause = errno;
        std::remove(temp.c_str());
        if (error) *error = std::string("cannot replace: ") + std::strerror(cause);
        return false;
    }
    return true;
}

std::string FolderOf(const std::string& path) {
    for (std::size_t i = path.size(); i > 0; --i)
        if (IsSeparator(path[i - 1])) return path.substr(0, i);
    return {};
}

std::string FileTitleOf(const std::string& path) { return path.substr(FolderOf(path).size()); }

}  // namespace shd
