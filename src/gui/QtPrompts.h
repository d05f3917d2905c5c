// The editor's dialogs as real Qt dialogs.
#pragma once

#include <QString>
#include <functional>

#include "editor/Prompts.h"

class QWidget;

namespace shd::gui {

// "label|pattern;pattern|label|pattern" as Qt wants it: "label (pattern pattern);;label (pattern)".
QString QtFilter(const std::string& filter);

class QtPrompts : public Prompts {
public:
    explicit QtPrompts(QWidget* parent) : parent_(parent) {}

    void Message(const std::string& text) override;
    bool AskYesNo(const std::string& text) override;
    Answer AskYesNoCancel(const std::string& text) override;
    std::string InputBox(const std::string& prompt, const std::string& defaultAnswer) override;
    int ChooseFromList(const std::string& prompt, const std::vector<std::string>& items) override;
    FileChoice OpenFileDialog(const std::string& filter, const std::string& folder) override;
    FileChoice SaveFileDialog(const std::string& filter, const std::string& folder,
                              const std::string& extension) override;
    bool EditPicture(CustomPieceEdit& edit) override;

private:
    QWidget* parent_;
};

// Runs a callback before every prompt, then passes it on: the window redraws
// itself from the state first, so a question shows what caused it.
class SyncingPrompts : public Prompts {
public:
    SyncingPrompts(Prompts& inner, std::function<void()> before) : inner_(inner), before_(std::move(before)) {}

    void Message(const std::string& text) override;
    bool AskYesNo(const std::string& text) override;
    Answer AskYesNoCancel(const std::string& text) override;
    std::string InputBox(const std::string& prompt, const std::string& defaultAnswer) override;
    int ChooseFromList(const std::string& prompt, const std::vector<std::string>& items) override;
    FileChoice OpenFileDialog(const std::string& filter, const std::string& folder) override;
    FileChoice SaveFileDialog(const std::string& filter, const std::string& folder,
                              const std::string& extension) override;
    bool EditPicture(CustomPieceEdit& edit) override;

private:
    Prompts& inner_;
    std::function<void()> before_;
};

}  // namespace shd::gui
