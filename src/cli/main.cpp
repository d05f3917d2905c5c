// shardles-convert: converts level sets between the editor's forms and JSON,
// and reports what the editor's level checks would say about a set.
#include <csignal>
#include <cstdio>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "cli/Convert.h"
#include "files/FileIo.h"

namespace {

using shd::Format;
using shd::FormatId;
using shd::GetFormat;

constexpr const char* kHelp =
    "Usage: shardles-convert [--from FORM] [--to FORM] INPUT OUTPUT\n"
    "       shardles-convert --check [--from FORM] INPUT\n"
    "       shardles-convert --version | --help\n"
    "\n"
    "Converts a Shardles or Tiltbash level set from one form to another, or\n"
    "with --check lists what the editor's level checks say about each level.\n"
    "\n"
    "FORM is one of:\n"
    "  myfile     the editor's own file (.rsx)\n"
    "  oldmyfile  the editor's older file (read only, never guessed)\n"
    "  list       TI-83 list file (.83l)\n"
    "  source     Z80 assembly source (.z80, .asm)\n"
    "  program    TI-83 program file (.83p); the calculator name comes from\n"
    "             OUTPUT's file name, which may have at most 12 characters\n"
    "  json       JSON (.json)\n"
    "Without --from or --to the form follows the file's extension.\n"
    "INPUT - reads standard input and OUTPUT - writes standard output; the\n"
    "form must then be named with --from or --to.\n"
    "\n"
    "Exit status: 0 written (or, with --check, no findings); 1 the input or the\n"
    "set was refused (or there are findings); 2 the command line is wrong.\n";

int UsageError(const std::string& reason) {
    std::fprintf(stderr, "shardles-convert: %s\nTry 'shardles-convert --help'.\n", reason.c_str());
    return shd::cli::kUsage;
}

std::optional<FormatId> FormByName(std::string_view name) {
    for (const Format& format : shd::AllFormats())
        if (name == format.name) return format.id;
    return std::nullopt;
}

struct Command {
    bool check = false;
    std::optional<FormatId> from;
    std::optional<FormatId> to;
    std::vector<std::string> files;
};

}  // namespace

int main(int argc, char** argv) {
    // A closed pipe is a failed write to report, not a reason to die quietly.
    std::signal(SIGPIPE, SIG_IGN);
    shd::RemoveUnfinishedSavesOnSignals();
    Command command;
    bool optionsEnded = false;
    for (int i = 1; i < argc; ++i) {
        const std::string_view arg = argv[i];
        if (optionsEnded || arg.empty() || arg[0] != '-' || arg == "-") {
            command.files.emplace_back(arg);
            continue;
        }
        if (arg == "--") {
            optionsEnded = true;
        } else if (arg == "--help" || arg == "-h") {
            std::fputs(kHelp, stdout);
            return shd::cli::kDone;
        } else if (arg == "--version") {
            std::puts("shardles-convert 3.0");
            return shd::cli::kDone;
        } else if (arg == "--check") {
            command.check = true;
        } else if (arg.starts_with("--from") || arg.starts_with("--to")) {
            const bool isFrom = arg.starts_with("--from");
            const std::string_view option = isFrom ? "--from" : "--to";
            std::string_view value;
            if (arg.size() == option.size()) {
                if (i + 1 >= argc) return UsageError(std::string(option) + " needs a FORM");
                value = argv[++i];
            } else if (arg[option.size()] == '=') {
                value = arg.substr(option.size() + 1);
            } else {
                return UsageError("unknown option " + std::string(arg));
            }
            auto& slot = isFrom ? command.from : command.to;
            if (slot) return UsageError(std::string(option) + " given twice");
            slot = FormByName(value);
            if (!slot) return UsageError("unknown form '" + std::string(value) + "'");
            if (!isFrom && !GetFormat(*slot).write)
                return UsageError(std::string(value) + " can only be read");
        } else {
            return UsageError("unknown option " + std::string(arg));
        }
    }

    const std::size_t wanted = command.check ? 1 : 2;
    if (command.check && command.to) return UsageError("--check writes nothing, so --to has no place");
    if (command.files.size() != wanted)
        return UsageError(command.check ? "--check takes one INPUT" : "give one INPUT and one OUTPUT");

    auto formOf = [](const std::optional<FormatId>& given, const std::string& path) -> std::optional<FormatId> {
        return given ? given : shd::FormOfFileName(shd::FileTitleOf(path));
    };
    auto unknownForm = [](const std::string& path, const char* option) {
        return UsageError(path == shd::cli::kStandardStream
                              ? std::string("the form of standard input or output must be named; give ") + option
                              : "cannot tell the form of " + path + " from its extension; give " + option);
    };
    const std::string& input = command.files[0];
    const auto from = formOf(command.from, input);
    if (!from) return unknownForm(input, "--from");
    if (command.check) return shd::cli::Check(*from, input);

    const std::string& output = command.files[1];
    if (output.empty()) return UsageError("the OUTPUT file name is empty");
    if (output.back() == '/') return UsageError(output + " ends in /, so it names a folder, not a file");
    const auto to = formOf(command.to, output);
    if (!to) return unknownForm(output, "--to");
    return shd::cli::Convert(*from, input, *to, output);
}
