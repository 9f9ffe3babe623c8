#pragma once

#include <functional>
#include <set>
#include <string>

#include "common/diagnostics.h"
#include "engine/parameters.h"
#include "interop/peer_window.h"
#include "ui/prediction/input_fields.h"
#include "ui/prediction/mode_choice.h"
#include "ui/prediction/point_panel.h"
#include "ui/shared/prediction_view.h"

namespace skyhop {

/// Follows the values that peers publish. A text that a user could not have entered is logged and
/// changes nothing.
class PeerInputs : public PeerWindow {
 public:
  struct Collaborators {
    PredictionView& view;
    InputFields& fields;
    ModeChoice& modes;
    PointPanel& point;
    IONCAPModule::Parameters& parameters;
    Diagnostics& diagnostics;
  };

  explicit PeerInputs(const Collaborators& collaborators) : with_(collaborators) {}

  /// Called when the transceiver's band may be another one, and when a link opened or closed.
  void SetBandListener(std::function<void()> listener) { on_band_ = std::move(listener); }
  void SetLinksListener(std::function<void()> listener) { on_links_ = std::move(listener); }

  FollowedBand FollowFrequency(double frequency) override;
  void Follow(LinkControl control, const std::string& text) override;
  void FollowSelection(const PeerPlace& place) override;
  void FollowStation(const PeerPlace& place) override;
  void Forget(LinkControl control) override;
  void LinksChanged() override;

  /// Moves the DX station to the location that is selected in Tessera, while the user wants that.
  void UseTesseraLocation();

 private:
  [[nodiscard]] bool UsePlace(TextField latitude, TextField longitude, const PeerPlace& place);
  void UseMode(const std::string& text);
  void ReportUnknownMode(const std::string& text);

  Collaborators with_;
  std::function<void()> on_band_;
  std::function<void()> on_links_;
  PeerPlace tessera_;  ///< the location that is selected there
  std::set<std::string> unknown_modes_;
};

}  // namespace skyhop
