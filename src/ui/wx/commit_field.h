#pragma once

#include <wx/textctrl.h>

#include <functional>
#include <string>

namespace skyhop {

/// A text field whose text takes effect when the user leaves the field or presses Enter in it.
class CommitField : public wxTextCtrl {
 public:
  /// Calls `on_commit` when a changed text takes effect.
  CommitField(wxWindow* parent, std::function<void()> on_commit);

  [[nodiscard]] std::string Text() const;
  /// Shows a text that is in effect already.
  void SetText(const std::string& text);
  /// Makes a changed text take effect now.
  void Commit();

 private:
  std::function<void()> on_commit_;
  wxString committed_;
};

}  // namespace skyhop
