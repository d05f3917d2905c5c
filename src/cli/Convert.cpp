#include "cli/Convert.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <optional>

#include "files/FileIo.h"
#include "model/Quoted.h"
#include "rules/LevelChecks.h"

namespace shd::cli {

namespace {

void Say(const std::string& line) {
    std::fputs(line.c_str(), stderr);
    std::fputc('\n', stderr);
}

// How a file is named in a message.
std::string Named(const std::string& path) { return path == kStandardStream ? "standard input" : ShownName(path); }

}  // namespace

std::optional<LevelSet> ReadInput(FormatId from, const std::string& input) {
    ReadResult read;
    if (input == kStandardStream) {
        std::string error;
        const auto bytes = ReadStandardInput(&error);
        read = bytes ? OpenBytes(GetFormat(from), *bytes) : StoppedBeforeReplacing({}, error);
    } else {
        read = OpenFile(GetFormat(from), input);
    }
    if (!read.complete()) {
        Say(Named(input) + ": " + read.outcome.Text());
        return std::nullopt;
    }
    return std::move(read.set);
}

int Convert(FormatId from, const std::string& input, FormatId to, const std::string& output) {
    std::optional<LevelSet> set = ReadInput(from, input);
    if (!set) return kRefused;
    const Format& format = GetFormat(to);
    if (format.countsBlocksFirst)
        if (const int level = CountAllLevels(*set)) {
            Say(Named(input) + ": " + NoLastBlocksMessage(level));
            return kRefused;
        }
    const std::string title = FileTitleOf(output);
    if (to == FormatId::Program)
        if (const auto fault = ProgramTitleFault(title)) {
            Say(ShownName(output) + ": " + *fault);
            return kRefused;
        }
    const WriteResult written = format.write(*set, title);
    if (!written.ok) {
        Say(ShownName(output) + ": " + written.message);
        return kRefused;
    }
    std::string error;
    if (output == kStandardStream ? WriteStandardOutput(written.bytes, &error)
                                  : WriteFileAtomic(output, written.bytes, &error))
        return kDone;
    Say((output == kStandardStream ? "" : ShownName(output) + ": ") + error);
    return kRefused;
}

int Check(FormatId from, const std::string& input) {
    std::optional<LevelSet> set = ReadInput(from, input);
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
    return Finished(findings == 0 ? kDone : kRefused);
}

int UsageError(const char* program, const std::string& reason) {
    std::fprintf(stderr, "%s: %s\nTry '%s --help'.\n", program, reason.c_str(), program);
    return kUsage;
}

int Finished(int status) {
    if (std::fflush(stdout) != 0 || std::ferror(stdout)) {
        Say(std::string("cannot write to standard output: ") + std::strerror(errno));
        return kRefused;
    }
    return status;
}

}  // namespace shd::cli
