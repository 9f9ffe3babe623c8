#pragma once

#include <functional>
#include <string>

#include "common/diagnostics.h"
#include "ui/prediction/input_fields.h"
#include "ui/prediction/window_status.h"
#include "ui/shared/prediction_view.h"
#include "ui/shared/program_services.h"

namespace skyhop {

/// What downloads do to the window.
class DownloadPanel : private DownloadWindow {
 public:
  struct Collaborators {
    PredictionView& view;
    SpaceWeather& space_weather;
    InputFields& fields;
    WindowStatus& status;
    Diagnostics& diagnostics;
    std::function<void()> inputs_changed;
    std::function<void()> restore_caption;
  };

  explicit DownloadPanel(Collaborators collaborators);
  ~DownloadPanel() override { with_.space_weather.Attach(nullptr); }
  DownloadPanel(const DownloadPanel&) = delete;
  DownloadPanel& operator=(const DownloadPanel&) = delete;

  void EnableDownloads(bool enable) override;
  /// Downloads the sunspot number; a notice reports a failure.
  void DownloadSunspotNumber();
  /// The source of the value in a field; empty for fields that no download fills.
  [[nodiscard]] std::string OriginOf(TextField field) const;

 private:
  void ShowDownload(const std::string& status) override;
  void PutDownloaded(TextField field, const std::string& text) override;

  Collaborators with_;
};

}  // namespace skyhop
