#pragma once

#include <wx/button.h>
#include <wx/checkbox.h>

#include <array>

#include "ui/wx/commit_field.h"
#include "ui/wx/config_page.h"

namespace skyhop {

/// The addresses of downloads and web pages.
class ConfigUrlPage : public ConfigPage {
 public:
  ConfigUrlPage(wxWindow* parent, const ConfigEvents& events);

  void SetUrl(Address url, const std::string& text);
  void EnableOpen(Address url, bool enabled);
  void SetDownloadSsnAtStart(bool on) { at_start_->SetValue(on); }
  void SetNote(Address url, const std::string& text);

 private:
  struct Row {
    CommitField* field;
    wxButton* open;
    wxStaticText* note;
  };
  void AddRow(std::size_t index);
  [[nodiscard]] Row& Find(Address url);

  std::array<Row, kConfigUrls.size()> rows_{};
  wxCheckBox* at_start_ = nullptr;
};

}  // namespace skyhop
