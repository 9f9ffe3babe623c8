#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "common/diagnostics.h"
#include "engine/point_snr.h"
#include "interop/command_target.h"
#include "interop/dde_common.h"
#include "ui/prediction/bands.h"
#include "ui/prediction/configuration.h"
#include "ui/prediction/prediction_view.h"
#include "ui/prediction/program_services.h"

namespace skyhop {

/// The point prediction of the program with a window: takes requests from the user, from the
/// transceiver's frequency and from peers, one after the other, shows what comes of them and
/// answers the peers. A new request replaces one that is running; whoever asked for that is told.
class PointSnrService : public PointPrediction {
 public:
  /// How often the engines are looked at.
  static constexpr std::chrono::milliseconds kInterval{250};

  /// All must outlive this object.
  struct Collaborators {
    PredictionView& view;
    IONCAPModule::PointSnr& point;
    const PredictionPanel& panel;
    const Configuration& configuration;
    FreqDependentModule::BandTable& bands;
    SNRAnswers& answers;
    Diagnostics& diagnostics;
  };

  explicit PointSnrService(const Collaborators& collaborators)
      : with_(collaborators), records_(collaborators.diagnostics) {}

  void Predict(double frequency, const std::string& mode, const std::string& snr) override;
  void Follow(double frequency, const std::string& mode) override;
  void SNRExecuteTimer_Tick() override;
  void SetDisplayActive(bool active) override;
  void Terminate() override;
  [[nodiscard]] std::string ValidatedSNR(const std::string& snr) override;
  void PredictSNR(const SNRRequest& request) override;

 private:
  struct Wanted {
    double frequency = 0;
    std::string mode;
    std::string snr;  ///< empty: the one that the mode needs
  };

  void Begin(const Wanted& wanted, const std::optional<SNRRequest>& requester);
  [[nodiscard]] std::string RequiredSnr(const std::string& mode) const;
  [[nodiscard]] IONCAPModule::PointRequest RequestFor(const Wanted& wanted);
  void FollowWhenQuiet();
  void AnswerWhenFinished();
  void Answer(const std::string& problem);
  void DisplaySNR();

  Collaborators with_;
  DDECommon::Records records_;
  bool active_ = false;
  std::string problem_;  ///< why the last request was not started
  bool asked_ = false;   ///< there was a request
  std::optional<SNRRequest> requester_;
  std::vector<std::pair<std::int16_t, std::string>> answers_;  ///< to be sent at the next tick
  std::optional<Wanted> followed_;
  int quiet_ticks_ = 0;
};

}  // namespace skyhop
