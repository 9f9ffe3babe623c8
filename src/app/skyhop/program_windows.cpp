#include <type_traits>  // the toolkit's next header needs this but does not include it

#include "app/skyhop/program_windows.h"

namespace skyhop {

void ProgramWindow::Minimise() {
  if (window_) window_->Iconize(true);
}

void ProgramWindow::Activate() {
  if (!window_) return;
  if (window_->IsIconized()) window_->Iconize(false);
  window_->Show();
  window_->Raise();
}

bool ProgramWindow::IsOpen() const {
  return window_ && window_->IsShown();
}

ProgramWindows::ProgramWindows(const std::vector<wxTopLevelWindow*>& windows) {
  windows_.reserve(windows.size());
  for (wxTopLevelWindow* window : windows) windows_.emplace_back(window);
}

std::vector<DDECommon::Window*> ProgramWindows::All() {
  std::vector<DDECommon::Window*> open;
  for (ProgramWindow& window : windows_) {
    if (window.IsOpen()) open.push_back(&window);
  }
  return open;
}

}  // namespace skyhop
