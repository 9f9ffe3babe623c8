#pragma once

#include <wx/window.h>

#include "ui/prediction/ion_cap.h"

namespace skyhop {

// What can be done with a finished chart. Each tells the user what went wrong, in a message box
// over `parent`.

/// Asks for a file name; the ending chooses between SVG and PNG.
std::string SaveChart(wxWindow* parent, const IonCap& controller);
/// Asks for a file name and saves the results as comma-separated values.
std::string SaveResults(wxWindow* parent, const IonCap& controller);
std::string PrintChart(wxWindow* parent, const IonCap& controller);
/// Puts the chart onto the clipboard as a picture.
std::string CopyChart(wxWindow* parent, const IonCap& controller);

}  // namespace skyhop
