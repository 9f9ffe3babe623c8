#include "ui/wx/config_page.h"

#include <algorithm>

#include "ui/wx/wx_text.h"

namespace skyhop {
namespace {

/// The least width of a text, in DIP.
constexpr int kLeastWidth = 240;

/// `text` with line ends, so that no line is wider than `width`. Breaks at blanks and also within
/// paths and addresses, since they may be long.
wxString WithLineEnds(const wxWindow& window, const wxString& text, int width) {
  const wxString breaks = " /\\";
  wxString lines;
  wxString line;
  wxString word;
  const auto take_word = [&] {
    if (!line.empty() && window.GetTextExtent((line + word).Trim()).x > width) {
      lines += line.Trim() + "\n";
      line.clear();
    }
    line += word;
    word.clear();
  };
  for (const wxUniChar c : text) {
    word += c;
    if (breaks.find(c) != wxString::npos) take_word();
  }
  take_word();
  return lines + line;
}

}  // namespace

ConfigPage::ConfigPage(wxWindow* parent, const wxString& heading, const ConfigEvents& events)
    : wxScrolledWindow(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize,
                       wxVSCROLL | wxTAB_TRAVERSAL),
      events_(&events),
      content_(new wxBoxSizer(wxVERTICAL)) {
  SetScrollRate(0, FromDIP(10));
  auto* title = new wxStaticText(this, wxID_ANY, heading);
  title->SetFont(title->GetFont().Bold().Scaled(1.2F));
  // Expand it, since a label's best size does not follow its font at once.
  content_->Add(title, wxSizerFlags().Expand());
  auto* outer = new wxBoxSizer(wxVERTICAL);
  outer->Add(content_, wxSizerFlags(1).Expand().Border(wxALL, FromDIP(kMargin)));
  SetSizer(outer);
  Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
    Arrange();
    event.Skip();
  });
}

wxStaticText* ConfigPage::AddWrapped(const wxString& text, int indent) {
  auto* label = new wxStaticText(this, wxID_ANY, "");
  // The page's width determines the text's width, not the other way round.
  label->SetMinSize(wxSize(FromDIP(kLeastWidth), -1));
  wrapped_.push_back({label, text, indent});
  label->Show(!text.empty());
  return label;
}

wxStaticText* ConfigPage::AddText(const wxString& text) {
  auto* label = AddWrapped(text, 0);
  Add(label);
  return label;
}

wxStaticText* ConfigPage::AddSubText(const wxString& text) {
  const int indent = FromDIP(kSubIndent);
  auto* label = AddWrapped(text, indent);
  content_->Add(label, wxSizerFlags().Expand().Border(wxLEFT, indent));
  return label;
}

void ConfigPage::AddHeading(const wxString& text) {
  auto* label = new wxStaticText(this, wxID_ANY, text);
  label->SetFont(label->GetFont().Bold());
  content_->AddSpacer(FromDIP(kGap));
  Add(label);
}

void ConfigPage::SetText(wxStaticText* label, const std::string& text) {
  const auto found = std::find_if(wrapped_.begin(), wrapped_.end(),
                                  [label](const Wrapped& known) { return known.label == label; });
  if (found == wrapped_.end()) return;
  const wxString converted = ToWx(text);
  if (found->text == converted) return;
  found->text = converted;
  label->Show(!text.empty());
  wrapped_width_ = 0;
  Arrange();
}

void ConfigPage::Wrap(const Wrapped& wrapped) {
  const int width = wrapped_width_ - wrapped.indent;
  wrapped.label->SetLabelText(WithLineEnds(*wrapped.label, wrapped.text, width));
}

void ConfigPage::Arrange() {
  const int width = GetClientSize().x - 2 * FromDIP(kMargin);
  if (width <= 0) return;
  if (width != wrapped_width_) {
    wrapped_width_ = width;
    for (const Wrapped& wrapped : wrapped_) Wrap(wrapped);
  }
  Layout();
  FitInside();
}

}  // namespace skyhop
