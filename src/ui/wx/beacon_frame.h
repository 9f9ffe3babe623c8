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

/// The beacon window, from top to bottom: clock, warnings, list of bands, selection with check
/// boxes, beacon to listen for, note with the buttons that mark it, day, status.
class BeaconFrame : public ViewFrame<BeaconView> {
 public:
  /// `parent` may be null. The window is not shown.
  explicit BeaconFrame(wxWindow* parent);

  /// Sends the events of the window to `controller` from now on.
  void Attach(BeaconWindow& controller) { controller_ = &controller; }

  void SetTexts(const BeaconTexts& texts) override;
  void SetStatus(const std::string& text) override;
  void SetSelectBy(int index) override;
  void SetChoices(const std::vector<std::string>& texts, int index) override;
  void SetChecked(BeaconCheck check, bool checked) override;
  void Enable(BeaconButton button, bool enable) override;
  using SideFrame::Enable;
  [[nodiscard]] std::string Note() const override;
  void SetNote(const std::string& text) override;
  void Refresh() override { canvas_->Repaint(); }
  using SideFrame::Refresh;
  void StartTimer(std::chrono::milliseconds delay) override;
  void StopTimer() override { timer_.Stop(); }
  [[nodiscard]] std::optional<std::string> AskFile(const std::string& proposal) override;

 private:
  void MakeControls() override;
  void UserCloses() override;
  void Send(const BeaconEvent& event);
  void OnMarkKey(wxKeyEvent& event);
  void MakeList(wxWindow* parent);
  [[nodiscard]] wxSizer* MakeSelection(wxWindow* parent);
  [[nodiscard]] wxSizer* MakeMarks(wxWindow* parent);
  [[nodiscard]] wxSizer* MakeDayButtons(wxWindow* parent);
  [[nodiscard]] wxButton* MakeButton(wxWindow* parent, BeaconButton button);
  [[nodiscard]] wxStaticText* MakeLine(wxWindow* parent);
  void SetRows(const std::vector<BandRow>& rows);

  BeaconWindow* controller_ = nullptr;
  wxTimer timer_;
  std::vector<BandRow> rows_;  ///< shown in the list
  wxStaticText* clock_ = nullptr;
  wxStaticText* warning_ = nullptr;
  wxStaticText* problem_ = nullptr;
  wxListView* list_ = nullptr;
  wxChoice* select_by_ = nullptr;
  wxChoice* choices_ = nullptr;
  std::array<wxCheckBox*, kBeaconCheckWords.size()> checks_{};
  std::array<wxButton*, kBeaconButtonWords.size()> buttons_{};
  wxStaticText* target_ = nullptr;
  wxTextCtrl* note_ = nullptr;
  PaintedCanvas* canvas_ = nullptr;
  wxStaticText* status_ = nullptr;
};

}  // namespace skyhop
