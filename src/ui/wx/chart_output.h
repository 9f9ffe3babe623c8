#pragma once

#include <wx/window.h>

#include <string>

#include "ui/prediction/ion_cap.h"

namespace skyhop {

// What can be done with a finished chart. Each reports a failure in a message box over `parent`,
// and returns words about what was done, empty for nothing.

/// Asks for a file name; the ending chooses between SVG and PNG.
std::string SaveChart(wxWindow* parent, const IonCap& controller);
/// Asks for a file name and saves the results as comma-separated values.
std::string SaveResults(wxWindow* parent, const IonCap& controller);
std::string PrintChart(wxWindow* parent, const IonCap& controller);
/// Puts the chart onto the clipboard as a picture.
std::string CopyChart(wxWindow* parent, const IonCap& controller);

}  // namespace skyhop
