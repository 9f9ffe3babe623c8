#include "ui/wx/config_mode_page.h"

#include "ui/wx/wx_text.h"

namespace skyhop {

ConfigModePage::ConfigModePage(wxWindow* parent, const ConfigEvents& events)
    : ConfigPage(parent, "Mode-dependent settings", events) {
  AddText(
      "The modes that the prediction window offers, with the signal-to-noise ratio "
      "that each needs in a bandwidth of one hertz.");
  AddTable();
  AddFields();
  AddButtons();
}

void ConfigModePage::AddTable() {
  table_ = new wxDataViewListCtrl(this, wxID_ANY, wxDefaultPosition, FromDIP(wxSize(-1, 170)),
                                  wxDV_SINGLE | wxDV_ROW_LINES);
  table_->AppendTextColumn("Mode", wxDATAVIEW_CELL_INERT, FromDIP(200));
  table_->AppendTextColumn("Required SNR (dB)", wxDATAVIEW_CELL_INERT, FromDIP(160));
  table_->Bind(wxEVT_DATAVIEW_SELECTION_CHANGED, [this](wxDataViewEvent&) {
    CommitFields();
    ShowSelected();
  });
  AddGrowing(table_);
}

void ConfigModePage::AddFields() {
  const auto gap = wxSizerFlags().CenterVertical().Border(wxRIGHT, FromDIP(8));
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(new wxStaticText(this, wxID_ANY, "&Mode"), gap);
  mode_ = new CommitField(this, [this] { SendFields(); });
  mode_->SetToolTip("Name of the selected mode");
  row->Add(mode_, wxSizerFlags(1).CenterVertical().Border(wxRIGHT, FromDIP(16)));
  row->Add(new wxStaticText(this, wxID_ANY, "Required &SNR (dB)"), gap);
  snr_ = new CommitField(this, [this] { SendFields(); });
  snr_->SetToolTip("Required signal-to-noise ratio, in decibels (-30 to 99)");
  row->Add(snr_, wxSizerFlags().CenterVertical());
  Add(row);
}

void ConfigModePage::AddButtons() {
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  MakeButton(row, "&Add", "Add a mode and give it a name")
      ->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) {
        CommitFields();
        Events().Send(&IoncapConfig::AddModeCmd_Click);
        mode_->SetFocus();
        mode_->SelectAll();
      });
  remove_ = MakeButton(row, "&Remove", "Remove the selected mode");
  remove_->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) {
    const int selected = table_->GetSelectedRow();
    if (selected == wxNOT_FOUND) return;
    Events().Send(&IoncapConfig::RemoveModeCmd_Click, static_cast<std::size_t>(selected));
  });
  row->AddStretchSpacer();
  MakeButton(row, "Restore &defaults", "Replace the whole list by the modes of a new installation")
      ->Bind(wxEVT_BUTTON,
             [this](wxCommandEvent&) { Events().Send(&IoncapConfig::RestoreModesCmd_Click); });
  Add(row);
}

wxButton* ConfigModePage::MakeButton(wxSizer* row, const wxString& caption, const wxString& tip) {
  auto* button = new wxButton(this, wxID_ANY, caption);
  button->SetToolTip(tip);
  if (!row->IsEmpty()) row->AddSpacer(FromDIP(8));
  row->Add(button);
  return button;
}

void ConfigModePage::SetModes(std::span<const ModeSettings> modes, int selected) {
  // The fields' values belong to a row that may no longer exist.
  shown_ = -1;
  table_->DeleteAllItems();
  for (const ModeSettings& mode : modes) {
    wxVector<wxVariant> cells;
    cells.push_back(wxVariant(ToWx(mode.mode)));
    cells.push_back(wxVariant(ToWx(mode.snr)));
    table_->AppendItem(cells);
  }
  if (selected >= 0) {
    table_->SelectRow(static_cast<unsigned>(selected));
    table_->EnsureVisible(table_->RowToItem(selected));
  }
  ShowSelected();
}

void ConfigModePage::SetMode(std::size_t row, const ModeSettings& settings) {
  table_->SetTextValue(ToWx(settings.mode), static_cast<unsigned>(row), 0);
  table_->SetTextValue(ToWx(settings.snr), static_cast<unsigned>(row), 1);
  if (shown_ == static_cast<int>(row)) ShowSelected();
}

void ConfigModePage::ShowSelected() {
  shown_ = table_->GetSelectedRow();
  const bool any = shown_ != wxNOT_FOUND;
  const auto cell = [&](unsigned column) {
    return any ? FromWx(table_->GetTextValue(static_cast<unsigned>(shown_), column))
               : std::string();
  };
  mode_->SetText(cell(0));
  snr_->SetText(cell(1));
  mode_->Enable(any);
  snr_->Enable(any);
}

void ConfigModePage::CommitFields() {
  mode_->Commit();
  snr_->Commit();
}

void ConfigModePage::SendFields() {
  if (shown_ < 0) return;
  Events().Send(&IoncapConfig::Mode_Change, static_cast<std::size_t>(shown_),
                ModeSettings{mode_->Text(), snr_->Text()});
}

}  // namespace skyhop
