#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

#include "common/clock.h"
#include "common/diagnostics.h"
#include "common/pause.h"
#include "engine/deck_writer.h"
#include "engine/engine_job.h"
#include "engine/engine_launcher.h"
#include "engine/engine_search.h"
#include "engine/prediction_inputs.h"

namespace skyhop::IONCAPModule {

/// One frequency, now.
struct PointRequest {
  double frequency = 0;  ///< MHz, 1.6 to 60
  std::string mode;      ///< only passed on
  /// Stations, conditions and required SNR. Path and date of the set are not used.
  ParameterSet circuit;
};

/// What is predicted of one path.
struct PathReception {
  enum class State { kWaiting, kDone, kFailed };
  State state = State::kWaiting;
  float snr = 0;                  ///< dB in 1 Hz
  float reliability = 0;          ///< fraction of the days that reach the required SNR, 0 to 1
  std::string mode;               ///< such as "2F2"
  std::int16_t signal_power = 0;  ///< dBW at the receiver
  std::string problem;            ///< why there is nothing of that, for kFailed
};

/// What is predicted of a point.
struct PointReception {
  PointRequest request;
  int hour = 0;                        ///< UTC, 0 to 23
  std::array<PathReception, 2> paths;  ///< by path_option
  std::string engine;                  ///< as the results name it

  [[nodiscard]] bool Finished() const;
};

/// Predicts how one frequency is received at the current hour, by the short and the long path: a
/// deck, a batch file and an engine of the second folder for each, one after the other where the
/// engine cannot be given a run folder for each. Nothing here waits.
class PointSnr {
 public:
  using Time = EngineJob::Time;

  struct Collaborators {
    const EngineHost& host;
    DeckWriter& decks;
    EngineLauncher& launcher;
    Pause& pause;
    Diagnostics& diagnostics;
    const Clock& clock;
    std::filesystem::path program_folder;
  };

  explicit PointSnr(const Collaborators& collaborators);
  /// Ends runs in progress.
  ~PointSnr();
  PointSnr(const PointSnr&) = delete;
  PointSnr& operator=(const PointSnr&) = delete;

  /// Starts the engines; those of an earlier request are ended. Returns an empty text, or why not.
  [[nodiscard]] std::string PredictSNR(const PointRequest& request, Time now);

  /// Looks what the engines have done. Returns whether something has changed.
  bool Poll(Time now);

  /// Ends the engines; there is no answer then.
  void Cancel();

  [[nodiscard]] bool Running() const { return running_; }
  /// What is known of the last request.
  [[nodiscard]] const PointReception& Reception() const { return reception_; }

 private:
  /// The run of one path. It starts when `request` is there and nothing keeps it waiting.
  struct PathRun {
    EngineJob job;
    std::optional<EngineJob::Request> request;
  };

  [[nodiscard]] PredictionInputs Inputs(const PointRequest& request) const;
  void Start(const PointRequest& request, Time now);
  [[nodiscard]] EngineJob::Request Prepare(std::size_t path, PredictionInputs inputs,
                                           const EngineFinding& finding);
  void StartPath(std::size_t path, Time now);
  bool PollPath(std::size_t path, Time now);
  void ReadResults(const std::string& text, PathReception& reception);
  void Fail(std::size_t path, const std::string& problem);

  Collaborators with_;
  std::array<PathRun, 2> runs_;  ///< by path_option
  bool running_ = false;
  PointReception reception_;
};

/// A signal's power in dBm from that in dBW.
[[nodiscard]] int DecibelMilliwatts(std::int16_t decibel_watts);

/// The reading of a signal meter for a power in dBm: "S0" to "S9" in steps of 6 dB, above it
/// "S9+10". S9 is -73 dBm below 30 MHz and -93 dBm from there on, as IARU Region 1 has it.
[[nodiscard]] std::string SUnits(int decibel_milliwatts, double frequency);

}  // namespace skyhop::IONCAPModule
