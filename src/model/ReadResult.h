// How a reader ended, beside the set it read.
#pragma once

#include <string>

#include "model/LevelSet.h"

namespace shd {

struct ReadOutcome {
    enum class Status {
        Complete,  // the whole file was read
        Refused,   // the file was turned away with `message` (or, when it is empty, silently
                   // at `where` for `why`); the editor keeps its set
        Stopped,   // the read broke off at `where` because of `why`; `set` holds what was read
    };
    Status status = Status::Complete;
    std::string message;  // Refused: the text shown to the user
    std::string where;    // Stopped: "line 12" or "byte 130"
    std::string why;      // Stopped: what was wrong there

    // What went wrong, in one line: the refusal's message, or where and why.
    std::string Text() const {
        if (!message.empty()) return message;
        return where.empty() ? why : where + ": " + why;
    }
};

struct ReadResult {
    LevelSet set;  // always consistent
    ReadOutcome outcome;

    bool complete() const { return outcome.status == ReadOutcome::Status::Complete; }
    bool refused() const { return outcome.status == ReadOutcome::Status::Refused; }
    bool stopped() const { return outcome.status == ReadOutcome::Status::Stopped; }
};

// A file turned away: the set is a fresh one, consistent although the
// editor keeps its own.
inline ReadResult RefusedRead(std::string message) {
    ReadResult result;
    MakeLevels(result.set, 1);
    result.outcome.status = ReadOutcome::Status::Refused;
    result.outcome.message = std::move(message);
    return result;
}

// A read that broke off before it replaced anything: refused without a
// word, so the editor keeps its set, but saying where and why.
inline ReadResult StoppedBeforeReplacing(std::string where, std::string why) {
    ReadResult result = RefusedRead({});
    result.outcome.where = std::move(where);
    result.outcome.why = std::move(why);
    return result;
}

// A read that broke off: the set keeps what was read, with one empty level
// when the levels were not set up yet, and level 1 current.
inline ReadResult StoppedRead(LevelSet set, std::string where, std::string why) {
    if (set.LevelCount() == 0) MakeLevels(set, 1);
    set.CurrentLevel = 1;
    return {std::move(set), {ReadOutcome::Status::Stopped, {}, std::move(where), std::move(why)}};
}

// A writer's product: the file's bytes, or a refusal with the text to show.
struct WriteResult {
    bool ok = false;
    std::string bytes;
    std::string message;
};

inline WriteResult Written(std::string bytes) { return {true, std::move(bytes), {}}; }
inline WriteResult RefusedWrite(std::string message) { return {false, {}, std::move(message)}; }

}  // namespace shd
