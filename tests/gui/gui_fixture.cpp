#include "gui_fixture.h"

#include <gtk/gtk.h>

#include <wx/app.h>
#include <wx/evtloop.h>
#include <wx/msgdlg.h>
#include <wx/settings.h>
#include <wx/statusbr.h>
#include <wx/uiaction.h>
#include <wx/utils.h>

#include <algorithm>
#include <cstdlib>

#include "common/files.h"
#include "common/numbers.h"
#include "ui/wx/wx_text.h"

namespace skyhop::testing {

void Pump() {
  wxEventLoopBase* const loop = wxEventLoopBase::GetActive();
  // Dispatch events one by one, like the program's own loop: a yield delays some of them.
  while (loop->Pending()) loop->Dispatch();
  wxTheApp->ProcessPendingEvents();
  loop->ProcessIdle();
}

bool PumpUntil(const std::function<bool()>& condition, std::chrono::seconds longest) {
  const auto end = std::chrono::steady_clock::now() + longest;
  for (;;) {
    Pump();
    if (condition()) return true;
    if (std::chrono::steady_clock::now() > end) return false;
    wxMilliSleep(2);
  }
}

int DialogRecorder::Enter(wxDialog* dialog) {
  if (const auto* box = dynamic_cast<wxMessageDialog*>(dialog)) {
    messages.emplace_back(FromWx(box->GetCaption()), FromWx(box->GetMessage()));
    return wxID_OK;
  }
  return answer ? answer(*dialog) : wxID_CANCEL;
}

GuiTest::GuiTest() {
  ::setenv("SKYHOP_HOME", home_.Path().c_str(), 1);
  ::setenv("XDG_CONFIG_HOME", config_.Path().c_str(), 1);
  // Requests for other addresses go to a proxy that does not exist.
  const std::string nowhere = "http://127.0.0.1:" + std::to_string(UnusedPort());
  for (const char* proxy : {"http_proxy", "https_proxy", "all_proxy"}) {
    ::setenv(proxy, nowhere.c_str(), 1);
  }
  ::setenv("no_proxy", "127.0.0.1", 1);
  ServeSunspotNumber("118.5");
  WriteSettings("");
}

GuiTest::~GuiTest() {
  if (frame_) frame_->Close();
  Pump();
  program_.reset();
  Pump();
}

void GuiTest::Start() {
  program_ = std::make_unique<SkyhopProgram>();
  frame_ = &program_->Frame();
  ASSERT_TRUE(program_->Start());
  ASSERT_TRUE(PumpUntil([this] {
    return Frame().IsActive() && Frame().Canvas().IsShownOnScreen();
  })) << "the window has not come up";
}

void GuiTest::CloseWindow() {
  Frame().Close();
  ASSERT_TRUE(PumpUntil([this] { return frame_.get() == nullptr; }));
  program_.reset();
  Pump();
}

wxNotebook& GuiTest::Tabs() {
  return *dynamic_cast<wxNotebook*>(wxWindow::FindWindowByName("TabbedDialog", &Frame()));
}

wxFrame& GuiTest::ConfigurationWindow() {
  return *dynamic_cast<wxFrame*>(wxWindow::FindWindowByName("IoncapConfig"));
}

bool GuiTest::Marked(TextField field) {
  return Field(field).GetBackgroundColour() == wxColour(255, 214, 210);
}

std::string GuiTest::Status() const {
  return FromWx(frame_->GetStatusBar()->GetStatusText(0));
}

bool GuiTest::Running() {
  return Program().Controller().Running();
}

std::string GuiTest::Notice() {
  for (wxWindow* window : Descendants(Frame())) {
    const auto* bar = dynamic_cast<NoticeBar*>(window);
    if (bar == nullptr || !bar->IsShown()) continue;
    wxString text = bar->GetChildren().front()->GetLabel();
    text.Replace("\n", " ");
    return FromWx(text);
  }
  return {};
}

bool GuiTest::Shows(const std::string& text) {
  for (wxWindow* window : Descendants(Frame())) {
    const auto* label = dynamic_cast<wxStaticText*>(window);
    if (label == nullptr || !label->IsShown()) continue;
    if (FromWx(label->GetLabelText()).find(text) != std::string::npos) return true;
  }
  return false;
}

void GuiTest::ClickAt(wxWindow& window, wxPoint place) {
  wxUIActionSimulator simulator;
  simulator.MouseMove(window.ClientToScreen(place));
  simulator.MouseClick();
  Pump();
}

void GuiTest::Click(wxWindow& window) {
  const wxSize size = window.GetClientSize();
  ClickAt(window, {size.x / 2, size.y / 2});
}

void GuiTest::Press(int key, int modifiers) {
  wxUIActionSimulator simulator;
  simulator.Char(key, modifiers);
  Pump();
}

void GuiTest::ShowPageOf(wxWindow& control) {
  wxNotebook& tabs = Tabs();
  for (std::size_t page = 0; page < tabs.GetPageCount(); ++page) {
    if (tabs.GetPage(page)->IsDescendant(&control)) tabs.ChangeSelection(page);
  }
  ASSERT_TRUE(PumpUntil([&] { return control.IsShownOnScreen() && control.GetSize().x > 1; }));
}

void GuiTest::TypeInto(TextField field, const std::string& text) {
  wxTextCtrl& control = Field(field);
  ShowPageOf(control);
  if (!control.HasFocus()) Click(control);
  ASSERT_TRUE(PumpUntil([&] { return control.HasFocus(); }));
  Press('A', wxMOD_CONTROL);
  Press(WXK_DELETE);
  ASSERT_TRUE(PumpUntil([&] { return control.IsEmpty(); }));
  wxUIActionSimulator().Text(text.c_str());
  ASSERT_TRUE(PumpUntil([&] { return Text(field) == text; })) << Text(field) << " for " << text;
}

void GuiTest::EnterStations(const std::string& local, const std::string& dx) {
  struct Station {
    TextField grid;
    TextField latitude;
    const std::string& square;
  };
  for (const Station& station : {Station{TextField::kLocalGrid, TextField::kLocalLat, local},
                                 Station{TextField::kDXGrid, TextField::kDXLat, dx}}) {
    TypeInto(station.grid, station.square);
    // Enter does something only if the latitude belongs to another station.
    Field(station.latitude).ChangeValue("");
    Press(WXK_RETURN);
    ASSERT_TRUE(PumpUntil([&] { return !Text(station.latitude).empty(); }));
  }
}

void GuiTest::Predict() {
  Click(*Frame().Controls().ButtonOf(Button::kPathsButton));
  ASSERT_TRUE(PumpUntil([this] { return Program().Chart().HasResult() && !Running(); }))
      << Notice();
}

std::filesystem::path GuiTest::SettingsFile() const {
  return config_ / "marlo/Skyhop.ini";
}

std::string GuiTest::Settings() const {
  return ReadFile(SettingsFile(), std::size_t{1} << 20U);
}

void GuiTest::WriteSettings(const std::string& content) const {
  std::filesystem::create_directories(SettingsFile().parent_path());
  WriteFile(SettingsFile(), content + "\n" + AddressSettings(server_.Url("/ssn")));
}

std::string GuiTest::AddressSettings(const std::string& ssn_url) const {
  return "[Configuration]\nSSNURL=" + ssn_url + "\nSFIURL=" + server_.Url("/forecast") +
         "\nWWVURL=" + server_.Url("/wwv") + "\n";
}

void GuiTest::ServeSunspotNumber(const std::string& number) {
  const std::chrono::year_month_day today(
      std::chrono::floor<std::chrono::days>(std::chrono::system_clock::now()));
  const std::string month = std::to_string(static_cast<int>(today.year())) + "-" +
                            PaddedNumber(static_cast<int>(unsigned{today.month()}), 2);
  server_.Serve("/ssn", Reply("200 OK", "[{\"time-tag\": \"" + month + "\", \"predicted_ssn\": " +
                                            number + ", \"high_ssn\": 130}]"));
}

void GuiTest::ReplaceEngine(const std::string& script) const {
  const std::filesystem::path engine = home_ / "IonCap/ioncap.exe";
  std::filesystem::create_directories(engine.parent_path());
  std::filesystem::remove(engine);
  WriteFile(engine, "#!/bin/sh\n" + script);
  std::filesystem::permissions(engine, std::filesystem::perms::owner_all);
}

wxWindow* Focused(const wxWindow& frame) {
  auto* widget = gtk_window_get_focus(GTK_WINDOW(frame.GetHandle()));
  const std::vector<wxWindow*> windows = Descendants(frame);
  for (; widget != nullptr; widget = gtk_widget_get_parent(widget)) {
    // Return the innermost one: a page's panel is an ancestor too.
    const auto found = std::find_if(windows.begin(), windows.end(), [widget](wxWindow* window) {
      return static_cast<GtkWidget*>(window->GetHandle()) == widget;
    });
    if (found != windows.end()) return *found;
  }
  return nullptr;
}

std::vector<wxWindow*> Descendants(const wxWindow& window) {
  std::vector<wxWindow*> found;
  for (wxWindow* child : window.GetChildren()) {
    found.push_back(child);
    const std::vector<wxWindow*> below = Descendants(*child);
    found.insert(found.end(), below.begin(), below.end());
  }
  return found;
}

}  // namespace skyhop::testing
