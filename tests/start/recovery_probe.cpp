// The editor as it starts for a user, with its questions answered by the
// environment, for the recovery copies' test of whole processes:
//   PROBE_MODE=change  paints a few cells, writes the set as a My File to
//                      PROBE_OUT, says "changed" and waits to be ended;
//   PROBE_MODE=restore answers Restore, writes the set it has to PROBE_OUT,
//                      says whether it is changed and its name, and closes
//                      its window, answering No to saving;
//   PROBE_MODE=look    answers Decide later and ends.
// Every question asked is said on stdout.
#include <QCoreApplication>
#include <QTimer>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "editor/Editor.h"
#include "files/EditorFiles.h"
#include "files/FileIo.h"
#include "gui/MainWindow.h"
#include "gui/Startup.h"

namespace {

class AnsweringPrompts : public shd::Prompts {
public:
    explicit AnsweringPrompts(bool restore) : restore_(restore) {}
    void Message(const std::string& text) override { Say("message", text); }
    bool AskYesNo(const std::string& text) override { return Say("yes/no", text), false; }
    shd::Answer AskYesNoCancel(const std::string& text) override {
        Say("yes/no/cancel", text);
        return restore_ ? shd::Answer::No : shd::Answer::Cancel;
    }
    std::string InputBox(const std::string& prompt, const std::string&) override { return Say("input", prompt), ""; }
    shd::FileChoice OpenFileDialog(const std::string& filter, const std::string&) override {
        return Say("open", filter), shd::FileChoice{};
    }
    shd::FileChoice SaveFileDialog(const std::string& filter, const std::string&, const std::string&) override {
        return Say("save", filter), shd::FileChoice{};
    }
    int ChooseFromList(const std::string& prompt, const std::vector<std::string>&) override {
        Say("offered", prompt);
        return restore_ ? 0 : 2;
    }
    bool EditPicture(shd::CustomPieceEdit&) override { return Say("picture", ""), false; }

private:
    static void Say(const char* kind, const std::string& text) {
        std::printf("%s: %s\n", kind, text.c_str());
        std::fflush(stdout);
    }
    bool restore_;
};

void Finish(const std::string& text, int status) {
    std::puts(text.c_str());
    std::fflush(stdout);
    QCoreApplication::exit(status);
}

}  // namespace

int main(int argc, char* argv[]) {
    const std::string mode = std::getenv("PROBE_MODE") ? std::getenv("PROBE_MODE") : "look";
    const std::string out = std::getenv("PROBE_OUT") ? std::getenv("PROBE_OUT") : "";
    AnsweringPrompts prompts(mode == "restore");
    return shd::gui::RunEditor(
        argc, argv,
        [&](shd::gui::MainWindow& window) {
            QTimer::singleShot(0, [&] {
                shd::Editor& editor = window.editor();
                if (mode == "change") {
                    window.Run([&] {
                        if (editor.set().UseShardlesDebugger) editor.Toggle(shd::Toggle::Debugger);
                        editor.SetTitle(shd::Bytes("Before the end"));
                        for (int cell = 3; cell < 40; cell += 7) {
                            editor.ChooseBlock(cell % 16);
                            editor.ClickCell(cell, shd::MouseButton::Left);
                        }
                        editor.AddLevel();
                        editor.ChooseBlock(6);
                        editor.ClickCell(11, shd::MouseButton::Left);
                    });
                }
                if (mode == "look") return Finish("looked", 0);
                if (!shd::WriteFileAtomic(out, shd::WriteMyFile(editor.set()).bytes)) return Finish("write failed", 1);
                if (mode == "restore") {
                    std::printf("restored %s %s\n", editor.IsModified() ? "changed" : "unchanged",
                                editor.DocumentName().c_str());
                    std::fflush(stdout);
                    window.close();  // ends cleanly, as a user's close does
                    return;
                }
                std::puts("changed");
                std::fflush(stdout);
            });
        },
        &prompts);
}
