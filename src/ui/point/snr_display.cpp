#include "ui/point/snr_display.h"

#include <cmath>

#include "common/numbers.h"
#include "report/provenance.h"

namespace skyhop {
namespace {

using IONCAPModule::PathReception;
using IONCAPModule::PointReception;

SnrRow RowOf(const PathReception& reception, const PointReception& whole) {
  SnrRow row;
  if (reception.state == PathReception::State::kFailed) row.problem = reception.problem;
  if (reception.state != PathReception::State::kDone) return row;
  const double margin =
      static_cast<double>(reception.snr) - LeadingNumber(whole.request.circuit.snr);
  const int power = IONCAPModule::DecibelMilliwatts(reception.signal_power);
  row.snr = std::to_string(std::lround(reception.snr)) + " dB";
  row.margin = (margin < 0 ? "" : "+") + std::to_string(std::lround(margin)) + " dB";
  row.reliability = FixedText(100.0 * static_cast<double>(reception.reliability), 0) + " %";
  row.mode = reception.mode;
  row.signal =
      std::to_string(power) + " dBm, " + IONCAPModule::SUnits(power, whole.request.frequency);
  row.reached = margin >= 0;
  return row;
}

std::string Headline(const PointReception& reception, const std::string& circuit) {
  std::string text = NumberText(reception.request.frequency) + " MHz " + circuit + " at " +
                     PaddedNumber(reception.hour, 2) + " UTC";
  if (!reception.request.mode.empty()) text += ", " + reception.request.mode;
  return text + ", " + reception.request.circuit.snr + " dB required in 1 Hz";
}

}  // namespace

SnrDisplay DisplayOf(const PointReception& reception, const std::string& circuit) {
  SnrDisplay display;
  display.headline = Headline(reception, circuit);
  if (!reception.engine.empty()) {
    display.engine = EngineName(reception.engine, EngineChoice::kVoaCapSnr);
    display.estimate = IsEstimate(reception.engine);
  }
  for (std::size_t path = 0; path < display.rows.size(); ++path) {
    display.rows.at(path) = RowOf(reception.paths.at(path), reception);
  }
  display.rows[0].path = "Short path";
  display.rows[1].path = "Long path";
  return display;
}

}  // namespace skyhop
