#pragma once

#include <string>

#include "common/diagnostics.h"
#include "ui/shared/prediction_view.h"

namespace skyhop {

/// The window's caption and the notice across its chart.
class WindowStatus {
 public:
  WindowStatus(PredictionView& view, Diagnostics& diagnostics)
      : view_(&view), diagnostics_(&diagnostics) {}

  /// Sets the caption: `text` and, when there is an error log, its path.
  void UpdateCaption(const std::string& text);
  /// The caption of a window at rest: the program's name and version.
  [[nodiscard]] static std::string GetPropFormCaption();
  /// Shows in the caption what the program does; an empty text restores the caption at rest.
  void ShowActivity(const std::string& activity);
  /// Adds the error log to the caption as soon as there is one.
  void FollowErrorLog();

  void ShowNotice(const Notice& notice);
  /// Whether the last download of the sunspot number failed. The notice about it waits behind the
  /// notice about a prediction.
  void SetSunspotMissing(bool missing);
  /// The action of the notice that the window shows.
  [[nodiscard]] NoticeAction Action() const { return action_; }

 private:
  void UpdateNotice();

  PredictionView* view_;
  Diagnostics* diagnostics_;
  std::string caption_;
  std::string hint_;
  Notice notice_;  ///< about predictions
  bool sunspot_missing_ = false;
  NoticeAction action_ = NoticeAction::kNone;
};

}  // namespace skyhop
