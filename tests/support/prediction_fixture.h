#pragma once

#include "common/settings.h"
#include "engine/parameters.h"
#include "support/diagnostics_fixture.h"
#include "support/fake_panel.h"

namespace skyhop::testing {

/// A parameter set over fakes.
struct PredictionFixture {
  LoggedDiagnostics log;
  FakePanel panel;
  FakeUserMessages messages;
  MemorySettingsStore store;
  Common::Settings settings{store, log.diagnostics};
  IONCAPModule::Parameters parameters{panel, messages, settings, log.diagnostics};

  /// New York to London, 1500 W, on 15 November 2026, a set that passes validation.
  void SetTransatlantic() {
    parameters.SetPredictionPower("1500");
    parameters.SetPredictionTakeoff("3");
    parameters.SetPredictionSNR("24");
    parameters.SetPredictionNoise(2);
    parameters.SetDate("15-Nov-26");
    parameters.SetPath("Short Path");
    parameters.SetTransmitterLatitude("40 30' 0\" N");
    parameters.SetTransmitterLongitude("74 15' 0\" W");
    parameters.SetReceiverLatitude("51 30' 0\" N");
    parameters.SetReceiverLongitude("0 7' 0\" W");
  }
};

}  // namespace skyhop::testing
