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
};

struct ReadResult {
    LevelSet set;  // always consistent
    ReadOutcome outcome;

    bool complete() const { return outcome.status == ReadOutcome::Status::Complete; }
    bool refused() const { return outcome.status == ReadOutcome::Status::Refused; }
    bool stopped() const { return outcome.status == ReadOutcome::Status::Stopped; }
};

inline ReadResult Refuse(std::string message) {
    ReadResult result;
    MakeLevels(result.set, 1);  // consistent even though the editor keeps its own
    result.outcome.status = ReadOutcome::Status::Refused;
    result.outcome.message = std::move(message);
    return result;
}

// A writer's product: the file's bytes, or a refusal with the text to show.
struct WriteResult {
    bool ok = false;
    std::string bytes;
    std::string message;
};

inline WriteResult Written(std::string bytes) { return {true, std::move(bytes), {}}; }
inline WriteResult Refused(std::string message) { return {false, {}, std::move(message)}; }

}  // namespace shd
