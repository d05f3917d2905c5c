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
#include "link/Link.h"
#include "model/Quoted.h"

namespace {

using shd::Format;
using shd::FormatId;
using shd::GetFormat;

constexpr const char* kHelp =
    "Usage: shardles-convert [--from FORM] [--to FORM] INPUT OUTPUT\n"
    "       shardles-convert --to FORM [--from FORM] -d DIR INPUT...\n"
    "       shardles-convert --check [--from FORM] INPUT\n"
    "       shardles-convert --send [--from FORM] [--name NAME] [--cable CABLE] INPUT\n"
    "       shardles-convert --cables\n"
    "       shardles-convert --version\n"
    "       shardles-convert --help\n"
    "\n"
    "Converts a Shardles or Tiltbash level set from one form to another, lists\n"
    "with --check what the editor's level checks say about each level, or sends\n"
    "the set to a TI-83 over a link cable.\n"
    "\n"
    "  --from FORM      read INPUT as FORM\n"
    "  --to FORM        write OUTPUT (or each file in DIR) as FORM\n"
    "  -d, --directory DIR\n"
    "                   convert every INPUT into DIR, named after it with the\n"
    "                   extension of FORM; go on after a file that is refused\n"
    "  --check          report the level checks' findings; write nothing\n"
    "  --send           send the set as a program, as Save -> Compiled Code makes it\n"
    "  --name NAME      its name on the calculator (1 to 8 letters and digits);\n"
    "                   by default INPUT's file name without its extension\n"
    "  --cable CABLE    the cable to send over, MODEL[:PORT] (GrayLink, BlackLink,\n"
    "                   Parallel, SilverLink, VTi, TiEmu; port 1 to 4, 1 if not\n"
    "                   given); by default the first one found\n"
    "  --cables         list the link cables found, as --cable takes them\n"
    "  --version        print the version\n"
    "  -h, --help       print this help\n"
    "  --               end of options\n"
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
    "Exit status: 0 written, sent (or, with --check, no findings); 1 the input or\n"
    "the set was refused, or any file with -d, or there are findings, or no\n"
    "cable or calculator answered; 2 the command line is wrong.\n"
    "\n"
    "See shardles-convert(1) for more, and examples.\n";

int UsageError(const std::string& reason) { return shd::cli::UsageError("shardles-convert", reason); }

struct Command {
    bool check = false;
    bool send = false;
    bool listCables = false;
    std::optional<FormatId> from;
    std::optional<FormatId> to;
    std::optional<std::string> folder, name, cable;
    std::vector<std::string> files;
};

// The option taking a value that `arg` starts with, or "".
std::string_view ValuedOption(std::string_view arg) {
    for (const std::string_view option : {"--from", "--to", "--name", "--cable", "--directory", "-d"})
        if (arg.starts_with(option)) return option;
    return {};
}

std::string WhatItNeeds(std::string_view option) {
    if (option == "--from" || option == "--to") return "a FORM";
    if (option == "--name") return "a NAME";
    if (option == "--cable") return "a CABLE";
    return "a DIR";
}

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
            return shd::cli::Finished(shd::cli::kDone);
        } else if (arg == "--version") {
            std::puts("shardles-convert 3.0");
            return shd::cli::Finished(shd::cli::kDone);
        } else if (arg == "--check") {
            command.check = true;
        } else if (arg == "--send") {
            command.send = true;
        } else if (arg == "--cables") {
            command.listCables = true;
        } else if (const std::string_view option = ValuedOption(arg); !option.empty()) {
            std::string_view value;
            if (arg.size() == option.size()) {
                if (i + 1 >= argc) return UsageError(std::string(option) + " needs " + WhatItNeeds(option));
                value = argv[++i];
            } else if (arg[option.size()] == '=') {
                value = arg.substr(option.size() + 1);
            } else {
                return UsageError("unknown option " + shd::ShownName(arg));
            }
            if (option != "--from" && option != "--to") {
                auto& text = option == "--name" ? command.name : option == "--cable" ? command.cable : command.folder;
                if (text) return UsageError(std::string(option) + " given twice");
                text = std::string(value);
                continue;
            }
            const bool isFrom = option == "--from";
            auto& slot = isFrom ? command.from : command.to;
            if (slot) return UsageError(std::string(option) + " given twice");
            slot = shd::FormatByName(value);
            if (!slot) return UsageError("unknown form '" + shd::ShownName(value) + "'");
            if (!isFrom && !GetFormat(*slot).write)
                return UsageError(std::string(value) + " can only be read");
        } else {
            return UsageError("unknown option " + shd::ShownName(arg));
        }
    }

    if (command.listCables) {
        if (argc != 2) return UsageError("--cables takes nothing else");
        return shd::cli::ListCables();
    }
    if (command.check && command.send) return UsageError("--check and --send do not go together");
    if ((command.name || command.cable) && !command.send) return UsageError("--name and --cable go with --send");
    if (command.cable && !shd::link::CableByName(*command.cable))
        return UsageError("unknown cable '" + shd::ShownName(*command.cable) + "'");
    if (command.folder) {
        if (command.check || command.send) return UsageError("-d goes with a conversion only");
        if (!command.to) return UsageError("-d needs --to FORM");
        if (command.files.empty()) return UsageError("-d needs at least one INPUT");
        if (!shd::IsFolder(*command.folder)) return UsageError(shd::ShownName(*command.folder) + " is not a folder");
        return shd::cli::ConvertInto(command.from, command.files, *command.to, *command.folder);
    }

    const bool oneInput = command.check || command.send;
    const std::size_t wanted = oneInput ? 1 : 2;
    if (oneInput && command.to)
        return UsageError(command.check ? "--check writes nothing, so --to has no place" : "--send sends a program, so --to has no place");
    if (command.files.size() != wanted)
        return UsageError(command.check ? "--check takes one INPUT"
                          : command.send ? "--send takes one INPUT"
                                         : "give one INPUT and one OUTPUT");

    auto formOf = [](const std::optional<FormatId>& given, const std::string& path) -> std::optional<FormatId> {
        return given ? given : shd::FormOfFileName(shd::FileTitleOf(path));
    };
    auto unknownForm = [](const std::string& path, const char* option) {
        return UsageError(path == shd::cli::kStandardStream
                              ? std::string("the form of standard input or output must be named; give ") + option
                              : "cannot tell the form of " + shd::ShownName(path) + " from its extension; give " + option);
    };
    const std::string& input = command.files[0];
    const auto from = formOf(command.from, input);
    if (!from) return unknownForm(input, "--from");
    if (command.check) return shd::cli::Check(*from, input);
    if (command.send) return shd::cli::Send(*from, input, command.name, command.cable);

    const std::string& output = command.files[1];
    if (output.empty()) return UsageError("the OUTPUT file name is empty");
    if (output.back() == '/') return UsageError(shd::ShownName(output) + " ends in /, so it names a folder, not a file");
    const auto to = formOf(command.to, output);
    if (!to) return unknownForm(output, "--to");
    return shd::cli::Convert(*from, input, *to, output);
}
