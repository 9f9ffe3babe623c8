#pragma once

#include <string_view>

namespace skyhop {

// The controls of the prediction window by their names. Who shows them is the view's business.

enum class TextField {
  kLocalLat,
  kLocalLon,
  kLocalGrid,
  kLocalPwr,
  kLocalTakeOff,
  kDXLat,
  kDXLon,
  kDXGrid,
  kFlux,
  kKindex,
  kSSN,
  kAvail,
  kSNR,
  kTheDate,
  kSNRFrequency,  ///< of the point prediction; below 1000 in MHz, else in kHz
};
inline constexpr int kTextFieldCount = 15;

/// Groups of options; the value is the index of the chosen one, -1 when none is.
enum class OptionGroup {
  kLocalNoiseLevel,  ///< 0 "Industrial", 1 "Residential", 2 "Rural", 3 "Remote"
  kDXNoiseLevel,     ///< the same
  kDXPwr,            ///< 0 to 4: 5, 20, 100, 500, 1500 W
  kPath,             ///< 0 `ShortPath`, 1 `LongPath`
  kPredictSignals,   ///< 0 "From the DX Station", 1 "To the DX Station"
  kModeSNRCombo,     ///< index into the configured modes
  kDDEOption,        ///< who asked for the last prediction: see dde_option
};
inline constexpr int kOptionGroupCount = 7;

namespace dde_option {
inline constexpr int kRequestedByPeer = 0;
inline constexpr int kRequestedHere = 1;
}  // namespace dde_option

enum class CheckBox {
  kDXTracksTesseraLocation,
  kPlotEnable,
  kOpenBandEnable,
  kShowColorKeyCheck,
  kShowCurrentTimeCheck,
  kSNRDisplayCheck,
  kShowTableCheck,
};
inline constexpr int kCheckBoxCount = 7;

enum class Button {
  kPathsButton,
  kPredictSPToCmd,
  kPredictLPToCmd,
  kPredictSPFromCmd,
  kPredictLPFromCmd,
  kAbortButton,
  kForecastCmd,
  kCurrentCmd,
  kHistoryCmd,
  kUpdateSFICmd,
  kUpdateSSNCmd,
  kBeaconCmd,
  kConfigCmd,
  kHelpCmd,
  kSNRPredictCmd,
  kShowFilesCmd,  ///< in the menu only
};
inline constexpr int kButtonCount = 16;

enum class Label {
  kEngineLabel,     ///< the engine that was selected for the last prediction
  kComputedBy,      ///< the engine that made it, as its results name it
  kPrefix,          ///< prefix of the DX station; "&" is doubled in it
  kBearingFromQTH,  ///< bearing of the DX station and back, on the chosen path
  kBearingFromDX,
  kDistance,
  kSummary,     ///< the prediction in one line
  kProvenance,  ///< where the numbers of the chart come from
  kClock,       ///< the time now, UTC
  kConditions,  ///< what the transmitter and the receiver are, in the chosen direction
};
inline constexpr int kLabelCount = 10;

/// What the button of a notice does.
enum class NoticeAction {
  kNone,               ///< the notice has no button
  kShowReceiver,       ///< opens the tab "Receiver", where mode, SNR and reliability are
  kShowConfiguration,  ///< opens the Configuration window
  kRetryDownload,      ///< downloads the sunspot number once more
};

enum class WindowTimer {
  kExecuteTimer,        ///< polls for the engine's results, every 1000 ms
  kEngineWatch,         ///< watches the engine's process while a prediction runs
  kSNRExecuteTimer,     ///< the same for the point SNR prediction
  kSolarForecastTimer,  ///< refreshes the forecast
  kClockTimer,          ///< moves the time index with the clock
  kShutDownTimer,       ///< closes the program after a peer's command
  kServerRetryTimer,    ///< tries peers again that are not connected
  kPeerValuesTimer,     ///< hands on what peers have published
};
inline constexpr int kWindowTimerCount = 8;

/// The words on a control: "&" stands before the letter of its shortcut. Text fields, option groups
/// and labels yield the caption that stands beside them.
[[nodiscard]] std::string_view Caption(TextField field);
[[nodiscard]] std::string_view Caption(OptionGroup group);
[[nodiscard]] std::string_view Caption(CheckBox box);
[[nodiscard]] std::string_view Caption(Button button);
/// The words on the button of a notice, empty for kNone.
[[nodiscard]] std::string_view Caption(NoticeAction action);

/// The words that explain a control while the pointer rests on it.
[[nodiscard]] std::string_view ToolTip(TextField field);
[[nodiscard]] std::string_view ToolTip(OptionGroup group);
[[nodiscard]] std::string_view ToolTip(CheckBox box);
[[nodiscard]] std::string_view ToolTip(Button button);

}  // namespace skyhop
