#pragma once

#include <array>
#include <optional>
#include <string>

#include "common/clock.h"
#include "common/settings.h"
#include "spaceweather/download_host.h"

namespace skyhop {

/// Where the prediction's solar values come from and how old they are. Kept in the settings, since
/// the values themselves outlive the program as well.
class ValueOrigins {
 public:
  /// Both must outlive this object.
  ValueOrigins(const Common::Settings& settings, const Clock& clock)
      : settings_(&settings), clock_(&clock) {}

  /// Restores what is stored. What cannot be read counts as not there.
  void Load();

  /// `text` came from `url` just now. Saved at once; throws what the store throws.
  void Downloaded(SolarValue value, const std::string& text, const std::string& url);
  /// The last attempt to download the value failed, for the rest of this run or until the next one.
  void Failed(SolarValue value, const std::string& reason);

  /// What to tell about `text`, the value in its box now: "downloaded 3 hours ago (21-Nov-26 10:05
  /// UTC) from <address>", or what else is known. More than one line when the last attempt failed.
  [[nodiscard]] std::string Describe(SolarValue value, const std::string& text) const;

  /// What the address for the value gave last: "118, 3 hours ago (21-Nov-26 10:05 UTC)", and from
  /// where when that was not `url`; "not downloaded so far" for nothing.
  [[nodiscard]] std::string Last(SolarValue value, const std::string& url) const;
  /// "; last attempt 2 minutes ago: <reason>" when it failed, else empty.
  [[nodiscard]] std::string LastFailure(SolarValue value) const;

 private:
  struct Origin {
    std::string text;
    std::string url;
    UtcTime time;
  };
  struct Failure {
    std::string reason;
    UtcTime time;
  };

  const Common::Settings* settings_;
  const Clock* clock_;
  std::array<std::optional<Origin>, kSolarValueCount> origins_;
  std::array<std::optional<Failure>, kSolarValueCount> failures_;
};

/// How long ago something was, in the largest fitting unit: "just now", "1 minute ago", "3 hours
/// ago", "12 days ago".
[[nodiscard]] std::string AgeText(UtcTime then, UtcTime now);

/// "21-Nov-26 10:05 UTC".
[[nodiscard]] std::string MomentText(UtcTime time);

}  // namespace skyhop
