#include "platform/desktop.h"

#include <gtk/gtk.h>

namespace skyhop::platform {

void TieLabel(void* label, void* field) {
  auto* const label_widget = static_cast<GtkWidget*>(label);
  auto* const field_widget = static_cast<GtkWidget*>(field);
  if (!GTK_IS_LABEL(label_widget) || !GTK_IS_WIDGET(field_widget)) return;
  // Sets both ends of the accessible relation, and where the caption's shortcut leads.
  gtk_label_set_mnemonic_widget(GTK_LABEL(label_widget), field_widget);
}

}  // namespace skyhop::platform
