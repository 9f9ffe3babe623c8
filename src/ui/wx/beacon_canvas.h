#pragma once

#include <wx/bitmap.h>
#include <wx/window.h>

#include "ui/beacon/beacon_window.h"

namespace skyhop {

/// Shows the day of the beacons.
class BeaconCanvas : public wxWindow {
 public:
  explicit BeaconCanvas(wxWindow* parent);

  /// Who paints from now on; must outlive the canvas.
  void Attach(BeaconWindow& controller);
  /// What is shown has changed.
  void Repaint();

  /// It shows, and has nothing to do for the keyboard.
  [[nodiscard]] bool AcceptsFocus() const override { return false; }

 private:
  void OnPaint(wxPaintEvent& event);
  void FollowTheme();

  BeaconWindow* controller_ = nullptr;
  wxBitmap bitmap_;
  bool valid_ = false;
};

}  // namespace skyhop
