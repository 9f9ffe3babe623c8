#pragma once

#include <array>
#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "ui/shared/window_placement.h"

namespace skyhop {

/// The check boxes of the beacon window.
enum class BeaconCheck { kFollow, kRotate, kLookUp, kSelectBearing, kCustomSchedule };
inline constexpr int kBeaconCheckCount = 5;

enum class BeaconButton { kHeard, kNotHeard, kExport, kReload, kEarlier, kLater };
inline constexpr int kBeaconButtonCount = 6;

/// What beacons are selected by, in the order of the list that offers it.
inline constexpr std::array<std::string_view, 3> kSelectByTexts = {"Band", "Call", "Direction"};

/// The words on a control; "&" stands before the letter of its shortcut.
[[nodiscard]] std::string_view Caption(BeaconCheck check);
[[nodiscard]] std::string_view Caption(BeaconButton button);
/// The words that explain it while the pointer rests on it.
[[nodiscard]] std::string_view ToolTip(BeaconCheck check);
[[nodiscard]] std::string_view ToolTip(BeaconButton button);

/// The columns of the list of bands.
inline constexpr std::array<std::string_view, 9> kBandColumns = {
    "kHz", "Now", "Left", "Place", "Short path", "Long path", "There", "Predicted", "Next"};

/// What happens on one band, a text for each column.
struct BandRow {
  std::array<std::string, kBandColumns.size()> texts;
  bool followed = false;  ///< the transmission to listen for is this one

  friend bool operator==(const BandRow&, const BandRow&) = default;
};

/// The beacon window without its rules: the clock and what seems off with it, the list of bands,
/// what beacons are selected by and which, the check boxes, the beacon to listen for, a note with
/// the buttons that mark it, the canvas with the day, and one line of text below. The controller
/// decides everything; a window
///  - calls BeaconWindow::Paint for the whole canvas whenever it has to be painted, with the size
///    of the canvas and the height of its font in the surface's pixels,
///  - calls Timer_Tick when the timer has run down, and the handlers of what the user does,
///  - calls Form_QueryUnload instead of closing when the user closes it.
///
/// Setting a value here never raises the event that a user's own input would. Texts are UTF-8.
class BeaconView {
 public:
  virtual ~BeaconView() = default;

  virtual void SetClock(const std::string& text) = 0;
  /// What is wrong with the clock, and with the files; an empty text hides its line.
  virtual void SetWarning(const std::string& text) = 0;
  virtual void SetProblem(const std::string& text) = 0;
  virtual void SetRows(const std::vector<BandRow>& rows) = 0;
  virtual void SetTarget(const std::string& text) = 0;
  virtual void SetStatus(const std::string& text) = 0;

  /// `index` into kSelectByTexts.
  virtual void SetSelectBy(int index) = 0;
  /// What can be selected that way, and which one is.
  virtual void SetChoices(const std::vector<std::string>& texts, int index) = 0;
  virtual void SetChecked(BeaconCheck check, bool checked) = 0;
  virtual void Enable(BeaconButton button, bool enable) = 0;
  [[nodiscard]] virtual std::string Note() const = 0;
  virtual void SetNote(const std::string& text) = 0;

  /// The day has to be painted anew.
  virtual void Refresh() = 0;

  /// Calls Timer_Tick once after that time; a timer that runs starts anew.
  virtual void StartTimer(std::chrono::milliseconds delay) = 0;
  virtual void StopTimer() = 0;

  /// Asks for the file to export to, which may exist. Nothing when the user changes their mind.
  [[nodiscard]] virtual std::optional<std::string> AskFile(const std::string& proposal) = 0;

  /// Shows the window in front of the others; it may be shown already.
  virtual void ShowWindow() = 0;
  virtual void HideWindow() = 0;
  [[nodiscard]] virtual bool Visible() const = 0;

  [[nodiscard]] virtual WindowPlacement Placement() const = 0;
  virtual void SetPlacement(const WindowPlacement& placement) = 0;
  /// The monitors of the desktop; the main one comes first.
  [[nodiscard]] virtual std::vector<Monitor> Monitors() const = 0;
};

}  // namespace skyhop
