#include "ui/wx/about_box.h"

#include <wx/aboutdlg.h>
#include <wx/generic/aboutdlgg.h>

#include "common/program.h"
#include "ui/wx/wx_text.h"

namespace skyhop {

void ShowAboutBox(wxWindow* parent) {
  wxAboutDialogInfo info;
  info.SetName(kProductName);
  info.SetVersion(ToWx(VersionText()));
  info.SetDescription("Predicts on which HF bands two stations\nwill hear each other over a day.");
  info.SetCopyright("MIT licence");
  wxGenericAboutBox(info, parent);
}

}  // namespace skyhop
