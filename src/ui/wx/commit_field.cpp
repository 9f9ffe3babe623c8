#include "ui/wx/commit_field.h"

#include <algorithm>
#include <utility>

#include "ui/wx/wx_text.h"

namespace skyhop {

CommitField::CommitField(wxWindow* parent, std::function<void()> on_commit)
    : wxTextCtrl(parent, wxID_ANY, "", wxDefaultPosition, wxDefaultSize, wxTE_PROCESS_ENTER),
      on_commit_(std::move(on_commit)) {
  // The toolkit's own minimum height does not follow the text's.
  SetMinSize(wxSize(-1, std::max(GetBestSize().y, GetCharHeight() + FromDIP(9))));
  Bind(wxEVT_KILL_FOCUS, [this](wxFocusEvent& event) {
    // A message box must not open while the focus moves.
    CallAfter([this] { Commit(); });
    event.Skip();
  });
  Bind(wxEVT_TEXT_ENTER, [this](wxCommandEvent&) { Commit(); });
}

std::string CommitField::Text() const {
  return FromWx(GetValue());
}

void CommitField::SetText(const std::string& text) {
  committed_ = ToWx(text);
  if (GetValue() != committed_) ChangeValue(committed_);
}

void CommitField::Commit() {
  if (GetValue() == committed_) return;
  committed_ = GetValue();
  on_commit_();
}

}  // namespace skyhop
