#pragma once

#include "common/settings.h"
#include "engine/prediction_engine.h"
#include "support/diagnostics_fixture.h"
#include "support/fake_engine_host.h"
#include "support/fake_launcher.h"

namespace skyhop::testing {

/// New York to London, 1500 W, on 15 November 2026: a form that passes validation.
inline PredictionForm Transatlantic() {
  PredictionForm form;
  form.local_latitude = "40 30' 0\" N";
  form.local_longitude = "74 15' 0\" W";
  form.dx_latitude = "51 30' 0\" N";
  form.dx_longitude = "0 7' 0\" W";
  form.local_power = "1500";
  form.dx_power = 2;
  form.takeoff = "3";
  form.local_noise = 2;
  form.dx_noise = 2;
  form.flux = "150";
  form.k_index = "1";
  form.availability = "10";
  form.snr = "24";
  form.date = "15-Nov-26";
  form.engine = EngineChoice::kIonCap;
  return form;
}

/// The parts of a prediction over fakes.
struct PredictionFixture {
  LoggedDiagnostics log;
  FakeUserMessages messages;
  MemorySettingsStore store;
  Common::Settings settings{store, log.diagnostics};
  FakePause pause;
  FakeLauncher launcher;
  FakeEngineHost host;
  PredictionEngine engine{{launcher, host, pause, log.clock, messages, settings, log.diagnostics}};
  IONCAPModule::Parameters& parameters = engine.parameters;
  PredictionForm form = Transatlantic();

  /// Hands the form over as a window does.
  void Hand() {
    parameters.SetTransmitterAndNoise(form);
    parameters.SetPredictionSNR(form.snr);
    parameters.SetCircuit(form);
  }

  [[nodiscard]] PredictionInputs Inputs() const {
    return IONCAPModule::InputsOf(IONCAPModule::ParametersOf(form));
  }
};

}  // namespace skyhop::testing
