#pragma once

#include <functional>
#include <string>
#include <vector>

#include "engine/parameters.h"
#include "ui/prediction/input_fields.h"
#include "ui/shared/configuration.h"
#include "ui/shared/prediction_view.h"

namespace skyhop {

/// The list of modes, of which the selected one gives the required SNR.
class ModeChoice {
 public:
  struct Collaborators {
    PredictionView& view;
    const Configuration& configuration;
    InputFields& fields;
    IONCAPModule::Parameters& parameters;
    std::function<void()> inputs_changed;
  };

  explicit ModeChoice(Collaborators collaborators) : with_(std::move(collaborators)) {}

  /// Offers the configured modes; none is selected then.
  void Show();
  /// Offers the changed list of modes. The selected mode stays selected by its name.
  void Follow();
  /// Puts the required SNR of the selected mode into its field and into the parameter set.
  void Use();
  [[nodiscard]] bool Any() const { return SelectedMode() != nullptr; }
  /// The name of the selected mode; empty for none.
  [[nodiscard]] std::string Selected() const;
  /// The user typed an SNR: no mode is selected any more.
  void Clear() { with_.view.Select(OptionGroup::kModeSNRCombo, -1); }
  /// Selects the configured mode that comes nearest to a transceiver's mode. Returns false when
  /// there is none. Calls `changed` when another mode was selected.
  bool SelectNearest(const std::string& mode, const std::function<void()>& changed);

 private:
  [[nodiscard]] const ModeSettings* SelectedMode() const;

  Collaborators with_;
  std::vector<ModeSettings> modes_;  ///< as `ModeSNRCombo` offers them
};

}  // namespace skyhop
