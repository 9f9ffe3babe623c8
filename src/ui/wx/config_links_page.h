#pragma once

#include <wx/button.h>

#include <span>
#include <vector>

#include "ui/wx/config_page.h"

namespace skyhop {

/// The applications of the suite, their connection states, and a button to connect each.
class ConfigLinksPage : public ConfigPage {
 public:
  ConfigLinksPage(wxWindow* parent, const ConfigEvents& events);

  void SetPeers(std::span<const PeerState> peers);

 private:
  struct Row {
    wxStaticText* name;
    wxStaticText* state;
    wxButton* connect;
    wxStaticText* purpose;
  };

  void AddRow();
  void Fill(const Row& row, const PeerState& peer);

  wxFlexGridSizer* grid_;
  std::vector<Row> rows_;
  std::vector<PeerState> shown_;
};

}  // namespace skyhop
