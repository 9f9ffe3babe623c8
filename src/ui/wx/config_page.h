#pragma once

#include <wx/scrolwin.h>
#include <wx/sizer.h>
#include <wx/stattext.h>

#include <string>
#include <vector>

#include "ui/wx/config_events.h"

namespace skyhop {

/// A page of the configuration window: a heading, below it whatever the page adds, one below the
/// other. Texts are wrapped at the page's width; what does not fit can be scrolled to.
class ConfigPage : public wxScrolledWindow {
 public:
  ConfigPage(wxWindow* parent, const wxString& heading, const ConfigEvents& events);

 protected:
  /// Adds a text that is wrapped; `indent` in DIP.
  wxStaticText* AddText(const wxString& text, int indent = 0);
  /// Gives such a text other words. An empty one takes no place.
  void SetText(wxStaticText* label, const std::string& text);

  /// Adds a row or a control with the usual distance to the one before.
  template <class Item>
  void Add(Item* item, int indent = 0) {
    AddItem(item, wxSizerFlags().Expand(), indent);
  }
  /// The same for a control that keeps its width.
  void AddNarrow(wxWindow* control, int indent = 0) {
    AddItem(control, wxSizerFlags().Left(), indent);
  }
  /// The same for one that takes the height that is left.
  void AddGrowing(wxWindow* control) { AddItem(control, wxSizerFlags(1).Expand(), 0); }
  /// A heading within the page.
  void AddHeading(const wxString& text);

  [[nodiscard]] const ConfigEvents& Events() const { return *events_; }
  /// Arranges the page anew after controls came or went.
  void Arrange();

 private:
  struct Wrapped {
    wxStaticText* label;
    wxString text;
    int indent;  ///< pixels
  };

  template <class Item>
  void AddItem(Item* item, wxSizerFlags flags, int indent) {
    content_->AddSpacer(FromDIP(kGap));
    if (indent == 0) {
      content_->Add(item, flags);
      return;
    }
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    row->AddSpacer(FromDIP(indent));
    row->Add(item, wxSizerFlags(1));
    content_->Add(row, wxSizerFlags().Expand());
  }
  void Wrap(const Wrapped& wrapped);

  static constexpr int kGap = 8;      // DIP
  static constexpr int kMargin = 16;  // DIP

  const ConfigEvents* events_;
  wxBoxSizer* content_;
  std::vector<Wrapped> wrapped_;
  int wrapped_width_ = 0;
};

}  // namespace skyhop
