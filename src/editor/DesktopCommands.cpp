// The commands a desktop program has beyond the original window's: sending
// to a calculator, and About.
#include "editor/CalculatorLink.h"
#include "editor/Editor.h"
#include "formats/Sending.h"

namespace shd {

std::string AboutText() {
    return std::string(kWindowCaption) + "\n\nVersion " SHD_VERSION "\n\n" +
           "Draws levels for Shardles and Tiltbash, two games for the TI-83 graphing calculator, keeps them in its "
           "own file, a TI-83 list, a TI-83 program or Z80 assembly source, and sends them to the calculator over "
           "a link cable.";
}

void Editor::ShowAbout() { prompts_.Message(AboutText()); }

void Editor::SendToCalculator(CalculatorLink& link) {
    // The same counts and refusal as compiling to a file, so the calculator
    // gets the very bytes Save → Compiled Code would write.
    if (!CountAllLevelsOrShow()) return;
    const std::string typed = prompts_.InputBox(kSendNamePrompt, sendName_.empty() ? "LEVELS" : sendName_);
    ShowLevel();
    if (typed.empty()) return;
    const std::string name = UpperCase(typed);
    if (const auto fault = CalculatorNameFault(name)) {
        prompts_.Message(*fault);
        return;
    }
    const WriteResult program = GetFormat(FormatId::Program).write(set_, name + ".83p");
    if (!program.ok) {
        prompts_.Message(program.message);
        return;
    }
    const std::vector<std::string> cables = link.FindCables();
    if (cables.empty()) {
        prompts_.Message(kNoCableMessage);
        return;
    }
    const int cable = cables.size() == 1 ? 0 : prompts_.ChooseFromList(kCablePrompt, cables);
    if (cable < 0) return;
    sendName_ = name;
    const std::string fault = link.Send(static_cast<std::size_t>(cable), program.bytes);
    prompts_.Message(fault.empty() ? "Sent to the calculator as " + name + "." : fault);
}

}  // namespace shd
