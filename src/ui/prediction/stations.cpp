#include "ui/prediction/stations.h"

#include <vector>

#include "common/numbers.h"
#include "common/program.h"
#include "common/text.h"
#include "geo/coordinate_text.h"
#include "geo/dx_grid.h"
#include "geo/path_services.h"
#include "ui/prediction/field_rules.h"
#include "ui/shared/raised.h"

namespace skyhop {
namespace {

constexpr const char* kStationSection = "Configuration";

struct StationControls {
  TextField latitude;
  TextField longitude;
  TextField grid;
  const char* latitude_key;
  const char* longitude_key;
  const char* grid_key;
};

/// By Station.
constexpr std::array<StationControls, 2> kControls = {{
    {TextField::kLocalLat, TextField::kLocalLon, TextField::kLocalGrid, "XLat", "Xlon", "XGrid"},
    {TextField::kDXLat, TextField::kDXLon, TextField::kDXGrid, "DXLat", "DXLon", "DXGrid"},
}};

const StationControls& ControlsOf(Station station) {
  return kControls.at(static_cast<std::size_t>(station));
}

/// The bearing of the other station by the short and by the long path.
std::string BearingText(std::int16_t short_path) {
  const int long_path = short_path <= 180 ? short_path + 180 : short_path - 180;
  return "SP " + std::to_string(short_path) + "\u00B0 / LP " + std::to_string(long_path) + "\u00B0";
}

}  // namespace

Stations::Stations(const Collaborators& collaborators) : with_(collaborators) {
  with_.parameters.Attach(this);
}

std::optional<Position> Stations::PositionOf(Station station) const {
  const StationControls& controls = ControlsOf(station);
  const std::string latitude = with_.fields.Text(controls.latitude);
  const std::string longitude = with_.fields.Text(controls.longitude);
  // The log need not repeat a refused text again and again.
  if (with_.fields.Refused(controls.latitude, latitude) ||
      with_.fields.Refused(controls.longitude, longitude) ||
      !LatitudeAcceptable(latitude, with_.diagnostics) ||
      !LongitudeAcceptable(longitude, with_.diagnostics)) {
    return std::nullopt;
  }
  return Position{LatLonModule::ParseAngle(latitude, with_.diagnostics),
                  LatLonModule::ParseAngle(longitude, with_.diagnostics)};
}

std::optional<std::string> Stations::MarkInvalid() {
  // The DX station first: of several invalid coordinates its own are reported.
  for (const TextField field :
       {TextField::kDXLat, TextField::kDXLon, TextField::kLocalLat, TextField::kLocalLon}) {
    const auto axis = *AxisOf(field);
    const bool is_latitude = axis == LatLonModule::Axis::kLatitude;
    const std::string text = with_.fields.Understood(field);
    const bool valid = is_latitude ? LatLonModule::ValidLatitude(text, with_.diagnostics)
                                   : LatLonModule::ValidLongitude(text, with_.diagnostics);
    if (valid && !with_.fields.Refused(field, text)) continue;
    const std::string name = is_latitude ? "latitude" : "longitude";
    with_.diagnostics.DebugLog(std::string("   invalid ").append(name).append(": ").append(text));
    with_.view.MarkRefused(field, true);
    const bool is_dx = field == TextField::kDXLat || field == TextField::kDXLon;
    std::string reason = (is_dx ? "The DX station's " : "Your Station's ") + name;
    if (Trim(text).empty()) return reason + " is missing";
    reason.append(" \"").append(text).append("\" is not valid. Write it like ");
    return reason.append(LatLonModule::CoordinateExamples(axis));
  }
  return std::nullopt;
}

void Stations::UpdateGrid(Station station) {
  const std::optional<Position> position = PositionOf(station);
  std::string grid;
  if (position) grid = DXGridModule::GetGridSquare(*position, with_.diagnostics);
  // The field would refuse a text that is no square.
  if (!DXGridModule::IsGridSquare(grid)) grid.clear();
  with_.fields.Put(ControlsOf(station).grid, DXGridModule::formatgrid(grid));
  InStep(station) = position;
}

void Stations::UpdateLatLon(Station station) {
  const StationControls& controls = ControlsOf(station);
  const std::string grid = DXGridModule::formatgrid(with_.fields.Text(controls.grid));
  const Position centre = DXGridModule::GetGridCenterLocation(grid);
  if (LatLonModule::IsUndefined(centre)) return;
  with_.fields.Put(controls.grid, grid);
  with_.fields.Put(controls.latitude, LatLonModule::LatitudeString(centre));
  with_.fields.Put(controls.longitude, LatLonModule::LongitudeString(centre));
  InStep(station) = PositionOf(station);
  UpdateLabels();
  if (on_moved_) on_moved_();
}

void Stations::Follow() {
  if (following_) return;
  const Raised following(following_);
  with_.diagnostics.Trap("IonCap.StationsChanged", [&] {
    for (const Station station : {Station::kLocal, Station::kDX}) {
      const StationControls& controls = ControlsOf(station);
      with_.fields.Confirm(controls.latitude);
      with_.fields.Confirm(controls.longitude);
      // A square of four characters stays what the user wrote while its position does.
      const std::optional<Position> position = PositionOf(station);
      if (position && position != InStep(station)) UpdateGrid(station);
    }
    UpdateLabels();
    if (on_moved_) on_moved_();
  });
}

void Stations::ShowCoordinate(Station station, LatLonModule::Axis axis, const std::string& text) {
  const StationControls& controls = ControlsOf(station);
  with_.fields.Put(axis == LatLonModule::Axis::kLatitude ? controls.latitude : controls.longitude,
                   text);
  Follow();
}

void Stations::ShowPrefix(const std::string& prefix) {
  with_.view.SetLabel(Label::kPrefix, prefix);
}

void Stations::UpdateLabels() {
  std::string from_qth;
  std::string from_dx;
  std::string distance;
  if (BothKnown()) {
    const PredictionForm form = with_.fields.Form();
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

void Stations::Restore() {
  const auto stored = [&](const char* key) {
    return with_.settings.GetStringSetting(kProductName, kStationSection, key, "");
  };
  const std::string latitude = stored("DXLat");
  const std::string longitude = stored("DXLon");
  if (LatLonModule::LatitudeIn(latitude) && LatLonModule::LongitudeIn(longitude)) {
    with_.fields.Put(TextField::kDXLat, latitude);
    with_.fields.Put(TextField::kDXLon, longitude);
    with_.parameters.SetLastPrefix(stored("DXPrefix"));
  }
  RestoreSquare(Station::kLocal);
  RestoreSquare(Station::kDX);
  const bool long_path =
      with_.settings.GetIntegerSetting(kProductName, kStationSection, "Path", "0") == 1;
  with_.view.Select(OptionGroup::kPath, long_path ? path_option::kLong : path_option::kShort);
}

/// A stored square of four characters stays what the user wrote while it is the station's.
void Stations::RestoreSquare(Station station) {
  const StationControls& controls = ControlsOf(station);
  const std::string grid =
      with_.settings.GetStringSetting(kProductName, kStationSection, controls.grid_key, "");
  // The texts are compared: they hold no third sign, which a centre on the equator may have.
  const Position centre = DXGridModule::GetGridCenterLocation(grid);
  if (LatLonModule::IsUndefined(centre) ||
      LatLonModule::LatitudeString(centre) != with_.fields.Text(controls.latitude) ||
      LatLonModule::LongitudeString(centre) != with_.fields.Text(controls.longitude)) {
    return;
  }
  with_.fields.Put(controls.grid, grid);
  InStep(station) = PositionOf(station);
}

/// A refused coordinate leaves what is stored; deleted ones are deleted there, too.
bool Stations::CanBeSaved(Station station) const {
  const StationControls& controls = ControlsOf(station);
  const bool deleted = Trim(with_.fields.Text(controls.latitude)).empty() &&
                       Trim(with_.fields.Text(controls.longitude)).empty();
  return deleted || PositionOf(station).has_value();
}

void Stations::Save() {
  with_.diagnostics.Trap("IonCap.SaveStations", [&] {
    std::vector<SettingEntry> entries;
    for (const Station station : {Station::kLocal, Station::kDX}) {
      if (!CanBeSaved(station)) continue;
      const StationControls& controls = ControlsOf(station);
      entries.push_back(
          {kStationSection, controls.latitude_key, with_.fields.Text(controls.latitude)});
      entries.push_back(
          {kStationSection, controls.longitude_key, with_.fields.Text(controls.longitude)});
      entries.push_back({kStationSection, controls.grid_key, with_.fields.Text(controls.grid)});
      if (station == Station::kDX) {
        entries.push_back({kStationSection, "DXPrefix", with_.parameters.LastPrefix()});
      }
    }
    entries.push_back(
        {kStationSection, "Path", std::to_string(with_.view.Selected(OptionGroup::kPath))});
    with_.settings.Store().Save(kProductName, entries);
  });
}

}  // namespace skyhop
