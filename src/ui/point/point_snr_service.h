#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "bands/bands.h"
#include "common/clock.h"
#include "common/diagnostics.h"
#include "engine/parameters.h"
#include "engine/point_snr.h"
#include "interop/command_target.h"
#include "interop/dde_common.h"
#include "ui/shared/configuration.h"
#include "ui/shared/prediction_view.h"
#include "ui/shared/program_services.h"

namespace skyhop {

/// The point prediction of the program with a window. It takes requests of the user, of peers and
/// for the transceiver's frequency, one at a time, shows their results and answers the peers. A new
/// request replaces a running one, whose peer gets an answer that says so.
///
/// A start may wait for a file; events arrive meanwhile. The newest of the requests that arrive
/// then begins when the start has ended.
class PointSnrService : public PointPrediction {
 public:
  /// How often the engines are looked at.
  static constexpr std::chrono::milliseconds kInterval{250};

  struct Collaborators {
    PredictionView& view;
    IONCAPModule::PointSnr& point;
    const IONCAPModule::Parameters& parameters;
    const Configuration& configuration;
    FreqDependentModule::BandTable& bands;
    SNRAnswers& answers;
    Diagnostics& diagnostics;
    const Clock& clock;
  };

  explicit PointSnrService(const Collaborators& collaborators)
      : with_(collaborators), records_(collaborators.diagnostics) {}

  void Predict(double frequency, const std::string& mode, const std::string& snr) override;
  void Follow(double frequency, const std::string& mode) override;
  [[nodiscard]] bool InputsChanged() override;
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

    friend bool operator==(const Wanted&, const Wanted&) = default;
  };
  struct Order {
    Wanted wanted;
    bool followed = false;  ///< by the transceiver's dial
    std::optional<SNRRequest> requester;
  };
  /// What a prediction rests on beside what was wanted.
  struct Basis {
    PredictionInputs inputs;
    int hour = 0;

    /// Whether an engine would answer the same.
    [[nodiscard]] bool SameAs(const Basis& other) const;
  };

  void Begin(const Order& order);
  void Start(const Order& order);
  [[nodiscard]] std::string RequiredSnr(const std::string& mode) const;
  [[nodiscard]] IONCAPModule::PointRequest RequestFor(const Wanted& wanted);
  [[nodiscard]] std::optional<Basis> BasisNow();
  [[nodiscard]] std::string CircuitNow() const;
  void StartTimer();
  void FollowWhenQuiet();
  void AnswerWhenFinished();
  void Answer(const std::string& problem);
  void Answer(const SNRRequest& request, const IONCAPModule::PointReception& reception,
              const std::string& problem);
  void RefuseNext(const std::string& problem);
  void SendAnswers();
  void DisplaySNR();

  Collaborators with_;
  DDECommon::Records records_;
  bool active_ = false;
  std::optional<Order> last_;   ///< what was asked for last
  std::optional<Basis> basis_;  ///< of that; nothing when the inputs could not be read
  std::string circuit_;         ///< of that, in words
  bool old_ = false;            ///< the basis has changed since
  std::string problem_;         ///< why it was not started
  std::optional<SNRRequest> requester_;
  bool starting_ = false;
  std::optional<Order> next_;  ///< came during a start
  bool ended_ = false;
  std::vector<std::pair<std::int16_t, std::string>> answers_;  ///< to be sent at the next tick
  std::optional<Wanted> dial_;      ///< the last report of the transceiver
  std::optional<Wanted> followed_;  ///< that, while it is still to be predicted
  int quiet_ticks_ = 0;
};

}  // namespace skyhop
