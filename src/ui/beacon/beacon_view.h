#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "ui/shared/window_placement.h"

namespace skyhop {

/// The check boxes of the beacon window.
enum class BeaconCheck { kFollow, kRotate, kLookUp, kSelectBearing, kCustomSchedule };

enum class BeaconButton { kHeard, kNotHeard, kExport, kReload, kEarlier, kLater };

/// The words on a control and its tool tip. "&" precedes the letter of the shortcut.
struct BeaconWords {
  std::string_view caption;
  std::string_view tool_tip;
};

/// In the order of BeaconCheck.
inline constexpr std::array<BeaconWords, 5> kBeaconCheckWords = {{
    {"&Follow", "tune the transceiver to each beacon as it begins, in CW"},
    {"&Turn antenna", "while following, turn the antenna to each beacon along the short path"},
    {"Look &up", "while following, look each beacon up in the location application"},
    {"Show &bearing", "while following, show each beacon's bearing on the map"},
    {"&Custom schedule", "use the schedule in CustomBeaconSchedule.txt"},
}};

/// In the order of BeaconButton.
inline constexpr std::array<BeaconWords, 6> kBeaconButtonWords = {{
    {"&Heard (F2)", "note that you hear the beacon that is transmitting now"},
    {"&Not heard (F3)", "note that you do not hear the beacon that is transmitting now"},
    {"&Export...", "write the marks of the shown day into a file of comma-separated values"},
    {"&Reload", "read the beacon files again"},
    {"E&arlier", "show the day before"},
    {"&Later", "show the day after"},
}};

/// The entries of the list "Select by".
inline constexpr std::array<std::string_view, 3> kSelectByTexts = {"Band", "Call", "Direction"};

/// The columns of the list of bands.
inline constexpr std::array<std::string_view, 9> kBandColumns = {
    "kHz", "Now", "Left", "Place", "Short path", "Long path", "There", "Predicted", "Next"};

/// The present transmission on one band, a text for each column.
struct BandRow {
  std::array<std::string, kBandColumns.size()> texts;
  bool followed = false;  ///< the user listens for this transmission

  friend bool operator==(const BandRow&, const BandRow&) = default;
};

/// The texts that change with the time.
struct BeaconTexts {
  std::string clock;
  std::string warning;  ///< a fault of the clock; the view hides its line if it is empty
  std::string problem;  ///< a fault in the beacon files; the same
  std::vector<BandRow> rows;
  std::string target;  ///< the beacon to listen for
};

/// One event of the beacon window.
struct BeaconEvent {
  enum Kind {
    kTimerTick,
    kSelectByClick,
    kChoiceClick,
    kCheckClick,
    kButtonClick,
    kFormQueryUnload,  ///< the user closes the window
  };

  Kind kind = kTimerTick;
  int index = -1;  ///< selected entry of the list; the view shows it already
  BeaconCheck check{};
  bool checked = false;  ///< new state of `check`; the view shows it already
  BeaconButton button{};
  /// Set if a key pressed `button`: the time of the key event.
  std::optional<std::chrono::milliseconds> key_time{};
};

/// The controls of the beacon window: BeaconTexts, the selection, the check boxes, the buttons, a
/// note for a mark, the canvas with the day and a status line.
///
/// A view passes every event to BeaconWindow::Handle and paints its canvas with
/// BeaconWindow::Paint. It does not close when the user closes it. Setting a value here raises no
/// event. Texts are UTF-8.
class BeaconView : public SideView {
 public:
  virtual void SetTexts(const BeaconTexts& texts) = 0;
  virtual void SetStatus(const std::string& text) = 0;

  /// `index` into kSelectByTexts.
  virtual void SetSelectBy(int index) = 0;
  /// Offers `texts` for selection and selects one of them, none if `index` is -1.
  virtual void SetChoices(const std::vector<std::string>& texts, int index) = 0;
  virtual void SetChecked(BeaconCheck check, bool checked) = 0;
  virtual void Enable(BeaconButton button, bool enable) = 0;
  [[nodiscard]] virtual std::string Note() const = 0;
  virtual void SetNote(const std::string& text) = 0;

  /// Paints the canvas again.
  virtual void Refresh() = 0;

  /// Raises kTimerTick once after `delay`. Restarts a timer that runs.
  virtual void StartTimer(std::chrono::milliseconds delay) = 0;
  virtual void StopTimer() = 0;

  /// Asks the user for a file to export to; it may exist. Nothing if the user cancels.
  [[nodiscard]] virtual std::optional<std::string> AskFile(const std::string& proposal) = 0;
};

}  // namespace skyhop
