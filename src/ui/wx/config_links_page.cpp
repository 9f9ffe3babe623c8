#include "ui/wx/config_links_page.h"

#include <algorithm>

#include "ui/wx/wx_text.h"

namespace skyhop {

ConfigLinksPage::ConfigLinksPage(wxWindow* parent, const ConfigEvents& events)
    : ConfigPage(parent, "Links", events),
      grid_(new wxFlexGridSizer(3, wxSize(FromDIP(24), FromDIP(8)))) {
  AddText(
      "The applications that this program works together with. Links are opened by "
      "themselves while both run.");
  Add(grid_);
}

void ConfigLinksPage::SetPeers(std::span<const PeerState> peers) {
  if (std::equal(peers.begin(), peers.end(), shown_.begin(), shown_.end())) return;
  shown_.assign(peers.begin(), peers.end());
  grid_->Clear(true);
  const auto add = [this](const std::string& text, bool bold) {
    auto* label = new wxStaticText(this, wxID_ANY, "");
    label->SetLabelText(ToWx(text));
    if (bold) {
      label->SetFont(label->GetFont().Bold());
      // The size that a label asks for does not follow its font at once.
      label->SetMinSize(label->GetTextExtent(label->GetLabelText()));
    }
    grid_->Add(label);
  };
  for (const PeerState& peer : peers) {
    add(peer.name, true);
    add(peer.connected ? "connected" : "not connected", false);
    add(peer.purpose, false);
  }
  Arrange();
}

}  // namespace skyhop
