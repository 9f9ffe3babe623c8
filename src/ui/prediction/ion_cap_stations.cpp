// The two stations: grid squares, coordinates and what is told about them.

#include <array>
#include <vector>

#include "common/numbers.h"
#include "common/program.h"
#include "common/text.h"
#include "geo/dx_grid.h"
#include "geo/path_services.h"
#include "ui/prediction/ion_cap.h"

namespace skyhop {
namespace {

constexpr const char* kConfigurationSection = "Configuration";

struct StationControls {
  TextField latitude;
  TextField longitude;
  TextField grid;
};

constexpr StationControls kLocalControls = {TextField::kLocalLat, TextField::kLocalLon,
                                            TextField::kLocalGrid};
constexpr StationControls kDXControls = {TextField::kDXLat, TextField::kDXLon, TextField::kDXGrid};

/// Noise levels by their index, as they stand within a sentence.
constexpr std::array<const char*, 4> kNoises = {"industrial", "residential", "rural", "remote"};

/// The bearing of the other station by the short and by the long path.
std::string BearingText(std::int16_t short_path) {
  const int long_path = short_path <= 180 ? short_path + 180 : short_path - 180;
  return "SP " + std::to_string(short_path) + "\u00B0 / LP " + std::to_string(long_path) + "\u00B0";
}

std::string Watts(const std::string& power) {
  return Trim(power).empty() ? "with unknown power" : std::string(Trim(power)) + " W";
}

}  // namespace

void IonCap::UpdateLocalGrid() {
  with_.diagnostics.Trap("IonCap.UpdateLocalGrid", [&] { UpdateGrid(Station::kLocal); });
}

void IonCap::UpdateLocalLatLon() {
  with_.diagnostics.Trap("IonCap.UpdateLocalLatLon", [&] { UpdateLatLon(Station::kLocal); });
}

void IonCap::UpdateDXGrid() {
  with_.diagnostics.Trap("IonCap.UpdateDXGrid", [&] { UpdateGrid(Station::kDX); });
}

void IonCap::UpdateDXLatLon() {
  with_.diagnostics.Trap("IonCap.UpdateDXLatLon", [&] { UpdateLatLon(Station::kDX); });
}

std::optional<Position>& IonCap::InStep(Station station) {
  return in_step_.at(station == Station::kLocal ? 0 : 1);
}

/// Where a station is; nothing while its coordinates are not both valid.
std::optional<Position> IonCap::PositionOf(Station station) {
  const StationControls& controls = station == Station::kLocal ? kLocalControls : kDXControls;
  const std::string latitude = with_.view.Text(controls.latitude);
  const std::string longitude = with_.view.Text(controls.longitude);
  // A refused text need not be reported to the log again and again.
  if (StateOf(controls.latitude).refused == latitude ||
      StateOf(controls.longitude).refused == longitude || !LatitudeAcceptable(latitude) ||
      !LongitudeAcceptable(longitude)) {
    return std::nullopt;
  }
  return Position{LatLonModule::ParseAngle(latitude, with_.diagnostics),
                  LatLonModule::ParseAngle(longitude, with_.diagnostics)};
}

/// Both stations and the path as the last run of the program left them. A stored square of four
/// characters stays what the user wrote while it is the station's.
void IonCap::RestoreStations() {
  const auto stored = [&](const char* key) {
    return with_.settings.GetStringSetting(kProductName, kConfigurationSection, key, "");
  };
  const std::string latitude = stored("DXLat");
  const std::string longitude = stored("DXLon");
  if (LatLonModule::LatitudeIn(latitude) && LatLonModule::LongitudeIn(longitude)) {
    Put(TextField::kDXLat, latitude);
    Put(TextField::kDXLon, longitude);
    parameters_.SetLastPrefix(stored("DXPrefix"));
  }
  for (const Station station : {Station::kLocal, Station::kDX}) {
    const bool local = station == Station::kLocal;
    const std::string grid = stored(local ? "XGrid" : "DXGrid");
    const StationControls& controls = local ? kLocalControls : kDXControls;
    // The texts are compared: they hold no third sign, which a centre on the equator may have.
    const Position centre = DXGridModule::GetGridCenterLocation(grid);
    if (LatLonModule::IsUndefined(centre) ||
        LatLonModule::LatitudeString(centre) != with_.view.Text(controls.latitude) ||
        LatLonModule::LongitudeString(centre) != with_.view.Text(controls.longitude)) {
      continue;
    }
    Put(controls.grid, grid);
    InStep(station) = PositionOf(station);
  }
  const bool long_path =
      with_.settings.GetIntegerSetting(kProductName, kConfigurationSection, "Path", "0") == 1;
  with_.view.Select(OptionGroup::kPath, long_path ? path_option::kLong : path_option::kShort);
}

/// Saves the stations at once: the program may end in other ways than by being closed.
void IonCap::SaveStations() {
  with_.diagnostics.Trap("IonCap.SaveStations", [&] {
    std::vector<SettingEntry> entries;
    const auto add = [&](const char* key, const std::string& value) {
      entries.push_back({kConfigurationSection, key, value});
    };
    // A refused coordinate leaves what is stored; deleted ones are deleted there, too.
    const auto saved = [&](Station station) {
      const StationControls& controls = station == Station::kLocal ? kLocalControls : kDXControls;
      const bool deleted = Trim(with_.view.Text(controls.latitude)).empty() &&
                           Trim(with_.view.Text(controls.longitude)).empty();
      return deleted || PositionOf(station).has_value();
    };
    if (saved(Station::kLocal)) {
      add("XLat", with_.view.Text(TextField::kLocalLat));
      add("Xlon", with_.view.Text(TextField::kLocalLon));
      add("XGrid", with_.view.Text(TextField::kLocalGrid));
    }
    if (saved(Station::kDX)) {
      add("DXLat", with_.view.Text(TextField::kDXLat));
      add("DXLon", with_.view.Text(TextField::kDXLon));
      add("DXGrid", with_.view.Text(TextField::kDXGrid));
      add("DXPrefix", parameters_.LastPrefix());
    }
    add("Path", std::to_string(with_.view.Selected(OptionGroup::kPath)));
    with_.settings.Store().Save(kProductName, entries);
  });
}

void IonCap::UpdateGrid(Station station) {
  const std::optional<Position> position = PositionOf(station);
  std::string grid;
  if (position) grid = DXGridModule::GetGridSquare(*position, with_.diagnostics);
  // A text that says nothing would only be refused when the field is left.
  if (!DXGridModule::IsGridSquare(grid)) grid.clear();
  Put(station == Station::kLocal ? TextField::kLocalGrid : TextField::kDXGrid,
      DXGridModule::formatgrid(grid));
  InStep(station) = position;
}

void IonCap::UpdateLatLon(Station station) {
  const StationControls& controls = station == Station::kLocal ? kLocalControls : kDXControls;
  const std::string grid = DXGridModule::formatgrid(with_.view.Text(controls.grid));
  const Position centre = DXGridModule::GetGridCenterLocation(grid);
  if (LatLonModule::IsUndefined(centre)) return;
  Put(controls.grid, grid);
  Put(controls.latitude, LatLonModule::LatitudeString(centre));
  Put(controls.longitude, LatLonModule::LongitudeString(centre));
  InStep(station) = PositionOf(station);
  UpdateStationLabels();
  PreviewSolarBars();
  InputsChanged();
}

/// Somebody has written coordinates: a peer, or the engine's setters in the form of their own.
void IonCap::StationsChanged() {
  if (following_stations_) return;
  following_stations_ = true;
  with_.diagnostics.Trap("IonCap.StationsChanged", [&] {
    for (const Station station : {Station::kLocal, Station::kDX}) {
      const StationControls& controls = station == Station::kLocal ? kLocalControls : kDXControls;
      for (const TextField field : {controls.latitude, controls.longitude}) {
        StateOf(field).committed = with_.view.Text(field);
      }
      // A square of four characters stays what the user wrote while its position does.
      const std::optional<Position> position = PositionOf(station);
      if (position && position != InStep(station)) UpdateGrid(station);
    }
    UpdateStationLabels();
    InputsChanged();
  });
  following_stations_ = false;
}

void IonCap::UpdateStationLabels() {
  std::string from_qth;
  std::string from_dx;
  std::string distance;
  if (PositionOf(Station::kLocal) && PositionOf(Station::kDX)) {
    const PredictionForm form = Form();
    const StationFields stations{form.local_latitude,
                                 form.local_longitude,
                                 form.dx_latitude,
                                 form.dx_longitude,
                                 form.path == path_option::kShort,
                                 form.distance_miles};
    from_qth = BearingText(IONCAPModule::ComputeBearingFromQTH(stations, with_.diagnostics));
    from_dx = BearingText(IONCAPModule::ComputeBearingFromDX(stations, with_.diagnostics));
    distance = FixedText(IONCAPModule::ComputeDistance(stations, with_.diagnostics), 0) +
               (stations.distance_miles ? " miles" : " km");
  }
  with_.view.SetLabel(Label::kBearingFromQTH, from_qth);
  with_.view.SetLabel(Label::kBearingFromDX, from_dx);
  with_.view.SetLabel(Label::kDistance, distance);
}

void IonCap::UpdateConditions() {
  const ParameterSet set = IONCAPModule::ParametersOf(Form());
  const std::string noise = std::string(kNoises.at(static_cast<std::size_t>(set.noise))) + " noise";
  std::string power = Watts(set.power);
  if (const std::optional<std::size_t> band = BandInForce()) {
    const BandSettings& settings = with_.configuration.Band(*band);
    const std::string origin =
        " (as set for " + std::string(kBandLabelTexts.at(*band)) + ", in place of ";
    if (!Trim(settings.power).empty()) power = Watts(settings.power) + origin + power + ")";
    if (!Trim(settings.takeoff).empty()) {
      power += " from " + std::string(Trim(settings.takeoff)) + "\u00B0 up" + origin + set.takeoff +
               "\u00B0)";
    }
  }
  with_.view.SetLabel(
      Label::kConditions,
      set.to_dx ? "Your station transmits " + power + "; the DX station listens in " + noise
                : "The DX station transmits " + power + "; your station listens in " + noise);
}

}  // namespace skyhop
