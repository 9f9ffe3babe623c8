#include "ui/prediction/download_panel.h"

#include <utility>

namespace skyhop {

DownloadPanel::DownloadPanel(Collaborators collaborators) : with_(std::move(collaborators)) {
  with_.space_weather.Attach(this);
}

void DownloadPanel::DownloadSunspotNumber() {
  with_.space_weather.DownloadSSN();
  with_.status.SetSunspotMissing(with_.space_weather.SunspotNumberFailed());
}

void DownloadPanel::EnableDownloads(bool enable) {
  with_.diagnostics.Trap("IonCap.EnableDownloads", [&] {
    const bool possible = enable && with_.space_weather.Available();
    for (const Button button : {Button::kForecastCmd, Button::kCurrentCmd, Button::kUpdateSFICmd,
                                Button::kUpdateSSNCmd}) {
      with_.view.Enable(button, possible);
    }
  });
}

void DownloadPanel::ShowDownload(const std::string& status) {
  with_.diagnostics.Trap("IonCap.ShowDownload", [&] {
    if (status.empty()) return with_.restore_caption();
    with_.status.ShowActivity(status);
  });
}

void DownloadPanel::PutDownloaded(TextField field, const std::string& text) {
  with_.diagnostics.Trap("IonCap.PutDownloaded", [&] {
    with_.fields.Put(field, text);
    with_.inputs_changed();
  });
}

std::string DownloadPanel::OriginOf(TextField field) const {
  return with_.diagnostics.Trap("IonCap.OriginOf", std::string(),
                                [&] { return with_.space_weather.OriginOf(field); });
}

}  // namespace skyhop
