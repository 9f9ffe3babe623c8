#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "spaceweather/download_procedure.h"
#include "spaceweather/value_origins.h"

namespace skyhop::CurrentConditionsModule {

/// The values of a current conditions bulletin.
struct Bulletin {
  // Nothing if the bulletin does not mention the value; empty if the value is not a non-negative
  // integer; otherwise the bulletin's text.
  std::optional<std::string> flux;
  std::optional<std::string> k_index;
};

[[nodiscard]] Bulletin ParseBulletin(std::string_view text);

/// The text of a bulletin for a window: its complete lines without headers and comments, separated
/// by carriage return and line feed.
[[nodiscard]] std::string BulletinText(std::string_view text);

/// Shows a bulletin.
class BulletinDisplay {
 public:
  virtual ~BulletinDisplay() = default;
  [[nodiscard]] virtual bool Visible() const = 0;
  /// Lines are separated by carriage return and line feed.
  virtual void SetBulletin(const std::string& text) = 0;
};

/// The current solar flux and K index.
class Conditions {
 public:
  /// All must outlive this object.
  Conditions(DownloadProcedure& procedure, DownloadHost& host, BulletinDisplay& display,
             ValueOrigins& origins, UserMessages& messages, Diagnostics& diagnostics)
      : procedure_(&procedure),
        host_(&host),
        display_(&display),
        origins_(&origins),
        messages_(&messages),
        diagnostics_(&diagnostics) {}

  /// Fetches the bulletin, puts its values into their boxes and, when its window is visible, the
  /// bulletin into the window. Reports failures to the user.
  void Update();

  /// Tells the user about a failure and logs it.
  void CurrentConditionsError(const std::string& message);

 private:
  void UseBulletin(const std::string& content, const std::string& url);
  void NoteOrigin(SolarValue value, const std::optional<std::string>& text, const std::string& url);

  DownloadProcedure* procedure_;
  DownloadHost* host_;
  BulletinDisplay* display_;
  ValueOrigins* origins_;
  UserMessages* messages_;
  Diagnostics* diagnostics_;
};

}  // namespace skyhop::CurrentConditionsModule
