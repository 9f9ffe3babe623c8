#pragma once

#include <wx/window.h>

#include <string>

#include "ui/prediction/chart_export.h"

namespace skyhop {

// What can be done with a finished chart. Each reports a failure in a message box over `parent`,
// and returns words about what was done, empty for nothing.

/// Asks for a file name; the ending chooses between SVG and PNG.
std::string SaveChart(wxWindow* parent, const ChartExport& chart);
/// Asks for a file name and saves the results as comma-separated values.
std::string SaveResults(wxWindow* parent, const ChartExport& chart);
std::string PrintChart(wxWindow* parent, const ChartExport& chart);
/// Puts the chart onto the clipboard as a picture.
std::string CopyChart(wxWindow* parent, const ChartExport& chart);

}  // namespace skyhop
