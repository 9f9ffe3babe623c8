#pragma once

#include <string>
#include <vector>

#include "ui/shared/window_placement.h"

namespace skyhop {

/// The check boxes of the forecast window; each shows or hides a graph.
enum class ForecastCheck { kFluxCheck, kACheck, kKcheck };
inline constexpr int kForecastCheckCount = 3;

/// The caption of a check box; "&" precedes the letter of its shortcut.
[[nodiscard]] const char* Caption(ForecastCheck check);
/// The tool tip of a check box.
[[nodiscard]] const char* ToolTip(ForecastCheck check);

/// The forecast window `SolarForecast` without its rules: three check boxes in a row, the canvas
/// with the graphs, which fills the rest, and one line of text below it. The controller decides
/// everything. A window
///  - calls SolarForecast::Paint for the whole canvas whenever it has to be painted, with the size
///    of the canvas and the height of its font in the surface's pixels,
///  - calls Pointer_Move and Pointer_Leave, and a click on a check box's own handler,
///  - calls Form_Activate when it comes to the front,
///  - calls Form_QueryUnload instead of closing when the user closes it.
///
/// Setting a value here never raises the event of a user's input. Texts are UTF-8.
class ForecastView : public SideView {
 public:
  virtual void SetCaption(const std::string& caption) = 0;
  virtual void SetChecked(ForecastCheck check, bool checked) = 0;
  /// The line below the graphs: the day under the pointer, else the source of the forecast. If the
  /// text is too long for the line, the line cuts its end off and a tool tip shows it all.
  virtual void SetStatus(const std::string& text) = 0;
  /// Paints the graphs again.
  virtual void Refresh() = 0;
};

}  // namespace skyhop
