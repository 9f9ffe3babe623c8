#pragma once

#include <string>

#include "common/diagnostics.h"
#include "common/settings.h"
#include "ui/conditions/conditions_view.h"
#include "ui/prediction/space_weather_service.h"

namespace skyhop {

/// The rules of the current conditions window. Closing hides it.
class CurrentConditions : public ConditionsWindow {
 public:
  /// All must outlive the controller.
  struct Collaborators {
    ConditionsView& view;
    const Common::Settings& settings;
    Diagnostics& diagnostics;
  };

  explicit CurrentConditions(Collaborators collaborators) : with_(collaborators) {}

  /// Loads the window when it is shown for the first time.
  void Show() override;
  [[nodiscard]] bool Visible() const override { return with_.view.Visible(); }
  void SetBulletin(const std::string& text) override { with_.view.SetText(text); }
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
