#include "ui/prediction/input_fields.h"

#include <cmath>

#include "common/numbers.h"
#include "common/program.h"
#include "common/text.h"
#include "geo/coordinate_text.h"
#include "ui/prediction/field_rules.h"

namespace skyhop {
namespace {

/// More than any value of a peer needs.
constexpr std::size_t kLongestText = 100;

}  // namespace

std::string InputFields::Understood(TextField field) {
  std::string text = with_.view.Text(field);
  const auto axis = AxisOf(field);
  if (!axis || StateOf(field).committed == text) return text;
  const std::optional<Angle> angle = LatLonModule::ReadCoordinate(text, *axis);
  if (!angle) return text;
  std::string canonical = LatLonModule::CoordinateText(*angle, *axis);
  if (canonical != text) with_.view.SetText(field, canonical);
  return canonical;
}

/// The message about a text that the user has typed, null when it is accepted.
const char* InputFields::TypedProblem(TextField field, const std::string& text) {
  const auto axis = AxisOf(field);
  if (!axis || Trim(text).empty() || StateOf(field).committed == text) {
    return FieldProblem(field, text, with_.diagnostics);
  }
  return LatLonModule::ReadCoordinate(text, *axis) ? nullptr : IllegalCoordinate(*axis);
}

bool InputFields::Enter(TextField field) {
  // Each press of Enter asks for an answer.
  StateOf(field).refused.reset();
  return Commit(field);
}

bool InputFields::Leave(TextField field) {
  const bool told_before = StateOf(field).refused == with_.view.Text(field);
  return Commit(field) || told_before;
}

bool InputFields::AcceptAll() {
  for (int index = 0; index < kTextFieldCount; ++index) {
    const auto field = static_cast<TextField>(index);
    const std::string text = Understood(field);
    const char* problem = TypedProblem(field, text);
    if (problem == nullptr) {
      if (Accept(field, text) && on_typed_) on_typed_();
      continue;
    }
    StateOf(field).refused = text;
    with_.view.MarkRefused(field, true);
    if (IsJudgedByPrediction(field, text)) continue;
    Tell(problem);
    return false;
  }
  return true;
}

void InputFields::Change(TextField field) {
  // The same text, typed again, gets its message again.
  StateOf(field).refused.reset();
}

bool InputFields::Commit(TextField field) {
  const std::string text = Understood(field);
  FieldState& state = StateOf(field);
  if (state.refused == text) return false;
  if (const char* problem = TypedProblem(field, text)) {
    // Before the message: while it is shown, the field is left a second time.
    state.refused = text;
    with_.view.MarkRefused(field, true);
    if (const auto axis = AxisOf(field)) {
      with_.view.SetStatus("Write it like " + std::string(LatLonModule::CoordinateExamples(*axis)));
    }
    Tell(problem);
    return false;
  }
  if (Accept(field, text) && on_typed_) on_typed_();
  return true;
}

/// Takes over an acceptable text. Returns whether it differs from the one before.
bool InputFields::Accept(TextField field, const std::string& text) {
  FieldState& state = StateOf(field);
  state.refused.reset();
  with_.view.MarkRefused(field, false);
  if (state.committed == text) return false;
  state.committed = text;
  if (on_accepted_) on_accepted_(field, text);
  return true;
}

void InputFields::Put(TextField field, const std::string& text) {
  with_.view.SetText(field, text);
  with_.view.MarkRefused(field, false);
  StateOf(field) = {text, std::nullopt};
}

void InputFields::TakeFromPeer(TextField field, const std::string& text) {
  const std::string value(Trim(text));
  if (value.empty() || value == with_.view.Text(field) || !AcceptableFromPeer(field, value)) return;
  Put(field, value);
  if (on_accepted_) on_accepted_(field, value);
}

bool InputFields::AcceptableFromPeer(TextField field, const std::string& text) {
  const auto axis = AxisOf(field);
  const std::optional<double> number = WholeNumberText(text);
  bool readable = text.size() <= kLongestText;
  if (axis) {
    // Checked first: the check of the field logs what it cannot read as a fault.
    readable = readable && !number &&
               (axis == LatLonModule::Axis::kLatitude ? LatLonModule::LatitudeIn(text)
                                                      : LatLonModule::LongitudeIn(text));
  } else {
    readable = readable && number && std::isfinite(*number);
  }
  if (readable && FieldProblem(field, text, with_.diagnostics) == nullptr) return true;
  with_.diagnostics.DebugLog("   a peer's value is refused: " + text.substr(0, kLongestText));
  return false;
}

void InputFields::RememberAll() {
  for (int index = 0; index < kTextFieldCount; ++index) {
    const auto field = static_cast<TextField>(index);
    const std::string text = with_.view.Text(field);
    StateOf(field) = {text, std::nullopt};
    if (field == TextField::kTheDate || FieldProblem(field, text, with_.diagnostics) == nullptr) {
      continue;
    }
    StateOf(field) = {std::nullopt, text};
    with_.view.MarkRefused(field, true);
  }
}

void InputFields::SettleAll() {
  for (int index = 0; index < kTextFieldCount; ++index) {
    const auto field = static_cast<TextField>(index);
    const std::string text = Understood(field);
    const FieldState& state = StateOf(field);
    if (state.committed == text) continue;
    if (TypedProblem(field, text) == nullptr) {
      Accept(field, text);
    } else if (state.committed) {
      with_.view.SetText(field, *state.committed);
    }
  }
}

void InputFields::Tell(const std::string& message) {
  with_.messages.Show(message, kProductName);
}

}  // namespace skyhop
