#pragma once

#include <wx/scrolwin.h>
#include <wx/sizer.h>
#include <wx/stattext.h>

#include <string>
#include <vector>

#include "ui/wx/config_events.h"

namespace skyhop {

/// A page of the configuration window: a heading, and below it the page's controls, one below the
/// other. Wraps texts at the page's width. The user can scroll to controls that do not fit.
class ConfigPage : public wxScrolledWindow {
 public:
  ConfigPage(wxWindow* parent, const wxString& heading, const ConfigEvents& events);

 protected:
  /// Adds a text that is wrapped.
  wxStaticText* AddText(const wxString& text);
  /// Adds a wrapped text that belongs to the control above it.
  wxStaticText* AddSubText(const wxString& text);
  /// Changes such a text. An empty text takes no space.
  void SetText(wxStaticText* label, const std::string& text);

  /// Adds a row or a control with the usual distance to the previous one.
  template <class Item>
  void Add(Item* item) {
    AddItem(item, wxSizerFlags().Expand());
  }
  /// Adds a control that keeps its width.
  void AddNarrow(wxWindow* control) { AddItem(control, wxSizerFlags().Left()); }
  /// Adds a control that takes the remaining height.
  void AddGrowing(wxWindow* control) { AddItem(control, wxSizerFlags(1).Expand()); }
  /// A heading within the page.
  void AddHeading(const wxString& text);

  [[nodiscard]] const ConfigEvents& Events() const { return *events_; }
  /// Arranges the page again after controls were added, shown or hidden.
  void Arrange();

 private:
  struct Wrapped {
    wxStaticText* label;
    wxString text;
    int indent;  ///< pixels
  };

  template <class Item>
  void AddItem(Item* item, const wxSizerFlags& flags) {
    content_->AddSpacer(FromDIP(kGap));
    content_->Add(item, flags);
  }
  wxStaticText* AddWrapped(const wxString& text, int indent);
  void Wrap(const Wrapped& wrapped);

  static constexpr int kGap = 8;      // DIP
  static constexpr int kMargin = 16;  // DIP
  /// The left edge of a radio button's text, DIP.
  static constexpr int kSubIndent = 24;

  const ConfigEvents* events_;
  wxBoxSizer* content_;
  std::vector<Wrapped> wrapped_;
  int wrapped_width_ = 0;
};

}  // namespace skyhop
