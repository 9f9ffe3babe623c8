#include "ui/wx/about_box.h"

#include <wx/dialog.h>
#include <wx/icon.h>
#include <wx/iconbndl.h>
#include <wx/sizer.h>
#include <wx/statbmp.h>
#include <wx/stattext.h>

#include <string>

#include "common/program.h"
#include "ui/wx/nested_loops.h"
#include "ui/wx/wx_text.h"

namespace skyhop {

void ShowAboutBox(wxWindow* parent) {
  wxDialog dialog(parent, wxID_ANY, ToWx(std::string("About ") + kProductName));
  const auto between = wxSizerFlags().Border(wxBOTTOM, dialog.FromDIP(8));
  auto* words = new wxBoxSizer(wxVERTICAL);
  auto* title =
      new wxStaticText(&dialog, wxID_ANY, ToWx(std::string(kProductName) + " " + VersionText()));
  title->SetFont(title->GetFont().Bold().Scaled(1.4F));
  // A label's best size does not follow its font at once.
  title->SetMinSize(title->GetTextExtent(title->GetLabel()));
  words->Add(title, between);
  for (const char* text :
       {"Predicts on which HF bands two stations\nwill hear each other over a day.",
        "Free software under the MIT licence."}) {
    words->Add(new wxStaticText(&dialog, wxID_ANY, text), between);
  }

  auto* row = new wxBoxSizer(wxHORIZONTAL);
  if (const auto* const frame = dynamic_cast<wxTopLevelWindow*>(parent)) {
    const wxIcon icon = frame->GetIcons().GetIcon(dialog.FromDIP(wxSize(64, 64)),
                                                  wxIconBundle::FALLBACK_NEAREST_LARGER);
    if (icon.IsOk()) {
      wxBitmap picture;
      picture.CopyFromIcon(icon);
      row->Add(new wxStaticBitmap(&dialog, wxID_ANY, picture),
               wxSizerFlags().Top().Border(wxRIGHT, dialog.FromDIP(16)));
    }
  }
  row->Add(words);
  auto* outer = new wxBoxSizer(wxVERTICAL);
  outer->Add(row, wxSizerFlags().Border(wxALL, dialog.FromDIP(16)));
  outer->Add(dialog.CreateButtonSizer(wxOK),
             wxSizerFlags().Right().Border(wxRIGHT | wxBOTTOM, dialog.FromDIP(12)));
  dialog.SetSizerAndFit(outer);
  dialog.CentreOnParent();
  const NestedLoops::Scope open;
  dialog.ShowModal();
}

}  // namespace skyhop
