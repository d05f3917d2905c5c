#include "cli/Convert.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <optional>

#if defined(__unix__) || defined(__APPLE__)
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

#include "files/FileIo.h"
#include "rules/LevelChecks.h"

namespace shd::cli {

namespace {

// The save dialog's rule for program files: the calculator shows at most
// eight characters, and ".83p" takes the other four.
constexpr std::size_t kLongestProgramTitle = 12;

void Say(const std::string& line) {
    std::fputs(line.c_str(), stderr);
    std::fputc('\n', stderr);
}

#ifdef MAP_POPULATE
constexpr int kPopulate = MAP_POPULATE;  // one call maps every page, rather than one fault each
#elif defined(__unix__) || defined(__APPLE__)
constexpr int kPopulate = 0;
#endif

// The input's bytes, mapped from the page cache where the system allows:
// copying them into fresh memory costs more than reading them does.
class InputFile {
public:
    explicit InputFile(const std::string& path) {
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
    ~InputFile() {
#if defined(__unix__) || defined(__APPLE__)
        if (map_) ::munmap(const_cast<char*>(map_), size_);
#endif
    }
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;
    bool ok() const { return map_ || copy_; }
    std::string_view view() const { return map_ ? std::string_view(map_, size_) : std::string_view(*copy_); }

private:
    const char* map_ = nullptr;
    std::size_t size_ = 0;
    std::optional<std::string> copy_;
};

// The set as the editor holds it right after opening, or nothing when the
// read did not complete (the reason is already printed).
std::optional<LevelSet> Open(FormatId from, const std::string& input) {
    errno = 0;
    const InputFile bytes(input);
    if (!bytes.ok()) {
        Say(input + ": cannot be read" + (errno ? std::string(": ") + std::strerror(errno) : std::string()));
        return std::nullopt;
    }
    ReadResult read = GetFormat(from).read(bytes.view());
    switch (read.outcome.status) {
    case ReadOutcome::Status::Complete: break;
    case ReadOutcome::Status::Refused:
        Say(input + ": " + (read.outcome.message.empty() ? read.outcome.where + ": " + read.outcome.why
                                                         : read.outcome.message));
        return std::nullopt;
    case ReadOutcome::Status::Stopped:
        Say(input + ": " + read.outcome.where + ": " + read.outcome.why);
        return std::nullopt;
    }
    // The closing steps of every open: level 1 current and shown, which recounts it.
    read.set.CurrentLevel = 1;
    RecountCurrentLevel(read.set);
    return std::move(read.set);
}

// CountBlocks on every level, as the savers run it; false (with the message
// printed) at the first Shardles level without last blocks.
bool CountEveryLevel(LevelSet& set) {
    for (int level = 1; level <= set.LevelCount(); ++level) {
        const BlockCounts counts = ComputeBlockCounts(set, level);
        set.Layout(level).BlockCount = counts.blockCount;
        set.Layout(level).LastBlockCount = counts.lastBlockCount;
        if (set.IsShardles() && counts.lastBlockCount == 0) {
            Say(NoLastBlocksMessage(level));
            return false;
        }
    }
    return true;
}

}  // namespace

int Convert(FormatId from, const std::string& input, FormatId to, const std::string& output) {
    std::optional<LevelSet> set = Open(from, input);
    if (!set) return kRefused;
    const Format& format = GetFormat(to);
    if (format.countsBlocksFirst && !CountEveryLevel(*set)) return kRefused;
    const std::string title = FileTitleOf(output);
    if (to == FormatId::Program && title.size() > kLongestProgramTitle) {
        Say("This name has to be 8 characters long because this is the name that is shown in the Calculator!");
        return kRefused;
    }
    const WriteResult written = format.write(*set, title);
    if (!written.ok) {
        Say(output + ": " + written.message);
        return kRefused;
    }
    std::string error;
    if (!WriteFileAtomic(output, written.bytes, &error)) {
        Say(output + ": " + error);
        return kRefused;
    }
    return kDone;
}

int Check(FormatId from, const std::string& input) {
    std::optional<LevelSet> set = Open(from, input);
    if (!set) return kRefused;
    int findings = 0;
    auto report = [&](int level, const std::string& text) {
        std::printf("Level %d: %s\n", level, text.c_str());
        ++findings;
    };
    // Asked for explicitly, the checks run whatever the set's debugger option says.
    if (set->IsShardles()) {
        for (int level = 1; level <= set->LevelCount(); ++level) {
            if (ComputeBlockCounts(*set, level).missingLastBlocks) report(level, NoLastBlocksMessage(level));
            // The checks read the record's counts, which only the shown level has fresh.
            set->CurrentLevel = level;
            RecountCurrentLevel(*set);
            for (const DebugCheck& check : DebugChecks())
                if (check.holds(*set, level)) report(level, check.question);
        }
    }
    std::printf("%d finding%s\n", findings, findings == 1 ? "" : "s");
    return findings == 0 ? kDone : kRefused;
}

}  // namespace shd::cli
