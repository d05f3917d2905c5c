// shardles-convert --send and --cables: the set straight to a calculator.
#include <cstdio>

#include "cli/Convert.h"
#include "formats/Sending.h"
#include "link/Link.h"
#include "model/Quoted.h"
#include "rules/LevelChecks.h"

namespace shd::cli {

namespace {
int Refuse(const std::string& line) {
    std::fprintf(stderr, "%s\n", line.c_str());
    return kRefused;
}
}  // namespace

int Send(FormatId from, const std::string& input, const std::optional<std::string>& name,
         const std::optional<std::string>& cable) {
    ReadResult read = OpenFile(GetFormat(from), input);
    if (!read.complete()) return Refuse(ShownName(input) + ": " + read.outcome.Text());
    // As compiling to a file does, so the calculator gets the same bytes.
    if (const int level = CountAllLevels(read.set)) return Refuse(NoLastBlocksMessage(level));
    const std::string calculatorName = name ? UpperCase(*name) : CalculatorNameOfFile(input);
    if (const auto fault = CalculatorNameFault(calculatorName)) return Refuse(*fault + " Give one with --name.");
    const WriteResult program = GetFormat(FormatId::Program).write(read.set, calculatorName + ".83p");
    if (!program.ok) return Refuse(ShownName(input) + ": " + program.message);

    std::optional<link::Cable> chosen = cable ? link::CableByName(*cable) : std::nullopt;
    if (!chosen) {
        const std::vector<link::Cable> found = link::FindCables();
        if (found.empty()) return Refuse(kNoCableMessage);
        chosen = found.front();
    }
    const std::string fault = link::SendProgramFile(*chosen, program.bytes);
    return fault.empty() ? kDone : Refuse(fault);
}

int ListCables() {
    const std::vector<link::Cable> found = link::FindCables();
    if (found.empty()) return Refuse(kNoCableMessage);
    for (const link::Cable& cable : found) std::puts(link::CableName(cable).c_str());
    return Finished(kDone);
}

}  // namespace shd::cli
