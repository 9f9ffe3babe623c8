#pragma once

#include <gtest/gtest.h>

#include <type_traits>  // the toolkit's next header needs it and does not say so

#include <wx/modalhook.h>
#include <wx/notebook.h>
#include <wx/weakref.h>

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "app/skyhop/skyhop_program.h"
#include "support/http_server.h"
#include "support/temporary_folder.h"

namespace skyhop::testing {

/// Enough for an engine's run on a machine that is busy with something else.
inline constexpr std::chrono::seconds kLongWait{60};

/// Lets events happen until `condition` holds. Returns whether it does.
bool PumpUntil(const std::function<bool()>& condition, std::chrono::seconds longest = kLongWait);
/// Handles the events that are there by now.
void Pump();

/// Acknowledges message boxes in the user's place and keeps what they said. Other dialogs are
/// cancelled unless `answer` is set.
class DialogRecorder : public wxModalDialogHook {
 public:
  DialogRecorder() { Register(); }

  /// Caption and text of every message box.
  std::vector<std::pair<std::string, std::string>> messages;
  /// Gets every other dialog; returns what it is left with.
  std::function<int(wxDialog&)> answer;

 private:
  int Enter(wxDialog* dialog) override;
};

/// The program with its real windows, real engine and settings in folders of its own. Its addresses
/// are those of a server on the loopback interface, and nothing gets beyond that interface.
class GuiTest : public ::testing::Test {
 protected:
  GuiTest();
  ~GuiTest() override;

  /// Starts the program and waits until its window can be used.
  void Start();
  /// Closes the window as its frame's button would and waits until it has gone.
  void CloseWindow();
  /// The frame, gone once it was closed.
  [[nodiscard]] PredictionFrame& Frame() { return *frame_; }
  [[nodiscard]] SkyhopProgram& Program() { return *program_; }
  [[nodiscard]] wxNotebook& Tabs();
  [[nodiscard]] wxFrame& ConfigurationWindow();
  [[nodiscard]] wxTextCtrl& Field(TextField field) { return *Frame().Controls().Field(field); }
  [[nodiscard]] std::string Text(TextField field) { return Frame().Controls().Text(field); }
  [[nodiscard]] bool Marked(TextField field);
  [[nodiscard]] std::string Status() const;
  [[nodiscard]] bool Running();
  /// The text of the strip above the chart; empty while it is hidden.
  [[nodiscard]] std::string Notice();
  /// What a label of the window shows.
  [[nodiscard]] bool Shows(const std::string& text);

  // What a user does.
  static void Click(wxWindow& window);
  static void ClickAt(wxWindow& window, wxPoint place);
  static void Press(int key, int modifiers = 0);
  /// Brings a field's page up, clicks into it and replaces its text by typing.
  void TypeInto(TextField field, const std::string& text);
  void ShowPageOf(wxWindow& control);
  void EnterStations(const std::string& local = "FN20", const std::string& dx = "IO91");
  /// Presses Predict and waits for the end of the run.
  void Predict();

  [[nodiscard]] std::filesystem::path SettingsFile() const;
  [[nodiscard]] std::string Settings() const;
  /// Replaces the settings by `content` and, after it, the addresses of the test's server.
  void WriteSettings(const std::string& content) const;
  /// What the settings hold about addresses: this one for the sunspot number.
  [[nodiscard]] std::string AddressSettings(const std::string& ssn_url) const;
  /// Has the server give this as the sunspot number of the month.
  void ServeSunspotNumber(const std::string& number);
  /// Puts a shell script in the engine's place.
  void ReplaceEngine(const std::string& script) const;

  TemporaryFolder home_{"home"};
  TemporaryFolder config_{"config"};
  DialogRecorder dialogs_;
  HttpServer server_;

 private:
  std::unique_ptr<SkyhopProgram> program_;
  wxWeakRef<PredictionFrame> frame_;
};

/// The window of `frame` that the keyboard goes to, null when none does. Unlike the toolkit's own
/// answer, this knows of lists to choose from, whose inner parts have the focus.
[[nodiscard]] wxWindow* Focused(const wxWindow& frame);

/// All windows within `window`, itself not counted, in the order of their creation.
[[nodiscard]] std::vector<wxWindow*> Descendants(const wxWindow& window);

/// The first descendant of a kind whose words are `label`, without the mark of its shortcut.
template <class Kind>
[[nodiscard]] Kind* FindControl(const wxWindow& window, const wxString& label) {
  for (wxWindow* child : Descendants(window)) {
    auto* const control = dynamic_cast<Kind*>(child);
    if (control != nullptr && wxControl::RemoveMnemonics(control->GetLabel()) == label) {
      return control;
    }
  }
  return nullptr;
}

}  // namespace skyhop::testing
