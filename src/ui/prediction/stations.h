#pragma once

#include <array>
#include <functional>
#include <optional>
#include <string>

#include "common/diagnostics.h"
#include "common/settings.h"
#include "engine/parameters.h"
#include "ui/prediction/input_fields.h"
#include "ui/shared/prediction_view.h"

namespace skyhop {

/// The two stations: keeps grid squares and coordinates in step, shows bearings and distance, saves
/// the stations.
class Stations : private IONCAPModule::ParametersWindow {
 public:
  struct Collaborators {
    PredictionView& view;
    InputFields& fields;
    IONCAPModule::Parameters& parameters;
    const Common::Settings& settings;
    Diagnostics& diagnostics;
  };

  explicit Stations(const Collaborators& collaborators);
  ~Stations() override { with_.parameters.Attach(nullptr); }
  Stations(const Stations&) = delete;
  Stations& operator=(const Stations&) = delete;

  /// Called after a station has moved in another way than by the user's coordinates.
  void SetMovedListener(std::function<void()> listener) { on_moved_ = std::move(listener); }

  /// The position of a station; nothing while its coordinates are not both valid.
  [[nodiscard]] std::optional<Position> PositionOf(Station station) const;
  [[nodiscard]] bool BothKnown() const {
    return PositionOf(Station::kLocal) && PositionOf(Station::kDX);
  }
  /// Marks the first coordinate that no prediction can be made with. Returns what is wrong with it,
  /// nothing when all four are valid.
  [[nodiscard]] std::optional<std::string> MarkInvalid();

  /// Updates the grid square from the coordinates.
  void UpdateGrid(Station station);
  /// Updates the coordinates from the grid square.
  void UpdateLatLon(Station station);
  /// Coordinates were written: updates squares, bearings and distance.
  void Follow();
  void UpdateLabels();

  /// Restores both stations and the path of the last run of the program.
  void Restore();
  /// Saves the stations at once: the program may end in other ways than by being closed.
  void Save();

 private:
  void ShowCoordinate(Station station, LatLonModule::Axis axis, const std::string& text) override;
  void ShowPrefix(const std::string& prefix) override;
  void RestoreWindow() override { with_.view.RestoreWindow(); }

  [[nodiscard]] std::optional<Position>& InStep(Station station) {
    return in_step_.at(static_cast<std::size_t>(station));
  }
  void RestoreSquare(Station station);
  [[nodiscard]] bool CanBeSaved(Station station) const;

  Collaborators with_;
  std::function<void()> on_moved_;
  bool following_ = false;
  /// The position that each station's grid square was made for.
  std::array<std::optional<Position>, 2> in_step_;
};

}  // namespace skyhop
