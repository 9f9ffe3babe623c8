#pragma once

#include <gtest/gtest.h>

#include <type_traits>  // the toolkit's next header needs this but does not include it

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

/// Long enough for an engine's run on a busy machine.
inline constexpr std::chrono::seconds kLongWait{60};

/// Handles events until `condition` returns true. Returns its result.
bool PumpUntil(const std::function<bool()>& condition, std::chrono::seconds longest = kLongWait);
/// Handles the pending events.
void Pump();

/// Closes message boxes like a user and keeps their texts. Cancels other dialogs unless `answer` is
/// set.
class DialogRecorder : public wxModalDialogHook {
 public:
  DialogRecorder() { Register(); }

  /// Caption and text of every message box.
  std::vector<std::pair<std::string, std::string>> messages;
  /// Receives every other dialog and returns its result.
  std::function<int(wxDialog&)> answer;

 private:
  int Enter(wxDialog* dialog) override;
};

/// The program with its real windows, a real engine, and settings in separate folders. Its
/// addresses are those of a server on the loopback interface, and no request leaves that interface.
class GuiTest : public ::testing::Test {
 protected:
  GuiTest();
  ~GuiTest() override;

  /// Starts the program and waits until its window can be used.
  void Start();
  /// Closes the window like its close button and waits until it has disappeared.
  void CloseWindow();
  /// The frame. It does not exist after it was closed.
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
  /// Whether a label of the window shows this text.
  [[nodiscard]] bool Shows(const std::string& text);

  // A user's actions.
  static void Click(wxWindow& window);
  static void ClickAt(wxWindow& window, wxPoint place);
  static void Press(int key, int modifiers = 0);
  /// Shows a field's page, clicks into the field and replaces its text by typing.
  void TypeInto(TextField field, const std::string& text);
  void ShowPageOf(wxWindow& control);
  void EnterStations(const std::string& local = "FN20", const std::string& dx = "IO91");
  /// Presses Predict and waits for the end of the run.
  void Predict();

  [[nodiscard]] std::filesystem::path SettingsFile() const;
  [[nodiscard]] std::string Settings() const;
  /// Replaces the settings by `content` and, after it, the addresses of the test's server.
  void WriteSettings(const std::string& content) const;
  /// The settings of the addresses, with this one for the sunspot number.
  [[nodiscard]] std::string AddressSettings(const std::string& ssn_url) const;
  /// Makes the server return this as the sunspot number of the month.
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

/// The window of `frame` that has the keyboard focus, null if none has it. Unlike the toolkit's
/// function, this works for choice lists, whose inner parts have the focus.
[[nodiscard]] wxWindow* Focused(const wxWindow& frame);

/// All windows within `window`, itself not counted, in the order of their creation.
[[nodiscard]] std::vector<wxWindow*> Descendants(const wxWindow& window);

/// The first descendant of a kind with the caption `label`, compared without the mark of its
/// shortcut.
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
