#pragma once

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/listctrl.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>
#include <wx/timer.h>

#include <array>

#include "ui/beacon/beacon_view.h"
#include "ui/beacon/beacon_window.h"
#include "ui/wx/painted_canvas.h"
#include "ui/wx/side_frame.h"

namespace skyhop {

/// The beacon window: clock and warnings, the list of bands, the selection with its check boxes,
/// the beacon to listen for with the buttons that mark it, the day.
class BeaconFrame : public SideFrame, public BeaconView {
 public:
  /// `parent` may be null. The window is not shown.
  explicit BeaconFrame(wxWindow* parent);

  /// The window's events go to `controller` from now on; it must outlive the window.
  void Attach(BeaconWindow& controller);
  /// Tool tips can be switched off.
  void ShowToolTips(bool show) {
    WithControls([this, show] { PutToolTips(show); });
  }

  void SetClock(const std::string& text) override;
  void SetWarning(const std::string& text) override;
  void SetProblem(const std::string& text) override;
  void SetRows(const std::vector<BandRow>& rows) override;
  void SetTarget(const std::string& text) override;
  void SetStatus(const std::string& text) override;
  void SetSelectBy(int index) override;
  void SetChoices(const std::vector<std::string>& texts, int index) override;
  void SetChecked(BeaconCheck check, bool checked) override;
  void Enable(BeaconButton button, bool enable) override;
  using SideFrame::Enable;
  [[nodiscard]] std::string Note() const override;
  void SetNote(const std::string& text) override;
  void Refresh() override {
    if (Furnished()) canvas_->Repaint();
  }
  using SideFrame::Refresh;
  void StartTimer(std::chrono::milliseconds delay) override;
  void StopTimer() override { timer_.Stop(); }
  [[nodiscard]] std::optional<std::string> AskFile(const std::string& proposal) override;
  void ShowWindow() override { BringUp(); }
  void HideWindow() override { Hide(); }
  [[nodiscard]] bool Visible() const override { return IsShown(); }
  [[nodiscard]] WindowPlacement Placement() const override { return NormalPlaceOf().Placement(); }
  void SetPlacement(const WindowPlacement& placement) override { NormalPlaceOf().Put(placement); }
  [[nodiscard]] std::vector<Monitor> Monitors() const override { return DesktopMonitors(); }

 private:
  void MakeControls() override;
  void UserCloses() override;
  void OnMarkKey(wxKeyEvent& event);
  void MakeList(wxWindow* parent);
  [[nodiscard]] wxSizer* MakeSelection(wxWindow* parent);
  [[nodiscard]] wxSizer* MakeMarks(wxWindow* parent);
  [[nodiscard]] wxSizer* MakeDayButtons(wxWindow* parent);
  [[nodiscard]] wxButton* MakeButton(wxWindow* parent, BeaconButton button);
  [[nodiscard]] wxStaticText* MakeLine(wxWindow* parent);
  void PutToolTips(bool show);
  void PutRows(const std::vector<BandRow>& rows);

  BeaconWindow* controller_ = nullptr;
  wxTimer timer_;
  int mark_key_ = 0;           ///< the one pressed last
  long mark_key_time_ = 0;     ///< ms of the events' own clock
  std::vector<BandRow> rows_;  ///< as the list shows them
  wxStaticText* clock_ = nullptr;
  wxStaticText* warning_ = nullptr;
  wxStaticText* problem_ = nullptr;
  wxListView* list_ = nullptr;
  wxChoice* select_by_ = nullptr;
  wxChoice* choices_ = nullptr;
  std::array<wxCheckBox*, kBeaconCheckCount> checks_{};
  std::array<wxButton*, kBeaconButtonCount> buttons_{};
  wxStaticText* target_ = nullptr;
  wxTextCtrl* note_ = nullptr;
  PaintedCanvas* canvas_ = nullptr;
  wxStaticText* status_ = nullptr;
};

}  // namespace skyhop
