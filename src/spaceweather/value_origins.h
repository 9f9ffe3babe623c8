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

  /// Restores the stored origins. Ignores those that cannot be read.
  void Load();

  /// Records that `text` was downloaded from `url` just now, and saves it. Throws the errors of the
  /// store.
  void Downloaded(SolarValue value, const std::string& text, const std::string& url);
  /// Records that the last attempt to download the value failed, for this run or until the next
  /// success.
  void Failed(SolarValue value, const std::string& reason);

  /// The description of `text`, the value in its box now: "downloaded 3 hours ago (21-Nov-26 10:05
  /// UTC) from <address>", "not downloaded so far", or how `text` differs from the downloaded
  /// value. Two lines if the last attempt failed.
  [[nodiscard]] std::string Describe(SolarValue value, const std::string& text) const;

  /// The last downloaded value: "118, 3 hours ago (21-Nov-26 10:05 UTC)", with its address if that
  /// was not `url`; "not downloaded so far" if there is none.
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
