#pragma once

#include <span>
#include <vector>

#include "ui/wx/config_page.h"

namespace skyhop {

/// The applications of the suite, and which of them are connected.
class ConfigLinksPage : public ConfigPage {
 public:
  ConfigLinksPage(wxWindow* parent, const ConfigEvents& events);

  void SetPeers(std::span<const PeerState> peers);

 private:
  wxFlexGridSizer* grid_;
  std::vector<PeerState> shown_;
};

}  // namespace skyhop
