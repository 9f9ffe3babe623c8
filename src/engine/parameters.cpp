#include "engine/parameters.h"

#include "common/numbers.h"
#include "common/program.h"
#include "common/text.h"

namespace skyhop::IONCAPModule {

Parameters::Parameters(UserMessages& messages, const Common::Settings& settings,
                       Diagnostics& diagnostics)
    : messages_(&messages), settings_(&settings), diagnostics_(&diagnostics) {}

void Parameters::Attach(ParametersWindow* window) {
  window_ = window == nullptr ? &no_window_ : window;
}

void Parameters::SetPredictionPower(const std::string& power) {
  diagnostics_->DebugLog("IONCAPModule.SetPredictionPower, thePower = " + power);
  set_.power = power;
}

void Parameters::SetPredictionSNR(const std::string& snr) {
  diagnostics_->DebugLog("IONCAPModule.SetPredictionSNR, theSNR = " + snr);
  set_.snr = snr;
}

void Parameters::SetPredictionTakeoff(const std::string& takeoff) {
  diagnostics_->DebugLog("IONCAPModule.SetPredictionTakeoff, theTakeoff = " + takeoff);
  set_.takeoff = takeoff;
}

void Parameters::SetPredictionNoise(std::int16_t noise) {
  diagnostics_->DebugLog("IONCAPModule.SetPredictionNoise, theNoise = " + std::to_string(noise));
  set_.noise = noise;
}

void Parameters::SetLastPrefix(const std::string& prefix) {
  last_prefix_ = prefix;
  window_->ShowPrefix(ReplaceAll(prefix, "&", "&&"));
}

void Parameters::SetPrefix() {
  diagnostics_->DebugLog("IONCAPModule.SetPrefix: " + last_prefix_);
  set_.prefix = last_prefix_;
}

void Parameters::SetReceiverLatitude(const std::string& text) {
  SetAngle("IONCAPModule.SetReceiverLatitude", text, Role::kReceiver,
           LatLonModule::Axis::kLatitude);
}

void Parameters::SetReceiverLongitude(const std::string& text) {
  SetAngle("IONCAPModule.SetReceiverLongitude", text, Role::kReceiver,
           LatLonModule::Axis::kLongitude);
}

void Parameters::SetTransmitterLatitude(const std::string& text) {
  SetAngle("IONCAPModule.SetTransmitterLatitude", text, Role::kTransmitter,
           LatLonModule::Axis::kLatitude);
}

void Parameters::SetTransmitterLongitude(const std::string& text) {
  SetAngle("IONCAPModule.SetTransmitterLongitude", text, Role::kTransmitter,
           LatLonModule::Axis::kLongitude);
}

void Parameters::SetAngle(const std::string& operation, const std::string& text, Role role,
                          LatLonModule::Axis axis) {
  diagnostics_->Trap(operation, [&] {
    const bool is_latitude = axis == LatLonModule::Axis::kLatitude;
    Position& position = role == Role::kReceiver ? set_.receiver : set_.transmitter;
    Angle& angle = is_latitude ? position.latitude : position.longitude;
    angle = LatLonModule::ParseAngle(text, *diagnostics_);
    if (LatLonModule::IsUndefined(angle)) return;
    const bool is_local = set_.to_dx == (role == Role::kTransmitter);
    window_->ShowCoordinate(is_local ? Station::kLocal : Station::kDX, axis,
                            is_latitude ? LatLonModule::LatitudeString(position)
                                        : LatLonModule::LongitudeString(position));
  });
}

void Parameters::SetTransmitterAndNoise(const PredictionForm& form) {
  const ParameterSet given = ParametersOf(form);
  SetPredictionPower(given.power);
  SetPredictionTakeoff(given.takeoff);
  SetPredictionNoise(given.noise);
}

void Parameters::SetCircuit(const PredictionForm& form) {
  const ParameterSet given = ParametersOf(form);
  set_.to_dx = given.to_dx;
  set_.transmitter_antenna = given.transmitter_antenna;
  set_.receiver_antenna = given.receiver_antenna;
  set_.flux = given.flux;
  set_.sunspot_number = given.sunspot_number;
  set_.k_index = given.k_index;
  set_.availability = given.availability;
  set_.engine = given.engine;
  SetDate(given.date);
  SetReceiverLatitude(given.to_dx ? form.dx_latitude : form.local_latitude);
  SetReceiverLongitude(given.to_dx ? form.dx_longitude : form.local_longitude);
  SetTransmitterLatitude(given.to_dx ? form.local_latitude : form.dx_latitude);
  SetTransmitterLongitude(given.to_dx ? form.local_longitude : form.dx_longitude);
  SetPath(given.path);
  SetPrefix();
}

bool Parameters::PredictionParametersValid() {
  return diagnostics_->Trap("IONCAPModule.PredictionParametersValid", false, [&] {
    const std::vector<std::string> faults = FaultsOf(set_);
    if (!faults.empty()) window_->RestoreWindow();
    for (const std::string& fault : faults) ParameterError(fault);
    return faults.empty();
  });
}

std::string Parameters::ValidatedSNR(const std::string& snr) {
  const double value = LeadingNumber(snr);
  if (value < -30) return "-30";
  if (value >= 100) return "99";
  return snr;
}

void Parameters::ParameterError(const std::string& text) {
  diagnostics_->Trap("IONCAPModule.ParameterError", [&] {
    messages_->Show(text, kProductName);
    diagnostics_->DebugLog("IONCAPModule.ParameterError: " + text);
  });
}

}  // namespace skyhop::IONCAPModule
