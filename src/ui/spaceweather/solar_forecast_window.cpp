#include "ui/spaceweather/solar_forecast_window.h"

#include <cstdlib>

#include "common/dates.h"
#include "spaceweather/value_origins.h"

namespace skyhop {
namespace {

constexpr const char* kWindowName = "SolarForecast";

}  // namespace

const char* Caption(ForecastCheck check) {
  switch (check) {
    case ForecastCheck::kFluxCheck:
      return "Solar &Flux";
    case ForecastCheck::kACheck:
      return "&A index";
    case ForecastCheck::kKcheck:
      break;
  }
  return "&K index";
}

const char* ToolTip(ForecastCheck check) {
  switch (check) {
    case ForecastCheck::kFluxCheck:
      return "check to display solar flux data";
    case ForecastCheck::kACheck:
      return "check to display solarA-index data";
    case ForecastCheck::kKcheck:
      break;
  }
  return "check to display solarK-index data";
}

void SolarForecast::Form_Load() {
  with_.diagnostics.Trap("SolarForecast.Form_Load", [&] {
    loaded_ = true;
    with_.view.CreateControls();
    for (int check = 0; check < kForecastCheckCount; ++check) {
      const auto box = static_cast<ForecastCheck>(check);
      with_.view.SetChecked(box, Shown(box));
    }
    with_.view.SetPlacement(RestoreWindowPosition(kWindowName, with_.view.Placement(),
                                                  with_.view.Monitors(), with_.settings));
    with_.timer.Enable();
  });
}

void SolarForecast::Show() {
  with_.diagnostics.Trap("SolarForecast.Show", [&] {
    if (!loaded_) Form_Load();
    UpdateSolarGraphs();
    with_.view.ShowWindow();
  });
}

void SolarForecast::Form_Activate() {
  with_.diagnostics.Trap("SolarForecast.Form_Activate", [&] {
    if (with_.view.Visible()) with_.timer.Enable();
  });
}

void SolarForecast::Form_QueryUnload() {
  with_.diagnostics.Trap("SolarForecast.Form_QueryUnload", [&] {
    SavePosition();
    with_.view.HideWindow();
    with_.timer.Disable();
  });
}

void SolarForecast::Form_Unload() {
  // A window that was never shown has no place of its own.
  if (!loaded_) return;
  with_.diagnostics.Trap("SolarForecast.Form_Unload", [&] {
    SavePosition();
    with_.timer.Disable();
  });
}

void SolarForecast::SavePosition() {
  SaveWindowPosition(kWindowName, with_.view.Placement(), with_.settings, with_.diagnostics);
}

void SolarForecast::UpdateSolarGraphs() {
  with_.diagnostics.Trap("SolarForecast.UpdateSolarGraphs", [&] {
    with_.view.SetCaption(with_.forecast.Caption());
    Point_At(0);
    with_.view.SetStatus(StatusText());
    with_.view.Refresh();
  });
}

/// The source and age of the forecast, or the reason why there is none.
std::string SolarForecast::StatusText() const {
  if (!with_.forecast.Failure().empty()) return with_.forecast.Failure();
  const std::optional<UtcTime>& filled = with_.forecast.FilledAt();
  if (!filled) return {};
  return "Downloaded at " + MomentText(*filled) + " from " + with_.forecast.Source();
}

bool& SolarForecast::Shown(ForecastCheck check) {
  switch (check) {
    case ForecastCheck::kFluxCheck:
      return options_.flux;
    case ForecastCheck::kACheck:
      return options_.a_index;
    case ForecastCheck::kKcheck:
      break;
  }
  return options_.k_index;
}

void SolarForecast::Check_Click(ForecastCheck check, bool checked) {
  with_.diagnostics.Trap("SolarForecast.Check_Click", [&] {
    Shown(check) = checked;
    UpdateSolarGraphs();
  });
}

void SolarForecast::Pointer_Move(Point at) {
  with_.diagnostics.Trap("SolarForecast.Pointer_Move", [&] { Point_At(Chart().SlotAt(at)); });
}

void SolarForecast::Pointer_Leave() {
  with_.diagnostics.Trap("SolarForecast.Pointer_Leave", [&] { Point_At(0); });
}

void SolarForecast::Step(int days) {
  with_.diagnostics.Trap("SolarForecast.Step", [&] {
    const SolarForecastModule::ForecastTable& table = with_.forecast.Table();
    // Later days have lower slots; slot 0 is none.
    const int direction = days > 0 ? -1 : 1;
    const int last = static_cast<int>(SolarForecastModule::kFirstDaySlot);
    int slot = static_cast<int>(options_.pointed_slot);
    if (slot == 0) slot = days > 0 ? last + 1 : 0;
    std::size_t found = options_.pointed_slot;
    for (int left = std::abs(days); left > 0;) {
      slot += direction;
      if (slot < 1 || slot > last) break;
      const auto day = static_cast<std::size_t>(slot);
      if (!table.at(day).valid) continue;
      found = day;
      --left;
    }
    Point_At(found);
  });
}

void SolarForecast::Point_At(std::size_t slot) {
  if (slot == options_.pointed_slot) return;
  options_.pointed_slot = slot;
  with_.view.SetStatus(slot == 0 ? StatusText() : PointedText());
  with_.view.Refresh();
}

std::string SolarForecast::PointedText() const {
  return DayText(with_.forecast.Table().at(options_.pointed_slot));
}

void SolarForecast::SetPalette(const ChartPalette& palette) {
  options_.palette = palette;
  with_.view.Refresh();
}

ForecastChart SolarForecast::Chart() const {
  return {with_.forecast.Table(), options_};
}

void SolarForecast::Paint(Surface& surface, double width, double height, double text_size) {
  with_.diagnostics.Trap("SolarForecast.Paint", [&] {
    options_.width = width;
    options_.height = height;
    options_.text_size = text_size;
    options_.today = UtcDate(with_.clock.UtcNow());
    const std::string& failure = with_.forecast.Failure();
    options_.empty_text = failure.empty() ? "The forecast is being downloaded" : failure;
    Chart().Paint(surface);
  });
}

}  // namespace skyhop
