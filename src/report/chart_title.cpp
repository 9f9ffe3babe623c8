#include "report/chart_title.h"

#include "common/numbers.h"
#include "common/text.h"
#include "geo/dx_grid.h"
#include "geo/path_services.h"

namespace skyhop {
namespace {

StationFields FieldsOf(const ParameterSet& set, bool miles) {
  return {LatLonModule::LatitudeString(set.Local()),  LatLonModule::LongitudeString(set.Local()),
          LatLonModule::LatitudeString(set.DX()),     LatLonModule::LongitudeString(set.DX()),
          !EqualsIgnoringCase(set.path, "LONG PATH"), miles};
}

/// The long way leaves a station in the opposite direction.
int Bearing(const StationFields& stations, Diagnostics& diagnostics) {
  const int short_path = IONCAPModule::ComputeBearingFromQTH(stations, diagnostics);
  if (stations.short_path) return short_path;
  return short_path <= 180 ? short_path + 180 : short_path - 180;
}

std::string Distance(const StationFields& stations, Diagnostics& diagnostics) {
  return FixedText(IONCAPModule::ComputeDistance(stations, diagnostics), 0);
}

}  // namespace

std::string ChartTitle(const ParameterSet& set, bool miles, const TitleNames& names,
                       Diagnostics& diagnostics) {
  const auto grid = [&](const std::string& written, const Position& position) {
    if (!Trim(written).empty()) return std::string(Trim(written));
    return DXGridModule::formatgrid(DXGridModule::GetGridSquare(position, diagnostics));
  };
  const StationFields stations = FieldsOf(set, miles);
  constexpr const char* separator = " \u00B7 ";
  std::string title = grid(names.local_grid, set.Local()) + (set.to_dx ? " \u2192 " : " \u2190 ") +
                      grid(names.dx_grid, set.DX());
  const std::string prefix(Trim(set.prefix));
  if (!prefix.empty()) title += " (" + prefix + ")";
  title += separator + std::to_string(Bearing(stations, diagnostics)) + "\u00B0";
  title += separator + Distance(stations, diagnostics) + (miles ? " miles" : " km");
  title += separator + std::string(stations.short_path ? "short path" : "long path");
  title += separator + std::string(Trim(set.power)) + " W";
  title += separator + (names.mode.empty() ? "" : names.mode + ", ") + std::string(Trim(set.snr)) +
           " dB";
  title += separator + std::string("reliability ") + std::string(Trim(set.availability)) + " %";
  return title + separator + std::string(Trim(set.date));
}

std::string SummaryLine(const ParameterSet& set, bool miles, const std::string& settings_name,
                        Diagnostics& diagnostics) {
  const StationFields stations = FieldsOf(set, miles);
  std::string line;
  if (EqualsIgnoringCase(set.path, "SHORT PATH")) line = "SP ";
  if (EqualsIgnoringCase(set.path, "LONG PATH")) line = "LP ";
  line += std::string(Trim(set.snr)) + " db ";
  line += Distance(stations, diagnostics) + (miles ? " mi  " : " km  ");
  line += std::string("propagation ") + (set.to_dx ? "to" : "from") + " DX ";
  line += stations.dx_lat + " " + stations.dx_lon;
  line += " on " + std::string(Trim(set.date));
  if (!settings_name.empty()) line += " (" + settings_name + " settings)";
  return line;
}

}  // namespace skyhop
