#pragma once

#include <string>
#include <utility>

#include "common/diagnostics.h"
#include "common/settings.h"
#include "ui/spaceweather/conditions_view.h"
#include "ui/spaceweather/space_weather_service.h"

namespace skyhop {

/// The rules of a window that shows a text, such as the current conditions. Closing hides it.
class CurrentConditions : public ConditionsWindow, public TextWindow {
 public:
  struct Collaborators {
    ConditionsView& view;
    const Common::Settings& settings;
    Diagnostics& diagnostics;
    /// The name of the window in the log and in the settings.
    std::string name = "CurrentConditions";
  };

  explicit CurrentConditions(Collaborators collaborators) : with_(std::move(collaborators)) {}

  /// Loads the window when it is shown for the first time.
  void Show() override;
  [[nodiscard]] bool Visible() const override { return with_.view.Visible(); }
  void SetBulletin(const std::string& text) override { with_.view.SetText(text); }
  void ShowText(const std::string& text) override;
  void Form_Unload() override;

  void Form_Load();
  /// The user closes the window.
  void Form_QueryUnload();

 private:
  void SavePosition();

  Collaborators with_;
  bool loaded_ = false;
};

}  // namespace skyhop
