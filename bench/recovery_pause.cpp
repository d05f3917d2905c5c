// The longest pause a recovery copy adds while the user paints: a 255-level
// Shardles set with custom pictures, a drag across the grid, and the copy
// written again and again in the middle of it, as the window's timer may.
// Reports the longest and the median pause the window's thread takes (making
// the bytes and handing them over; the disk's part runs on the store's
// thread), and how long the disk's part takes; the window has one frame, 16 ms.
//
// Usage: recovery_pause [FOLDER]   (the copies go to FOLDER/recovery, default the current folder)
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "editor/Editor.h"
#include "editor/Recovery.h"
#include "files/EditorFiles.h"
#include "files/FileIo.h"

namespace {

class Silent : public shd::Prompts {
public:
    void Message(const std::string&) override {}
    bool AskYesNo(const std::string&) override { return false; }
    shd::Answer AskYesNoCancel(const std::string&) override { return shd::Answer::No; }
    std::string InputBox(const std::string&, const std::string&) override { return {}; }
    shd::FileChoice OpenFileDialog(const std::string&, const std::string&) override { return {}; }
    shd::FileChoice SaveFileDialog(const std::string&, const std::string&, const std::string&) override { return {}; }
    int ChooseFromList(const std::string&, const std::vector<std::string>&) override { return -1; }
    bool EditPicture(shd::CustomPieceEdit&) override { return false; }
};

double Milliseconds(std::chrono::steady_clock::duration d) {
    return std::chrono::duration<double, std::milli>(d).count();
}

}  // namespace

int main(int argc, char* argv[]) {
    namespace fs = std::filesystem;
    const fs::path folder = fs::absolute(argc > 1 ? argv[1] : ".") / "recovery-bench";
    fs::create_directories(folder);

    shd::LevelSet big = shd::NewSet(shd::GameKind::Shardles);
    shd::MakeLevels(big, 255);
    unsigned seed = 1;
    for (int level = 1; level <= 255; ++level)
        for (auto& cell : big.Layout(level).Cells) cell = (seed = seed * 1103515245 + 12345) >> 16 & 15;
    big.UseCustomShardles = true;
    const std::string file = (folder / "big.rsx").string();
    shd::WriteFileAtomic(file, shd::WriteMyFile(big).bytes);

    Silent prompts;
    shd::RecoveryStore store((folder / "recovery").string());
    shd::Editor editor(prompts);
    editor.UseRecovery(&store);
    editor.Start((folder / "info.ini").string(), folder.string());
    editor.OpenPath(file);
    editor.ClickCell(0, shd::MouseButton::Left);  // a change to keep

    std::vector<double> pauses, disk;
    const shd::CellLocator cellAt = [](shd::Point p) { return p.y / 10 * 8 + p.x / 10; };
    editor.PressCell(0, {5, 5}, shd::MouseButton::Left, 1);
    for (int step = 0; step < 200; ++step) {
        editor.DragTo({step * 7 % 80 + 1, step * 3 % 100 + 1}, 1, cellAt);
        if (step % 2) continue;
        auto start = std::chrono::steady_clock::now();
        editor.KeepRecoveryCopy(0);
        pauses.push_back(Milliseconds(std::chrono::steady_clock::now() - start));
        // Painting goes on while the disk works; waiting here only measures the disk.
        start = std::chrono::steady_clock::now();
        store.Wait();
        disk.push_back(Milliseconds(std::chrono::steady_clock::now() - start));
    }
    editor.ReleaseButton(shd::MouseButton::Left);
    const bool written = fs::exists(store.ownCopyPath());
    store.Remove();
    fs::remove_all(folder);
    if (!written) {
        std::fputs("recovery_pause: no copy was written\n", stderr);
        return 1;
    }
    std::sort(pauses.begin(), pauses.end());
    std::sort(disk.begin(), disk.end());
    std::printf("recovery copy of 255 levels during a drag: pause longest %.2f ms, median %.2f ms; "
                "on the store's thread longest %.2f ms, median %.2f ms; %zu copies\n",
                pauses.back(), pauses[pauses.size() / 2], disk.back(), disk[disk.size() / 2], pauses.size());
    return pauses.back() < 16.0 ? 0 : 1;
}
