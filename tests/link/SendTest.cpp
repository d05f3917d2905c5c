// Sending a set to a calculator without hardware: the editor's send command
// goes through libticalcs onto one end of libticables' virtual VTi link, and
// fake_calculator plays the TI-83 on the other end.
#include <gtest/gtest.h>

#include <cstdio>

#define restrict __restrict__
#include <tilp2/ticables.h>
#include <tilp2/tifiles.h>
#undef restrict

#include "editor/CalculatorLink.h"
#include "formats/Sending.h"
#include "link/Link.h"
#include "support/EditorFixture.h"

namespace shd::test {
namespace {

// The pair of VTi ports 1 and 2; the converter's case uses 3 and 4.
const link::Cable kComputerEnd{CABLE_VTI, 1};
constexpr int kCalculatorPort = 2;

// The link as the Qt program makes it, over the one virtual cable.
class VirtualLink : public CalculatorLink {
public:
    std::vector<std::string> FindCables() override { return {link::CableName(kComputerEnd)}; }
    std::string Send(std::size_t, const std::string& programFile) override {
        return link::SendProgramFile(kComputerEnd, programFile, [this](int done, int total) {
            progress.push_back(done * 100 / std::max(total, 1));
            return true;
        }, 10);
    }
    std::vector<int> progress;
};

// A set of three levels with last blocks, which saving asks for.
class SendTest : public EditorTest {
protected:
    SendTest() { ThreeLevels(); }
    VirtualLink link;
};

TEST_F(SendTest, TheCalculatorGetsTheVariableSaveCompiledCodeWrites) {
    prompts.ExpectSave("TI-83 Program File|*.83p", dir / "LVL.83p").ExpectMessage("Succesfully compiled!");
    editor.SaveProgram();

    // The calculator's end is open before the computer sends, as a calculator is on before it is sent to.
    const std::string command = FAKE_CALCULATOR " " + std::to_string(kCalculatorPort) + " '" + (dir / "got") + "'";
    FILE* calculator = popen(command.c_str(), "r");
    ASSERT_NE(calculator, nullptr);
    char line[256] = "";
    ASSERT_TRUE(std::fgets(line, sizeof line, calculator));
    ASSERT_STREQ(line, "ready\n");
    prompts.Expect(K::Input, kSendNamePrompt, Answer::Yes, "lvl")
        .ExpectMessage("Sent to the calculator as LVL.");
    editor.SendToCalculator(link);
    const std::string said = std::fgets(line, sizeof line, calculator) ? line : "";
    EXPECT_EQ(pclose(calculator), 0) << said;
    EXPECT_EQ(prompts.lastDefault(), "LEVELS");

    // The file as the TI file library reads it, not as our own code does.
    FileContent* file = tifiles_content_create_regular(CALC_TI83);
    ASSERT_EQ(tifiles_file_read_regular((dir / "LVL.83p").c_str(), file), 0);
    ASSERT_EQ(file->num_entries, 1);
    const VarEntry& entry = *file->entries[0];
    EXPECT_EQ(said, std::string(entry.name) + " " + std::to_string(entry.type) + " " + std::to_string(entry.size) + "\n");
    EXPECT_EQ(ReadFile(dir.path / "got"), std::string(reinterpret_cast<const char*>(entry.data), entry.size));
    tifiles_content_delete_regular(file);
    ASSERT_FALSE(link.progress.empty());
    EXPECT_EQ(link.progress.back(), 100);
}

TEST_F(SendTest, NamesCablesAndSilenceEachGetTheirMessage) {
    struct NoCable : CalculatorLink {
        std::vector<std::string> FindCables() override { return {}; }
        std::string Send(std::size_t, const std::string&) override { return "sent"; }
    } none;
    prompts.Expect(K::Input, kSendNamePrompt, Answer::Yes, "2FAST")
        .ExpectMessage(*CalculatorNameFault("2FAST"));
    editor.SendToCalculator(none);
    prompts.Expect(K::Input, kSendNamePrompt, Answer::Yes, "ok").ExpectMessage(kNoCableMessage);
    editor.SendToCalculator(none);
    EXPECT_EQ(prompts.lastDefault(), "LEVELS");

    // Nobody at the other end of the link.
    prompts.Expect(K::Input, kSendNamePrompt, Answer::Yes, "quiet").ExpectMessage(kNoAnswerMessage);
    editor.SendToCalculator(link);
    prompts.Expect(K::Input, kSendNamePrompt, Answer::Yes, "");
    editor.SendToCalculator(link);
    EXPECT_EQ(prompts.lastDefault(), "QUIET");
}

TEST(CableNames, ReadBackAndRefuseWhatCannotReachATi83) {
    for (const char* name : {"SilverLink:1", "GrayLink:3", "VTi:4", "TiEmu:2"})
        EXPECT_EQ(link::CableName(*link::CableByName(name)), name);
    EXPECT_EQ(link::CableByName("silverlink"), (link::Cable{CABLE_SLV, 1}));
    for (const char* name : {"DirectLink:1", "SilverLink:5", "SilverLink:", "null", "wire"})
        EXPECT_FALSE(link::CableByName(name)) << name;
}

TEST(ProgramVariable, OnlyAWholeFileOfOneVariable) {
    const LevelSet set = RandomSet(GameKind::Shardles, 3, true, 7);
    const std::string file = GetFormat(FormatId::Program).write(set, "ABC.83p").bytes;
    const auto variable = link::VariableOfProgramFile(file);
    ASSERT_TRUE(variable);
    EXPECT_EQ(variable->name, "ABC");
    EXPECT_EQ(variable->data, file.substr(70, file.size() - 72));
    std::string broken = file;
    broken[80] ^= 1;
    EXPECT_FALSE(link::VariableOfProgramFile(broken));
    EXPECT_FALSE(link::VariableOfProgramFile(file.substr(0, file.size() - 1)));
}

}  // namespace
}  // namespace shd::test
