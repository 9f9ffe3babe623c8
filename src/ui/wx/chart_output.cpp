#include "ui/wx/chart_output.h"

#include <wx/bitmap.h>
#include <wx/clipbrd.h>
#include <wx/dataobj.h>
#include <wx/dcmemory.h>
#include <wx/filedlg.h>
#include <wx/filename.h>
#include <wx/graphics.h>
#include <wx/msgdlg.h>
#include <wx/mstream.h>
#include <wx/print.h>
#include <wx/settings.h>

#include <algorithm>
#include <memory>

#include "common/errors.h"
#include "common/files.h"
#include "common/program.h"
#include "ui/prediction/chart/chart_picture.h"
#include "ui/wx/nested_loops.h"
#include "ui/wx/wx_surface.h"
#include "ui/wx/wx_text.h"

namespace skyhop {
namespace {

/// Pixels of a picture file for each of the layout's own: sharp on dense screens and in print.
constexpr double kPictureScale = 2;

wxFont PictureFont() {
  return wxSystemSettings::GetFont(wxSYS_DEFAULT_GUI_FONT);
}

void Tell(wxWindow* parent, const std::string& text) {
  const NestedLoops::Scope open;
  wxMessageDialog(parent, ToWx(text), kProductName, wxOK | wxCENTRE | wxICON_ERROR).ShowModal();
}

wxBitmap MakePicture(const ChartExport& chart) {
  PictureOptions options;
  options.scale = kPictureScale;
  wxBitmap bitmap(static_cast<int>(options.SurfaceWidth()),
                  static_cast<int>(options.SurfaceHeight()), 24);
  wxMemoryDC dc(bitmap);
  std::unique_ptr<wxGraphicsContext> context(wxGraphicsContext::Create(dc));
  if (!context) throw Error(errors::kInvalidCall, "the picture cannot be drawn");
  WxSurface surface(std::move(context), options.SurfaceWidth(), options.SurfaceHeight(), 1,
                    PictureFont());
  chart.PaintPicture(surface, options.scale);
  return bitmap;
}

std::string PngFile(const wxBitmap& picture) {
  wxMemoryOutputStream stream;
  if (!picture.ConvertToImage().SaveFile(stream, wxBITMAP_TYPE_PNG)) {
    throw Error(errors::kInvalidCall, "the picture cannot be turned into a PNG file");
  }
  std::string content(static_cast<std::size_t>(stream.GetLength()), '\0');
  stream.CopyTo(content.data(), content.size());
  return content;
}

/// Asks for a file name and writes what `make` yields for it. Returns what was done, empty for
/// nothing.
template <class MakeContent>
std::string SaveAs(wxWindow* parent, const wxString& title, const wxString& name,
                   const wxString& wildcard, MakeContent make) {
  wxFileDialog dialog(parent, title, wxString(), name, wildcard, wxFD_SAVE | wxFD_OVERWRITE_PROMPT);
  const NestedLoops::Scope open;
  if (dialog.ShowModal() != wxID_OK) return {};
  wxFileName file(dialog.GetPath());
  try {
    const std::string content = make(file, dialog.GetFilterIndex());
    const std::string name_of_file = FromWx(file.GetFullPath());
    WriteFileAtOnce(PathFromText(name_of_file), content);
    return "Saved " + name_of_file;
  } catch (const std::exception& error) {
    Tell(parent, std::string("The file was not saved: ") + error.what());
  }
  return {};
}

class ChartPrintout : public wxPrintout {
 public:
  explicit ChartPrintout(const ChartExport& chart) : wxPrintout("Skyhop"), chart_(&chart) {}

  bool OnPrintPage(int page) override {
    wxDC* const dc = GetDC();
    if (page != 1 || dc == nullptr) return false;
    PictureOptions options;
    FitThisSizeToPageMargins(
        wxSize(static_cast<int>(options.width), static_cast<int>(options.height)), settings_);
    std::unique_ptr<wxGraphicsContext> context(wxGraphicsContext::CreateFromUnknownDC(*dc));
    if (!context) return false;
    WxSurface surface(std::move(context), options.width, options.height, 1, PictureFont());
    chart_->PaintPicture(surface, 1);
    return true;
  }

  bool HasPage(int page) override { return page == 1; }
  void GetPageInfo(int* first, int* last, int* from, int* to) override {
    *first = *last = *from = *to = 1;
  }
  [[nodiscard]] wxPageSetupDialogData& Settings() { return settings_; }

 private:
  const ChartExport* chart_;
  wxPageSetupDialogData settings_;
};

}  // namespace

std::string SaveChart(wxWindow* parent, const ChartExport& chart) {
  return SaveAs(parent, "Save the chart", "skyhop-chart.png",
                "PNG picture (*.png)|*.png|SVG drawing (*.svg)|*.svg",
                [&](wxFileName& file, int filter) {
                  const wxString ending = file.GetExt().Lower();
                  // A typed ending overrides the list's choice.
                  const bool svg = ending == "svg" || (ending != "png" && filter == 1);
                  if (ending != "svg" && ending != "png") {
                    file.SetFullName(file.GetFullName() + (svg ? ".svg" : ".png"));
                  }
                  return svg ? chart.ChartAsSvg() : PngFile(MakePicture(chart));
                });
}

std::string SaveResults(wxWindow* parent, const ChartExport& chart) {
  return SaveAs(parent, "Save the results", "skyhop-results.csv",
                "Comma-separated values (*.csv)|*.csv", [&](wxFileName& file, int) {
                  if (!file.HasExt()) file.SetExt("csv");
                  return chart.ResultsAsCsv();
                });
}

std::string PrintChart(wxWindow* parent, const ChartExport& chart) {
  wxPrintDialogData data;
  data.EnablePageNumbers(false);
  data.GetPrintData().SetOrientation(wxLANDSCAPE);
  const NestedLoops::Scope open;
  wxPrinter printer(&data);
  ChartPrintout printout(chart);
  if (printer.Print(parent, &printout, true)) return "The chart was sent to the printer";
  if (wxPrinter::GetLastError() == wxPRINTER_ERROR) Tell(parent, "The chart could not be printed.");
  return {};
}

std::string CopyChart(wxWindow* parent, const ChartExport& chart) {
  const wxClipboardLocker clipboard;
  try {
    if (!!clipboard && wxTheClipboard->SetData(new wxBitmapDataObject(MakePicture(chart)))) {
      return "The chart was copied";
    }
    Tell(parent, "The chart could not be copied: another program holds the clipboard.");
  } catch (const Error& error) {
    Tell(parent, std::string("The chart could not be copied: ") + error.what());
  }
  return {};
}

}  // namespace skyhop
