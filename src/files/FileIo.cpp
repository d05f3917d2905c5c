// POSIX only: the saves' promises rest on exclusive creation, fchmod and
// rename over the old file.
#include "files/FileIo.h"

#include <fcntl.h>
#include <pthread.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdlib>
#include <cstring>

namespace shd {

namespace {

std::string Because(const char* what, int cause) { return std::string(what) + ": " + std::strerror(cause); }

std::string TooLarge() { return "is larger than 8 MB, more than any level set takes"; }

std::optional<std::string> ReadAll(int fd, std::string* error) {
    auto fail = [&](std::string why) -> std::optional<std::string> {
        if (error) *error = std::move(why);
        return std::nullopt;
    };
    struct stat info {};
    if (::fstat(fd, &info) != 0) return fail(Because("cannot be read", errno));
    const bool regular = S_ISREG(info.st_mode);
    if (regular && static_cast<std::size_t>(info.st_size) > kLargestInput) return fail(TooLarge());
    // A regular file comes in one piece into room of its size (one more byte
    // shows its end); anything else in pieces as they come.
    std::string bytes(regular ? static_cast<std::size_t>(info.st_size) + 1 : 65536, '\0');
    std::size_t used = 0;
    for (;;) {
        if (used == bytes.size()) bytes.resize(std::min(2 * bytes.size(), kLargestInput + 1));
        const ssize_t got = ::read(fd, bytes.data() + used, bytes.size() - used);
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) return fail(Because("cannot be read", errno));
        if (got == 0) break;
        used += static_cast<std::size_t>(got);
        if (used > kLargestInput) return fail(TooLarge());
    }
    bytes.resize(used);
    return bytes;
}

bool WriteAll(int fd, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(fd, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) {
            if (written == 0) errno = EIO;
            return false;
        }
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

// The unfinished save, for the signal handler to remove.
char unfinished[PATH_MAX + 1];
volatile std::sig_atomic_t haveUnfinished = 0;

extern "C" void RemoveUnfinishedAndEnd(int signal) {
    if (haveUnfinished) ::unlink(unfinished);
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

// Holds off the signals that end a save while the unfinished file is made
// or renamed, so that the handler always knows whether there is one.
class SignalsHeld {
public:
    SignalsHeld() {
        sigset_t held;
        sigemptyset(&held);
        for (const int signal : {SIGINT, SIGTERM, SIGHUP}) sigaddset(&held, signal);
        pthread_sigmask(SIG_BLOCK, &held, &before_);
    }
    ~SignalsHeld() { pthread_sigmask(SIG_SETMASK, &before_, nullptr); }
    SignalsHeld(const SignalsHeld&) = delete;
    SignalsHeld& operator=(const SignalsHeld&) = delete;

private:
    sigset_t before_;
};

// The file a name stands for once its symlinks are followed, also when the
// last link points to a file that does not exist yet.
std::string FollowLinks(std::string path) {
    for (int hops = 0; hops < 40; ++hops) {
        struct stat info {};
        if (::lstat(path.c_str(), &info) != 0 || !S_ISLNK(info.st_mode)) break;
        std::string target(static_cast<std::size_t>(PATH_MAX), '\0');
        const ssize_t length = ::readlink(path.c_str(), target.data(), target.size());
        if (length <= 0) break;
        target.resize(static_cast<std::size_t>(length));
        path = target.front() == '/' ? target : FolderOf(path) + target;
    }
    return path;
}

bool WriteInPlace(const std::string& path, std::string_view bytes, std::string* error) {
    const int fd = ::open(path.c_str(), O_WRONLY | O_TRUNC | O_CLOEXEC);
    if (fd < 0 || !WriteAll(fd, bytes)) {
        const int cause = errno;
        if (fd >= 0) ::close(fd);
        if (error) *error = Because("cannot write", cause);
        return false;
    }
    if (::close(fd) == 0) return true;
    if (error) *error = Because("cannot write", errno);
    return false;
}

}  // namespace

std::optional<std::string> ReadWholeFile(const std::string& path, std::string* error) {
    const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) {
        if (error) *error = Because("cannot be read", errno);
        return std::nullopt;
    }
    auto bytes = ReadAll(fd, error);
    ::close(fd);
    return bytes;
}

std::optional<std::string> ReadStandardInput(std::string* error) { return ReadAll(STDIN_FILENO, error); }

bool WriteStandardOutput(std::string_view bytes, std::string* error) {
    if (WriteAll(STDOUT_FILENO, bytes)) return true;
    if (error) *error = Because("cannot write to standard output", errno);
    return false;
}

bool WriteFileAtomic(const std::string& path, std::string_view bytes, std::string* error) {
    auto fail = [&](std::string why) {
        if (error) *error = std::move(why);
        return false;
    };
    struct stat old {};
    const bool exists = ::stat(path.c_str(), &old) == 0;
    if (exists && S_ISDIR(old.st_mode)) return fail(Because("cannot replace", EISDIR));
    // Devices, FIFOs and terminals are not files to replace.
    if (exists && !S_ISREG(old.st_mode)) return WriteInPlace(path, bytes, error);

    const std::string target = FollowLinks(path);
    std::string temp = FolderOf(target) + ".shd-save-XXXXXX";
    int fd = -1;
    {
        SignalsHeld held;
        fd = ::mkstemp(temp.data());
        if (fd >= 0 && temp.size() < sizeof unfinished) {
            std::memcpy(unfinished, temp.c_str(), temp.size() + 1);
            haveUnfinished = 1;
        }
    }
    if (fd < 0) {
        const std::string folder = FolderOf(target).empty() ? "." : FolderOf(target);
        return fail(Because(("cannot create a file in " + folder).c_str(), errno));
    }
    // The first thing that goes wrong, if anything does.
    const char* what = nullptr;
    int cause = 0;
    auto check = [&](bool done, const char* failure) {
        if (!done && !what) what = failure, cause = errno;
    };
    check(WriteAll(fd, bytes), "cannot write");
    if (exists) {
        // Only root may give a file away; a group the saver belongs to may stay.
        if (::fchown(fd, old.st_uid, old.st_gid) != 0) (void)::fchown(fd, static_cast<uid_t>(-1), old.st_gid);
        check(::fchmod(fd, old.st_mode & 07777) == 0, "cannot keep the permissions");
    } else {
        const mode_t mask = ::umask(0);
        ::umask(mask);
        check(::fchmod(fd, 0666 & ~mask) == 0, "cannot set the permissions");
    }
    check(::close(fd) == 0, "cannot write");
    SignalsHeld held;
    if (!what) check(::rename(temp.c_str(), target.c_str()) == 0, "cannot replace");
    if (what) ::unlink(temp.c_str());
    haveUnfinished = 0;
    return what ? fail(Because(what, cause)) : true;
}

void RemoveUnfinishedSavesOnSignals() {
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) std::signal(signal, RemoveUnfinishedAndEnd);
}

std::string FolderOf(const std::string& path) {
    const auto slash = path.find_last_of('/');
    return slash == std::string::npos ? std::string() : path.substr(0, slash + 1);
}

std::string FileTitleOf(const std::string& path) { return path.substr(FolderOf(path).size()); }

}  // namespace shd
