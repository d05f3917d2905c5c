// Every message box, question, input box and file dialog of the editor goes
// through this seam: the Qt program shows real dialogs, tests answer from a
// script. Texts are Windows-1252 bytes, shown exactly as given.
#pragma once

#include <string>
#include <vector>

namespace shd {

class CustomPieceEdit;

enum class Answer { Yes, No, Cancel };

struct FileChoice {
    std::string path;   // full path; empty when the user cancelled
    std::string title;  // the file name without its folder
};

class Prompts {
public:
    virtual ~Prompts() = default;
    virtual void Message(const std::string& text) = 0;
    virtual bool AskYesNo(const std::string& text) = 0;
    virtual Answer AskYesNoCancel(const std::string& text) = 0;
    // The answer typed, "" on Cancel.
    virtual std::string InputBox(const std::string& prompt, const std::string& defaultAnswer) = 0;
    // `filter` is "label|pattern[;pattern]"; the dialog opens in `folder` with an empty name.
    virtual FileChoice OpenFileDialog(const std::string& filter, const std::string& folder) = 0;
    // The save dialog adds `extension` (".rsx") to a name typed without one,
    // and asks before it lets an existing file be chosen.
    virtual FileChoice SaveFileDialog(const std::string& filter, const std::string& folder,
                                      const std::string& extension) = 0;
    // One of `items`, by its index; -1 on Cancel.
    virtual int ChooseFromList(const std::string& prompt, const std::vector<std::string>& items) = 0;
    // The custom piece dialog, modal; true when closed with OK.
    virtual bool EditPicture(CustomPieceEdit& edit) = 0;
};

}  // namespace shd
