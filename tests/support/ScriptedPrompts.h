// A Prompts that answers from a script and fails the test on any prompt it
// was not told to expect, or one whose text differs.
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
    enum class Kind { Message, YesNo, YesNoCancel, Input, Open, Save, Picture, Choose };

    // `text` is the message, question or input prompt, or a file dialog's
    // filter; `reply` the input typed or the path chosen.
    ScriptedPrompts& Expect(Kind kind, std::string text, Answer answer = Answer::Yes, std::string reply = {}) {
        script_.push_back({kind, std::move(text), answer, std::move(reply), {}});
        return *this;
    }
    ScriptedPrompts& ExpectMessage(std::string text) { return Expect(Kind::Message, std::move(text)); }
    ScriptedPrompts& ExpectYesNo(std::string text, bool yes) {
        return Expect(Kind::YesNo, std::move(text), yes ? Answer::Yes : Answer::No);
    }
    ScriptedPrompts& ExpectOpen(std::string filter, std::string path) {
        return Expect(Kind::Open, std::move(filter), Answer::Yes, std::move(path));
    }
    ScriptedPrompts& ExpectSave(std::string filter, std::string path) {
        return Expect(Kind::Save, std::move(filter), Answer::Yes, std::move(path));
    }
    // The custom piece dialog: `draw` edits, and its result is OK (true) or Cancel.
    ScriptedPrompts& ExpectPicture(std::function<bool(CustomPieceEdit&)> draw) {
        Expect(Kind::Picture, {});
        script_.back().draw = std::move(draw);
        return *this;
    }
    bool done() const { return script_.empty(); }
    const std::string& lastDefault() const { return lastDefault_; }
    const std::string& lastFolder() const { return lastFolder_; }
    const std::string& lastExtension() const { return lastExtension_; }

    void Message(const std::string& text) override { Take(Kind::Message, text); }
    bool AskYesNo(const std::string& text) override { return Take(Kind::YesNo, text).answer == Answer::Yes; }
    Answer AskYesNoCancel(const std::string& text) override { return Take(Kind::YesNoCancel, text).answer; }
    std::string InputBox(const std::string& prompt, const std::string& defaultAnswer) override {
        lastDefault_ = defaultAnswer;
        return Take(Kind::Input, prompt).reply;
    }
    FileChoice OpenFileDialog(const std::string& filter, const std::string& folder) override {
        lastFolder_ = folder;
        return Chosen(Take(Kind::Open, filter).reply);
    }
    FileChoice SaveFileDialog(const std::string& filter, const std::string& folder,
                              const std::string& extension) override {
        lastFolder_ = folder;
        lastExtension_ = extension;
        return Chosen(Take(Kind::Save, filter).reply);
    }
    // The choice's reply is the index chosen, "-1" for Cancel.
    int ChooseFromList(const std::string& prompt, const std::vector<std::string>&) override {
        const std::string reply = Take(Kind::Choose, prompt).reply;
        return reply.empty() ? -1 : std::stoi(reply);
    }
    bool EditPicture(CustomPieceEdit& edit) override {
        const Step step = Take(Kind::Picture, {});
        return step.draw && step.draw(edit);
    }

private:
    struct Step {
        Kind kind;
        std::string text;
        Answer answer;
        std::string reply;
        std::function<bool(CustomPieceEdit&)> draw;
    };

    static FileChoice Chosen(const std::string& path) { return {path, path.substr(path.find_last_of('/') + 1)}; }

    Step Take(Kind kind, const std::string& text) {
        if (script_.empty()) {
            ADD_FAILURE() << "unexpected prompt: \"" << text << "\"";
            return {kind, text, Answer::Cancel, {}, {}};
        }
        Step step = std::move(script_.front());
        script_.pop_front();
        EXPECT_EQ(static_cast<int>(step.kind), static_cast<int>(kind)) << text;
        EXPECT_EQ(step.text, text);
        return step;
    }

    std::deque<Step> script_;
    std::string lastDefault_, lastFolder_, lastExtension_;
};

}  // namespace shd::test
