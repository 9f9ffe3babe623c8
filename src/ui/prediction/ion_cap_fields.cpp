// What may be typed into the fields, and what becomes of it.

#include <string_view>
#include <utility>

#include "common/dates.h"
#include "common/numbers.h"
#include "common/program.h"
#include "common/text.h"
#include "geo/coordinate_text.h"
#include "geo/dx_grid.h"
#include "ui/prediction/ion_cap.h"

namespace skyhop {
namespace {

constexpr std::string_view kDigits = "0123456789";
constexpr std::string_view kLetters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";

bool IsOneOf(char32_t key, std::string_view characters) {
  return key < 0x80 && characters.find(static_cast<char>(key)) != std::string_view::npos;
}

bool IsNumber(const std::string& text, bool in_range) {
  return BeginsWithNumber(text) && in_range;
}

bool HasAnyOf(const std::string& text, std::string_view letters) {
  return UpperCase(text).find_first_of(letters) != std::string::npos;
}

/// What coordinates may hold beside digits and letters. A sign, a comma and the typographic marks
/// belong to forms that ReadCoordinate understands.
bool IsCoordinateMark(char32_t key) {
  constexpr std::u32string_view marks = U". '\",-+\u00B0\u00BA\u2032\u2033\u2019\u201D\u2212";
  return marks.find(key) != std::u32string_view::npos;
}

std::optional<LatLonModule::Axis> AxisOf(TextField field) {
  switch (field) {
    case TextField::kLocalLat:
    case TextField::kDXLat:
      return LatLonModule::Axis::kLatitude;
    case TextField::kLocalLon:
    case TextField::kDXLon:
      return LatLonModule::Axis::kLongitude;
    default:
      return std::nullopt;
  }
}

const char* IllegalCoordinate(LatLonModule::Axis axis) {
  return axis == LatLonModule::Axis::kLatitude ? "Illegal latitude" : "Illegal longitude";
}

/// Whether the prediction itself reports what is wrong with a text.
bool IsJudgedByPrediction(TextField field, const std::string& text) {
  switch (field) {
    case TextField::kLocalGrid:
    case TextField::kDXGrid:
    case TextField::kSSN:
    case TextField::kSNRFrequency:
      return false;
    case TextField::kKindex:
    case TextField::kSNR:
    case TextField::kAvail:
      // The prediction would take letters for 0.
      return BeginsWithNumber(text);
    default:
      return true;
  }
}

}  // namespace

bool IonCap::AcceptsKey(TextField field, char32_t key) {
  if (key < ' ' || key == 0x7F) return true;
  switch (field) {
    case TextField::kLocalPwr:
    case TextField::kLocalTakeOff:
    case TextField::kFlux:
    case TextField::kKindex:
    case TextField::kAvail:
      return IsOneOf(key, kDigits);
    case TextField::kSNR:
      return IsOneOf(key, kDigits) || key == '-';
    case TextField::kSSN:
    case TextField::kSNRFrequency:
      return IsOneOf(key, kDigits) || key == '.';
    case TextField::kLocalLat:
    case TextField::kDXLat:
      return IsOneOf(key, kDigits) || IsOneOf(key, "NSns") || IsCoordinateMark(key);
    case TextField::kLocalLon:
    case TextField::kDXLon:
      return IsOneOf(key, kDigits) || IsOneOf(key, "EWew") || IsCoordinateMark(key);
    case TextField::kLocalGrid:
    case TextField::kDXGrid:
      return IsOneOf(key, kDigits) || IsOneOf(key, kLetters);
    case TextField::kTheDate:
      return IsOneOf(key, kDigits) || IsOneOf(key, kLetters) || IsOneOf(key, "- ");
  }
  return false;
}

IonCap::FieldState& IonCap::StateOf(TextField field) {
  return fields_.at(static_cast<std::size_t>(field));
}

void IonCap::Field_Enter(TextField field) {
  with_.diagnostics.Trap("IonCap.Field_Enter", [&] {
    // Enter asks for an answer each time it is struck.
    StateOf(field).refused.reset();
    if (!Commit(field)) return;
    switch (field) {
      case TextField::kLocalLat:
      case TextField::kLocalLon:
        if (PositionOf(Station::kLocal)) UpdateLocalGrid();
        break;
      case TextField::kDXLat:
      case TextField::kDXLon:
        if (PositionOf(Station::kDX)) UpdateDXGrid();
        break;
      case TextField::kLocalGrid:
        UpdateLocalLatLon();
        break;
      case TextField::kDXGrid:
        UpdateDXLatLon();
        ForgetPrefix();
        parameters_.SetPrefix();
        break;
      case TextField::kSNRFrequency:
        SNRPredictCmd_Click();
        break;
      default:
        break;
    }
  });
}

bool IonCap::Field_Leave(TextField field) {
  return with_.diagnostics.Trap("IonCap.Field_Leave", true, [&] {
    const bool told_before = StateOf(field).refused == with_.view.Text(field);
    return Commit(field) || told_before;
  });
}

bool IonCap::FieldsAccepted() {
  return with_.diagnostics.Trap("IonCap.FieldsAccepted", true, [&] {
    for (int index = 0; index < kTextFieldCount; ++index) {
      const auto field = static_cast<TextField>(index);
      const std::string text = Understood(field);
      const char* problem = TypedProblem(field, text);
      if (problem == nullptr) {
        if (Accept(field, text)) SaveStations();
        continue;
      }
      StateOf(field).refused = text;
      with_.view.MarkRefused(field, true);
      if (IsJudgedByPrediction(field, text)) continue;
      with_.messages.Show(problem, kProductName);
      return false;
    }
    return true;
  });
}

/// The text of a field. A coordinate that the user has typed becomes the program's own text form
/// of it, which the field shows from here on, so that the user sees what was understood.
std::string IonCap::Understood(TextField field) {
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
const char* IonCap::TypedProblem(TextField field, const std::string& text) {
  const auto axis = AxisOf(field);
  if (!axis || Trim(text).empty() || StateOf(field).committed == text) return Problem(field, text);
  return LatLonModule::ReadCoordinate(text, *axis) ? nullptr : IllegalCoordinate(*axis);
}

void IonCap::Field_Change(TextField field) {
  with_.diagnostics.Trap("IonCap.Field_Change", [&] {
    // The same text typed once more deserves its message once more.
    StateOf(field).refused.reset();
    // The clock would overwrite a date that the user is typing.
    if (field == TextField::kTheDate) {
      with_.view.SetChecked(CheckBox::kShowCurrentTimeCheck, false);
    }
  });
}

bool IonCap::Commit(TextField field) {
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
    with_.messages.Show(problem, kProductName);
    return false;
  }
  if (Accept(field, text)) SaveStations();
  return true;
}

/// Takes over an acceptable text. Returns whether it is another one than before.
bool IonCap::Accept(TextField field, const std::string& text) {
  FieldState& state = StateOf(field);
  state.refused.reset();
  with_.view.MarkRefused(field, false);
  if (state.committed == text) return false;
  state.committed = text;
  HandOn(field, text);
  return true;
}

void IonCap::HandOn(TextField field, const std::string& text) {
  switch (field) {
    case TextField::kLocalLat:
    case TextField::kLocalLon:
      UpdateLocalGrid();
      UpdateStationLabels();
      PreviewSolarBars();
      break;
    case TextField::kDXLat:
    case TextField::kDXLon:
      UpdateDXGrid();
      UpdateStationLabels();
      PreviewSolarBars();
      ForgetPrefix();
      break;
    case TextField::kLocalGrid:
      UpdateLocalLatLon();
      break;
    case TextField::kDXGrid:
      UpdateDXLatLon();
      if (!Trim(text).empty()) ForgetPrefix();
      break;
    case TextField::kLocalPwr:
      parameters_.SetPredictionPower(text);
      UpdateConditions();
      break;
    case TextField::kLocalTakeOff:
      parameters_.SetPredictionTakeoff(text);
      UpdateConditions();
      break;
    case TextField::kSNR:
      parameters_.SetPredictionSNR(text);
      // It is the user's own value now, and saved as such.
      with_.view.Select(OptionGroup::kModeSNRCombo, -1);
      break;
    case TextField::kTheDate:
      PreviewSolarBars();
      break;
    case TextField::kFlux:
    case TextField::kKindex:
    case TextField::kSSN:
    case TextField::kAvail:
    case TextField::kSNRFrequency:
      // The field itself is what the engines read.
      break;
  }
  InputsChanged();
}

bool IonCap::LatitudeAcceptable(const std::string& text) {
  if (HasAnyOf(text, "EW") || !LatLonModule::ValidLatitude(text, with_.diagnostics)) return false;
  const Angle angle = LatLonModule::ParseAngle(text, with_.diagnostics);
  return angle.degrees >= 0 && angle.minutes >= 0 && angle.seconds >= 0;
}

bool IonCap::LongitudeAcceptable(const std::string& text) {
  if (HasAnyOf(text, "NS") || !LatLonModule::ValidLongitude(text, with_.diagnostics)) return false;
  const Angle angle = LatLonModule::ParseAngle(text, with_.diagnostics);
  return angle.degrees >= 0 && angle.minutes >= 0 && angle.seconds >= 0;
}

/// The message about a text, null when it is accepted.
const char* IonCap::Problem(TextField field, const std::string& text) {
  const auto unless = [](bool acceptable, const char* message) {
    return acceptable ? nullptr : message;
  };
  if (field == TextField::kTheDate) return unless(ParseDate(text).has_value(), "Illegal date");
  // What is missing is found before a run.
  if (Trim(text).empty()) return nullptr;
  switch (field) {
    case TextField::kLocalLat:
    case TextField::kDXLat:
      return unless(LatitudeAcceptable(text), IllegalCoordinate(LatLonModule::Axis::kLatitude));
    case TextField::kLocalLon:
    case TextField::kDXLon:
      return unless(LongitudeAcceptable(text), IllegalCoordinate(LatLonModule::Axis::kLongitude));
    case TextField::kLocalGrid:
    case TextField::kDXGrid:
      return unless(DXGridModule::IsGridSquare(Trim(text)), "Illegal grid square");
    case TextField::kLocalPwr:
      if (!IONCAPModule::PowerFitsCard(text)) return IONCAPModule::kPowerTooLarge;
      return unless(IsNumber(text, IONCAPModule::PowerInRange(text)), "Illegal Local Power");
    case TextField::kLocalTakeOff:
      return unless(IsNumber(text, IONCAPModule::TakeoffInRange(text)),
                    "Illegal local takeoff angle");
    case TextField::kFlux:
      return unless(IsNumber(text, IONCAPModule::SolarFluxInRange(text)), "Illegal solar flux");
    case TextField::kKindex:
      return unless(IsNumber(text, IONCAPModule::KindexInRange(text)),
                    "Illegal geomagnetic K-index");
    case TextField::kSSN:
      if (!IONCAPModule::SunspotNumberFitsCard(text)) return IONCAPModule::kSunspotNumberTooLarge;
      return unless(IsNumber(text, LeadingNumber(text) >= 0), "Illegal SSN");
    case TextField::kAvail:
      return unless(IsNumber(text, IONCAPModule::AvailabilityInRange(text)),
                    "Illegal Availability");
    case TextField::kSNR:
      return unless(IsNumber(text, IONCAPModule::SNRInRange(text)), "Illegal SNR");
    case TextField::kSNRFrequency:
      return unless(WholeNumberText(text).has_value(), "Illegal frequency");
    case TextField::kTheDate:
      break;
  }
  return nullptr;
}

/// Shows an accepted text of the program's own.
void IonCap::Put(TextField field, const std::string& text) {
  with_.view.SetText(field, text);
  with_.view.MarkRefused(field, false);
  StateOf(field) = {text, std::nullopt};
}

/// Takes the texts that were restored for what the fields held when they were left last. A text
/// that another version or a text editor has put into the settings may be one that is refused.
void IonCap::RememberTexts() {
  for (int index = 0; index < kTextFieldCount; ++index) {
    const auto field = static_cast<TextField>(index);
    const std::string text = with_.view.Text(field);
    StateOf(field) = {text, std::nullopt};
    if (field == TextField::kTheDate || Problem(field, text) == nullptr) continue;
    StateOf(field) = {std::nullopt, text};
    with_.view.MarkRefused(field, true);
  }
}

/// The program ends: what was typed and not left yet counts when it is acceptable, and a refused
/// text gives way to the value before it, so that only good values are saved.
void IonCap::SettleFields() {
  for (int index = 0; index < kTextFieldCount; ++index) {
    const auto field = static_cast<TextField>(index);
    const std::string text = Understood(field);
    FieldState& state = StateOf(field);
    if (state.committed == text) continue;
    if (TypedProblem(field, text) == nullptr) {
      Accept(field, text);
    } else if (state.committed) {
      with_.view.SetText(field, *state.committed);
    }
  }
}

/// The parameter set has understood a coordinate; the field shows it in the program's own form.
void IonCap::ShowCoordinate(Station station, LatLonModule::Axis axis, const std::string& text) {
  const bool latitude = axis == LatLonModule::Axis::kLatitude;
  const TextField field = station == Station::kLocal
                              ? (latitude ? TextField::kLocalLat : TextField::kLocalLon)
                              : (latitude ? TextField::kDXLat : TextField::kDXLon);
  Put(field, text);
  InputsChanged();
  StationsChanged();
}

void IonCap::ShowPrefix(const std::string& prefix) {
  with_.view.SetLabel(Label::kPrefix, prefix);
}

void IonCap::RestoreWindow() {
  with_.view.RestoreWindow();
}

void IonCap::TheDate_DblClick() {
  with_.diagnostics.Trap("IonCap.TheDate_DblClick", [&] { PutToday(); });
}

void IonCap::PutToday() {
  const std::string today = DateText(UtcDate(with_.clock.UtcNow()));
  if (with_.view.Text(TextField::kTheDate) == today) return;
  Put(TextField::kTheDate, today);
  PreviewSolarBars();
  InputsChanged();
}

/// Shows the time, and while the user wants it so, the chart's time and date follow.
void IonCap::FollowClock() {
  const HourMinute time = UtcHourMinute(with_.clock.UtcNow());
  with_.view.SetLabel(Label::kClock,
                      PaddedNumber(time.hour, 2) + ":" + PaddedNumber(time.minute, 2) + " UTC");
  if (std::exchange(hour_, time.hour) != time.hour) InputsChanged();
  if (!with_.view.Checked(CheckBox::kShowCurrentTimeCheck)) return;
  with_.chart.UpdateVerticalTimeBar();
  PutToday();
}

/// The prefix that a peer looked up is not that of the place that the user chose now.
void IonCap::ForgetPrefix() {
  parameters_.SetLastPrefix("");
}

}  // namespace skyhop
