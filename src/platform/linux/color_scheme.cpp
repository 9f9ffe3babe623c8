// The desktop's setting for light or dark windows, read from its portal.

#include <gio/gio.h>
#include <gtk/gtk.h>

#include "platform/desktop.h"

namespace skyhop::platform {
namespace {

constexpr const char* kBusName = "org.freedesktop.portal.Desktop";
constexpr const char* kObject = "/org/freedesktop/portal/desktop";
constexpr const char* kInterface = "org.freedesktop.portal.Settings";
constexpr const char* kNamespace = "org.freedesktop.appearance";
constexpr const char* kKey = "color-scheme";

constexpr guint32 kDark = 1;
constexpr guint32 kLight = 2;

constexpr const char* kPreferDark = "gtk-application-prefer-dark-theme";

}  // namespace

struct ColorSchemeFollower::State {
  GCancellable* cancel = g_cancellable_new();
  GDBusConnection* bus = nullptr;
  guint subscription = 0;
  gboolean own = FALSE;  ///< the toolkit's setting if the desktop has none

  State() {
    g_object_get(gtk_settings_get_default(), kPreferDark, &own, nullptr);
    g_bus_get(G_BUS_TYPE_SESSION, cancel, OnBus, this);
  }

  ~State() {
    // Pending calls then call back with an error and do not use this object.
    g_cancellable_cancel(cancel);
    if (bus != nullptr) {
      g_dbus_connection_signal_unsubscribe(bus, subscription);
      g_object_unref(bus);
    }
    g_object_unref(cancel);
  }

  State(const State&) = delete;
  State& operator=(const State&) = delete;

  /// Takes ownership of `value`, which other variants may enclose.
  void Apply(GVariant* value) const {
    while (g_variant_is_of_type(value, G_VARIANT_TYPE_VARIANT) != FALSE) {
      GVariant* const inner = g_variant_get_variant(value);
      g_variant_unref(value);
      value = inner;
    }
    if (g_variant_is_of_type(value, G_VARIANT_TYPE_UINT32) != FALSE) {
      const guint32 wish = g_variant_get_uint32(value);
      const gboolean dark = wish == kDark ? TRUE : wish == kLight ? FALSE : own;
      GtkSettings* const settings = gtk_settings_get_default();
      g_object_set(settings, kPreferDark, dark, nullptr);
      // Windows with their own painting react to another theme only, not to its other variant.
      g_object_notify(G_OBJECT(settings), "gtk-theme-name");
    }
    g_variant_unref(value);
  }

  static void OnBus(GObject*, GAsyncResult* result, gpointer data) {
    GDBusConnection* const bus = g_bus_get_finish(result, nullptr);
    if (bus == nullptr) return;
    auto* const state = static_cast<State*>(data);
    state->bus = bus;
    state->subscription = g_dbus_connection_signal_subscribe(
        bus, kBusName, kInterface, "SettingChanged", kObject, kNamespace, G_DBUS_SIGNAL_FLAGS_NONE,
        OnChanged, state, nullptr);
    g_dbus_connection_call(bus, kBusName, kObject, kInterface, "Read",
                           g_variant_new("(ss)", kNamespace, kKey), G_VARIANT_TYPE("(v)"),
                           G_DBUS_CALL_FLAGS_NONE, -1, state->cancel, OnRead, state);
  }

  static void OnRead(GObject* bus, GAsyncResult* result, gpointer data) {
    GVariant* const reply =
        g_dbus_connection_call_finish(reinterpret_cast<GDBusConnection*>(bus), result, nullptr);
    if (reply == nullptr) return;
    static_cast<const State*>(data)->Apply(g_variant_get_child_value(reply, 0));
    g_variant_unref(reply);
  }

  static void OnChanged(GDBusConnection*, const gchar*, const gchar*, const gchar*, const gchar*,
                        GVariant* parameters, gpointer data) {
    if (g_variant_is_of_type(parameters, G_VARIANT_TYPE("(ssv)")) == FALSE) return;
    GVariant* const key = g_variant_get_child_value(parameters, 1);
    const bool ours = g_str_equal(g_variant_get_string(key, nullptr), kKey) != FALSE;
    g_variant_unref(key);
    if (ours) static_cast<const State*>(data)->Apply(g_variant_get_child_value(parameters, 2));
  }
};

ColorSchemeFollower::ColorSchemeFollower() : state_(std::make_unique<State>()) {}

ColorSchemeFollower::~ColorSchemeFollower() = default;

}  // namespace skyhop::platform
