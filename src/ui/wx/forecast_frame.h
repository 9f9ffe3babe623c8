#pragma once

#include <wx/checkbox.h>
#include <wx/stattext.h>

#include <array>

#include "ui/spaceweather/forecast_view.h"
#include "ui/wx/forecast_canvas.h"
#include "ui/wx/side_frame.h"

namespace skyhop {

/// The forecast window: the check boxes of its graphs in a row, the graphs, one line of text.
class ForecastFrame : public ViewFrame<ForecastView> {
 public:
  /// `parent` may be null. The window is not shown.
  explicit ForecastFrame(wxWindow* parent);

  /// Sends the window's events to `controller` from now on; it must outlive the window.
  void Attach(SolarForecast& controller) { controller_ = &controller; }

  void SetCaption(const std::string& caption) override;
  void SetChecked(ForecastCheck check, bool checked) override;
  void SetStatus(const std::string& text) override;
  void Refresh() override { canvas_->Repaint(); }
  using SideFrame::Refresh;

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
