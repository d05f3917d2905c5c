// Recovery copies: a changed set kept in a folder of the user's, so that a
// crash, a kill or a power cut loses at most the last few seconds of work.
// Each running editor owns a lock file there, held for as long as it runs, so
// a second editor never offers or removes the first one's copy.
#pragma once

#include <condition_variable>
#include <cstdint>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "model/LevelSet.h"

namespace shd {

// A copy left by an editor that did not end cleanly.
struct RecoveryCopy {
    std::string id;
    std::int64_t written = 0;  // seconds since the epoch
    std::string document;      // the My File the set belonged to, "" when Untitled
    LevelSet set;
};

// A copy that could not be read, now kept aside under `keptAs`.
struct DamagedCopy {
    std::string keptAs, why;
};

// The bytes of a copy and back; nothing, with `why`, when they are not one.
std::string RecoveryBytes(const LevelSet& set, const std::string& document, std::int64_t written);
std::optional<RecoveryCopy> ReadRecoveryBytes(const std::string& bytes, std::string* why);

class RecoveryStore {
public:
    // Makes `folder` when it is missing and takes a lock of this editor's own there.
    explicit RecoveryStore(std::string folder);
    ~RecoveryStore();
    RecoveryStore(const RecoveryStore&) = delete;
    RecoveryStore& operator=(const RecoveryStore&) = delete;

    bool usable() const { return lock_ >= 0; }
    std::string ownCopyPath() const { return PathOf(id_, ".copy"); }

    // This editor's copy, replaced whole with the safe save of every file.
    // The disk's part runs on a thread of the store's own, so painting never
    // waits for it; a newer copy posted meanwhile replaces one not yet begun.
    void Post(const LevelSet& set, const std::string& document, std::int64_t now);
    // Until what was posted is on the disk; false, with `error`, when the last write failed.
    bool Wait(std::string* error = nullptr);
    bool Write(const LevelSet& set, const std::string& document, std::int64_t now, std::string* error = nullptr) {
        Post(set, document, now);
        return Wait(error);
    }
    // Why the last write finished failed, "" when it did not; without waiting.
    std::string LastFailure();
    void Remove();  // this editor's copy, after any write under way; the lock stays until the store goes

    // The copies of editors that are gone, oldest first; each stays held by
    // this store (so no other editor offers it meanwhile) until it is
    // discarded or the store goes. Unreadable copies are renamed aside and
    // reported, never removed; locks without a copy are tidied away.
    struct Found {
        std::vector<RecoveryCopy> copies;
        std::vector<DamagedCopy> damaged;
    };
    Found FindLeftCopies();
    void Discard(const std::string& id);  // a copy found above, and its lock

private:
    std::string PathOf(const std::string& id, const char* suffix) const { return folder_ + "/" + id + suffix; }
    void Let(const std::string& id);  // unlocks and removes a lock held for another editor's copy

    std::string folder_, id_;
    int lock_ = -1;
    std::map<std::string, int> held_;  // other editors' locks, by copy id

    void WriteOnThread();
    std::mutex mutex_;
    std::condition_variable changed_;
    std::optional<std::string> pending_;  // the newest copy not yet begun
    bool busy_ = false, stop_ = false, failed_ = false;
    std::string error_;
    std::thread writer_;
};

}  // namespace shd
