// shardles-convert: converts level sets between the editor's forms and JSON,
// and reports what the editor's level checks would say about a set.
#include <algorithm>
#include <array>
#include <cctype>
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

constexpr std::array kAllForms{FormatId::MyFile, FormatId::OldMyFile, FormatId::List,
                               FormatId::Source, FormatId::Program, FormatId::Json};

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
    "\n"
    "Exit status: 0 written (or, with --check, no findings); 1 the input or the\n"
    "set was refused (or there are findings); 2 the command line is wrong.\n";

int UsageError(const std::string& reason) {
    std::fprintf(stderr, "shardles-convert: %s\nTry 'shardles-convert --help'.\n", reason.c_str());
    return shd::cli::kUsage;
}

std::optional<FormatId> FormByName(std::string_view name) {
    for (FormatId id : kAllForms)
        if (name == GetFormat(id).name) return id;
    return std::nullopt;
}

std::string Lower(std::string_view text) {
    std::string lower(text);
    for (char& c : lower) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return lower;
}

// The form whose save filter lists the file's extension, in any case. The
// older file has no save filter, so it is never guessed.
std::optional<FormatId> FormByExtension(const std::string& path) {
    const std::string name = Lower(shd::FileTitleOf(path));
    for (FormatId id : kAllForms) {
        std::string_view patterns = GetFormat(id).saveFilter;
        const auto bar = patterns.find('|');
        if (bar == std::string_view::npos) continue;
        patterns.remove_prefix(bar + 1);
        while (!patterns.empty()) {
            const auto semicolon = patterns.find(';');
            std::string_view pattern = patterns.substr(0, semicolon);
            patterns.remove_prefix(semicolon == std::string_view::npos ? patterns.size() : semicolon + 1);
            if (pattern.substr(0, 1) != "*") continue;
            const std::string_view extension = pattern.substr(1);
            if (name.size() > extension.size() && std::string_view(name).ends_with(extension)) return id;
        }
    }
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
        return given ? given : FormByExtension(path);
    };
    const std::string& input = command.files[0];
    const auto from = formOf(command.from, input);
    if (!from) return UsageError("cannot tell the form of " + input + " from its extension; give --from");
    if (command.check) return shd::cli::Check(*from, input);

    const std::string& output = command.files[1];
    const auto to = formOf(command.to, output);
    if (!to) return UsageError("cannot tell the form of " + output + " from its extension; give --to");
    return shd::cli::Convert(*from, input, *to, output);
}
