#include "ui/wx/config_url_page.h"

#include <algorithm>

#include "ui/wx/focus.h"
#include "ui/wx/wx_text.h"

namespace skyhop {
namespace {

/// The width of an Open button. The button is as high as its field, because the rows must fit into
/// a small window.
constexpr int kOpenWidth = 64;  // DIP

}  // namespace

ConfigUrlPage::ConfigUrlPage(wxWindow* parent, const ConfigEvents& events)
    : ConfigPage(parent, "Prediction URLs", events) {
  AddText(
      "Where solar and geomagnetic data are downloaded from, and the web pages that the "
      "prediction window offers.");
  for (std::size_t i = 0; i < rows_.size(); ++i) AddRow(i);
  at_start_ = new wxCheckBox(this, wxID_ANY, "Download the sunspot number at &start");
  at_start_->SetToolTip("Fetch this month's predicted sunspot number whenever the program starts");
  at_start_->Bind(wxEVT_CHECKBOX, [this](wxCommandEvent& event) {
    Events().Send(&IoncapConfig::DownloadSsnAtStart_Click, event.IsChecked());
  });
  AddNarrow(at_start_);
  auto* restore = new wxButton(this, wxID_ANY, "Restore &defaults");
  restore->SetToolTip("Replace all addresses by those of a new installation");
  restore->Bind(wxEVT_BUTTON,
                [this](wxCommandEvent&) { Events().Send(&IoncapConfig::RestoreURLsCmd_Click); });
  AddNarrow(restore);
}

void ConfigUrlPage::AddRow(std::size_t index) {
  const ConfigUrl& url = kConfigUrls.at(index);
  const wxString name = url.label;
  auto* block = new wxBoxSizer(wxVERTICAL);
  block->Add(new wxStaticText(this, wxID_ANY, name));
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  auto* field = new CommitField(this, [this, index, target = url.url] {
    Events().Send(&IoncapConfig::URL_Change, target, rows_.at(index).field->Text());
  });
  field->SetToolTip("Address of: " + name);
  auto* open =
      new wxButton(this, wxID_ANY, "Open", wxDefaultPosition, wxDefaultSize, wxBU_EXACTFIT);
  open->SetMinSize(wxSize(std::max(FromDIP(kOpenWidth), open->GetBestSize().x), -1));
  open->SetToolTip("Show this address in the web browser");
  open->Bind(wxEVT_BUTTON, [this, index, target = url.url](wxCommandEvent&) {
    rows_.at(index).field->Commit();
    Events().Send(&IoncapConfig::OpenURLCmd_Click, target);
  });
  row->Add(field, wxSizerFlags(1).CenterVertical().Border(wxRIGHT, FromDIP(8)));
  row->Add(open, wxSizerFlags().CenterVertical());
  block->Add(row, wxSizerFlags().Expand().Border(wxTOP, FromDIP(2)));
  Add(block);
  rows_.at(index) = {field, open, AddSubText("")};
}

ConfigUrlPage::Row& ConfigUrlPage::Find(Address url) {
  std::size_t index = 0;
  while (kConfigUrls.at(index).url != url) ++index;
  return rows_.at(index);
}

void ConfigUrlPage::SetUrl(Address url, const std::string& text) {
  Find(url).field->SetText(text);
}

void ConfigUrlPage::EnableOpen(Address url, bool enabled) {
  EnableKeepingFocus(*Find(url).open, enabled);
}

void ConfigUrlPage::SetNote(Address url, const std::string& text) {
  SetText(Find(url).note, text);
}

}  // namespace skyhop
