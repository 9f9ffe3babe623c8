#pragma once

#include <functional>
#include <optional>
#include <string>

#include "common/diagnostics.h"
#include "interop/command_target.h"
#include "ui/prediction/input_fields.h"
#include "ui/prediction/point_panel.h"
#include "ui/prediction/predict_command.h"
#include "ui/shared/prediction_view.h"
#include "ui/shared/program_services.h"

namespace skyhop {

/// Executes the commands of peers. A text that a user could not have entered is logged and changes
/// nothing.
class PeerCommands : public CommandTarget {
 public:
  struct Collaborators {
    PredictionView& view;
    InputFields& fields;
    PointPanel& point;
    PredictCommand& predict;
    PeerLinks& peers;
    ConfigurationWindow& configuration_window;
    Diagnostics& diagnostics;
  };

  explicit PeerCommands(const Collaborators& collaborators) : with_(collaborators) {}

  /// Called when a peer has chosen the path.
  void SetPathListener(std::function<void()> listener) { on_path_ = std::move(listener); }

  void SetShutdownTrigger() override;
  void ResetWindows(std::int32_t value) override;
  void SetSpaceWeather(const std::string& flux, const std::string& k_index) override;
  void SetTransmitterPower(const std::string& watts) override;
  void PredictForPeer(const PeerRequest& request, const std::string& argument) override;
  void FreqPredictForPeer(const PeerRequest& request, const std::string& frequency,
                          const std::string& mode, const std::string& snr) override;

  /// Starts the prediction that a peer asked for during another one. Path and inputs are those of
  /// now, so that the chart shows one circuit at a time.
  void PredictForWaitingPeer();
  void ForgetWaitingPeer() { waiting_.reset(); }

 private:
  /// A command to predict, with what followed it.
  struct Waiting {
    PeerRequest request;
    std::string argument;
  };

  void ChooseAsRequested(const PeerRequest& request);

  Collaborators with_;
  std::function<void()> on_path_;
  /// The command that is executed when the prediction in progress has ended.
  std::optional<Waiting> waiting_;
};

}  // namespace skyhop
