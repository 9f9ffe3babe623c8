#include "ui/wx/config_engine_page.h"

namespace skyhop {

ConfigEnginePage::ConfigEnginePage(wxWindow* parent, const ConfigEvents& events)
    : ConfigPage(parent, "Engine", events) {
  AddText(
      "The program that computes the predictions, and what it is asked for. Where you have not "
      "installed it, the built-in estimate engine takes its place.");
  for (std::size_t i = 0; i < choices_.size(); ++i) {
    auto* button = new wxRadioButton(this, wxID_ANY, kEngineCaptions.at(i), wxDefaultPosition,
                                     wxDefaultSize, i == 0 ? wxRB_GROUP : 0);
    button->SetToolTip(i + 1 == choices_.size()
                           ? "Predict the hours in which each band is open"
                           : "Predict the lowest and the maximum useable frequencies");
    button->Bind(wxEVT_RADIOBUTTON, [this, i](wxCommandEvent&) {
      Events().Send(&IoncapConfig::EngineButton_Click, static_cast<int>(i));
    });
    AddNarrow(button);
    choices_.at(i) = {button, AddSubText("")};
  }
  AddHeading("Test");
  AddText(
      "Runs the selected engine on the circuit from New York to London. Predictions are not "
      "touched by it.");
  test_ = new wxButton(this, wxID_ANY, "&Test the engine");
  test_->SetToolTip("Run the selected engine on a known circuit");
  test_->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) {
    Events().Send(&IoncapConfig::TestCmd_Click, std::chrono::steady_clock::now());
  });
  AddNarrow(test_);
  result_ = AddText("");
}

void ConfigEnginePage::Select(int engine) {
  choices_.at(static_cast<std::size_t>(engine)).button->SetValue(true);
}

void ConfigEnginePage::SetFinding(int engine, const std::string& text) {
  SetText(choices_.at(static_cast<std::size_t>(engine)).finding, text);
}

}  // namespace skyhop
