#include "screen.h"

#include <cairo.h>

#include <wx/dcmemory.h>
#include <wx/dcscreen.h>

#include <cstdlib>

namespace skyhop::testing {

wxImage ScreenPart(const wxWindow& window, const Rectangle& area) {
  const wxPoint origin =
      window.ClientToScreen(wxPoint(static_cast<int>(area.left), static_cast<int>(area.top)));
  wxBitmap bitmap(static_cast<int>(area.width), static_cast<int>(area.height), 24);
  wxMemoryDC copy(bitmap);
  wxScreenDC screen;
  // Other windows have painted on the screen since the last copy, and the cached copy lacks that.
  cairo_surface_mark_dirty(cairo_get_target(static_cast<cairo_t*>(screen.GetHandle())));
  copy.Blit(wxPoint(0, 0), bitmap.GetSize(), &screen, origin);
  copy.SelectObject(wxNullBitmap);
  return bitmap.ConvertToImage();
}

int CountPixels(const wxImage& image, Color color, int tolerance) {
  int count = 0;
  for (int y = 0; y < image.GetHeight(); ++y) {
    for (int x = 0; x < image.GetWidth(); ++x) {
      if (std::abs(image.GetRed(x, y) - color.red) <= tolerance &&
          std::abs(image.GetGreen(x, y) - color.green) <= tolerance &&
          std::abs(image.GetBlue(x, y) - color.blue) <= tolerance) {
        ++count;
      }
    }
  }
  return count;
}

}  // namespace skyhop::testing
