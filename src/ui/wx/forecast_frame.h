#pragma once

#include <wx/checkbox.h>
#include <wx/stattext.h>

#include <array>

#include "ui/spaceweather/forecast_view.h"
#include "ui/wx/forecast_canvas.h"
#include "ui/wx/side_frame.h"

namespace skyhop {

/// The forecast window: the check boxes of its graphs in a row, the graphs, one line of text.
class ForecastFrame : public SideFrame, public ForecastView {
 public:
  /// `parent` may be null. The window is not shown.
  explicit ForecastFrame(wxWindow* parent);

  /// Sends the window's events to `controller` from now on; it must outlive the window.
  void Attach(SolarForecast& controller);
  /// Switches the tool tips of the check boxes on or off.
  void ShowToolTips(bool show);

  void SetCaption(const std::string& caption) override;
  void SetChecked(ForecastCheck check, bool checked) override;
  void SetStatus(const std::string& text) override;
  void Refresh() override {
    if (Furnished()) canvas_->Repaint();
  }
  using SideFrame::Refresh;
  void ShowWindow() override { BringUp(); }
  void HideWindow() override { Hide(); }
  [[nodiscard]] bool Visible() const override { return IsShown(); }
  [[nodiscard]] WindowPlacement Placement() const override { return NormalPlaceOf().Placement(); }
  void SetPlacement(const WindowPlacement& placement) override { NormalPlaceOf().Put(placement); }
  [[nodiscard]] std::vector<Monitor> Monitors() const override { return DesktopMonitors(); }

 private:
  void MakeControls() override;
  void UserCloses() override;
  [[nodiscard]] wxSizer* MakeChecks(wxWindow* parent);

  SolarForecast* controller_ = nullptr;
  std::array<wxCheckBox*, kForecastCheckCount> checks_{};
  ForecastCanvas* canvas_ = nullptr;
  wxStaticText* status_ = nullptr;
};

}  // namespace skyhop
