#pragma once

#include <array>
#include <chrono>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "ui/shared/controls.h"
#include "ui/shared/window_placement.h"

namespace skyhop {

/// The tabs of the window, in their order.
enum class Tab { kParameters, kTransmitter, kReceiver, kConditions, kPrediction };

/// A message across the chart.
struct Notice {
  enum class Kind {
    kNone,     ///< the chart shows the last prediction
    kEmpty,    ///< there was no prediction yet: what to do
    kRunning,  ///< an engine works
    kFailed,   ///< why there is no new prediction
    kWarning,  ///< the chart shows the last prediction, which needs an explanation
  };
  Kind kind = Kind::kNone;
  std::string text;
  NoticeAction action = NoticeAction::kNone;

  friend bool operator==(const Notice&, const Notice&) = default;
};

/// A web page that the menu offers.
struct WebPage {
  int number = 0;     ///< 0 to 3
  std::string title;  ///< as the menu shows it
  std::string url;

  friend bool operator==(const WebPage&, const WebPage&) = default;
};

/// A path's line of the display; texts with their units, empty while the engine works.
struct SnrRow {
  std::string path;
  std::string snr;
  std::string margin;  ///< above what is required, with its sign
  std::string reliability;
  std::string mode;
  std::string signal;
  std::string problem;   ///< in the place of all these
  bool reached = false;  ///< the SNR is at least the required one

  friend bool operator==(const SnrRow&, const SnrRow&) = default;
};

/// What the window shows of the point prediction.
struct SnrDisplay {
  bool active = false;
  /// What is predicted, or why nothing is.
  std::string headline;
  bool old = false;            ///< inputs have changed since
  std::string engine;          ///< who computed it; empty until that is known
  bool estimate = false;       ///< that is the built-in estimate
  std::array<SnrRow, 2> rows;  ///< short and long path

  friend bool operator==(const SnrDisplay&, const SnrDisplay&) = default;
};

/// The prediction window without its rules: holds values, shows texts, passes on events. The
/// controller decides everything.
///
/// Setting a value here never raises the event that a user's own input would. Texts are UTF-8.
class PredictionView {
 public:
  virtual ~PredictionView() = default;

  [[nodiscard]] virtual std::string Text(TextField field) const = 0;
  virtual void SetText(TextField field, const std::string& text) = 0;
  /// Shows that a field's text was refused, or no longer.
  virtual void MarkRefused(TextField field, bool refused) = 0;

  /// Index of the chosen option, -1 when none is.
  [[nodiscard]] virtual int Selected(OptionGroup group) const = 0;
  virtual void Select(OptionGroup group, int index) = 0;
  /// The modes that `ModeSNRCombo` offers, beside the choice of none. Its selection becomes none.
  virtual void SetModes(std::span<const std::string> modes) = 0;

  [[nodiscard]] virtual bool Checked(CheckBox box) const = 0;
  virtual void SetChecked(CheckBox box, bool checked) = 0;

  virtual void SetLabel(Label label, const std::string& text) = 0;
  virtual void Enable(Button button, bool enabled) = 0;

  /// Starts or restarts a timer, which ticks until it is stopped.
  virtual void StartTimer(WindowTimer timer, std::chrono::milliseconds interval) = 0;
  virtual void StopTimer(WindowTimer timer) = 0;
  [[nodiscard]] virtual bool TimerRunning(WindowTimer timer) const = 0;

  /// Shows or hides the point prediction, as `display` says.
  virtual void ShowSnr(const SnrDisplay& display) = 0;

  virtual void SetCaption(const std::string& caption) = 0;
  virtual void ShowNotice(const Notice& notice) = 0;
  virtual void ShowTab(Tab tab) = 0;
  /// The web pages that the menu offers from now on.
  virtual void SetWebPages(std::span<const WebPage> pages) = 0;
  /// The left field of the status bar.
  virtual void SetStatus(const std::string& text) = 0;
  virtual void ShowToolTips(bool show) = 0;

  /// Place and state of the window now, and the monitors of the desktop; the main one comes first.
  [[nodiscard]] virtual WindowPlacement Placement() const = 0;
  virtual void SetPlacement(const WindowPlacement& placement) = 0;
  [[nodiscard]] virtual std::vector<Monitor> Monitors() const = 0;
  /// Shows the window; it may be shown already.
  virtual void ShowWindow() = 0;
  /// Restores a minimised or maximised window.
  virtual void RestoreWindow() = 0;

  /// Opens an address in the user's browser. Returns whether that could be done.
  virtual bool OpenInBrowser(const std::string& url) = 0;

  /// Asks the window to close, as the user would.
  virtual void Close() = 0;
};

}  // namespace skyhop
