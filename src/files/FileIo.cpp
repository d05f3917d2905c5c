// POSIX only: the saves' promises rest on descriptors that name one file for
// a whole save, exclusive creation, fsync and rename over the old file.
#include "files/FileIo.h"

#include "model/Quoted.h"

#include <fcntl.h>
#include <pthread.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <random>
#include <utility>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstring>

namespace shd {

namespace {

std::string Because(const char* what, int cause) { return std::string(what) + ": " + std::strerror(cause); }

std::string TooLarge() { return "is larger than 8 MB, more than any level set takes"; }
constexpr const char* kNotARegularFile = "cannot be read: it is not a regular file";

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

// A descriptor, closed when it goes.
class Descriptor {
public:
    explicit Descriptor(int fd = -1) : fd_(fd) {}
    ~Descriptor() {
        if (fd_ >= 0) ::close(fd_);
    }
    Descriptor(Descriptor&& other) noexcept : fd_(std::exchange(other.fd_, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(fd_, other.fd_);
        return *this;
    }
    int get() const { return fd_; }
    explicit operator bool() const { return fd_ >= 0; }
    // Closes it now, for the error close reports.
    bool Close() { return ::close(std::exchange(fd_, -1)) == 0; }

private:
    int fd_;
};

bool SameFile(const struct stat& a, const struct stat& b) { return a.st_dev == b.st_dev && a.st_ino == b.st_ino; }

// The unfinished save, for the signal handler to remove: the folder it is in
// and its name there.
volatile std::sig_atomic_t unfinishedFolder = -1;
char unfinishedName[32];
volatile std::sig_atomic_t haveUnfinished = 0;

// The signals whose default ends the process, apart from the faults a
// program causes itself; the handler is installed only where the default
// holds, so a signal the caller ignores (nohup, a pipe) stays ignored.
sigset_t EndingSignals() {
    sigset_t signals;
    sigemptyset(&signals);
    for (const int signal : {SIGHUP, SIGINT, SIGQUIT, SIGTERM, SIGPIPE, SIGALRM, SIGUSR1, SIGUSR2, SIGVTALRM,
                             SIGPROF, SIGXCPU, SIGXFSZ, SIGIO})
        sigaddset(&signals, signal);
#ifdef SIGPWR
    sigaddset(&signals, SIGPWR);
#endif
#ifdef SIGSTKFLT
    sigaddset(&signals, SIGSTKFLT);
#endif
    for (int signal = SIGRTMIN; signal <= SIGRTMAX; ++signal) sigaddset(&signals, signal);
    return signals;
}

extern "C" void RemoveUnfinishedAndEnd(int signal) {
    if (haveUnfinished) ::unlinkat(unfinishedFolder, unfinishedName, 0);
    struct sigaction fallBack {};
    fallBack.sa_handler = SIG_DFL;
    ::sigaction(signal, &fallBack, nullptr);
    ::raise(signal);  // held until the handler returns, then ends the process as it would have
}

// Holds off the signals that end a save while the unfinished file is made
// or renamed, so that the handler always knows whether there is one.
class SignalsHeld {
public:
    SignalsHeld() {
        const sigset_t held = EndingSignals();
        pthread_sigmask(SIG_BLOCK, &held, &before_);
    }
    ~SignalsHeld() { pthread_sigmask(SIG_SETMASK, &before_, nullptr); }
    SignalsHeld(const SignalsHeld&) = delete;
    SignalsHeld& operator=(const SignalsHeld&) = delete;

private:
    sigset_t before_;
};

// A name for the unfinished save that no one is likely to have taken; it is
// created exclusively, so one that is taken only costs another try.
std::string UnfinishedName() {
    static std::mt19937_64 random = [] {
        std::seed_seq seed{static_cast<std::uint64_t>(::getpid()),
                           static_cast<std::uint64_t>(std::chrono::steady_clock::now().time_since_epoch().count()),
                           static_cast<std::uint64_t>(std::chrono::system_clock::now().time_since_epoch().count())};
        return std::mt19937_64(seed);
    }();
    static constexpr char kLetters[] = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";
    std::string name = ".shd-save-";
    for (int i = 0; i < 12; ++i) name += kLetters[random() % (sizeof kLetters - 1)];
    return name;
}

// The file a name stands for once its symlinks are followed by hand, also
// when the last link points to a file that does not exist yet. Only a guess
// at where the kernel's own lookup ended, which the save checks against it.
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

// Where a save lands: the folder that holds the file and its name there,
// and what the file is now (nothing for a new one).
struct Landing {
    enum Kind { Replace, InPlace, Changed, Failed } kind = Failed;
    Descriptor folder;
    std::string name;
    std::optional<struct stat> old;
    bool madeThroughLink = false;  // an empty file made where a link pointed to nothing
    std::string why;
};

// Finds where a save of `path` lands. The kernel follows the links, with
// its rules for this user (a link planted by another in a sticky folder is
// refused where protected_symlinks says so, as cp and > refuse it); the
// name it arrived at, worked out by hand, must then hold the very file it
// opened. Everything the save keeps of the old file comes from that one
// opened file, never from a second lookup of the name.
Landing Locate(const std::string& path) {
    Landing landing;
    auto failed = [&](const char* what, int cause) {
        landing.kind = Landing::Failed;
        landing.why = Because(what, cause);
        return std::move(landing);
    };
    struct stat opened {};
    Descriptor object(::open(path.c_str(), O_PATH | O_CLOEXEC));
    if (!object && errno == ENOENT) {
        struct stat link {};
        if (::lstat(path.c_str(), &link) == 0 && S_ISLNK(link.st_mode)) {
            // A link to a file not there yet: the kernel makes it through the
            // link, and the save replaces that empty file as any other.
            object = Descriptor(::open(path.c_str(), O_WRONLY | O_CREAT | O_NOCTTY | O_NONBLOCK | O_CLOEXEC, 0666));
            if (!object) return failed("cannot write", errno);
            landing.madeThroughLink = true;
        }
    } else if (!object) {
        return failed("cannot write", errno);
    }
    if (object) {
        if (::fstat(object.get(), &opened) != 0) return failed("cannot write", errno);
        if (S_ISDIR(opened.st_mode)) return failed("cannot replace", EISDIR);
        landing.old = opened;
        // Devices, FIFOs and terminals are not files to replace.
        if (!S_ISREG(opened.st_mode)) {
            landing.kind = Landing::InPlace;
            return landing;
        }
    }
    const std::string target = FollowLinks(path);
    const std::string folder = FolderOf(target).empty() ? "." : FolderOf(target);
    landing.folder = Descriptor(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    // A folder one may write in but not list still takes a save.
    if (!landing.folder && errno == EACCES) landing.folder = Descriptor(::open(folder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    if (!landing.folder) return failed(("cannot create a file in " + ShownName(folder)).c_str(), errno);
    landing.name = FileTitleOf(target);
    struct stat there {};
    const bool present = ::fstatat(landing.folder.get(), landing.name.c_str(), &there, AT_SYMLINK_NOFOLLOW) == 0;
    const bool same = object ? present && S_ISREG(there.st_mode) && SameFile(there, opened) : !present;
    landing.kind = same ? Landing::Replace : Landing::Changed;
    return landing;
}

// A device, FIFO or terminal is written as it is, once it is seen to be the
// one that was found.
bool WriteInPlace(const std::string& path, const struct stat& found, std::string_view bytes, bool wait,
                  std::string* error) {
    Descriptor fd(::open(path.c_str(), O_WRONLY | O_NOCTTY | O_CLOEXEC | (wait ? 0 : O_NONBLOCK)));
    // Once open, writes wait as writes to a pipe do.
    if (fd && !wait) ::fcntl(fd.get(), F_SETFL, ::fcntl(fd.get(), F_GETFL) & ~O_NONBLOCK);
    struct stat opened {};
    int cause = errno;
    if (fd && ::fstat(fd.get(), &opened) != 0) cause = errno;
    else if (fd && (!SameFile(opened, found) || S_ISREG(opened.st_mode))) cause = EAGAIN;
    else if (fd && WriteAll(fd.get(), bytes) && fd.Close()) return true;
    else if (fd) cause = errno;
    if (error) *error = cause == EAGAIN ? "cannot write: it changed while it was being saved" : Because("cannot write", cause);
    return false;
}

}  // namespace

std::optional<std::string> ReadWholeFile(const std::string& path, std::string* error) {
    auto fail = [&](std::string why) -> std::optional<std::string> {
        if (error) *error = std::move(why);
        return std::nullopt;
    };
    // Only a regular file is read: a FIFO or a device could keep the reader
    // waiting for ever, or do something merely by being opened. It is looked
    // at before it is opened, and once more after, in case it was swapped.
    struct stat info {};
    if (::stat(path.c_str(), &info) != 0) return fail(Because("cannot be read", errno));
    if (S_ISDIR(info.st_mode)) return fail(Because("cannot be read", EISDIR));
    if (!S_ISREG(info.st_mode)) return fail(kNotARegularFile);
    Descriptor fd(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    if (!fd) return fail(Because("cannot be read", errno));
    if (::fstat(fd.get(), &info) != 0) return fail(Because("cannot be read", errno));
    if (!S_ISREG(info.st_mode)) return fail(kNotARegularFile);
    return ReadAll(fd.get(), error);
}

std::optional<std::string> ReadStandardInput(std::string* error) { return ReadAll(STDIN_FILENO, error); }

bool WriteStandardOutput(std::string_view bytes, std::string* error) {
    if (WriteAll(STDOUT_FILENO, bytes)) return true;
    if (error) *error = Because("cannot write to standard output", errno);
    return false;
}

bool WriteFileAtomic(const std::string& path, std::string_view bytes, std::string* error, OtherTargets other) {
    auto fail = [&](std::string why) {
        if (error) *error = std::move(why);
        return false;
    };
    // A name that keeps changing under the save (someone swapping links
    // there) gets a few more tries, then a refusal.
    Landing landing;
    for (int tries = 0; tries < 8; ++tries)
        if ((landing = Locate(path)).kind != Landing::Changed) break;
    if (landing.kind == Landing::Failed) return fail(landing.why);
    if (landing.kind == Landing::Changed) return fail("cannot replace: it changed while it was being saved");
    if (landing.kind == Landing::InPlace && other == OtherTargets::Refuse)
        return fail("cannot write: it is not a regular file");
    if (landing.kind == Landing::InPlace)
        return WriteInPlace(path, *landing.old, bytes, other == OtherTargets::Write, error);

    const int folder = landing.folder.get();
    Descriptor fd;
    std::string temp;
    {
        SignalsHeld held;
        for (int tries = 0; tries < 100 && !fd; ++tries) {
            temp = UnfinishedName();
            // A new file gets the mode any new file gets there (the umask, or
            // the folder's default ACL); a replaced one starts private.
            fd = Descriptor(::openat(folder, temp.c_str(), O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC,
                                     landing.old ? 0600 : 0666));
            if (!fd && errno != EEXIST) break;
        }
        if (fd) {
            std::memcpy(unfinishedName, temp.c_str(), temp.size() + 1);
            unfinishedFolder = folder;
            haveUnfinished = 1;
        }
    }
    if (!fd) {
        const std::string where = FolderOf(FollowLinks(path)).empty() ? "." : FolderOf(FollowLinks(path));
        return fail(Because(("cannot create a file in " + ShownName(where)).c_str(), errno));
    }
    // The first thing that goes wrong, if anything does.
    const char* what = nullptr;
    int cause = 0;
    auto check = [&](bool done, const char* failure) {
        if (!done && !what) what = failure, cause = errno;
    };
    check(WriteAll(fd.get(), bytes), "cannot write");
    if (landing.old) {
        // Only root may give a file away; a group the saver belongs to may stay.
        if (::fchown(fd.get(), landing.old->st_uid, landing.old->st_gid) != 0)
            (void)::fchown(fd.get(), static_cast<uid_t>(-1), landing.old->st_gid);
        check(::fchmod(fd.get(), landing.old->st_mode & 07777) == 0, "cannot keep the permissions");
    }
    // On the disk before it takes the old file's place, so a power cut leaves
    // the old file or the new one, never an empty one.
    check(::fsync(fd.get()) == 0, "cannot write");
    check(fd.Close(), "cannot write");
    SignalsHeld held;
    if (!what) check(::renameat(folder, temp.c_str(), folder, landing.name.c_str()) == 0, "cannot replace");
    if (what) {
        ::unlinkat(folder, temp.c_str(), 0);
        // The empty file made through a link goes too, if it is still that.
        struct stat made {};
        if (landing.madeThroughLink &&
            ::fstatat(folder, landing.name.c_str(), &made, AT_SYMLINK_NOFOLLOW) == 0 && SameFile(made, *landing.old) &&
            made.st_size == 0)
            ::unlinkat(folder, landing.name.c_str(), 0);
    }
    haveUnfinished = 0;
    if (what) return fail(Because(what, cause));
    // And the new name on the disk too; a file system that cannot say so
    // has nothing more to do.
    (void)::fsync(folder);
    return true;
}

void RemoveUnfinishedSavesOnSignals() {
    const sigset_t ending = EndingSignals();
    for (int signal = 1; signal < NSIG; ++signal) {
        if (!sigismember(&ending, signal)) continue;
        struct sigaction now {};
        if (::sigaction(signal, nullptr, &now) != 0 || now.sa_handler != SIG_DFL) continue;
        struct sigaction handler {};
        // A file-size limit reached fails the write, which is reported as
        // any other, instead of ending the process without a word.
        handler.sa_handler = signal == SIGXFSZ ? SIG_IGN : RemoveUnfinishedAndEnd;
        handler.sa_mask = ending;
        ::sigaction(signal, &handler, nullptr);
    }
}

bool IsFolder(const std::string& path) {
    struct stat info {};
    return ::stat(path.c_str(), &info) == 0 && S_ISDIR(info.st_mode);
}

bool IsRegularFile(const std::string& path) {
    struct stat info {};
    return ::stat(path.c_str(), &info) == 0 && S_ISREG(info.st_mode);
}

std::optional<FileId> IdOfFile(const std::string& path) {
    struct stat info {};
    if (::stat(path.c_str(), &info) != 0) return std::nullopt;
    return FileId{static_cast<unsigned long long>(info.st_dev), static_cast<unsigned long long>(info.st_ino)};
}

std::string FolderOf(const std::string& path) {
    const auto slash = path.find_last_of('/');
    return slash == std::string::npos ? std::string() : path.substr(0, slash + 1);
}

std::string FileTitleOf(const std::string& path) { return path.substr(FolderOf(path).size()); }

}  // namespace shd
