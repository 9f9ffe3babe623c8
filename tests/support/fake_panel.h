#pragma once

#include "engine/plain_panel.h"

namespace skyhop::testing {

/// Plain inputs that count what the engine folder asks of the window.
class FakePanel : public PlainPanel {
 public:
  /// Every option group has a choice, every field a value that passes validation.
  FakePanel() {
    SetChoice(PanelChoice::kLocalNoiseLevel, 2);
    SetChoice(PanelChoice::kDXNoiseLevel, 2);
    SetChoice(PanelChoice::kDXPwr, 2);
    SetChoice(PanelChoice::kPath, path_option::kShort);
    SetChoice(PanelChoice::kPredictSignals, direction_option::kToTheDXStation);
    SetChoice(PanelChoice::kEngineButton, 0);
    SetText(PanelText::kFlux, "150");
    SetText(PanelText::kKindex, "1");
    SetText(PanelText::kAvail, "10");
  }

  void RestoreWindow() override { ++restored; }
  void StationsChanged() override { ++station_changes; }
  [[nodiscard]] std::string SettingsName() const override { return settings_name; }

  int restored = 0;
  int station_changes = 0;
  std::string settings_name;
};

}  // namespace skyhop::testing
