// Recovery copies: keeping one while the set has unsaved changes, and
// offering those of an editor that did not end cleanly at the next start.
#include <ctime>

#include "editor/Editor.h"
#include "editor/Recovery.h"
#include "files/FileIo.h"

namespace shd {

namespace {
std::string LocalTime(std::int64_t seconds) {
    const std::time_t when = static_cast<std::time_t>(seconds);
    std::tm local{};
    char text[32] = "";
    if (localtime_r(&when, &local)) std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S", &local);
    return text;
}

std::string OfferText(const RecoveryCopy& copy) {
    const int levels = copy.set.LevelCount();
    return "The editor did not end cleanly. A recovery copy was written " + LocalTime(copy.written) + ":\n" +
           (copy.document.empty() ? std::string("Untitled") : copy.document) + ", " +
           (copy.set.IsShardles() ? "Shardles" : "Tiltbash") + ", " + std::to_string(levels) +
           (levels == 1 ? " level" : " levels") + ".";
}
}  // namespace

void Editor::KeepRecoveryCopy(std::int64_t now, bool untilWritten) {
    if (!recovery_) return;
    if (!IsModified()) {
        recovery_->Remove();
        return;
    }
    // Without waiting, a failure shows at the next copy, when the one before it is done.
    std::string error = recovery_->LastFailure();
    recovery_->Post(set_, documentPath_, now);
    if (untilWritten) recovery_->Wait(&error);
    if (!error.empty()) ui_.status = "Could not write the recovery copy: " + error;
}

void Editor::DropRecoveryCopy() {
    if (recovery_) recovery_->Remove();
}

void Editor::OfferRecoveryCopies() {
    if (!recovery_) return;
    RecoveryStore::Found found = recovery_->FindLeftCopies();
    for (const DamagedCopy& damaged : found.damaged)
        prompts_.Message("A recovery copy could not be read (" + damaged.why + "). It is kept as " + damaged.keptAs +
                         ".");
    for (RecoveryCopy& copy : found.copies) {
        // One set is open at a time: once one is restored, the rest wait for the next start.
        if (IsModified()) break;
        switch (prompts_.ChooseFromList(OfferText(copy), kRecoveryChoices)) {
        case 0: {
            AdoptSet(std::move(copy.set));
            documentPath_ = copy.document;
            history_.MarkChanged();
            ClosingSteps();
            // The work is this editor's now: its own copy first, then the old one goes.
            std::string error;
            if (recovery_->Write(set_, documentPath_, copy.written, &error)) recovery_->Discard(copy.id);
            else ui_.status = "Could not write the recovery copy: " + error;
            break;
        }
        case 1: recovery_->Discard(copy.id); break;
        default: break;  // kept for a later start
        }
    }
}

}  // namespace shd
