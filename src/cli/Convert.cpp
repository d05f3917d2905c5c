#include "cli/Convert.h"

#include <cstdio>
#include <optional>

#include "files/FileIo.h"
#include "rules/LevelChecks.h"

namespace shd::cli {

namespace {

void Say(const std::string& line) {
    std::fputs(line.c_str(), stderr);
    std::fputc('\n', stderr);
}

// The set as the editor holds it right after opening; nothing when the read
// did not complete (the reason is already printed).
std::optional<LevelSet> Open(FormatId from, const std::string& input) {
    ReadResult read = OpenFile(GetFormat(from), input);
    if (!read.complete()) {
        Say(input + ": " + read.outcome.Text());
        return std::nullopt;
    }
    return std::move(read.set);
}

}  // namespace

int Convert(FormatId from, const std::string& input, FormatId to, const std::string& output,
            const std::string& whose) {
    std::optional<LevelSet> set = Open(from, input);
    if (!set) return kRefused;
    const std::string prefix = whose.empty() ? whose : whose + ": ";
    const Format& format = GetFormat(to);
    if (format.countsBlocksFirst)
        if (const int level = CountAllLevels(*set)) {
            Say(prefix + NoLastBlocksMessage(level));
            return kRefused;
        }
    const std::string title = FileTitleOf(output);
    if (to == FormatId::Program)
        if (const auto fault = ProgramTitleFault(title)) {
            Say(prefix + *fault);
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
