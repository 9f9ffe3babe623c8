#pragma once

#include <wx/window.h>

namespace skyhop {

void ShowAboutBox(wxWindow* parent);

}  // namespace skyhop
