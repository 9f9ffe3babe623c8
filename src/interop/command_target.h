#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace skyhop {

/// A peer's options for a prediction, beside its values.
struct PeerRequest {
  bool mark_as_peers = false;      ///< turn on the first button of `DDEOption`
  std::optional<bool> short_path;  ///< true short, false long; nothing keeps the window's choice
};

/// What peers' commands do to the prediction window. Texts are as a peer sent them: the target
/// checks each one and leaves things as they are when it cannot use it.
class CommandTarget {
 public:
  virtual ~CommandTarget() = default;

  /// Makes the program close itself a little later.
  virtual void SetShutdownTrigger() = 0;
  /// Puts the program's windows back to their default places.
  virtual void ResetWindows(std::int32_t value) = 0;
  /// New values for the inputs of the next prediction.
  virtual void SetSpaceWeather(const std::string& flux, const std::string& k_index) = 0;
  virtual void SetTransmitterPower(const std::string& watts) = 0;
  /// Starts a prediction; `argument` is what followed the command.
  virtual void PredictForPeer(const PeerRequest& request, const std::string& argument) = 0;
  /// Predicts for one frequency, below 1000 in MHz, else in kHz.
  virtual void FreqPredictForPeer(const PeerRequest& request, const std::string& frequency,
                                  const std::string& mode, const std::string& snr) = 0;
};

/// A peer's request for a point prediction, whose answer goes back to it.
struct SNRRequest {
  std::int16_t sender = 0;  ///< the peer's role
  std::string mode;
  std::string snr;
  std::string fourth;  ///< value of the record's field 4: a tag that comes back with the answer
  std::string first;   ///< of field 1: the frequency, below 1000 in MHz, else in kHz
};

/// Takes the answers to such requests.
class SNRAnswers {
 public:
  virtual ~SNRAnswers() = default;
  /// Sends a record to the peer with this role. Not to be called from within a peer's command.
  virtual void Send(std::int16_t role, const std::string& record) = 0;
};

/// The point SNR prediction as the command server uses it.
class SNRService {
 public:
  virtual ~SNRService() = default;
  /// A required signal-to-noise ratio, corrected for use in a prediction.
  [[nodiscard]] virtual std::string ValidatedSNR(const std::string& snr) = 0;
  virtual void PredictSNR(const SNRRequest& request) = 0;
};

}  // namespace skyhop
