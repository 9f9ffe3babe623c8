#include "ui/wx/prediction_frame.h"

#include <wx/display.h>
#include <wx/sizer.h>
#include <wx/statusbr.h>
#include <wx/wrapsizer.h>

#include <array>
#include <chrono>

#include "ui/prediction/field_rules.h"
#include "ui/wx/focus.h"
#include "ui/wx/nested_loops.h"
#include "ui/wx/pages.h"
#include "ui/wx/window_view.h"
#include "ui/wx/wx_messages.h"
#include "ui/wx/wx_text.h"

namespace skyhop {
namespace {

constexpr int kClockField = 1;
/// Between two attempts to close a window that is busy.
constexpr int kCloseInterval = 50;  // ms
constexpr std::chrono::milliseconds kPaintInterval{1};
/// A window that is minimised, say, is not painted at all.
constexpr std::chrono::milliseconds kLongestPaint{500};

struct PageKind {
  const char* name;
  void (*fill)(wxPanel& panel, ControlSet& controls);
};

constexpr auto kPages = std::to_array<PageKind>({{"Parameters", FillParametersPage},
                                                 {"Transmitter", FillTransmitterPage},
                                                 {"Receiver", FillReceiverPage},
                                                 {"Conditions", FillConditionsPage},
                                                 {"Prediction", FillPredictionPage}});

}  // namespace

PredictionFrame::PredictionFrame(ChartPane& pane, ControlSet::TieLabel tie_label)
    : wxFrame(nullptr, wxID_ANY, "Skyhop", wxDefaultPosition, wxDefaultSize, wxDEFAULT_FRAME_STYLE,
              "IonCap"),
      controls_(
          std::make_unique<ControlSet>(static_cast<ControlEvents&>(*this), std::move(tie_label))),
      view_(std::make_unique<WindowView>(*this, *controls_)),
      pane_(&pane),
      place_(*this),
      least_size_(*this) {
  for (std::size_t i = 0; i < timers_.size(); ++i) {
    timers_.at(i) = std::make_unique<wxTimer>(this);
    Bind(
        wxEVT_TIMER, [this, i](wxTimerEvent&) { Ticked(static_cast<WindowTimer>(i)); },
        timers_.at(i)->GetId());
  }
  close_timer_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { Close(); });
  Assemble(pane);
  MakeMenu();
  CreateStatusBar(2);
  const wxString widest = "00:00:00 UTC";
  const int widths[] = {-1, GetStatusBar()->GetTextExtent(widest).x + FromDIP(44)};
  GetStatusBar()->SetStatusWidths(2, widths);
  SetClientSize(DefaultSize());
  least_size_.Update();

  Bind(wxEVT_CLOSE_WINDOW, &PredictionFrame::OnClose, this);
}

PredictionFrame::~PredictionFrame() {
  // The controls' handlers refer to members of this object, so the controls go before them: a field
  // that has the focus is told that it loses it.
  base_->Destroy();
}

void PredictionFrame::Assemble(ChartPane& pane) {
  auto* base = new wxPanel(this);
  base_ = base;
  const int gap = FromDIP(6);

  tabs_ = MakeTabs();

  // The chart is a panel of its own so that the notice above it changes nothing else.
  auto* chart = new wxPanel(base);
  notice_ = new NoticeBar(chart, [this] {
    if (controller_ != nullptr) controller_->Notice_Click();
  });
  canvas_ = new ChartCanvas(chart, pane, [this](const std::string& text) { ShowReadout(text); });
  auto* chart_sizer = new wxBoxSizer(wxVERTICAL);
  chart_sizer->Add(notice_, wxSizerFlags().Expand().Border(wxBOTTOM, gap));
  chart_sizer->Add(canvas_, wxSizerFlags(1).Expand());
  chart_sizer->Add(MakeChartOptions(chart), wxSizerFlags().Expand().Border(wxTOP, gap));
  snr_ = new SnrPanel(chart, *controls_);
  chart_sizer->Add(snr_, wxSizerFlags().Expand().Border(wxTOP, gap));
  chart_sizer->Add(controls_->MakeLabel(chart, Label::kProvenance),
                   wxSizerFlags().Expand().Border(wxTOP, gap));
  chart->SetSizer(chart_sizer);
  Bind(wxEVT_SYS_COLOUR_CHANGED, [this](wxSysColourChangedEvent& event) {
    notice_->FollowTheme();
    controls_->FollowTheme();
    event.Skip();
  });

  auto* left = new wxBoxSizer(wxVERTICAL);
  left->Add(tabs_, wxSizerFlags().Expand().Border(wxBOTTOM, gap));
  left->Add(chart, wxSizerFlags(1).Expand());
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(left, wxSizerFlags(1).Expand());
  row->Add(MakeCommandColumn(base, *controls_), wxSizerFlags().Expand().Border(wxLEFT, gap));
  auto* margin = new wxBoxSizer(wxVERTICAL);
  margin->Add(row, wxSizerFlags(1).Expand().Border(wxALL, gap));
  base->SetSizer(margin);

  auto* whole = new wxBoxSizer(wxVERTICAL);
  whole->Add(base, wxSizerFlags(1).Expand());
  SetSizer(whole);
}

/// Only the first page gets its controls at once: the others would delay the start, and the first
/// one is the largest. They get theirs when the user or the controller needs them.
wxNotebook* PredictionFrame::MakeTabs() {
  auto* tabs = new wxNotebook(base_, wxID_ANY, wxDefaultPosition, wxDefaultSize, 0, "TabbedDialog");
  for (const PageKind& kind : kPages) {
    auto* page = new wxPanel(tabs);
    if (tabs->GetPageCount() == 0) kind.fill(*page, *controls_);
    tabs->AddPage(page, kind.name);
  }
  tabs->Bind(wxEVT_NOTEBOOK_PAGE_CHANGING, [this](wxBookCtrlEvent& event) {
    if (event.GetSelection() >= 0) FillPage(static_cast<std::size_t>(event.GetSelection()));
    event.Skip();
  });
  controls_->SetMaker([this] { MakeAllControls(); });
  return tabs;
}

void PredictionFrame::FillPage(std::size_t page) {
  auto* const panel = dynamic_cast<wxPanel*>(tabs_->GetPage(page));
  if (panel == nullptr || panel->GetSizer() != nullptr) return;
  kPages.at(page).fill(*panel, *controls_);
  panel->SendSizeEvent();
  // In some fonts a later page is a little higher than the first.
  tabs_->InvalidateBestSize();
  base_->Layout();
  controls_->ShowLabels();
}

void PredictionFrame::MakeAllControls() {
  for (std::size_t page = 0; page < kPages.size(); ++page) FillPage(page);
  snr_->MakeControls();
}

/// Room for a large chart, within what the main monitor has.
wxSize PredictionFrame::DefaultSize() const {
  wxSize size = FromDIP(wxSize(1180, 880));
  const wxRect desktop = wxDisplay(0U).GetClientArea();
  size.DecTo(desktop.GetSize() - FromDIP(wxSize(40, 80)));
  return size;
}

void PredictionFrame::PutToDefaultPlace() {
  if (IsIconized()) Iconize(false);
  if (IsMaximized()) Maximize(false);
  SetClientSize(DefaultSize());
  CentreOnScreen();
  place_.Put(GetRect());
}

wxSizer* PredictionFrame::MakeChartOptions(wxWindow* parent) {
  auto* row = new wxWrapSizer(wxHORIZONTAL);
  for (const CheckBox box :
       {CheckBox::kPlotEnable, CheckBox::kOpenBandEnable, CheckBox::kShowColorKeyCheck,
        CheckBox::kShowCurrentTimeCheck, CheckBox::kShowTableCheck, CheckBox::kSNRDisplayCheck}) {
    row->Add(controls_->MakeCheckBox(parent, box),
             wxSizerFlags().CenterVertical().Border(wxRIGHT, FromDIP(16)));
  }
  return row;
}

void PredictionFrame::Clicked(Button button) {
  if (controller_ != nullptr) controller_->Button_Click(button);
}

void PredictionFrame::Chosen(OptionGroup group) {
  if (controller_ != nullptr) controller_->Option_Click(group);
}

void PredictionFrame::Toggled(CheckBox box) {
  if (controller_ == nullptr) return;
  controller_->Check_Click(box);
  // The user's next input is a frequency.
  if (box == CheckBox::kSNRDisplayCheck && controls_->Checked(box)) {
    controls_->Field(TextField::kSNRFrequency)->SetFocus();
  }
}

bool PredictionFrame::Accepts(TextField field, char32_t key) {
  return AcceptsKey(field, key);
}

void PredictionFrame::Entered(TextField field) {
  if (controller_ != nullptr) controller_->Field_Enter(field);
}

bool PredictionFrame::Left(TextField field) {
  return controller_ == nullptr || controller_->Field_Leave(field);
}

void PredictionFrame::Changed(TextField field) {
  if (controller_ != nullptr) controller_->Field_Change(field);
}

void PredictionFrame::DoubleClicked(TextField field) {
  if (controller_ != nullptr && field == TextField::kTheDate) controller_->TheDate_DblClick();
}

std::string PredictionFrame::Origin(TextField field) {
  return controller_ != nullptr ? controller_->OriginOf(field) : std::string();
}

void PredictionFrame::Ticked(WindowTimer timer) {
  if (controller_ != nullptr) controller_->Timer_Tick(timer);
}

void PredictionFrame::ShowNotice(const Notice& notice) {
  if (notice.kind == Notice::Kind::kEmpty) pane_->SetEmptyText(notice.text);
  notice_->Show_(notice);
}

void PredictionFrame::ShowTab(Tab tab) {
  tabs_->SetSelection(static_cast<std::size_t>(tab));
  // The user asked for the inputs, so the keyboard goes there.
  tabs_->GetCurrentPage()->SetFocus();
}

void PredictionFrame::ShowSnr(const SnrDisplay& display) {
  if (!display.active) LeaveFocus(*snr_, *canvas_);
  snr_->Show_(display);
}

void PredictionFrame::SetStatus(const std::string& text) {
  status_ = text;
  if (!text.empty()) readout_.clear();
  UpdateStatusBar();
}

void PredictionFrame::ShowReadout(const std::string& text) {
  readout_ = text;
  UpdateStatusBar();
}

void PredictionFrame::UpdateStatusBar() {
  if (GetStatusBar() == nullptr) return;
  // The readout replaces the status while the pointer is on the chart.
  SetStatusText(ToWx(readout_.empty() ? status_ : readout_), 0);
}

void PredictionFrame::SetClock(const std::string& text) {
  if (GetStatusBar() != nullptr) SetStatusText(ToWx(text), kClockField);
}

void PredictionFrame::PrepareToShow() {
  if (prepare_show_ && !IsShown()) prepare_show_(GetHandle(), GetSize().x, GetSize().y);
}

void PredictionFrame::AwaitPaint() {
  const auto latest = std::chrono::steady_clock::now() + kLongestPaint;
  WxPause pause;
  while (!canvas_->Painted() && std::chrono::steady_clock::now() < latest) {
    pause.Wait(kPaintInterval);
  }
}

void PredictionFrame::RequestEnd() {
  if (on_end_request_) {
    on_end_request_();
  } else {
    Close();
  }
}

void PredictionFrame::OnClose(wxCloseEvent& event) {
  if (event.CanVeto() && (NestedLoops::Any() || (busy_ && busy_()))) {
    // What goes on in the middle of a command needs the window to its end.
    event.Veto();
    if (cancel_busy_) cancel_busy_();
    close_timer_.StartOnce(kCloseInterval);
    return;
  }
  // The controller goes first: by its timers it knows of a running engine, which it ends.
  if (controller_ != nullptr) controller_->Form_Unload();
  close_timer_.Stop();
  for (const auto& timer : timers_) timer->Stop();
  Attach(nullptr);
  if (on_closed_) on_closed_();
  Destroy();
}

}  // namespace skyhop
