#pragma once

#include <wx/choice.h>

#include <array>
#include <span>
#include <string>
#include <vector>

#include "ui/wx/commit_field.h"
#include "ui/wx/config_page.h"

namespace skyhop {

/// The antennas of both stations, for the engines that use antennas.
class ConfigAntennaPage : public ConfigPage {
 public:
  ConfigAntennaPage(wxWindow* parent, const ConfigEvents& events);

  void SetAntenna(Station station, const Antenna& antenna);
  /// The files that the user can choose beside the isotropic antenna.
  void SetFiles(std::span<const std::string> files);
  void SetNote(const std::string& text) { SetText(note_, text); }

 private:
  struct Row {
    wxChoice* file;
    CommitField* gain;
    CommitField* azimuth;
  };

  void AddStation(Station station, const wxString& heading);
  void Send(Station station);
  void ShowFile(Row& row, const std::string& file);
  [[nodiscard]] Row& RowOf(Station station) { return rows_.at(static_cast<std::size_t>(station)); }

  std::array<Row, 2> rows_{};
  std::vector<std::string> files_;
  wxStaticText* note_;
};

}  // namespace skyhop
