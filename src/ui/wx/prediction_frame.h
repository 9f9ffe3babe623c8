#pragma once

#include <wx/frame.h>
#include <wx/notebook.h>
#include <wx/timer.h>

#include <array>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "ui/prediction/ion_cap.h"
#include "ui/shared/prediction_view.h"
#include "ui/wx/chart_canvas.h"
#include "ui/wx/control_set.h"
#include "ui/wx/least_size.h"
#include "ui/wx/normal_place.h"
#include "ui/wx/notice_bar.h"
#include "ui/wx/snr_panel.h"

namespace skyhop {

/// The main window: tabs with the inputs above, commands at the right, the chart in the remaining
/// room. Holds no rules; everything that the user does goes to the controller.
class PredictionFrame : public wxFrame, private ControlEvents {
 public:
  /// `pane` must outlive the frame; `tie_label` ties captions to fields for screen readers.
  PredictionFrame(ChartPane& pane, ControlSet::TieLabel tie_label);
  ~PredictionFrame() override;
  PredictionFrame(const PredictionFrame&) = delete;
  PredictionFrame& operator=(const PredictionFrame&) = delete;

  /// Sends the events to `controller` from now on; null for none.
  void Attach(IonCap* controller) { controller_ = controller; }
  /// Asked before the window closes: as long as it returns true, closing waits.
  void SetBusyQuery(std::function<bool()> query) { busy_ = std::move(query); }
  /// Called when the window is to close but has to wait: ends what it waits for where that can be
  /// ended.
  void SetBusyCancel(std::function<void()> cancel) { cancel_busy_ = std::move(cancel); }
  /// What the system needs before the window is shown for the first time: gets the window's native
  /// handle and size.
  void SetShowPreparation(std::function<void(void*, int, int)> prepare) {
    prepare_show_ = std::move(prepare);
  }
  void PrepareToShow();
  /// Waits until the shown window is painted, but not long.
  void AwaitPaint();
  /// What is done when the controller wants the program to end; at first the window is closed.
  void SetEndListener(std::function<void()> listener) { on_end_request_ = std::move(listener); }
  void RequestEnd();
  /// Called after the window has been closed.
  void SetClosedListener(std::function<void()> listener) { on_closed_ = std::move(listener); }

  [[nodiscard]] PredictionView& View() { return *view_; }
  [[nodiscard]] ControlSet& Controls() { return *controls_; }
  [[nodiscard]] ChartCanvas& Canvas() { return *canvas_; }

  /// The size and place of a fresh installation.
  void PutToDefaultPlace();

  // For the view.
  void ShowNotice(const Notice& notice);
  void ShowTab(Tab tab);
  void SetWebPages(std::span<const WebPage> pages);
  void SetStatus(const std::string& text);
  void SetClock(const std::string& text);
  void ShowSnr(const SnrDisplay& display);
  [[nodiscard]] wxTimer& TimerOf(WindowTimer timer) {
    return *timers_.at(static_cast<std::size_t>(timer));
  }
  [[nodiscard]] NormalPlace& Place() { return place_; }

 private:
  class MenuMaker;
  static constexpr int kMostWebPages = 4;

  void Clicked(Button button) override;
  void Chosen(OptionGroup group) override;
  void Toggled(CheckBox box) override;
  [[nodiscard]] bool Accepts(TextField field, char32_t key) override;
  void Entered(TextField field) override;
  bool Left(TextField field) override;
  void Changed(TextField field) override;
  void DoubleClicked(TextField field) override;
  [[nodiscard]] std::string Origin(TextField field) override;

  void Assemble(ChartPane& pane);
  [[nodiscard]] wxNotebook* MakeTabs();
  void FillPage(std::size_t page);
  void MakeAllControls();
  [[nodiscard]] wxSize DefaultSize() const;
  [[nodiscard]] wxSizer* MakeChartOptions(wxWindow* parent);
  void MakeMenu();
  void Ticked(WindowTimer timer);
  void ShowReadout(const std::string& text);
  void UpdateStatusBar();
  void OnClose(wxCloseEvent& event);

  IonCap* controller_ = nullptr;
  std::function<bool()> busy_;
  std::function<void()> cancel_busy_;
  std::function<void()> on_closed_;
  std::function<void()> on_end_request_;
  std::function<void(void*, int, int)> prepare_show_;
  std::unique_ptr<ControlSet> controls_;
  std::unique_ptr<PredictionView> view_;
  std::array<std::unique_ptr<wxTimer>, kWindowTimerCount> timers_;
  wxTimer close_timer_;
  wxWindow* base_ = nullptr;  ///< holds all controls
  wxNotebook* tabs_ = nullptr;
  NoticeBar* notice_ = nullptr;
  SnrPanel* snr_ = nullptr;
  ChartCanvas* canvas_ = nullptr;
  ChartPane* pane_;
  wxMenu* weather_menu_ = nullptr;  ///< the pages of the web are below its commands
  std::vector<wxMenuItem*> web_items_;
  int first_web_id_ = wxWindow::NewControlId(kMostWebPages);
  std::string status_;
  std::string readout_;
  NormalPlace place_;
  LeastSize least_size_;
};

}  // namespace skyhop
