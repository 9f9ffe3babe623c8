// The main window's menu. It makes every command available by keyboard.

#include <wx/dialog.h>
#include <wx/icon.h>
#include <wx/iconbndl.h>
#include <wx/menu.h>
#include <wx/sizer.h>
#include <wx/statbmp.h>
#include <wx/stattext.h>

#include "common/program.h"
#include "ui/wx/chart_output.h"
#include "ui/wx/nested_loops.h"
#include "ui/wx/prediction_frame.h"
#include "ui/wx/wx_text.h"

namespace skyhop {
namespace {

/// A button's caption without the mark of its shortcut, which only the button has.
wxString PlainCaption(Button button) {
  return wxControl::RemoveMnemonics(ToWx(Caption(button)));
}

void ShowAboutBox(wxWindow* parent) {
  wxDialog dialog(parent, wxID_ANY, ToWx(std::string("About ") + kProductName));
  const auto between = wxSizerFlags().Border(wxBOTTOM, dialog.FromDIP(8));
  auto* words = new wxBoxSizer(wxVERTICAL);
  auto* title =
      new wxStaticText(&dialog, wxID_ANY, ToWx(std::string(kProductName) + " " + VersionText()));
  title->SetFont(title->GetFont().Bold().Scaled(1.4F));
  // A label's best size does not follow its font at once.
  title->SetMinSize(title->GetTextExtent(title->GetLabel()));
  words->Add(title, between);
  for (const char* text :
       {"Predicts on which HF bands two stations\nwill hear each other over a day.",
        "Free software under the MIT licence."}) {
    words->Add(new wxStaticText(&dialog, wxID_ANY, text), between);
  }

  auto* row = new wxBoxSizer(wxHORIZONTAL);
  if (const auto* const frame = dynamic_cast<wxTopLevelWindow*>(parent)) {
    const wxIcon icon = frame->GetIcons().GetIcon(dialog.FromDIP(wxSize(64, 64)),
                                                  wxIconBundle::FALLBACK_NEAREST_LARGER);
    if (icon.IsOk()) {
      wxBitmap picture;
      picture.CopyFromIcon(icon);
      row->Add(new wxStaticBitmap(&dialog, wxID_ANY, picture),
               wxSizerFlags().Top().Border(wxRIGHT, dialog.FromDIP(16)));
    }
  }
  row->Add(words);
  auto* outer = new wxBoxSizer(wxVERTICAL);
  outer->Add(row, wxSizerFlags().Border(wxALL, dialog.FromDIP(16)));
  outer->Add(dialog.CreateButtonSizer(wxOK),
             wxSizerFlags().Right().Border(wxRIGHT | wxBOTTOM, dialog.FromDIP(12)));
  dialog.SetSizerAndFit(outer);
  dialog.CentreOnParent();
  const NestedLoops::Scope open;
  dialog.ShowModal();
}

}  // namespace

/// Adds items with their help texts to a menu.
class PredictionFrame::MenuMaker {
 public:
  explicit MenuMaker(PredictionFrame& frame) : frame_(&frame), menu_(new wxMenu) {}

  void Command(const wxString& text, const std::function<void()>& action, int id = wxID_ANY) {
    const wxMenuItem* const item = menu_->Append(id, text);
    frame_->Bind(
        wxEVT_MENU, [action](wxCommandEvent&) { action(); }, item->GetId());
  }

  /// A command that uses the chart's results; disabled while there are none.
  void OnChart(const wxString& text, std::string (*action)(wxWindow*, const ChartExport&)) {
    PredictionFrame* const frame = frame_;
    const wxMenuItem* const item = menu_->Append(wxID_ANY, text);
    frame->Bind(
        wxEVT_MENU,
        [frame, action](wxCommandEvent&) {
          if (frame->controller_ == nullptr) return;
          // The status bar confirms what was done.
          const std::string done = action(frame, frame->controller_->Export());
          if (!done.empty()) frame->SetStatus(done);
        },
        item->GetId());
    frame->Bind(
        wxEVT_UPDATE_UI,
        [frame](wxUpdateUIEvent& event) { event.Enable(frame->pane_->HasResult()); },
        item->GetId());
  }

  /// A command that does the same as a button and is enabled with it.
  void Of(Button button, const wxString& shortcut) {
    PredictionFrame* const frame = frame_;
    const wxMenuItem* const item = menu_->Append(wxID_ANY, PlainCaption(button) + shortcut);
    frame->Bind(
        wxEVT_MENU, [frame, button](wxCommandEvent&) { frame->Clicked(button); }, item->GetId());
    frame->Bind(
        wxEVT_UPDATE_UI,
        [frame, button](wxUpdateUIEvent& event) {
          event.Enable(frame->controls_->Enabled(button));
        },
        item->GetId());
  }

  void Of(CheckBox box, const wxString& shortcut) {
    PredictionFrame* const frame = frame_;
    const wxString text = wxControl::RemoveMnemonics(ToWx(Caption(box))) + shortcut;
    const wxMenuItem* const item = menu_->AppendCheckItem(wxID_ANY, text);
    frame->Bind(
        wxEVT_MENU,
        [frame, box](wxCommandEvent& event) {
          frame->controls_->SetChecked(box, event.IsChecked());
          frame->Toggled(box);
        },
        item->GetId());
    frame->Bind(
        wxEVT_UPDATE_UI,
        [frame, box](wxUpdateUIEvent& event) { event.Check(frame->controls_->Checked(box)); },
        item->GetId());
  }

  void Separator() { menu_->AppendSeparator(); }
  [[nodiscard]] wxMenu* Menu() const { return menu_; }

 private:
  PredictionFrame* frame_;
  wxMenu* menu_;
};

void PredictionFrame::MakeMenu() {
  auto* bar = new wxMenuBar;
  // No menu uses the shortcut letter of a button or box: a letter with two owners would only move
  // the focus.

  MenuMaker file(*this);
  file.OnChart("&Save Chart...\tCtrl+S", &SaveChart);
  file.OnChart("Save &Results as CSV...\tCtrl+E", &SaveResults);
  file.OnChart("&Print Chart...\tCtrl+P", &PrintChart);
  file.Separator();
  file.Command(
      "&Quit\tCtrl+Q", [this] { Close(); }, wxID_EXIT);
  bar->Append(file.Menu(), "&File");

  MenuMaker edit(*this);
  edit.OnChart("&Copy Chart\tCtrl+Shift+C", &CopyChart);
  edit.Separator();
  edit.Of(Button::kConfigCmd, "\tCtrl+,");
  bar->Append(edit.Menu(), "&Edit");

  MenuMaker prediction(*this);
  prediction.Of(Button::kPathsButton, "\tF5");
  prediction.Of(Button::kPredictSPToCmd, "\tCtrl+1");
  prediction.Of(Button::kPredictLPToCmd, "\tCtrl+2");
  prediction.Of(Button::kPredictSPFromCmd, "\tCtrl+3");
  prediction.Of(Button::kPredictLPFromCmd, "\tCtrl+4");
  prediction.Separator();
  prediction.Of(Button::kAbortButton, "\tEsc");
  bar->Append(prediction.Menu(), "P&rediction");

  MenuMaker view(*this);
  view.Of(CheckBox::kPlotEnable, "\tCtrl+L");
  view.Of(CheckBox::kOpenBandEnable, "\tCtrl+B");
  view.Of(CheckBox::kShowColorKeyCheck, "\tCtrl+K");
  view.Of(CheckBox::kShowCurrentTimeCheck, "\tCtrl+T");
  view.Of(CheckBox::kShowTableCheck, "\tCtrl+H");
  view.Of(CheckBox::kSNRDisplayCheck, "\tCtrl+R");
  bar->Append(view.Menu(), "&View");

  MenuMaker weather(*this);
  weather.Of(Button::kForecastCmd, "");
  weather.Of(Button::kCurrentCmd, "");
  weather.Of(Button::kHistoryCmd, "");
  weather.Separator();
  weather.Of(Button::kUpdateSFICmd, "");
  weather.Of(Button::kUpdateSSNCmd, "");
  weather_menu_ = weather.Menu();
  Bind(
      wxEVT_MENU,
      [this](wxCommandEvent& event) {
        if (controller_ != nullptr) controller_->WebPage_Click(event.GetId() - first_web_id_);
      },
      first_web_id_, first_web_id_ + kMostWebPages - 1);
  bar->Append(weather.Menu(), "Space &Weather");

  MenuMaker tools(*this);
  tools.Of(Button::kBeaconCmd, "");
  tools.Separator();
  tools.Of(Button::kShowFilesCmd, "");
  bar->Append(tools.Menu(), "T&ools");

  MenuMaker help(*this);
  help.Of(Button::kHelpCmd, "\tF1");
  help.Separator();
  help.Command(
      "&About Skyhop", [this] { ShowAboutBox(this); }, wxID_ABOUT);
  bar->Append(help.Menu(), "&Help");
  SetMenuBar(bar);
}

void PredictionFrame::SetWebPages(std::span<const WebPage> pages) {
  for (wxMenuItem* item : web_items_) weather_menu_->Destroy(item);
  web_items_.clear();
  if (!pages.empty()) web_items_.push_back(weather_menu_->AppendSeparator());
  for (const WebPage& page : pages) {
    web_items_.push_back(weather_menu_->Append(
        first_web_id_ + page.number, wxControl::EscapeMnemonics(ToWx(page.title)), ToWx(page.url)));
  }
}

}  // namespace skyhop
