#pragma once

#include <wx/toplevel.h>
#include <wx/weakref.h>

#include <vector>

#include "interop/dde_common.h"

namespace skyhop {

/// A window of the toolkit, with the actions that peers may request. Does nothing after the
/// window's end.
class ProgramWindow : public DDECommon::Window {
 public:
  explicit ProgramWindow(wxTopLevelWindow* window) : window_(window) {}

  void Minimise() override;
  void Activate() override;
  [[nodiscard]] bool IsOpen() const;

 private:
  wxWeakRef<wxTopLevelWindow> window_;
};

/// The program's windows that are open.
class ProgramWindows : public DDECommon::OpenWindows {
 public:
  /// The first one is the main window.
  explicit ProgramWindows(const std::vector<wxTopLevelWindow*>& windows);

  [[nodiscard]] std::vector<DDECommon::Window*> All() override;
  [[nodiscard]] DDECommon::Window& Main() { return windows_.front(); }

 private:
  std::vector<ProgramWindow> windows_;
};

}  // namespace skyhop
