#pragma once

#include <string>

#include "engine/prediction_panel.h"
#include "geo/station_fields.h"

namespace skyhop {

/// The stations' fields of a panel, for the services that compute bearings and distances.
class PanelStations : public StationFields {
 public:
  explicit PanelStations(const PredictionPanel& panel) : panel_(&panel) {}

  [[nodiscard]] std::string LocalLat() const override { return panel_->Text(PanelText::kLocalLat); }
  [[nodiscard]] std::string LocalLon() const override { return panel_->Text(PanelText::kLocalLon); }
  [[nodiscard]] std::string DXLat() const override { return panel_->Text(PanelText::kDXLat); }
  [[nodiscard]] std::string DXLon() const override { return panel_->Text(PanelText::kDXLon); }
  [[nodiscard]] bool ShortPath() const override {
    return panel_->Choice(PanelChoice::kPath) == path_option::kShort;
  }
  [[nodiscard]] bool DistanceMiles() const override {
    return panel_->Checked(PanelCheck::kDistanceMiles);
  }

 private:
  const PredictionPanel* panel_;
};

}  // namespace skyhop
