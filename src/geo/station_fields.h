#pragma once

#include <string>

namespace skyhop {

/// The inputs of the prediction window that describe the path, as the user typed them, and the
/// configured unit of distance.
class StationFields {
 public:
  virtual ~StationFields() = default;

  /// The user's own station.
  [[nodiscard]] virtual std::string LocalLat() const = 0;
  [[nodiscard]] virtual std::string LocalLon() const = 0;

  /// The distant station.
  [[nodiscard]] virtual std::string DXLat() const = 0;
  [[nodiscard]] virtual std::string DXLon() const = 0;

  /// True for the short path, false for the long one.
  [[nodiscard]] virtual bool ShortPath() const = 0;

  /// True for statute miles, false for kilometres.
  [[nodiscard]] virtual bool DistanceMiles() const = 0;
};

}  // namespace skyhop
