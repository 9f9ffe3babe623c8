#include "ui/wx/config_links_page.h"

#include <algorithm>

#include "ui/wx/focus.h"
#include "ui/wx/wx_text.h"

namespace skyhop {

ConfigLinksPage::ConfigLinksPage(wxWindow* parent, const ConfigEvents& events)
    : ConfigPage(parent, "Links", events),
      grid_(new wxFlexGridSizer(4, wxSize(FromDIP(24), FromDIP(8)))) {
  AddText(
      "The applications that this program works together with. Links are opened by "
      "themselves while both run; Connect tries at once.");
  Add(grid_);
}

/// Keeps the rows: a button must not disappear during its own click event.
void ConfigLinksPage::SetPeers(std::span<const PeerState> peers) {
  if (std::equal(peers.begin(), peers.end(), shown_.begin(), shown_.end())) return;
  shown_.assign(peers.begin(), peers.end());
  while (rows_.size() < shown_.size()) AddRow();
  for (std::size_t row = 0; row < rows_.size(); ++row) {
    Fill(rows_[row], row < shown_.size() ? shown_[row] : PeerState());
  }
  Arrange();
}

void ConfigLinksPage::AddRow() {
  const auto add_label = [this] {
    auto* const label = new wxStaticText(this, wxID_ANY, "");
    grid_->Add(label, wxSizerFlags().CenterVertical());
    return label;
  };
  Row row{};
  row.name = add_label();
  row.name->SetFont(row.name->GetFont().Bold());
  row.state = add_label();
  row.connect = new wxButton(this, wxID_ANY, "Connect");
  grid_->Add(row.connect, wxSizerFlags().CenterVertical());
  row.purpose = add_label();
  row.connect->Bind(wxEVT_BUTTON, [this, index = rows_.size()](wxCommandEvent&) {
    Events().Send(&IoncapConfig::ConnectCmd_Click, index);
  });
  rows_.push_back(row);
}

void ConfigLinksPage::Fill(const Row& row, const PeerState& peer) {
  row.name->SetLabelText(ToWx(peer.name));
  // A label's best size does not follow its font at once.
  row.name->SetMinSize(row.name->GetTextExtent(row.name->GetLabelText()));
  row.state->SetLabelText(peer.connected ? "connected" : "not connected");
  row.purpose->SetLabelText(ToWx(peer.purpose));
  row.connect->SetName(ToWx("Connect " + peer.name));
  EnableKeepingFocus(*row.connect, peer.can_connect);
}

}  // namespace skyhop
