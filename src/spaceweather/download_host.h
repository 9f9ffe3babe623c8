#pragma once

#include <string>

namespace skyhop {

/// What can be downloaded.
enum class DownloadKind { kForecast, kSunspotNumber, kCurrentConditions };

/// The prediction's inputs that downloads supply.
enum class SolarValue { kFlux, kKindex, kSunspotNumber };
inline constexpr int kSolarValueCount = 3;

/// The main window as the downloads use it.
class DownloadHost {
 public:
  virtual ~DownloadHost() = default;

  /// The address that the user configured, as it was typed.
  [[nodiscard]] virtual std::string Url(DownloadKind kind) const = 0;

  /// Enables or disables, all together, every command that starts a download.
  virtual void EnableDownloads(bool enable) = 0;

  /// Shows a status in the main window's caption; an empty text restores the caption.
  virtual void ShowStatus(const std::string& status) = 0;

  /// Puts a text into the main window's box for the value; an empty text empties the box.
  virtual void PutValue(SolarValue value, const std::string& text) = 0;
};

}  // namespace skyhop
