#include "ui/wx/config_antenna_page.h"

#include <algorithm>

#include "ui/wx/wx_text.h"

namespace skyhop {
namespace {

constexpr const char* kIsotropic = "Isotropic";

}  // namespace

ConfigAntennaPage::ConfigAntennaPage(wxWindow* parent, const ConfigEvents& events)
    : ConfigPage(parent, "Antennas", events) {
  AddText(
      "The antennas at both ends, for predictions with ICEPAC and VOACAP. An isotropic antenna "
      "radiates alike in all directions, with the gain that you give it. An antenna file brings "
      "its own gain; where its main beam has no azimuth, it follows the path.");
  AddStation(Station::kLocal, "Your Station");
  AddStation(Station::kDX, "DX Station");
  note_ = AddText("");
}

void ConfigAntennaPage::AddStation(Station station, const wxString& heading) {
  AddHeading(heading);
  auto* grid = new wxFlexGridSizer(2, wxSize(FromDIP(16), FromDIP(2)));
  grid->AddGrowableCol(1);
  const auto add = [&](const wxString& caption, wxWindow* control, const wxString& tip) {
    grid->Add(new wxStaticText(this, wxID_ANY, caption), wxSizerFlags().CenterVertical());
    control->SetToolTip(tip);
    control->SetName(heading + " " + caption);
    grid->Add(control, wxSizerFlags().CenterVertical().Expand());
  };
  Row& row = RowOf(station);
  row.file = new wxChoice(this, wxID_ANY);
  row.file->Append(kIsotropic);
  row.file->Bind(wxEVT_CHOICE, [this, station](wxCommandEvent&) { Send(station); });
  add("Antenna", row.file, "An isotropic antenna, or a file of the engine");
  row.gain = new CommitField(this, [this, station] { Send(station); });
  add("Gain (dBi)", row.gain, "Gain of the isotropic antenna, -30 to 60 dBi; empty for 0");
  row.azimuth = new CommitField(this, [this, station] { Send(station); });
  add("Main beam (degrees)", row.azimuth,
      "Where the beam of the file's antenna points, 0 to 360 degrees from north; empty for along "
      "the path");
  Add(grid);
}

void ConfigAntennaPage::Send(Station station) {
  const Row& row = RowOf(station);
  const int chosen = row.file->GetSelection();
  Antenna antenna;
  if (chosen > 0) antenna.file = FromWx(row.file->GetString(static_cast<unsigned>(chosen)));
  antenna.gain = row.gain->Text();
  antenna.azimuth = row.azimuth->Text();
  Events().Send(&IoncapConfig::Antenna_Change, station, antenna);
}

void ConfigAntennaPage::SetAntenna(Station station, const Antenna& antenna) {
  Row& row = RowOf(station);
  ShowFile(row, antenna.file);
  row.gain->SetText(antenna.gain);
  row.azimuth->SetText(antenna.azimuth);
  row.gain->Enable(antenna.file.empty());
  row.azimuth->Enable(!antenna.file.empty());
}

/// Shows a chosen file even if the engine does not have it, or no longer.
void ConfigAntennaPage::ShowFile(Row& row, const std::string& file) {
  if (file.empty()) {
    row.file->SetSelection(0);
    return;
  }
  int index = row.file->FindString(ToWx(file), true);
  if (index == wxNOT_FOUND) index = row.file->Append(ToWx(file));
  row.file->SetSelection(index);
}

void ConfigAntennaPage::SetFiles(std::span<const std::string> files) {
  if (std::equal(files.begin(), files.end(), files_.begin(), files_.end())) return;
  files_.assign(files.begin(), files.end());
  for (Row& row : rows_) {
    const int before = row.file->GetSelection();
    const std::string chosen =
        before > 0 ? FromWx(row.file->GetString(static_cast<unsigned>(before))) : std::string();
    wxArrayString texts;
    texts.Add(kIsotropic);
    for (const std::string& file : files_) texts.Add(ToWx(file));
    row.file->Set(texts);
    ShowFile(row, chosen);
  }
}

}  // namespace skyhop
