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
  /// Adds a text that is wrapped.
  wxStaticText* AddText(const wxString& text);
  /// The same for a text that belongs to the control above it.
  wxStaticText* AddSubText(const wxString& text);
  /// Gives such a text other words. An empty one takes no place.
  void SetText(wxStaticText* label, const std::string& text);

  /// Adds a row or a control with the usual distance to the one before.
  template <class Item>
  void Add(Item* item) {
    AddItem(item, wxSizerFlags().Expand());
  }
  /// The same for a control that keeps its width.
  void AddNarrow(wxWindow* control) { AddItem(control, wxSizerFlags().Left()); }
  /// The same for one that takes the height that is left.
  void AddGrowing(wxWindow* control) { AddItem(control, wxSizerFlags(1).Expand()); }
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
  void AddItem(Item* item, const wxSizerFlags& flags) {
    content_->AddSpacer(FromDIP(kGap));
    content_->Add(item, flags);
  }
  wxStaticText* AddWrapped(const wxString& text, int indent);
  void Wrap(const Wrapped& wrapped);

  static constexpr int kGap = 8;      // DIP
  static constexpr int kMargin = 16;  // DIP
  /// Where the words of a radio button begin, DIP.
  static constexpr int kSubIndent = 24;

  const ConfigEvents* events_;
  wxBoxSizer* content_;
  std::vector<Wrapped> wrapped_;
  int wrapped_width_ = 0;
};

}  // namespace skyhop
