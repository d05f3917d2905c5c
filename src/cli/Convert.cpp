#include "cli/Convert.h"

#include <cstdio>
#include <optional>

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

// The set as the editor holds it right after opening; nothing when the read
// did not complete (the reason is already printed).
std::optional<LevelSet> Open(FormatId from, const std::string& input) {
    std::string error;
    const auto bytes = ReadWholeFile(input, &error);
    if (!bytes) {
        Say(input + ": cannot be read: " + error);
        return std::nullopt;
    }
    ReadResult read = GetFormat(from).read(*bytes);
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
    LevelSet set = std::move(read.set);
    set.CurrentLevel = 1;
    RecountCurrentLevel(set);
    return set;
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
    std::optional<LevelSet> opened = Open(from, input);
    if (!opened) return kRefused;
    LevelSet& set = *opened;
    const Format& format = GetFormat(to);
    if (format.countsBlocksFirst && !CountEveryLevel(set)) return kRefused;
    const std::string title = FileTitleOf(output);
    if (to == FormatId::Program && title.size() > kLongestProgramTitle) {
        Say("This name has to be 8 characters long because this is the name that is shown in the Calculator!");
        return kRefused;
    }
    WriteResult written = format.write(set, title);
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
    std::optional<LevelSet> opened = Open(from, input);
    if (!opened) return kRefused;
    LevelSet& set = *opened;
    int findings = 0;
    auto report = [&](int level, const std::string& text) {
        std::printf("Level %d: %s\n", level, text.c_str());
        ++findings;
    };
    // Asked for explicitly, the checks run whatever the set's debugger option says.
    if (set.IsShardles()) {
        for (int level = 1; level <= set.LevelCount(); ++level) {
            if (ComputeBlockCounts(set, level).missingLastBlocks) report(level, NoLastBlocksMessage(level));
            // The checks read the record's counts, which only the shown level has fresh.
            set.CurrentLevel = level;
            RecountCurrentLevel(set);
            for (const DebugCheck& check : DebugChecks())
                if (check.holds(set, level)) report(level, check.question);
        }
    }
    std::printf("%d finding%s\n", findings, findings == 1 ? "" : "s");
    return findings == 0 ? kDone : kRefused;
}

}  // namespace shd::cli
