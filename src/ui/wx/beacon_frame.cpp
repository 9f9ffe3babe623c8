#include "ui/wx/beacon_frame.h"

#include <wx/filedlg.h>
#include <wx/filename.h>
#include <wx/panel.h>
#include <wx/settings.h>
#include <wx/sizer.h>

#include "ui/wx/focus.h"
#include "ui/wx/nested_loops.h"
#include "ui/wx/wx_text.h"

namespace skyhop {
namespace {

/// Widths of the columns in DIP, for text of the usual size.
constexpr std::array<int, kBandColumns.size()> kColumnWidths = {64,  86,  60, 236, 110,
                                                                116, 112, 90, 140};

void SetLine(wxStaticText& line, const std::string& text) {
  const wxString shown = ToWx(text);
  if (line.GetLabelText() != shown) line.SetLabelText(shown);
}

/// Sets a line that is hidden while it is empty. The canvas gives room to a shown one.
void SetOptionalLine(wxStaticText& line, const std::string& text) {
  if (line.GetLabelText() == ToWx(text)) return;
  SetLine(line, text);
  // The line may be too narrow for the text.
  line.SetToolTip(ToWx(text));
  line.Show(!text.empty());
  line.GetParent()->Layout();
}

}  // namespace

BeaconFrame::BeaconFrame(wxWindow* parent)
    : ViewFrame(parent, "Skyhop Beacons", "BeaconMonitor", wxSize(1040, 760)) {
  timer_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { Send({.kind = BeaconEvent::kTimerTick}); });
  Bind(wxEVT_CHAR_HOOK, &BeaconFrame::OnMarkKey, this);
}

void BeaconFrame::MakeControls() {
  auto* base = new wxPanel(this);
  const int gap = FromDIP(6);
  clock_ = MakeLine(base);
  clock_->SetFont(GetFont().Bold());
  warning_ = MakeLine(base);
  warning_->Hide();
  problem_ = MakeLine(base);
  problem_->Hide();
  MakeList(base);
  auto* selection = MakeSelection(base);
  target_ = MakeLine(base);
  target_->SetFont(GetFont().Bold());
  auto* marks = MakeMarks(base);
  canvas_ = new PaintedCanvas(base, "BeaconDay", wxSize(480, 200));
  canvas_->Attach({std::bind_front(&BeaconWindow::SetPalette, controller_),
                   std::bind_front(&BeaconWindow::Paint, controller_)});
  auto* days = MakeDayButtons(base);
  status_ = MakeLine(base);

  auto* content = new wxBoxSizer(wxVERTICAL);
  const auto line = wxSizerFlags().Expand().Border(wxBOTTOM, gap);
  content->Add(clock_, line);
  content->Add(warning_, line);
  content->Add(problem_, line);
  content->Add(list_, line);
  content->Add(selection, line);
  content->Add(target_, line);
  content->Add(marks, line);
  content->Add(canvas_, wxSizerFlags(1).Expand().Border(wxBOTTOM, gap));
  content->Add(days, line);
  content->Add(status_, wxSizerFlags().Expand());
  auto* margin = new wxBoxSizer(wxVERTICAL);
  margin->Add(content, wxSizerFlags(1).Expand().Border(wxALL, gap));
  base->SetSizer(margin);
  auto* whole = new wxBoxSizer(wxVERTICAL);
  whole->Add(base, wxSizerFlags(1).Expand());
  SetSizer(whole);
}

/// One line of text. An ellipsis replaces its end if the line is too narrow.
wxStaticText* BeaconFrame::MakeLine(wxWindow* parent) {
  return new wxStaticText(parent, wxID_ANY, "", wxDefaultPosition, wxDefaultSize,
                          wxST_ELLIPSIZE_END | wxST_NO_AUTORESIZE);
}

void BeaconFrame::MakeList(wxWindow* parent) {
  list_ = new wxListView(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize,
                         wxLC_REPORT | wxLC_SINGLE_SEL | wxLC_HRULES);
  list_->SetName("Beacons on the bands");
  for (std::size_t column = 0; column < kBandColumns.size(); ++column) {
    list_->AppendColumn(ToWx(kBandColumns.at(column)), wxLIST_FORMAT_LEFT,
                        TextPixels(kColumnWidths.at(column)));
  }
  // Heading and five bands.
  list_->SetMinSize(wxSize(FromDIP(640), list_->GetCharHeight() * 11));
}

wxSizer* BeaconFrame::MakeSelection(wxWindow* parent) {
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  const auto item = wxSizerFlags().CenterVertical().Border(wxRIGHT, FromDIP(8));
  wxArrayString ways;
  for (const std::string_view text : kSelectByTexts) ways.Add(ToWx(text));
  row->Add(new wxStaticText(parent, wxID_ANY, "&Select by"), item);
  select_by_ = new wxChoice(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize, ways);
  select_by_->SetName("Select by");
  select_by_->Bind(wxEVT_CHOICE, [this](wxCommandEvent& event) {
    Send({.kind = BeaconEvent::kSelectByClick, .index = event.GetSelection()});
  });
  row->Add(select_by_, item);
  choices_ = new wxChoice(parent, wxID_ANY, wxDefaultPosition, wxSize(TextPixels(140), -1));
  choices_->SetName("Selected");
  choices_->Bind(wxEVT_CHOICE, [this](wxCommandEvent& event) {
    Send({.kind = BeaconEvent::kChoiceClick, .index = event.GetSelection()});
  });
  row->Add(choices_, item);
  for (std::size_t i = 0; i < checks_.size(); ++i) {
    checks_.at(i) = new wxCheckBox(parent, wxID_ANY, ToWx(kBeaconCheckWords.at(i).caption));
    checks_.at(i)->Bind(wxEVT_CHECKBOX, [this, i](wxCommandEvent& event) {
      Send({.kind = BeaconEvent::kCheckClick,
            .check = static_cast<BeaconCheck>(i),
            .checked = event.IsChecked()});
    });
    AddToolTip(checks_.at(i), kBeaconCheckWords.at(i).tool_tip);
    row->Add(checks_.at(i), item);
  }
  return row;
}

wxSizer* BeaconFrame::MakeMarks(wxWindow* parent) {
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  const auto item = wxSizerFlags().CenterVertical().Border(wxRIGHT, FromDIP(8));
  row->Add(MakeButton(parent, BeaconButton::kHeard), item);
  row->Add(MakeButton(parent, BeaconButton::kNotHeard), item);
  row->Add(new wxStaticText(parent, wxID_ANY, "S-&meter or note"), item);
  note_ = new wxTextCtrl(parent, wxID_ANY, "", wxDefaultPosition, wxSize(TextPixels(220), -1));
  note_->SetName("S-meter or note");
  // The least height of the toolkit does not depend on the font.
  note_->SetMinSize(wxSize(TextPixels(220), GetCharHeight() + FromDIP(9)));
  note_->SetMaxLength(200);
  row->Add(note_, item);
  row->AddStretchSpacer();
  row->Add(MakeButton(parent, BeaconButton::kReload), wxSizerFlags().CenterVertical());
  return row;
}

wxSizer* BeaconFrame::MakeDayButtons(wxWindow* parent) {
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  const auto item = wxSizerFlags().CenterVertical().Border(wxRIGHT, FromDIP(8));
  row->Add(MakeButton(parent, BeaconButton::kEarlier), item);
  row->Add(MakeButton(parent, BeaconButton::kLater), item);
  row->AddStretchSpacer();
  row->Add(MakeButton(parent, BeaconButton::kExport), wxSizerFlags().CenterVertical());
  return row;
}

wxButton* BeaconFrame::MakeButton(wxWindow* parent, BeaconButton button) {
  const auto i = static_cast<std::size_t>(button);
  buttons_.at(i) = new wxButton(parent, wxID_ANY, ToWx(kBeaconButtonWords.at(i).caption));
  buttons_.at(i)->Bind(wxEVT_BUTTON, [this, button](wxCommandEvent&) {
    Send({.kind = BeaconEvent::kButtonClick, .button = button});
  });
  AddToolTip(buttons_.at(i), kBeaconButtonWords.at(i).tool_tip);
  return buttons_.at(i);
}

void BeaconFrame::Send(const BeaconEvent& event) {
  if (controller_ != nullptr) controller_->Handle(event);
}

void BeaconFrame::OnMarkKey(wxKeyEvent& event) {
  const int key = event.GetKeyCode();
  if (event.HasAnyModifiers() || (key != WXK_F2 && key != WXK_F3)) {
    event.Skip();
    return;
  }
  Send({.kind = BeaconEvent::kButtonClick,
        .button = key == WXK_F2 ? BeaconButton::kHeard : BeaconButton::kNotHeard,
        .key_time = std::chrono::milliseconds(event.GetTimestamp())});
}

void BeaconFrame::SetTexts(const BeaconTexts& texts) {
  SetLine(*clock_, texts.clock);
  SetOptionalLine(*warning_, texts.warning);
  SetOptionalLine(*problem_, texts.problem);
  SetRows(texts.rows);
  SetLine(*target_, texts.target);
}

void BeaconFrame::SetRows(const std::vector<BandRow>& rows) {
  if (rows.size() != rows_.size()) {
    list_->DeleteAllItems();
    rows_.assign(rows.size(), {});
    for (std::size_t i = 0; i < rows.size(); ++i) list_->InsertItem(static_cast<long>(i), "");
  }
  // Sets changed texts only: the list does not flicker and keeps its selection.
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const auto item = static_cast<long>(i);
    for (std::size_t column = 0; column < kBandColumns.size(); ++column) {
      const std::string& text = rows[i].texts.at(column);
      if (text != rows_[i].texts.at(column)) {
        list_->SetItem(item, static_cast<int>(column), ToWx(text));
      }
    }
    if (rows[i].followed != rows_[i].followed) {
      const wxFont font = list_->GetFont();
      list_->SetItemFont(item, rows[i].followed ? font.Bold() : font);
    }
  }
  rows_ = rows;
}

void BeaconFrame::SetStatus(const std::string& text) {
  SetLine(*status_, text);
}

void BeaconFrame::SetSelectBy(int index) {
  select_by_->SetSelection(index);
}

void BeaconFrame::SetChoices(const std::vector<std::string>& texts, int index) {
  wxArrayString items;
  for (const std::string& text : texts) items.Add(ToWx(text));
  choices_->Set(items);
  choices_->SetSelection(index);
}

void BeaconFrame::SetChecked(BeaconCheck check, bool checked) {
  checks_.at(static_cast<std::size_t>(check))->SetValue(checked);
}

void BeaconFrame::Enable(BeaconButton button, bool enable) {
  EnableKeepingFocus(*buttons_.at(static_cast<std::size_t>(button)), enable);
}

std::string BeaconFrame::Note() const {
  return FromWx(note_->GetValue());
}

void BeaconFrame::SetNote(const std::string& text) {
  note_->ChangeValue(ToWx(text));
}

void BeaconFrame::StartTimer(std::chrono::milliseconds delay) {
  timer_.StartOnce(static_cast<int>(delay.count()));
}

std::optional<std::string> BeaconFrame::AskFile(const std::string& proposal) {
  wxFileDialog dialog(this, "Export the marks", "", ToWx(proposal),
                      "Comma-separated values (*.csv)|*.csv", wxFD_SAVE | wxFD_OVERWRITE_PROMPT);
  const NestedLoops::Scope open;
  if (dialog.ShowModal() != wxID_OK) return std::nullopt;
  wxFileName file(dialog.GetPath());
  if (!file.HasExt()) file.SetExt("csv");
  return FromWx(file.GetFullPath());
}

void BeaconFrame::UserCloses() {
  Send({.kind = BeaconEvent::kFormQueryUnload});
}

}  // namespace skyhop
