#pragma once

#include <wx/textctrl.h>

#include <functional>
#include <string>

namespace skyhop {

/// A text field whose text counts once the user has left the field or struck Enter in it.
class CommitField : public wxTextCtrl {
 public:
  /// `on_commit` is called when a changed text counts.
  CommitField(wxWindow* parent, std::function<void()> on_commit);

  [[nodiscard]] std::string Text() const;
  /// Shows a text that counts already.
  void SetText(const std::string& text);
  /// Makes a changed text count now.
  void Commit();

 private:
  std::function<void()> on_commit_;
  wxString committed_;
};

}  // namespace skyhop
