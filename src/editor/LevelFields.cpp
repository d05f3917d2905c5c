// The level fields: the set's title, bonus clock and extra-life points, and
// the current level's ball start.
#include "editor/Editor.h"
#include "editor/StepRecorder.h"
#include "model/Numbers.h"

namespace shd {

namespace {
constexpr int kMaxTitleLength = 20;
}  // namespace

void Editor::SetTitle(const Bytes& text) {
    StepRecorder step(*this, StepKind::Title);
    set_.Title = text;
}

void Editor::CheckTitle(Key released) {
    StepRecorder step(*this, StepKind::Title);
    if (IsEditingKey(released)) return;
    if (set_.Title.size() > kMaxTitleLength) set_.Title.resize(kMaxTitleLength);
}

void Editor::TypeBallStart(Axis axis, const std::string& text) {
    (axis == Axis::Across ? ui_.ballXText : ui_.ballYText) = text;
}

void Editor::SetBallStart(Axis axis, const std::string& text, Key released) {
    const bool across = axis == Axis::Across;
    StepRecorder step(*this, across ? StepKind::BallX : StepKind::BallY);
    std::string& shown = across ? ui_.ballXText : ui_.ballYText;
    shown = text;
    if (IsEditingKey(released)) return;
    const int most = across ? 94 : 62;
    const auto value = ParseTypedNumber(text);
    double stored = 0;
    if (!value || *value > most || RoundHalfEven(*value) < 0) shown = "0";
    else stored = RoundHalfEven(*value);
    (across ? set_.Current().BallX : set_.Current().BallY) = static_cast<std::int16_t>(stored);
}

void Editor::SetBonusClock(const Bytes& text) {
    StepRecorder step(*this, StepKind::BonusClock);
    set_.BonusClock = text;
}

void Editor::SetExtraLifePoints(const Bytes& text) {
    StepRecorder step(*this, StepKind::ExtraLifePoints);
    set_.ExtraLifePoints = text;
}

}  // namespace shd
