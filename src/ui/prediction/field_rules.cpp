#include "ui/prediction/field_rules.h"

#include <string_view>

#include "common/dates.h"
#include "common/numbers.h"
#include "common/text.h"
#include "engine/prediction_inputs.h"
#include "geo/dx_grid.h"

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

}  // namespace

bool AcceptsKey(TextField field, char32_t key) {
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

bool LatitudeAcceptable(const std::string& text, Diagnostics& diagnostics) {
  if (HasAnyOf(text, "EW") || !LatLonModule::ValidLatitude(text, diagnostics)) return false;
  const Angle angle = LatLonModule::ParseAngle(text, diagnostics);
  return angle.degrees >= 0 && angle.minutes >= 0 && angle.seconds >= 0;
}

bool LongitudeAcceptable(const std::string& text, Diagnostics& diagnostics) {
  if (HasAnyOf(text, "NS") || !LatLonModule::ValidLongitude(text, diagnostics)) return false;
  const Angle angle = LatLonModule::ParseAngle(text, diagnostics);
  return angle.degrees >= 0 && angle.minutes >= 0 && angle.seconds >= 0;
}

const char* FieldProblem(TextField field, const std::string& text, Diagnostics& diagnostics) {
  const auto unless = [](bool acceptable, const char* message) {
    return acceptable ? nullptr : message;
  };
  if (field == TextField::kTheDate) return unless(ParseDate(text).has_value(), "Illegal date");
  // What is missing is found before a run.
  if (Trim(text).empty()) return nullptr;
  switch (field) {
    case TextField::kLocalLat:
    case TextField::kDXLat:
      return unless(LatitudeAcceptable(text, diagnostics),
                    IllegalCoordinate(LatLonModule::Axis::kLatitude));
    case TextField::kLocalLon:
    case TextField::kDXLon:
      return unless(LongitudeAcceptable(text, diagnostics),
                    IllegalCoordinate(LatLonModule::Axis::kLongitude));
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

}  // namespace skyhop
