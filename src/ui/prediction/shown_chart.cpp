#include "ui/prediction/shown_chart.h"

#include <array>

#include "common/dates.h"
#include "common/text.h"

namespace skyhop {
namespace {

/// Texts of `EngineLabel` by engine; a label shows a doubled "&" as one.
constexpr std::array<const char*, 4> kEngineLabels = {"IONCAP", "ICEPAC", "VOACAP LUF && MUF",
                                                      "VOACAP SNR && Prob"};

}  // namespace

void ShownChart::Show(const ChartDescription& description, UtcTime now) {
  inputs_ = description.inputs;
  failed_ = false;
  bars_ = with_.pane.Sun();
  with_.pane.SetTitle(description.title);
  with_.view.SetLabel(Label::kSummary, description.summary);
  const IONCAPModule::ResultsHeading& heading = with_.results.Heading();
  provenance_ = skyhop::Provenance(heading, description.engine, description.asked, now);
  with_.view.SetLabel(Label::kProvenance, provenance_);
  with_.view.SetLabel(
      Label::kComputedBy,
      std::string(Trim(EngineName(heading.engine, description.engine) + " " + heading.version)));
  ShowEngine(description.engine);
  MarkOld();
}

void ShownChart::Fail() {
  failed_ = true;
  failed_inputs_ = with_.next.Inputs();
  if (HasResult()) with_.pane.SetSolarBars(bars_);
  MarkOld();
  ShowEngine(HasResult() ? with_.pane.Engine() : EngineChoice::kNone);
}

void ShownChart::MarkOld() {
  if (!HasResult()) return;
  const std::optional<PredictionInputs> current = with_.next.Inputs();
  const bool failed = failed_ && current == failed_inputs_;
  with_.pane.SetOld(failed || !current || current != inputs_);
}

void ShownChart::ShowEngine(EngineChoice engine) {
  with_.view.SetLabel(
      Label::kEngineLabel,
      engine == EngineChoice::kNone ? "" : kEngineLabels.at(static_cast<std::size_t>(engine)));
}

void ShownChart::PreviewSolarBars() {
  if (!HasResult()) UpdateSolarBars();
}

void ShownChart::UpdateSolarBars() {
  const auto date = ParseDate(with_.fields.Text(TextField::kTheDate));
  if (!date) return;
  const auto row = [&](Station station) {
    const std::optional<Position> position = with_.stations.PositionOf(station);
    return position ? ComputeSunRow(*position, *date) : SunRow();
  };
  with_.pane.SetSolarBars({row(Station::kLocal), row(Station::kDX)});
}

}  // namespace skyhop
