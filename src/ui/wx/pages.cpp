#include "ui/wx/pages.h"

#include <wx/sizer.h>
#include <wx/statbox.h>

#include <array>

namespace skyhop {
namespace {

constexpr std::array<OptionText, 4> kNoiseLevels = {
    {{3, "Remote"}, {2, "Rural"}, {1, "Residential"}, {0, "Industrial"}}};
constexpr std::array<OptionText, 5> kPowers = {
    {{0, "5 W"}, {1, "20 W"}, {2, "100 W"}, {3, "500 W"}, {4, "1500 W"}}};
constexpr std::array<OptionText, 2> kPathOptions = {{{0, "Short"}, {1, "Long"}}};
constexpr std::array<OptionText, 2> kDirections = {
    {{1, "To the DX Station"}, {0, "From the DX Station"}}};
constexpr std::array<OptionText, 2> kRequesters = {
    {{dde_option::kRequestedByPeer, "Requested by a peer"},
     {dde_option::kRequestedHere, "Requested here"}}};

/// A box that needs the room of its title. The toolkit's own asks for the room that its controls
/// have now, so a window would never become smaller again.
class GroupBox : public wxStaticBox {
 public:
  GroupBox(wxWindow* parent, const wxString& title) : wxStaticBox(parent, wxID_ANY, title) {}

 protected:
  [[nodiscard]] wxSize DoGetBestSize() const override {
    return GetTextExtent(GetLabelText()) + FromDIP(wxSize(24, 0));
  }
};

/// A page: panel with a row of groups side by side.
class Page {
 public:
  Page(wxPanel& panel, ControlSet& controls)
      : panel_(&panel), controls_(&controls), row_(new wxBoxSizer(wxHORIZONTAL)) {
    auto* outer = new wxBoxSizer(wxVERTICAL);
    outer->Add(row_, wxSizerFlags(1).Expand().Border(wxALL, Px(6)));
    panel_->SetSizer(outer);
  }

  /// A group with its title; `proportion` is its share of the spare width.
  wxStaticBoxSizer* Group(const wxString& title, int orientation, int proportion = 0) {
    auto* group = new wxStaticBoxSizer(new GroupBox(panel_, title), orientation);
    row_->Add(group, wxSizerFlags(proportion).Expand().Border(wxRIGHT, Px(8)));
    return group;
  }

  /// A grid of `columns` in a group; `proportion` is its share of the spare height.
  wxFlexGridSizer* Grid(wxStaticBoxSizer* group, int columns, int proportion = 0) {
    auto* grid = new wxFlexGridSizer(columns, Px(5), Px(8));
    group->Add(grid, wxSizerFlags(proportion).Expand().Border(wxALL, Px(6)));
    return grid;
  }

  void Field(wxStaticBoxSizer* group, wxSizer* grid, TextField field, int characters) {
    wxWindow* const box = group->GetStaticBox();
    grid->Add(controls_->MakeCaption(box, field), wxSizerFlags().CenterVertical());
    grid->Add(controls_->MakeText(box, field, characters), wxSizerFlags().CenterVertical());
  }

  void Button_(wxStaticBoxSizer* group, wxSizer* grid, Button button) {
    grid->Add(controls_->MakeButton(group->GetStaticBox(), button),
              wxSizerFlags().CenterVertical().Expand());
  }

  void Options(wxStaticBoxSizer* group, OptionGroup options, std::span<const OptionText> texts,
               int orientation) {
    group->Add(controls_->MakeOptions(group->GetStaticBox(), options, texts, orientation),
               wxSizerFlags().Border(wxALL, Px(6)));
  }

  void Words(wxStaticBoxSizer* group, const wxString& text) {
    group->Add(new wxStaticText(group->GetStaticBox(), wxID_ANY, text),
               wxSizerFlags().Border(wxLEFT | wxRIGHT | wxTOP, Px(6)));
  }

  /// A label with the room of several lines.
  void LabelRow(wxStaticBoxSizer* group, Label label) {
    group->Add(controls_->MakeLabel(group->GetStaticBox(), label),
               wxSizerFlags(1).Expand().Border(wxALL, Px(6)));
  }

  void CaptionedLabel(wxStaticBoxSizer* group, wxSizer* grid, const wxString& caption,
                      Label label) {
    wxWindow* const box = group->GetStaticBox();
    grid->Add(new wxStaticText(box, wxID_ANY, caption), wxSizerFlags().CenterVertical());
    grid->Add(controls_->MakeLabel(box, label, wxST_ELLIPSIZE_END),
              wxSizerFlags(1).CenterVertical().Expand());
  }

  /// The same for a label of several lines, in a row that grows.
  void CaptionedLines(wxStaticBoxSizer* group, wxFlexGridSizer* grid, const wxString& caption,
                      Label label) {
    wxWindow* const box = group->GetStaticBox();
    grid->Add(new wxStaticText(box, wxID_ANY, caption), wxSizerFlags().Top());
    grid->Add(controls_->MakeLabel(box, label), wxSizerFlags(1).Expand());
    grid->AddGrowableRow(static_cast<std::size_t>(grid->GetEffectiveRowsCount() - 1));
  }

  [[nodiscard]] int Px(int dip) const { return panel_->FromDIP(dip); }
  [[nodiscard]] ControlSet& Controls() const { return *controls_; }

 private:
  wxPanel* panel_;
  ControlSet* controls_;
  wxBoxSizer* row_;
};

/// In widths of a digit: wide enough for 179 59' 59" W.
constexpr int kCoordinate = 11;
constexpr int kDate = 9;
constexpr int kSquare = 7;
constexpr int kNumber = 6;
constexpr int kCountry = 8;

}  // namespace

void FillParametersPage(wxPanel& panel, ControlSet& controls) {
  Page page(panel, controls);

  // Two grids side by side, for the Tab key to go down the columns.
  wxStaticBoxSizer* const local = page.Group("Your Station", wxHORIZONTAL);
  wxFlexGridSizer* grid = page.Grid(local, 2);
  page.Field(local, grid, TextField::kLocalLat, kCoordinate);
  page.Field(local, grid, TextField::kLocalLon, kCoordinate);
  page.Field(local, grid, TextField::kLocalGrid, kCoordinate);
  grid = page.Grid(local, 2);
  page.Field(local, grid, TextField::kLocalPwr, kDate);
  page.Field(local, grid, TextField::kLocalTakeOff, kDate);
  page.Field(local, grid, TextField::kTheDate, kDate);

  // What room is left belongs to the name of the country.
  wxStaticBoxSizer* const dx = page.Group("DX Station", wxVERTICAL, 1);
  wxWindow* const box = dx->GetStaticBox();
  grid = page.Grid(dx, 2);
  dx->GetItem(grid)->SetFlag(wxALL | wxEXPAND);
  page.Field(dx, grid, TextField::kDXLat, kCoordinate);
  page.Field(dx, grid, TextField::kDXLon, kCoordinate);
  auto* square = new wxBoxSizer(wxHORIZONTAL);
  grid->Add(controls.MakeCaption(box, TextField::kDXGrid), wxSizerFlags().CenterVertical());
  square->Add(controls.MakeText(box, TextField::kDXGrid, kSquare),
              wxSizerFlags().CenterVertical().Border(wxRIGHT, page.Px(6)));
  auto* country = controls.MakeLabel(box, Label::kPrefix, wxST_ELLIPSIZE_END);
  country->SetMinSize(country->GetTextExtent(wxString('0', kCountry)));
  square->Add(country, wxSizerFlags(1).CenterVertical());
  grid->Add(square, wxSizerFlags().Expand());
  grid->AddGrowableCol(1);
  dx->Add(controls.MakeCheckBox(box, CheckBox::kDXTracksTesseraLocation),
          wxSizerFlags().Border(wxLEFT | wxRIGHT | wxBOTTOM, page.Px(6)));

  wxStaticBoxSizer* const path = page.Group("Path", wxVERTICAL);
  page.Options(path, OptionGroup::kPath, kPathOptions, wxHORIZONTAL);
  page.Options(path, OptionGroup::kPredictSignals, kDirections, wxVERTICAL);
}

void FillTransmitterPage(wxPanel& panel, ControlSet& controls) {
  Page page(panel, controls);
  wxStaticBoxSizer* const power = page.Group("DX Station's power", wxVERTICAL);
  page.Options(power, OptionGroup::kDXPwr, kPowers, wxHORIZONTAL);
  wxStaticBoxSizer* const roles = page.Group("In this prediction", wxVERTICAL, 1);
  page.LabelRow(roles, Label::kConditions);
}

void FillReceiverPage(wxPanel& panel, ControlSet& controls) {
  Page page(panel, controls);
  wxStaticBoxSizer* const required = page.Group("Required", wxVERTICAL);
  wxFlexGridSizer* const grid = page.Grid(required, 2);
  wxWindow* const box = required->GetStaticBox();
  grid->Add(new wxStaticText(box, wxID_ANY, "Mo&de"), wxSizerFlags().CenterVertical());
  grid->Add(controls.MakeModeList(box), wxSizerFlags().CenterVertical().Expand());
  page.Field(required, grid, TextField::kSNR, kNumber);
  page.Field(required, grid, TextField::kAvail, kNumber);

  wxStaticBoxSizer* const local = page.Group("Noise at Your Station", wxVERTICAL);
  page.Options(local, OptionGroup::kLocalNoiseLevel, kNoiseLevels, wxVERTICAL);
  wxStaticBoxSizer* const dx = page.Group("Noise at the DX Station", wxVERTICAL);
  page.Options(dx, OptionGroup::kDXNoiseLevel, kNoiseLevels, wxVERTICAL);
  wxStaticBoxSizer* const roles = page.Group("In this prediction", wxVERTICAL, 1);
  page.LabelRow(roles, Label::kConditions);
}

void FillConditionsPage(wxPanel& panel, ControlSet& controls) {
  Page page(panel, controls);
  wxStaticBoxSizer* const solar = page.Group("Solar and geomagnetic activity", wxVERTICAL);
  wxFlexGridSizer* const grid = page.Grid(solar, 3);
  page.Field(solar, grid, TextField::kFlux, kNumber);
  page.Button_(solar, grid, Button::kUpdateSFICmd);
  page.Field(solar, grid, TextField::kSSN, kNumber);
  page.Button_(solar, grid, Button::kUpdateSSNCmd);
  page.Field(solar, grid, TextField::kKindex, kNumber);
  grid->AddSpacer(0);

  wxStaticBoxSizer* const words = page.Group("How they are used", wxVERTICAL, 1);
  page.Words(words,
             "The sunspot number counts when it is given;\n"
             "otherwise it is derived from the solar flux.");
  page.Words(words, "The K index tells how disturbed the earth's\nmagnetic field is.");
}

void FillPredictionPage(wxPanel& panel, ControlSet& controls) {
  Page page(panel, controls);
  wxStaticBoxSizer* const last = page.Group("Last prediction", wxVERTICAL, 3);
  wxFlexGridSizer* grid = page.Grid(last, 2, 1);
  grid->AddGrowableCol(1);
  page.CaptionedLabel(last, grid, "Engine:", Label::kEngineLabel);
  page.CaptionedLabel(last, grid, "Computed by:", Label::kComputedBy);
  page.CaptionedLines(last, grid, "Path:", Label::kSummary);
  page.Options(last, OptionGroup::kDDEOption, kRequesters, wxHORIZONTAL);
  controls.MakeIndicator(OptionGroup::kDDEOption);

  wxStaticBoxSizer* const geometry = page.Group("Between the stations", wxVERTICAL, 2);
  grid = page.Grid(geometry, 2);
  grid->AddGrowableCol(1);
  page.CaptionedLabel(geometry, grid, "To the DX Station:", Label::kBearingFromQTH);
  page.CaptionedLabel(geometry, grid, "From the DX Station:", Label::kBearingFromDX);
  page.CaptionedLabel(geometry, grid, "Distance:", Label::kDistance);
}

wxPanel* MakeCommandColumn(wxWindow* parent, ControlSet& controls) {
  auto* panel = new wxPanel(parent);
  auto* column = new wxBoxSizer(wxVERTICAL);
  const int gap = panel->FromDIP(4);
  const auto add = [&](Button button) {
    column->Add(controls.MakeButton(panel, button), wxSizerFlags().Expand().Border(wxBOTTOM, gap));
  };
  const auto space = [&] { column->AddSpacer(panel->FromDIP(10)); };
  add(Button::kPathsButton);
  add(Button::kAbortButton);
  space();
  add(Button::kPredictSPToCmd);
  add(Button::kPredictLPToCmd);
  add(Button::kPredictSPFromCmd);
  add(Button::kPredictLPFromCmd);
  space();
  add(Button::kForecastCmd);
  add(Button::kCurrentCmd);
  add(Button::kHistoryCmd);
  add(Button::kBeaconCmd);
  column->AddStretchSpacer();
  add(Button::kConfigCmd);
  add(Button::kHelpCmd);
  controls.ButtonOf(Button::kPathsButton)->SetFont(panel->GetFont().Bold());
  panel->SetSizer(column);
  return panel;
}

}  // namespace skyhop
