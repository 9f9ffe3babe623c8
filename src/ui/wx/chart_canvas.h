#pragma once

#include <wx/bitmap.h>
#include <wx/window.h>

#include <functional>
#include <string>

#include "ui/prediction/chart/chart_pane.h"

namespace skyhop {

/// Shows the chart's pane: paints it into a bitmap when it changes and copies that to the screen,
/// passes pointer and keys on.
class ChartCanvas : public wxWindow, public ChartHost {
 public:
  /// `pane` must outlive the canvas. `show_readout` gets the texts for the status bar.
  ChartCanvas(wxWindow* parent, ChartPane& pane,
              std::function<void(const std::string&)> show_readout);
  ~ChartCanvas() override;
  ChartCanvas(const ChartCanvas&) = delete;
  ChartCanvas& operator=(const ChartCanvas&) = delete;

  void ChartChanged() override;
  void OverlayChanged(const Rectangle& area) override;
  void ShowReadout(const std::string& text) override { show_readout_(text); }

  /// Tool tips on the pane's parts can be switched off.
  void ShowToolTips(bool show);

  /// Whether the chart was painted as it is now.
  [[nodiscard]] bool Painted() const { return valid_; }

  /// The chart with its time index, as it is on the screen.
  [[nodiscard]] wxBitmap Picture();

 private:
  void OnPaint(wxPaintEvent& event);
  void OnSize(wxSizeEvent& event);
  void OnMotion(wxMouseEvent& event);
  void OnLeftDown(wxMouseEvent& event);
  void OnLeftUp(wxMouseEvent& event);
  void OnKeyDown(wxKeyEvent& event);
  void FollowTheme();
  void PaintBitmap();

  ChartPane* pane_;
  std::function<void(const std::string&)> show_readout_;
  wxBitmap bitmap_;
  bool valid_ = false;
  bool tool_tips_ = true;
  std::string tool_tip_;
};

}  // namespace skyhop
