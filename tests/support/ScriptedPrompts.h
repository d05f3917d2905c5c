// A Prompts that answers from a script, records every text shown, and fails
// the test on any prompt it was not told to expect.
#pragma once

#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "editor/Prompts.h"
#include "rules/CustomPiece.h"

namespace shd::test {

class ScriptedPrompts : public Prompts {
public:
    enum class Kind { Message, YesNo, YesNoCancel, Input, Open, Save, Picture };
    static constexpr const char* kAnyText = "*";  // expects a prompt of the kind, whatever its text

    struct Step {
        Kind kind = Kind::Message;
        std::string text;  // the exact text, or the filter for file dialogs
        Answer answer = Answer::Yes;
        std::string reply;  // input box answer, or the chosen path
        std::function<bool(CustomPieceEdit&)> drawing;
        std::function<void()> check;  // runs while the prompt is shown
    };

    // Runs `check` when the prompt pushed last is shown, to look at the state at that moment.
    ScriptedPrompts& Then(std::function<void()> check) {
        script_.back().check = std::move(check);
        return *this;
    }

    ScriptedPrompts& ExpectMessage(std::string text) { return Push(Kind::Message, std::move(text)); }
    ScriptedPrompts& ExpectYesNo(std::string text, bool yes) {
        return Push(Kind::YesNo, std::move(text), yes ? Answer::Yes : Answer::No);
    }
    ScriptedPrompts& ExpectYesNoCancel(std::string text, Answer answer) {
        return Push(Kind::YesNoCancel, std::move(text), answer);
    }
    ScriptedPrompts& ExpectInput(std::string prompt, std::string reply) {
        return Push(Kind::Input, std::move(prompt), Answer::Yes, std::move(reply));
    }
    ScriptedPrompts& ExpectOpen(std::string filter, std::string path) {
        return Push(Kind::Open, std::move(filter), Answer::Yes, std::move(path));
    }
    ScriptedPrompts& ExpectSave(std::string filter, std::string path) {
        return Push(Kind::Save, std::move(filter), Answer::Yes, std::move(path));
    }
    ScriptedPrompts& ExpectPicture(std::function<bool(CustomPieceEdit&)> drawing) {
        Push(Kind::Picture, {});
        script_.back().drawing = std::move(drawing);
        return *this;
    }

    // Everything shown so far, in order: message and question texts, input prompts, dialog filters.
    const std::vector<std::string>& shown() const { return shown_; }
    const std::vector<std::string>& defaults() const { return defaults_; }  // input boxes' default answers
    const std::vector<std::string>& folders() const { return folders_; }    // file dialogs' start folders
    bool done() const { return script_.empty(); }
    void Clear() { shown_.clear(); }

    void Message(const std::string& text) override { Take(Kind::Message, text); }
    bool AskYesNo(const std::string& text) override { return Take(Kind::YesNo, text).answer == Answer::Yes; }
    Answer AskYesNoCancel(const std::string& text) override { return Take(Kind::YesNoCancel, text).answer; }
    std::string InputBox(const std::string& prompt, const std::string& defaultAnswer) override {
        defaults_.push_back(defaultAnswer);
        return Take(Kind::Input, prompt).reply;
    }
    FileChoice OpenFileDialog(const std::string& filter, const std::string& folder) override {
        folders_.push_back(folder);
        return Choice(Take(Kind::Open, filter).reply);
    }
    FileChoice SaveFileDialog(const std::string& filter, const std::string& folder) override {
        folders_.push_back(folder);
        return Choice(Take(Kind::Save, filter).reply);
    }
    bool EditPicture(CustomPieceEdit& edit) override {
        Step step = Take(Kind::Picture, "");
        return step.drawing ? step.drawing(edit) : false;
    }

private:
    ScriptedPrompts& Push(Kind kind, std::string text, Answer answer = Answer::Yes, std::string reply = {}) {
        Step step;
        step.kind = kind;
        step.text = std::move(text);
        step.answer = answer;
        step.reply = std::move(reply);
        script_.push_back(std::move(step));
        return *this;
    }

    static FileChoice Choice(const std::string& path) {
        const auto slash = path.find_last_of('/');
        return {path, slash == std::string::npos ? path : path.substr(slash + 1)};
    }

    Step Take(Kind kind, const std::string& text) {
        if (kind != Kind::Picture) shown_.push_back(text);
        if (script_.empty()) {
            ADD_FAILURE() << "unexpected prompt: \"" << text << "\"";
            Step none;
            none.kind = kind;
            none.answer = Answer::Cancel;
            return none;
        }
        Step step = script_.front();
        script_.pop_front();
        EXPECT_EQ(static_cast<int>(step.kind), static_cast<int>(kind)) << "prompt \"" << text << "\"";
        if (kind != Kind::Picture && step.text != kAnyText) {
            EXPECT_EQ(step.text, text);
        }
        if (step.check) step.check();
        return step;
    }

    std::deque<Step> script_;
    std::vector<std::string> shown_;
    std::vector<std::string> defaults_;
    std::vector<std::string> folders_;
};

}  // namespace shd::test
