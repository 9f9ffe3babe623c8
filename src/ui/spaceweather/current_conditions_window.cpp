#include "ui/spaceweather/current_conditions_window.h"

namespace skyhop {

void CurrentConditions::Form_Load() {
  with_.diagnostics.Trap(with_.name + ".Form_Load", [&] {
    loaded_ = true;
    with_.view.SetPlacement(RestoreWindowPosition(with_.name, with_.view.Placement(),
                                                  with_.view.Monitors(), with_.settings));
  });
}

void CurrentConditions::Show() {
  with_.diagnostics.Trap(with_.name + ".Show", [&] {
    if (!loaded_) Form_Load();
    with_.view.ShowWindow();
  });
}

void CurrentConditions::ShowText(const std::string& text) {
  Show();
  SetBulletin(text);
}

void CurrentConditions::Form_QueryUnload() {
  with_.diagnostics.Trap(with_.name + ".Form_QueryUnload", [&] {
    SavePosition();
    with_.view.HideWindow();
  });
}

void CurrentConditions::Form_Unload() {
  // A window that was never shown has no place of its own.
  if (!loaded_) return;
  with_.diagnostics.Trap(with_.name + ".Form_Unload", [&] { SavePosition(); });
}

void CurrentConditions::SavePosition() {
  SaveWindowPosition(with_.name, with_.view.Placement(), with_.settings, with_.diagnostics);
}

}  // namespace skyhop
