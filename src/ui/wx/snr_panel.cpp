#include "ui/wx/snr_panel.h"

#include <wx/settings.h>
#include <wx/sizer.h>

#include <string>

#include "ui/wx/wx_text.h"

namespace skyhop {
namespace {

constexpr std::array<const char*, 6> kHeadings = {"",     "SNR in 1 Hz", "Above required",
                                                  "Days", "Mode",        "Signal"};

}  // namespace

SnrPanel::SnrPanel(wxWindow* parent, ControlSet& controls) : wxPanel(parent), controls_(&controls) {
  Hide();
}

void SnrPanel::MakeControls() {
  if (table_ != nullptr) return;
  const int gap = FromDIP(6);
  auto* input = new wxBoxSizer(wxHORIZONTAL);
  const wxSizerFlags centred = wxSizerFlags().CenterVertical().Border(wxRIGHT, gap);
  input->Add(controls_->MakeCaption(this, TextField::kSNRFrequency), centred);
  input->Add(controls_->MakeText(this, TextField::kSNRFrequency, 10), centred);
  input->Add(controls_->MakeButton(this, Button::kSNRPredictCmd), centred);
  headline_ = new wxStaticText(this, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize,
                               wxST_NO_AUTORESIZE | wxST_ELLIPSIZE_END);
  input->Add(headline_, wxSizerFlags(1).CenterVertical().Border(wxLEFT, gap));

  auto* table = new wxFlexGridSizer(kColumns, FromDIP(2), FromDIP(24));
  for (const char* heading : kHeadings) {
    auto* label = new wxStaticText(this, wxID_ANY, heading);
    label->SetForegroundColour(wxSystemSettings::GetColour(wxSYS_COLOUR_GRAYTEXT));
    table->Add(label);
  }
  for (auto& row : cells_) {
    for (wxStaticText*& cell : row) {
      cell = new wxStaticText(this, wxID_ANY, wxString());
      table->Add(cell);
    }
  }
  table_ = table;
  engine_ = new wxStaticText(this, wxID_ANY, wxString());
  auto* values = new wxBoxSizer(wxHORIZONTAL);
  values->Add(table, wxSizerFlags(1));
  values->Add(engine_, wxSizerFlags().Border(wxLEFT, gap));
  problem_ = new wxStaticText(this, wxID_ANY, wxString());
  auto* all = new wxBoxSizer(wxVERTICAL);
  all->Add(input, wxSizerFlags().Expand());
  all->Add(values, wxSizerFlags().Expand().Border(wxTOP, gap));
  all->Add(problem_, wxSizerFlags().Border(wxTOP, gap));
  SetSizer(all);
  // Without results the headings have no use.
  table_->ShowItems(false);
  problem_->Hide();
}

void SnrPanel::Show_(const SnrDisplay& display) {
  if (table_ == nullptr && !display.active) return;
  MakeControls();
  headline_->SetLabelText(ToWx(display.headline));
  // A user who has installed an engine should see that this is not that engine.
  engine_->SetFont(display.estimate ? GetFont().Bold() : GetFont());
  engine_->SetLabelText(ToWx(display.engine));
  for (const auto& row : cells_) {
    for (wxStaticText* cell : row) cell->Enable(!display.old);
  }
  std::string problem;
  for (std::size_t row = 0; row < cells_.size(); ++row) {
    const SnrRow& texts = display.rows.at(row);
    Fill(row, texts);
    if (texts.problem.empty()) continue;
    if (!problem.empty()) problem += '\n';
    problem += texts.path + ": " + texts.problem;
  }
  problem_->SetLabelText(ToWx(problem));
  problem_->Show(!problem.empty());
  table_->ShowItems(!display.rows[0].path.empty());
  const bool changes = IsShown() != display.active;
  Show(display.active);
  GetSizer()->Layout();
  InvalidateBestSize();
  if (changes || display.active) GetParent()->Layout();
}

void SnrPanel::Fill(std::size_t row, const SnrRow& texts) {
  const std::array<const std::string*, kColumns> columns = {
      &texts.path, &texts.snr, &texts.margin, &texts.reliability, &texts.mode, &texts.signal};
  for (std::size_t column = 0; column < columns.size(); ++column) {
    cells_.at(row).at(column)->SetLabelText(ToWx(*columns.at(column)));
  }
}

}  // namespace skyhop
