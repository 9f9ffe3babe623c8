#include "platform/desktop.h"

#include <gtk/gtk.h>
#include <pango/pangocairo.h>

#include <cstdlib>
#include <vector>

namespace skyhop::platform {
namespace {

constexpr const char* kDrivers = "GDK_GL";

}  // namespace

PlainDisplayStart::PlainDisplayStart() : changed_(std::getenv(kDrivers) == nullptr) {
  if (changed_) ::setenv(kDrivers, "disable", 0);
}

PlainDisplayStart::~PlainDisplayStart() {
  // Programs that this one starts must not inherit the setting.
  if (changed_) ::unsetenv(kDrivers);
}

void LoadFontsAhead() {
  // A new font map reads the font configuration on its own thread.
  pango_cairo_font_map_get_default();
}

void TieLabel(void* label, void* field) {
  auto* const label_widget = static_cast<GtkWidget*>(label);
  auto* const field_widget = static_cast<GtkWidget*>(field);
  if (!GTK_IS_LABEL(label_widget) || !GTK_IS_WIDGET(field_widget)) return;
  // Sets both ends of the accessible relation, and the field that the caption's shortcut selects.
  gtk_label_set_mnemonic_widget(GTK_LABEL(label_widget), field_widget);
}

void LayOutHidden(void* window, int width, int height) {
  auto* const widget = static_cast<GtkWidget*>(window);
  if (!GTK_IS_WINDOW(widget)) return;
  // GTK requires a size request before an allocation.
  gtk_widget_get_preferred_size(widget, nullptr, nullptr);
  GtkAllocation area{0, 0, width, height};
  gtk_widget_size_allocate(widget, &area);
}

bool TakeEscapeKey() {
  bool struck = false;
  std::vector<GdkEvent*> others;
  while (GdkEvent* const event = gdk_event_get()) {
    guint key = 0;
    if (gdk_event_get_event_type(event) == GDK_KEY_PRESS && gdk_event_get_keyval(event, &key) &&
        key == GDK_KEY_Escape) {
      struck = true;
      gdk_event_free(event);
    } else {
      others.push_back(event);
    }
  }
  for (GdkEvent* const event : others) {
    gdk_event_put(event);
    gdk_event_free(event);
  }
  return struck;
}

bool CancelNativeDialogs() {
  bool any = false;
  GList* const windows = gtk_window_list_toplevels();
  for (const GList* item = windows; item != nullptr; item = item->next) {
    auto* const widget = static_cast<GtkWidget*>(item->data);
    if (!GTK_IS_DIALOG(widget) || gtk_widget_get_visible(widget) == FALSE) continue;
    gtk_dialog_response(GTK_DIALOG(widget), GTK_RESPONSE_CANCEL);
    any = true;
  }
  g_list_free(windows);
  return any;
}

}  // namespace skyhop::platform
