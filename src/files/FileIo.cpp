#include "files/FileIo.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

#ifdef _WIN32
#include <io.h>
#else
#include <fcntl.h>
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

std::optional<std::string> ReadWholeFile(const std::string& path, std::string* error) {
    auto fail = [&](int fd, int cause) -> std::optional<std::string> {
        if (fd >= 0) ::close(fd);
        if (error) *error = std::strerror(cause);
        return std::nullopt;
    };
    const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) return fail(fd, errno);
    struct stat info {};
    if (::fstat(fd, &info) != 0) return fail(fd, errno);
    // A regular file comes in one piece into room of its size; anything else
    // (a pipe, a file that grows) in pieces as they come.
    std::string bytes;
    std::size_t used = 0;
    bytes.resize(S_ISREG(info.st_mode) ? static_cast<std::size_t>(info.st_size) + 1 : 4096);
    for (;;) {
        if (used == bytes.size()) bytes.resize(2 * bytes.size());
        const ssize_t got = ::read(fd, bytes.data() + used, bytes.size() - used);
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) return fail(fd, errno);
        if (got == 0) break;
        used += static_cast<std::size_t>(got);
    }
    ::close(fd);
    bytes.resize(used);
    return bytes;
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
