#include "engine/ioncap_script.h"

#include "common/numbers.h"

namespace skyhop::IONCAPModule {
namespace {

constexpr int kNameWidth = 10;
constexpr int kFieldWidth = 5;
constexpr float kTwoDecimals = 5.2F;

}  // namespace

bool IonCapScript::CreateIONCAPScript(const PredictionInputs& inputs, std::int16_t method,
                                      const std::filesystem::path& file) {
  return diagnostics_->Trap("IONCAPModule.CreateIONCAPScript", false, [&] {
    const int script = cards_->InitializeScript(file, false);
    if (script == -1) return false;
    // The file is closed whatever happens to its cards.
    const bool written = diagnostics_->Trap("IONCAPModule.CreateIONCAPScript", [&] {
      SpecifyCircuit(script, inputs);
      SpecifySystem(script, inputs);
      SpecifyMonth(script, inputs);
      SpecifySunspots(script, inputs);
      SpecifyTime(script);
      SpecifyAntennaSystem(script);
      SpecifyMethod(script, method);
      SpecifyExecute(script);
      SpecifyQuit(script);
    });
    return cards_->CloseScript(script) && written;
  });
}

void IonCapScript::PutCoordinate(int file, const Angle& angle, const char* letter) {
  cards_->PutFloat(file, Magnitude(angle), kTwoDecimals);
  cards_->PutString(file, letter, kFieldWidth);
}

/// A number, rounded to a whole one, with a period in a field of five columns.
void IonCapScript::PutPointed(int file, double value) {
  int width = kFieldWidth;
  cards_->PutSingle(file, RoundToInteger(value), width);
}

void IonCapScript::SpecifyCircuit(int file, const PredictionInputs& inputs) {
  cards_->PutString(file, "CIRCUIT", kNameWidth);
  PutCoordinate(file, inputs.transmitter.latitude, LatitudeLetter(inputs.transmitter.latitude));
  PutCoordinate(file, inputs.transmitter.longitude, LongitudeLetter(inputs.transmitter.longitude));
  PutCoordinate(file, inputs.receiver.latitude, LatitudeLetter(inputs.receiver.latitude));
  PutCoordinate(file, inputs.receiver.longitude, LongitudeLetter(inputs.receiver.longitude));
  cards_->PutInteger(file, inputs.short_path ? 0 : 1, kFieldWidth);
  cards_->PutNewLine(file);
}

void IonCapScript::SpecifySystem(int file, const PredictionInputs& inputs) {
  cards_->PutString(file, "SYSTEM", kNameWidth);
  cards_->PutFloat(file, static_cast<float>(RoundToLong(inputs.power) / 1000.0), kTwoDecimals);
  cards_->PutString(file, NoiseCode(inputs.noise), kFieldWidth);
  PutPointed(file, inputs.takeoff);
  PutPointed(file, inputs.availability);
  PutPointed(file, inputs.snr);
  cards_->PutNewLine(file);
}

void IonCapScript::SpecifyMonth(int file, const PredictionInputs& inputs) {
  cards_->PutString(file, "MONTH", kNameWidth);
  cards_->PutInteger(file, static_cast<std::int16_t>(inputs.Year()), kFieldWidth);
  cards_->PutInteger(file, static_cast<std::int16_t>(inputs.Month()), kFieldWidth);
  cards_->PutNewLine(file);
}

void IonCapScript::SpecifySunspots(int file, const PredictionInputs& inputs) {
  cards_->PutString(file, "SUNSPOT", kNameWidth);
  cards_->PutFloat(file, inputs.sunspot_number, kTwoDecimals);
  cards_->PutNewLine(file);
}

void IonCapScript::SpecifyTime(int file) {
  cards_->PutString(file, "TIME", kNameWidth);
  // First hour, last hour, step; the last field is always 0.
  for (const int value : {1, 24, 1, 0}) {
    cards_->PutInteger(file, static_cast<std::int16_t>(value), kFieldWidth);
  }
  cards_->PutNewLine(file);
}

void IonCapScript::SpecifyAntennaSystem(int file) {
  SpecifyAntenna(file, 1, 1, 3, 16, 0, 12);
  SpecifyAntenna(file, 2, 1, 4, 16, 6, 54);
  SpecifyAntenna(file, 3, 2, 4, 16, 0, 54);
}

void IonCapScript::SpecifyAntenna(int file, std::int16_t a, std::int16_t b, std::int16_t c,
                                  std::int16_t d, std::int16_t e, std::int16_t f) {
  const auto text = [&](const char* field) { cards_->PutString(file, field, kFieldWidth); };
  cards_->PutString(file, "ANTENNA", kNameWidth);
  cards_->PutInteger(file, b, kFieldWidth);
  cards_->PutInteger(file, c, kFieldWidth);
  text("");
  text(" .001");
  text("   4.");
  text("");
  text("  -.5");
  PutPointed(file, d);
  PutPointed(file, e);
  text("");
  text("");
  text("");
  PutPointed(file, f);
  cards_->PutInteger(file, a, 4);
  cards_->PutNewLine(file);
}

void IonCapScript::SpecifyMethod(int file, std::int16_t method) {
  cards_->PutString(file, "METHOD", kNameWidth);
  cards_->PutInteger(file, method, kFieldWidth);
  cards_->PutNewLine(file);
}

void IonCapScript::SpecifyExecute(int file) {
  cards_->PutString(file, "EXECUTE", kNameWidth);
  cards_->PutInteger(file, 0, kFieldWidth);
  cards_->PutNewLine(file);
}

void IonCapScript::SpecifyQuit(int file) {
  cards_->PutString(file, "QUIT", kNameWidth);
  cards_->PutNewLine(file);
}

}  // namespace skyhop::IONCAPModule
