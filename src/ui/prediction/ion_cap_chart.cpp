// The chart of the last prediction: what it was computed for, when it is out of date, and the forms
// in which it leaves the window.

#include "common/dates.h"
#include "common/errors.h"
#include "common/numbers.h"
#include "common/text.h"
#include "report/csv_report.h"
#include "ui/prediction/chart/chart_picture.h"
#include "ui/prediction/chart/solar_bars.h"
#include "ui/prediction/ion_cap.h"

namespace skyhop {

/// What a prediction that starts now would be computed for; nothing while an input is missing.
std::optional<ChartInputs> IonCap::CurrentInputs() {
  const auto date = ParseDate(with_.view.Text(TextField::kTheDate));
  if (!date || !PositionOf(Station::kLocal) || !PositionOf(Station::kDX)) return std::nullopt;
  ChartInputs inputs;
  try {
    inputs.deck = IONCAPModule::ReadUnnamedParameters(with_.panel, with_.parameters, *date,
                                                      with_.diagnostics);
    inputs.deck.snr = IONCAPModule::DeckNumber(with_.parameters.Snr());
    if (const std::optional<std::size_t> band = BandInForce()) {
      const BandSettings& settings = with_.configuration.Band(*band);
      if (!Trim(settings.power).empty()) {
        inputs.deck.power = IONCAPModule::DeckNumber(settings.power);
      }
      if (!Trim(settings.takeoff).empty()) {
        inputs.deck.takeoff = IONCAPModule::DeckNumber(settings.takeoff);
      }
    }
  } catch (const Error&) {
    // A number beyond its range is reported when a prediction is asked for.
    return std::nullopt;
  }
  inputs.deck.short_path = with_.view.Selected(OptionGroup::kPath) == path_option::kShort;
  inputs.date = *date;
  inputs.engine = static_cast<EngineChoice>(with_.configuration.Engine());
  // Inputs that the engine does not read make no difference.
  if (inputs.engine != EngineChoice::kIcePac) inputs.deck.k_index = 0;
  if (inputs.engine == EngineChoice::kIonCap) {
    inputs.deck.transmitter_antenna = {};
    inputs.deck.receiver_antenna = {};
  }
  return inputs;
}

/// Marks the chart as an earlier prediction's while its inputs differ from those in the window, or
/// when the last attempt to predict these has failed.
void IonCap::MarkOldChart() {
  if (!with_.chart.HasResult()) return;
  const std::optional<ChartInputs> current = CurrentInputs();
  const bool failed = failed_ && current == failed_inputs_;
  with_.chart.SetOld(failed || !current || current != chart_inputs_);
}

/// Something that a prediction depends on may be another now. A point prediction has nothing to be
/// compared with while coordinates are missing.
void IonCap::InputsChanged() {
  if (!loaded_) return;
  MarkOldChart();
  if (!PositionOf(Station::kLocal) || !PositionOf(Station::kDX)) return;
  if (with_.point_prediction.InputsChanged()) FollowTransceiver();
}

void IonCap::ShowFinished(const PredictionRun& run) {
  chart_inputs_ = run.inputs;
  failed_ = false;
  chart_bars_ = with_.chart.Sun();
  with_.chart.SetTitle(run.title);
  // The inputs may have changed since; the line keeps what was asked.
  with_.panel.SetText(PanelText::kSummary, run.summary);
  provenance_ = Provenance(with_.results.Heading(), run.engine, run.asked, with_.clock.UtcNow());
  with_.view.SetLabel(Label::kProvenance, provenance_);
  const IONCAPModule::ResultsHeading& heading = with_.results.Heading();
  with_.view.SetLabel(Label::kComputedBy, std::string(Trim(EngineName(heading.engine, run.engine) +
                                                           " " + heading.version)));
  ShowEngine(run.engine);
  with_.view.SetStatus("");
  MarkOldChart();
}

/// What has to be said about a prediction that was made: another engine than the selected one made
/// it, or it holds no useable frequency.
Notice IonCap::FinishedNotice(const PredictionRun& run) const {
  Notice notice;
  const auto say = [&](const std::string& text, NoticeAction action) {
    notice.kind = Notice::Kind::kWarning;
    notice.text += (notice.text.empty() ? "" : " ") + text;
    notice.action = action;
  };
  if (IsEstimate(with_.results.Heading().engine)) {
    const std::string name = EngineName({}, run.engine);
    say((run.finding.reason.empty() ? name + " is not installed."
                                    : name + " did not run. " + run.finding.reason) +
            " The built-in estimate made this prediction.",
        NoticeAction::kShowConfiguration);
  }
  if (with_.chart.Table().ReachedHours() == 0) {
    say("No hour has a frequency that reaches the required reliability: more power, a mode that "
        "needs less SNR or a lower reliability would help.",
        NoticeAction::kShowReceiver);
  }
  return notice;
}

std::string IonCap::TitleOfRun() const {
  return ChartTitle(
      with_.panel, with_.parameters,
      {with_.view.Text(TextField::kLocalGrid), with_.view.Text(TextField::kDXGrid), SelectedMode()},
      with_.diagnostics);
}

/// The bars under a chart belong to its prediction; only while there is none they follow the
/// fields.
void IonCap::PreviewSolarBars() {
  if (!with_.chart.HasResult()) UpdateSolarBars();
}

void IonCap::UpdateSolarBars() {
  const auto date = ParseDate(with_.view.Text(TextField::kTheDate));
  if (!date) return;
  const auto row = [&](Station station) {
    const std::optional<Position> position = PositionOf(station);
    return position ? ComputeSunRow(*position, *date) : SunRow();
  };
  with_.chart.SetSolarBars({row(Station::kLocal), row(Station::kDX)});
}

// The chart for others.

std::string IonCap::ResultsAsCsv() const {
  return with_.diagnostics.Trap("IonCap.ResultsAsCsv", std::string(), [&] {
    if (!with_.chart.HasResult()) return std::string();
    return CsvReport({with_.chart.Table(), with_.diagnostics, with_.chart.Engine()},
                     with_.results.Heading());
  });
}

/// The chart of the window with the provenance, for which the window has a label of its own.
ChartModel IonCap::PictureModel() const {
  ChartModel picture = with_.chart.Model();
  picture.provenance = provenance_;
  return picture;
}

void IonCap::PaintPicture(Surface& surface, double scale) const {
  with_.diagnostics.Trap("IonCap.PaintPicture",
                         [&] { skyhop::PaintPicture(surface, PictureModel(), {.scale = scale}); });
}

std::string IonCap::ChartAsSvg() const {
  return with_.diagnostics.Trap("IonCap.ChartAsSvg", std::string(),
                                [&] { return PictureAsSvg(PictureModel(), {}); });
}

}  // namespace skyhop
