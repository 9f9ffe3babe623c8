#include "report/chart_title.h"

#include "common/numbers.h"
#include "common/text.h"
#include "engine/panel_stations.h"
#include "geo/dx_grid.h"
#include "geo/path_services.h"

namespace skyhop {
namespace {

/// The long way leaves a station in the opposite direction.
int Bearing(const PanelStations& stations, Diagnostics& diagnostics) {
  const int short_path = IONCAPModule::ComputeBearingFromQTH(stations, diagnostics);
  if (stations.ShortPath()) return short_path;
  return short_path <= 180 ? short_path + 180 : short_path - 180;
}

}  // namespace

std::string ChartTitle(const PredictionPanel& panel, const IONCAPModule::Parameters& parameters,
                       const TitleNames& names, Diagnostics& diagnostics) {
  const bool to = panel.Choice(PanelChoice::kPredictSignals) == direction_option::kToTheDXStation;
  const Position local =
      to ? parameters.GetTransmitterLocation() : parameters.GetReceiverLocation();
  const Position dx = to ? parameters.GetReceiverLocation() : parameters.GetTransmitterLocation();
  const auto grid = [&](const std::string& written, const Position& position) {
    if (!Trim(written).empty()) return std::string(Trim(written));
    return DXGridModule::formatgrid(DXGridModule::GetGridSquare(position, diagnostics));
  };
  const PanelStations stations(panel);
  constexpr const char* separator = " \u00B7 ";
  std::string title =
      grid(names.local_grid, local) + (to ? " \u2192 " : " \u2190 ") + grid(names.dx_grid, dx);
  const std::string prefix(Trim(parameters.Prefix()));
  if (!prefix.empty()) title += " (" + prefix + ")";
  title += separator + std::to_string(Bearing(stations, diagnostics)) + "\u00B0";
  title += separator + FixedText(IONCAPModule::ComputeDistance(stations, diagnostics), 0) +
           (stations.DistanceMiles() ? " miles" : " km");
  title += separator + std::string(stations.ShortPath() ? "short path" : "long path");
  title += separator + std::string(Trim(parameters.Power())) + " W";
  title += separator + (names.mode.empty() ? "" : names.mode + ", ") +
           std::string(Trim(parameters.Snr())) + " dB";
  title += separator + std::string("reliability ") +
           std::string(Trim(panel.Text(PanelText::kAvail))) + " %";
  return title + separator + std::string(Trim(parameters.Date()));
}

}  // namespace skyhop
