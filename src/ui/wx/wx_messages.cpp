#include "ui/wx/wx_messages.h"

#include <wx/app.h>
#include <wx/evtloop.h>
#include <wx/msgdlg.h>
#include <wx/toplevel.h>
#include <wx/utils.h>

#include "ui/wx/nested_loops.h"
#include "ui/wx/wx_text.h"

namespace skyhop {

void WxMessages::Show(const std::string& text, const std::string& caption) {
  wxWindow* parent = wxGetTopLevelParent(wxGetActiveWindow());
  if (parent == nullptr && wxTheApp != nullptr) parent = wxTheApp->GetTopWindow();
  wxMessageDialog box(parent, ToWx(text), ToWx(caption), wxOK | wxCENTRE);
  const NestedLoops::Scope open;
  box.ShowModal();
}

void WxPause::Wait(std::chrono::milliseconds duration) {
  const NestedLoops::Scope pausing;
  wxMilliSleep(static_cast<unsigned long>(duration.count()));
  if (wxEventLoopBase* const loop = wxEventLoopBase::GetActive()) {
    if (!loop->IsYielding()) loop->YieldFor(wxEVT_CATEGORY_UI);
    return;
  }
  // During the start of the program, its own event loop does not run yet.
  wxGUIEventLoop starting;
  const wxEventLoopActivator active(&starting);
  starting.YieldFor(wxEVT_CATEGORY_UI);
}

}  // namespace skyhop
