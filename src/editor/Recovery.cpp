#include "editor/Recovery.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <system_error>

#include "files/EditorFiles.h"
#include "files/FileIo.h"

namespace shd {

namespace {
constexpr std::string_view kMagic = "SHARDLES RECOVERY 1\n";

// Locks `path` for this process without waiting; -1 when another holds it.
int TakeLock(const std::string& path, int flags) {
    const int fd = ::open(path.c_str(), flags | O_RDWR | O_CLOEXEC | O_NOFOLLOW, 0600);
    if (fd < 0) return -1;
    if (::flock(fd, LOCK_EX | LOCK_NB) != 0) {
        ::close(fd);
        return -1;
    }
    return fd;
}

bool ReadNumber(std::string_view& text, std::int64_t& value, char end) {
    const auto stop = text.find(end);
    if (stop == std::string_view::npos || stop == 0 || stop > 19) return false;
    value = 0;
    for (const char c : text.substr(0, stop)) {
        if (c < '0' || c > '9') return false;
        value = value * 10 + (c - '0');
    }
    text.remove_prefix(stop + 1);
    return true;
}
}  // namespace

std::string RecoveryBytes(const LevelSet& set, const std::string& document, std::int64_t written) {
    // The file name goes by its length, so any byte a path may hold survives.
    std::string bytes(kMagic);
    bytes += std::to_string(written) + "\n" + std::to_string(document.size()) + " " + document + "\n";
    bytes += WriteMyFile(set).bytes;
    return bytes;
}

std::optional<RecoveryCopy> ReadRecoveryBytes(const std::string& bytes, std::string* why) {
    auto fail = [&](const char* reason) {
        if (why) *why = reason;
        return std::nullopt;
    };
    std::string_view text(bytes);
    if (!text.starts_with(kMagic)) return fail("not a recovery copy");
    text.remove_prefix(kMagic.size());
    RecoveryCopy copy;
    std::int64_t length = 0;
    if (!ReadNumber(text, copy.written, '\n') || !ReadNumber(text, length, ' ')) return fail("its heading is damaged");
    if (static_cast<std::uint64_t>(length) >= text.size() || text[length] != '\n')
        return fail("its file name is damaged");
    copy.document = std::string(text.substr(0, length));
    text.remove_prefix(length + 1);
    ReadResult set = ReadMyFile(std::string(text));
    if (!set.complete()) return fail("the set in it is damaged");
    copy.set = std::move(set.set);
    return copy;
}

RecoveryStore::RecoveryStore(std::string folder) : folder_(std::move(folder)) {
    std::error_code ignored;
    std::filesystem::create_directories(folder_, ignored);
    ::chmod(folder_.c_str(), 0700);  // the copies are the user's work: no one else's to read
    // The pid names the editor for whoever looks; the time keeps a later
    // editor that gets the same pid from taking over a copy left behind.
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    id_ = std::to_string(::getpid()) + "-" +
          std::to_string(std::chrono::duration_cast<std::chrono::nanoseconds>(now).count());
    lock_ = TakeLock(PathOf(id_, ".lock"), O_CREAT | O_EXCL);
    if (lock_ >= 0) {
        const std::string pid = std::to_string(::getpid()) + "\n";
        [[maybe_unused]] const auto written = ::write(lock_, pid.data(), pid.size());
        writer_ = std::thread([this] { WriteOnThread(); });
    }
}

RecoveryStore::~RecoveryStore() {
    if (writer_.joinable()) {
        Wait();  // what was posted is the user's work: it goes to the disk first
        {
            std::lock_guard lock(mutex_);
            stop_ = true;
        }
        changed_.notify_all();
        writer_.join();
    }
    for (const auto& [id, fd] : held_) ::close(fd);
    if (lock_ < 0) return;
    ::unlink(PathOf(id_, ".lock").c_str());
    ::close(lock_);
}

void RecoveryStore::Post(const LevelSet& set, const std::string& document, std::int64_t now) {
    std::string bytes = RecoveryBytes(set, document, now);  // the set is the caller's: read it here, not there
    {
        std::lock_guard lock(mutex_);
        pending_ = std::move(bytes);
    }
    changed_.notify_all();
}

bool RecoveryStore::Wait(std::string* error) {
    if (!usable()) {
        if (error) *error = "the recovery folder " + folder_ + " cannot be used";
        return false;
    }
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return !pending_ && !busy_; });
    if (failed_ && error) *error = error_;
    return !failed_;
}

std::string RecoveryStore::LastFailure() {
    if (!usable()) return "the recovery folder " + folder_ + " cannot be used";
    std::lock_guard lock(mutex_);
    return failed_ ? error_ : std::string();
}

void RecoveryStore::WriteOnThread() {
    std::unique_lock lock(mutex_);
    for (;;) {
        changed_.wait(lock, [this] { return pending_ || stop_; });
        if (!pending_) return;
        const std::string bytes = std::move(*pending_);
        pending_.reset();
        busy_ = true;
        lock.unlock();
        std::string error;
        const bool ok = WriteFileAtomic(ownCopyPath(), bytes, &error, OtherTargets::Refuse);
        lock.lock();
        busy_ = false;
        failed_ = !ok;
        error_ = error;
        changed_.notify_all();
    }
}

void RecoveryStore::Remove() {
    if (!usable()) return;
    {
        std::unique_lock lock(mutex_);
        pending_.reset();
        changed_.wait(lock, [this] { return !busy_; });
        failed_ = false;
    }
    ::unlink(ownCopyPath().c_str());
}

RecoveryStore::Found RecoveryStore::FindLeftCopies() {
    Found found;
    std::vector<std::string> ids, locks;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(folder_, error)) {
        const std::filesystem::path name = entry.path().filename();
        const std::string stem = name.stem().string();
        if (stem == id_ || held_.contains(stem)) continue;
        if (name.extension() == ".copy") ids.push_back(stem);
        if (name.extension() == ".lock") locks.push_back(stem);
    }
    // A lock free to take is a lock of an editor that is gone.
    for (const std::string& id : locks) {
        if (std::find(ids.begin(), ids.end(), id) != ids.end()) continue;
        const int fd = TakeLock(PathOf(id, ".lock"), 0);
        if (fd < 0) continue;
        if (!std::filesystem::exists(PathOf(id, ".copy"), error)) ::unlink(PathOf(id, ".lock").c_str());
        ::close(fd);
    }
    for (const std::string& id : ids) {
        // A copy without its lock was left by an editor stopped between the two.
        const int fd = TakeLock(PathOf(id, ".lock"), O_CREAT);
        if (fd < 0) continue;
        held_[id] = fd;
        std::string why;
        const auto bytes = ReadWholeFile(PathOf(id, ".copy"), &why);
        if (!bytes) {
            Let(id);  // gone meanwhile, taken by another editor
            continue;
        }
        if (auto copy = ReadRecoveryBytes(*bytes, &why)) {
            copy->id = id;
            found.copies.push_back(std::move(*copy));
            continue;
        }
        const std::string aside = PathOf(id, ".damaged");
        if (::rename(PathOf(id, ".copy").c_str(), aside.c_str()) == 0) {
            found.damaged.push_back({aside, why});
            Let(id);
        } else {
            found.damaged.push_back({PathOf(id, ".copy"), why});
        }
    }
    std::sort(found.copies.begin(), found.copies.end(),
              [](const RecoveryCopy& a, const RecoveryCopy& b) { return a.written < b.written; });
    return found;
}

void RecoveryStore::Discard(const std::string& id) {
    if (!held_.contains(id)) return;  // never another running editor's
    ::unlink(PathOf(id, ".copy").c_str());
    Let(id);
}

void RecoveryStore::Let(const std::string& id) {
    const auto it = held_.find(id);
    if (it == held_.end()) return;
    ::unlink(PathOf(id, ".lock").c_str());
    ::close(it->second);
    held_.erase(it);
}

}  // namespace shd
